// What the fuzzers share: taking an input apart, what must hold, and what a piece of code may cost.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// What a fuzzer runs on each input.
extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size );

namespace Fuzz {

using Bytes = std::span< const std::byte >;

/// Ends the process, saying what should have been, where it does not hold.
void hold( bool holds, std::string_view what );

inline bool sameBytes( Bytes a, Bytes b )
{
   return std::string_view( reinterpret_cast< const char * >( a.data() ), a.size() ) ==
         std::string_view( reinterpret_cast< const char * >( b.data() ), b.size() );
}

/// An input that is taken apart from its front. Behind its end there are zeros, and pieces are
/// shorter than they were asked for.
class Input {
 public:
   Input( const std::uint8_t * data, std::size_t size )
         : rest_( reinterpret_cast< const std::byte * >( data ), size )
   {
   }

   bool empty() const { return rest_.empty(); }

   std::uint8_t byte()
   {
      const Bytes one = bytes( 1 );
      return one.empty() ? std::uint8_t{ 0 } : static_cast< std::uint8_t >( one.front() );
   }
   Bytes bytes( std::size_t size )
   {
      const Bytes taken = rest_.first( size < rest_.size() ? size : rest_.size() );
      rest_ = rest_.subspan( taken.size() );
      return taken;
   }
   Bytes rest() { return bytes( rest_.size() ); }
   std::string_view text()
   {
      const Bytes all = rest();
      return { reinterpret_cast< const char * >( all.data() ), all.size() };
   }

 private:
   Bytes rest_;
};

/// What may be spent on an input: so much whatever its size, and so much for each byte of it.
struct Budget {
   std::uint64_t once;
   std::uint64_t perByte;
};

/// The heap that a piece of code may hold before it knows that its input is good.
inline constexpr Budget hostileHeap{ 64 << 10, 2 };

/// What the code between the construction and the call of a `hold…` member costs. One at a time.
class Cost {
 public:
   Cost();

   /// Holds the most bytes of heap that it had at once to a budget.
   void holdHeap( Budget budget, std::size_t inputSize ) const;

   /// Holds steps to a budget, and the stack to what 64 levels of nesting need. The test on the
   /// corpus, which is compiled as the libraries are, counts none.
   void holdSteps( Budget budget, std::size_t inputSize ) const;
};

} // namespace Fuzz
