// How often a program has allocated since it was started, before main as well.
#pragma once

#include <cstddef>

std::size_t allocationsSoFar();
