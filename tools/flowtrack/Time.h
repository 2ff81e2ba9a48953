// Clock times as texts.
#pragma once

#include <chrono>
#include <string>

namespace Flowtrack {

/// `2026-11-22T02:27:13.123Z`, of a time since 1970.
std::string timeText( std::chrono::milliseconds time );

/// The time now.
std::chrono::milliseconds now();

} // namespace Flowtrack
