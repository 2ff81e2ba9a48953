// The values of BenchModel.vok as one would write them by hand.
#pragma once

#include <cstdint>
#include <string>

namespace Bench {

enum class PlainKind : std::uint8_t {
   none = 0,
   web = 1,
   streaming = 2,
   voice = 7
};

struct PlainRate {
   std::uint64_t packets = 0;
   std::uint64_t bytes = 0;
   PlainKind kind = PlainKind::none;
   bool exact = false;

   bool operator==( const PlainRate & ) const = default;
};

struct PlainService {
   std::uint32_t id = 0;
   std::string name;
   std::string category;
   PlainKind kind = PlainKind::none;

   bool operator==( const PlainService & ) const = default;
};

} // namespace Bench
