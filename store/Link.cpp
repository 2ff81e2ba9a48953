// What waits to be sent over a connection, and taking apart what arrives.
#include "store/Link.h"

#include <algorithm>
#include <string>

namespace Vok::Store {

void Link::push( Bytes own )
{
   const std::size_t size = own.size();
   pieces_.push_back( { std::move( own ), nullptr, 0, size } );
   pending_ += size;
}

void Link::push( std::shared_ptr< const Bytes > shared, std::size_t from, std::size_t to )
{
   pieces_.push_back( { {}, std::move( shared ), from, to } );
   pending_ += to - from;
}

void Link::send( const Message & message )
{
   NboAttrLog::Out out;
   encode( message, out );
   Bytes frame;
   FrameWriter( frameLimit ).append( out.bytes(), frame );
   push( std::move( frame ) );
}

void Link::sendBatch(
      std::uint32_t channel, std::uint32_t mount, const std::shared_ptr< const Bytes > & batch )
{
   const FrameWriter frames( frameLimit );
   for ( std::size_t from = 0; from != batch->size(); ) {
      const std::size_t to = std::min( batch->size(), from + batchPiece );
      NboAttrLog::Out head;
      encode( BatchPiece{ channel, mount, to == batch->size(), {} }, head );
      head.patch32( batchPieceHead - sizeof( std::uint32_t ),
            static_cast< std::uint32_t >( to - from ) );
      const auto frame = frames.header( head.size() + to - from );
      Bytes own( frame.begin(), frame.end() );
      own.insert( own.end(), head.bytes().begin(), head.bytes().end() );
      push( std::move( own ) );
      push( batch, from, to );
      from = to;
   }
}

std::span< const std::byte > Link::output() const noexcept
{
   return pieces_.empty() ? std::span< const std::byte >() : pieces_.front().bytes();
}

void Link::sent( std::size_t count ) noexcept
{
   pending_ -= count;
   while ( count != 0 ) {
      Piece & first = pieces_.front();
      const std::size_t part = std::min( count, first.to - first.from );
      first.from += part;
      count -= part;
      if ( first.from == first.to ) {
         pieces_.pop_front();
      }
   }
}

void Link::receive( std::span< const std::byte > piece,
      const std::function< void( const Message & ) > & handle )
{
   while ( const auto frame = frames_.feed( piece ) ) {
      handle( decode( *frame ) );
   }
}

std::optional< std::span< const std::byte > > BatchAssembly::add( const BatchPiece & piece )
{
   if ( complete_ ) {
      bytes_ = {}; // gives the memory back
      complete_ = false;
   }
   if ( piece.bytes.size() > limit_ - bytes_.size() ) {
      throw ProtocolException(
            "a batch is longer than " + std::to_string( limit_ ) + " bytes" );
   }
   complete_ = piece.last;
   if ( bytes_.empty() && piece.last ) {
      return piece.bytes; // all of it in one piece
   }
   bytes_.insert( bytes_.end(), piece.bytes.begin(), piece.bytes.end() );
   if ( !piece.last ) {
      return std::nullopt;
   }
   return bytes_;
}

} // namespace Vok::Store
