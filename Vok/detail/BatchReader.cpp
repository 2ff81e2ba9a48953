// The frame of a batch, and its place in the stream.
#include "Vok/detail/BatchReader.h"

#include "Vok/Exceptions.h"
#include "Vok/detail/BatchApply.h"
#include "Vok/detail/BatchCheck.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/Hash.h"

#include <optional>
#include <string>
#include <utility>

namespace Vok::Detail {

using NboAttrLog::Exception;
using NboAttrLog::In;

BatchFrame BatchReader::readFrame( In & in )
{
   const std::byte * const start = in.position();
   if ( in.remaining() < Batch::headerSize + Batch::checksumSize ) {
      throw Exception( "a batch is cut short: " + std::to_string( in.remaining() ) + " bytes" );
   }
   In header( in.getBytes( Batch::headerSize ) );
   if ( header.get< std::uint16_t >() != Batch::magic ) {
      throw Exception( "these bytes are no batch" );
   }
   if ( const auto version = header.get< std::uint8_t >(); version != Batch::version ) {
      throw Exception( "a batch of version " + std::to_string( version ) + ", " +
            std::to_string( Batch::version ) + " is what this side reads" );
   }
   const auto flags = header.get< std::uint8_t >();
   const auto length = header.get< std::uint32_t >();
   BatchFrame frame;
   frame.whole = flags == Batch::wholeFlag;
   frame.stream = header.get< std::uint64_t >();
   if ( flags > Batch::sinceFlag || length < Batch::headerSize + Batch::checksumSize ||
         length - Batch::headerSize > in.remaining() ) {
      throw Exception(
            "a batch of " + std::to_string( length ) + " bytes does not fit into the log" );
   }
   const std::size_t covered = length - Batch::checksumSize;
   frame.content = In( in.getBytes( covered - Batch::headerSize ) );
   if ( in.get< std::uint64_t >() != checksum64( start, covered ) ) {
      throw Exception( "the checksum of a batch is wrong" );
   }
   frame.number = frame.content.getVarint();
   frame.since = flags == Batch::sinceFlag ? frame.content.getVarint() : frame.number - 1;
   return frame;
}

void BatchReader::checkPlace( const BatchFrame & frame ) const
{
   if ( frame.whole ) {
      return;
   }
   if ( last_ == 0 || frame.stream != stream_ ) {
      throw Exception( "a batch of changes comes before the whole tree of its stream" );
   }
   if ( frame.since != last_ || frame.number < last_ ) {
      throw Exception( "batch " + std::to_string( frame.number ) + " does not follow batch " +
            std::to_string( last_ ) + ", the last one read" );
   }
}

void BatchReader::read( In & in )
{
   const In before = in;
   std::optional< BatchApply > apply;
   try {
      BatchFrame frame = readFrame( in );
      checkPlace( frame );
      const ReadTypes none;
      const ReadTypes & known = frame.whole ? none : types_;
      auto described = readTypes( frame.content, known );
      const Introduced introduced =
            checkRecords( frame, described ? *described : known, root_->typeData() );
      apply.emplace( *this, frame, std::move( described ), introduced );
      apply->prepare();
   } catch ( const Corvo::RangeException & e ) {
      in = before;
      throw Exception( e.what() );
   } catch ( ... ) {
      in = before;
      throw;
   }
   apply->commit();
   apply->notify(); // may destroy this reader
}

} // namespace Vok::Detail
