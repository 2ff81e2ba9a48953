// Counts what a piece of code does, whatever the machine: for tests of how a cost grows.
#pragma once

#include <cstdint>

namespace TestSupport {

/// Counts from its construction on: pieces of code without a branch that were run, of this program
/// and not of the C and C++ libraries. All threads count. One at a time.
class StepMeter {
 public:
   StepMeter();

   /// Whether this build counts. Where it does not, all numbers are 0.
   static bool counts();

   std::uint64_t steps() const;

   /// The most bytes of stack below the construction's.
   std::uint64_t stack() const;
};

} // namespace TestSupport
