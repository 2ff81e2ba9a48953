// Contenders: what is prepared once, done again and again, and checked. A program runs them as
// benchmarks, or counts the instructions of each with callgrind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Bench {

/// Something that is ready to be measured.
struct Prepared {
   std::function< void() > once; ///< is measured
   std::function< void() > check; ///< ends the program where what was done is wrong
   std::function< std::size_t() > bytes; ///< what it writes or reads; none where it is empty
   std::size_t operations = 1; ///< of one `once`

   /// Nanoseconds of the processor's time that another process has taken, which count as well.
   std::function< std::uint64_t() > elsewhere;
};

/// One benchmark: `prepare` runs once in the process, when it is first measured.
struct Contender {
   std::string name; ///< situation/case/contender
   std::function< Prepared() > prepare;
};
using Contenders = std::vector< Contender >;

/// For `main` to return. Measures all, as benchmarks with google-benchmark's arguments; or, with
/// `--instructions REGEX`, those whose names have a match, each once, between marks for callgrind.
int runContenders( const Contenders & contenders, int argc, char ** argv );

/// How often memory was asked of the C library so far, by whatever means, in this process.
std::size_t allocations() noexcept;

} // namespace Bench
