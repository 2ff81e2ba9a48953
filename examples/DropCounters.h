// The packet counters of this machine, as the kernel tells them.
#pragma once

#include <cstdint>

struct DropCounters {
   std::uint64_t drops;
   std::uint64_t packets; ///< of which those were dropped
};

/// What all network interfaces received, and what was dropped of it (/proc/net/dev). Throws
/// std::runtime_error where that cannot be read.
DropCounters interfaceDrops();

/// What UDP received, and what found a receive buffer full, which stands for a full flow table
/// (/proc/net/snmp). Throws as above.
DropCounters fullBufferDrops();
