// The two directions of the framing: see Framing.h for the bytes.
#include "store/Framing.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Vok::Store {

namespace {

constexpr std::size_t magicSize = 4;
constexpr std::array< std::byte, magicSize > magic = {
   std::byte{ 'V' }, std::byte{ 'o' }, std::byte{ 'k' }, std::byte{ '1' }
};

std::string tooLong( std::size_t size, std::size_t limit )
{
   return "frame of " + std::to_string( size ) + " bytes, the limit is " + std::to_string( limit );
}

std::string hexadecimal( std::span< const std::byte > bytes )
{
   constexpr char digits[] = "0123456789abcdef";
   std::string text;
   for ( const std::byte byte : bytes ) {
      const auto code = std::to_integer< unsigned >( byte );
      text += text.empty() ? "" : " ";
      text += digits[ code >> 4U ];
      text += digits[ code & 15U ];
   }
   return text;
}

} // namespace

std::array< std::byte, frameHeaderSize > FrameWriter::header( std::size_t payloadSize ) const
{
   const std::size_t most =
         std::min< std::size_t >( limit_, std::numeric_limits< std::uint32_t >::max() );
   if ( payloadSize > most ) {
      throw FramingException( tooLong( payloadSize, most ) );
   }
   std::array< std::byte, frameHeaderSize > bytes{};
   std::copy( magic.begin(), magic.end(), bytes.begin() );
   for ( std::size_t i = magicSize; i < frameHeaderSize; ++i ) {
      bytes[ i ] = static_cast< std::byte >( payloadSize >> 8U * ( frameHeaderSize - 1 - i ) );
   }
   return bytes;
}

void FrameWriter::append( std::span< const std::byte > payload,
      std::vector< std::byte > & out ) const
{
   const auto bytes = header( payload.size() );
   // Built apart and inserted at once: a payload inside `out` stays readable, and `out` changes
   // only when all the memory is there.
   std::vector< std::byte > frame;
   frame.reserve( bytes.size() + payload.size() );
   frame.insert( frame.end(), bytes.begin(), bytes.end() );
   frame.insert( frame.end(), payload.begin(), payload.end() );
   if ( out.empty() ) {
      out.swap( frame );
   } else {
      out.insert( out.end(), frame.begin(), frame.end() );
   }
}

std::optional< std::vector< std::byte > > FrameReader::feed(
      std::span< const std::byte > & piece )
{
   throwIfFailed();
   if ( state_ == State::header ) {
      takeHeader( piece );
      if ( state_ == State::header ) {
         return std::nullopt;
      }
   }
   takePayload( piece );
   if ( payload_.size() < payloadSize_ ) {
      return std::nullopt;
   }
   state_ = State::header;
   headerSize_ = 0;
   return std::exchange( payload_, {} );
}

void FrameReader::end()
{
   throwIfFailed();
   if ( headerSize_ > 0 ) {
      state_ = State::endedEarly;
      throwIfFailed();
   }
}

void FrameReader::takeHeader( std::span< const std::byte > & piece )
{
   const std::size_t taken = std::min( piece.size(), frameHeaderSize - headerSize_ );
   std::copy_n( piece.begin(), taken, std::span( header_ ).subspan( headerSize_ ).begin() );
   headerSize_ += taken;
   piece = piece.subspan( taken );
   checkHeader();
}

// A wrong magic is reported at its first wrong byte, so that a peer which sends less than a header
// and then waits is found out.
void FrameReader::checkHeader()
{
   const auto begun = std::span( header_ ).first( std::min( headerSize_, magicSize ) );
   if ( !std::equal( begun.begin(), begun.end(), magic.begin() ) ) {
      state_ = State::notAFrame;
      throwIfFailed();
   }
   if ( headerSize_ < frameHeaderSize ) {
      return;
   }
   payloadSize_ = 0;
   for ( const std::byte byte : std::span( header_ ).subspan( magicSize ) ) {
      payloadSize_ = payloadSize_ << 8U | std::to_integer< std::size_t >( byte );
   }
   state_ = payloadSize_ > limit_ ? State::tooLong : State::payload;
   throwIfFailed();
}

void FrameReader::takePayload( std::span< const std::byte > & piece )
{
   const auto taken = piece.first( std::min( piece.size(), payloadSize_ - payload_.size() ) );
   const std::size_t needed = payload_.size() + taken.size();
   if ( needed > payload_.capacity() ) {
      // Doubling keeps the copies few; the claimed length only ever makes the buffer smaller.
      payload_.reserve( std::min( payloadSize_, std::max( needed, 2 * payload_.capacity() ) ) );
   }
   payload_.insert( payload_.end(), taken.begin(), taken.end() );
   piece = piece.subspan( taken.size() );
}

void FrameReader::throwIfFailed() const
{
   switch ( state_ ) {
   case State::header:
   case State::payload:
      return;
   case State::notAFrame:
      throw FramingException( "frame begins with " +
            hexadecimal( std::span( header_ ).first( std::min( headerSize_, magicSize ) ) ) +
            ", expected " + hexadecimal( magic ) );
   case State::tooLong:
      throw FramingException( tooLong( payloadSize_, limit_ ) );
   case State::endedEarly:
      throw FramingException( endedText() );
   }
}

std::string FrameReader::endedText() const
{
   const bool inHeader = headerSize_ < frameHeaderSize;
   const std::size_t arrived = inHeader ? headerSize_ : payload_.size();
   const std::size_t whole = inHeader ? frameHeaderSize : payloadSize_;
   return "stream ended after " + std::to_string( arrived ) + " of the " + std::to_string( whole ) +
         ( inHeader ? " bytes of a frame header" : " bytes of a frame" );
}

} // namespace Vok::Store
