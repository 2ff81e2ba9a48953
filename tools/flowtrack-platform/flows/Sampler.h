// Which packets are looked at.
#pragma once

#include "tools/flowtrack-platform/flows/Packet.h"

#include <cstdint>

namespace FlowtrackPlatform {

/// Takes one packet of so many: systematic count-based sampling (RFC 5475, 5.1). And no more of
/// them in a second than a limit.
class Sampler {
 public:
   /// `rate` is 1 at least; a `limit` of 0 is none. The count goes on, and where it is beyond what
   /// a lower rate counts to, the next packet is taken.
   void settingsAre( std::uint32_t rate, std::uint32_t limit ) noexcept
   {
      rate_ = rate;
      limit_ = limit;
      count_ = count_ < rate ? count_ : 0;
   }

   enum class Verdict : std::uint8_t {
      passed, ///< it is not one of those that are taken
      taken,
      limited ///< it would be, but for the limit
   };

   /// Counts a packet. The first one of each `rate` is taken.
   Verdict next( Time time ) noexcept
   {
      const std::uint32_t place = count_;
      count_ = count_ + 1 >= rate_ ? 0 : count_ + 1;
      if ( place != 0 ) {
         return Verdict::passed;
      }
      if ( time / 1000 != second_ ) {
         second_ = time / 1000;
         taken_ = 0;
      }
      if ( limit_ != 0 && taken_ == limit_ ) {
         return Verdict::limited;
      }
      ++taken_;
      return Verdict::taken;
   }

 private:
   std::uint32_t rate_ = 1;
   std::uint32_t limit_ = 0;
   std::uint32_t count_ = 0;
   Time second_ = 0;
   std::uint32_t taken_ = 0; ///< in that second
};

} // namespace FlowtrackPlatform
