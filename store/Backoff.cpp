// Growing, jittered delays.
#include "store/Backoff.h"

#include <algorithm>

namespace Vok::Store {

std::chrono::milliseconds Backoff::next()
{
   constexpr std::uint64_t first = 50;
   constexpr std::uint64_t most = 10000;
   const std::uint64_t whole = std::min( most, first << std::min( attempts_, 16U ) );
   ++attempts_;
   return std::chrono::milliseconds(
         std::uniform_int_distribution< std::uint64_t >( whole - whole / 2, whole )( random_ ) );
}

} // namespace Vok::Store
