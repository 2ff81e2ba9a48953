// What waits to be sent over a connection, and taking apart what arrives.
#include "store/Link.h"

#include <algorithm>
#include <string>

namespace Vok::Store {

// Behind the last piece, where that has room. The bytes of the first one may be on their way: they
// stay where they are.
void Link::push( std::size_t room,
      std::initializer_list< std::span< const std::byte > > parts )
{
   std::size_t size = 0;
   for ( const auto part : parts ) {
      size += part.size();
   }
   if ( pieces_.empty() || pieces_.back().shared ||
         pieces_.back().own.capacity() - pieces_.back().own.size() < size ) {
      Bytes own;
      own.reserve( std::max( size, room ) );
      pieces_.push_back( { std::move( own ), nullptr, 0, 0 } );
   }
   Piece & last = pieces_.back();
   for ( const auto part : parts ) {
      last.own.insert( last.own.end(), part.begin(), part.end() );
   }
   last.to = last.own.size();
   pendingOwn_ += size;
   pushed( size );
}

void Link::push( std::shared_ptr< const Bytes > shared, std::size_t from, std::size_t to )
{
   pieces_.push_back( { {}, std::move( shared ), from, to } );
   pushed( to - from );
}

void Link::pushed( std::size_t size )
{
   const bool first = pending_ == 0;
   pending_ += size;
   if ( first && onOutput_ ) {
      onOutput_();
   }
}

void Link::send( const Message & message )
{
   NboAttrLog::Out out;
   encode( message, out );
   push( room(), { FrameWriter( frameLimit ).header( out.size() ), out.bytes() } );
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
      if ( to - from < sharedFrom ) {
         push( room(), { frame, head.bytes(), std::span( *batch ).subspan( from, to - from ) } );
      } else {
         push( 0, { frame, head.bytes() } ); // nothing comes behind it
         push( batch, from, to );
      }
      from = to;
   }
}

std::span< const std::byte > Link::output() const noexcept
{
   return pieces_.empty() ? std::span< const std::byte >() : pieces_.front().bytes();
}

std::size_t Link::outputs( std::span< std::span< const std::byte > > into ) const noexcept
{
   const std::size_t count = std::min( into.size(), pieces_.size() );
   std::transform( pieces_.begin(), pieces_.begin() + static_cast< std::ptrdiff_t >( count ),
         into.begin(), []( const Piece & piece ) { return piece.bytes(); } );
   return count;
}

void Link::sent( std::size_t count ) noexcept
{
   pending_ -= count;
   while ( count != 0 ) {
      Piece & first = pieces_.front();
      const std::size_t part = std::min( count, first.to - first.from );
      first.from += part;
      count -= part;
      pendingOwn_ -= first.shared ? 0 : part;
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
      reset();
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
