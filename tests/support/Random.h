// Random numbers that are the same in every run.
#pragma once

#include <cstdint>

namespace TestSupport {

/// A sequence that its seed fixes, on every machine.
class Random {
 public:
   explicit Random( std::uint64_t seed ) : state_( seed ) {}

   std::uint64_t word()
   {
      state_ += 0x9e3779b97f4a7c15;
      std::uint64_t word = state_;
      word = ( word ^ word >> 30 ) * 0xbf58476d1ce4e5b9;
      word = ( word ^ word >> 27 ) * 0x94d049bb133111eb;
      return word ^ word >> 31;
   }

   /// A number from 0 to `limit - 1`; `limit` is not 0.
   std::uint32_t below( std::uint32_t limit )
   {
      return static_cast< std::uint32_t >( word() % limit );
   }

   bool oneIn( std::uint32_t chances ) { return below( chances ) == 0; }

 private:
   std::uint64_t state_;
};

} // namespace TestSupport
