// The framing of a byte stream: an input is pieces, each a byte for its size and so many bytes.
// Its first byte gives the limit of a frame.
#include "fuzz/Support.h"

#include "store/Framing.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace {

using Fuzz::hold;
using Frames = std::vector< std::vector< std::byte > >;

constexpr Fuzz::Budget frameSteps{ 1000, 20 };
// As Framing.h says: three times what has arrived, while a buffer grows.
constexpr Fuzz::Budget frameHeap{ 4096, 3 };

/// What a reader made of a stream.
struct Outcome {
   Frames frames;
   std::string refusal; // why a piece was refused
   std::string endRefusal; // why the stream may not end there
};

void feed(
      Vok::Store::FrameReader & reader, Fuzz::Bytes piece, std::size_t arrived, Outcome & into )
{
   while ( true ) {
      std::optional< std::vector< std::byte > > frame;
      const Fuzz::Cost cost;
      try {
         frame = reader.feed( piece );
      } catch ( const Vok::Store::FramingException & e ) {
         hold( into.refusal.empty() || into.refusal == e.what(), "a refusal stays the same" );
         into.refusal = e.what();
      }
      cost.holdSteps( frameSteps, piece.size() );
      cost.holdHeap( frameHeap, arrived );
      if ( !frame ) {
         hold( piece.empty() || !into.refusal.empty(), "a piece is used up" );
         return;
      }
      hold( into.refusal.empty(), "nothing is read after a refusal" );
      into.frames.push_back( std::move( *frame ) );
   }
}

Outcome readPieces( const std::vector< Fuzz::Bytes > & pieces, std::size_t limit )
{
   Outcome outcome;
   Vok::Store::FrameReader reader( limit );
   std::size_t arrived = 0;
   for ( const Fuzz::Bytes piece : pieces ) {
      arrived += piece.size();
      feed( reader, piece, arrived, outcome );
   }
   try {
      reader.end();
   } catch ( const Vok::Store::FramingException & e ) {
      outcome.endRefusal = e.what();
   }
   return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size )
{
   Fuzz::Input input( data, size );
   const std::uint8_t limitByte = input.byte();
   const std::size_t limit =
         limitByte < 128 ? limitByte : Vok::Store::defaultFrameLimit; // small ones are reached
   std::vector< Fuzz::Bytes > pieces;
   std::vector< std::byte > stream;
   while ( !input.empty() ) {
      const std::uint8_t pieceSize = input.byte();
      pieces.push_back( input.bytes( pieceSize ) );
      stream.insert( stream.end(), pieces.back().begin(), pieces.back().end() );
   }

   const Outcome outcome = readPieces( pieces, limit );
   const Outcome whole = readPieces( { stream }, limit );
   // Only the words differ: a wrong magic is shown as far as it has come.
   hold( outcome.frames == whole.frames && outcome.refusal.empty() == whole.refusal.empty() &&
               outcome.endRefusal.empty() == whole.endRefusal.empty(),
         "how a stream is cut makes no difference" );

   std::vector< std::byte > framed;
   for ( const std::vector< std::byte > & frame : outcome.frames ) {
      Vok::Store::FrameWriter( limit ).append( frame, framed );
   }
   hold( framed.size() <= stream.size() &&
               std::equal( framed.begin(), framed.end(), stream.begin() ),
         "frames that are framed again are the bytes of the stream" );
   const bool complete = framed.size() == stream.size();
   hold( complete == ( outcome.refusal.empty() && outcome.endRefusal.empty() ),
         "a stream is in order where it is whole frames, and nowhere else" );
   return 0;
}
