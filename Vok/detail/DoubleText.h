// The shortest decimal of a double.
#pragma once

#include <cstddef>

namespace Vok::Detail {

/// Room that `putDouble` needs: it writes more than it returns.
inline constexpr std::size_t doubleRoom = 64;

/// Writes what std::to_chars does: the fewest digits that read back as the number, of those the
/// nearest ones to it, with an exponent where that is shorter. Returns the end.
char * putDouble( char * to, double number ) noexcept;

} // namespace Vok::Detail
