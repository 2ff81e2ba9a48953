// Two lists in the order of time make each timer a look at their fronts.
#include "tools/flowtrack-platform/flows/FlowTable.h"

#include <algorithm>
#include <utility>

namespace FlowtrackPlatform {

namespace {

constexpr std::uint8_t tcp = 6;
constexpr std::uint8_t fin = 1;
constexpr std::uint8_t rst = 4;

std::string keyIn( std::size_t group, std::string_view key )
{
   std::string whole( reinterpret_cast< const char * >( &group ), sizeof group );
   whole.append( key );
   return whole;
}

} // namespace

FlowTable::Entries::iterator FlowTable::make(
      std::size_t group, std::string key, const Packet & packet )
{
   const auto entry =
         idle_.insert( idle_.end(), Entry{ std::move( key ), group, {}, now_, now_, {} } );
   entry->flow.first = packet;
   entry->report = reports_.insert( reports_.end(), entry );
   flows_.emplace( entry->key, entry );
   return entry;
}

bool FlowTable::add( std::size_t group, std::string_view key, const Packet & packet )
{
   tick( packet.time );
   std::string whole = keyIn( group, key );
   const auto found = flows_.find( whole );
   if ( found == flows_.end() && flows_.size() >= limits_.flows ) {
      return false;
   }
   const auto entry =
         found == flows_.end() ? make( group, std::move( whole ), packet ) : found->second;
   count( *entry, packet );
   if ( limits_.tcpEnds && packet.protocol == tcp && ( packet.tcpFlags & ( fin | rst ) ) != 0 ) {
      drop( entry, EndReason::ended );
   } else {
      idle_.splice( idle_.end(), idle_, entry );
   }
   return true;
}

void FlowTable::count( Entry & entry, const Packet & packet )
{
   Flow & flow = entry.flow;
   if ( flow.packets == 0 ) {
      flow.start = now_;
      flow.shortest = flow.longest = packet.octets;
      flow.lowestTtl = flow.highestTtl = packet.ttl;
   }
   ++flow.packets;
   flow.octets += packet.octets;
   flow.end = entry.seen = now_;
   flow.tcpFlags |= packet.tcpFlags;
   flow.shortest = std::min( flow.shortest, packet.octets );
   flow.longest = std::max( flow.longest, packet.octets );
   flow.lowestTtl = std::min( flow.lowestTtl, packet.ttl );
   flow.highestTtl = std::max( flow.highestTtl, packet.ttl );
}

/// What was counted is told, and counting begins anew.
void FlowTable::report( Entry & entry, EndReason reason )
{
   if ( entry.flow.packets != 0 ) {
      entry.flow.reason = reason;
      report_( entry.group, entry.flow );
   }
   Flow next;
   next.first = entry.flow.first;
   entry.flow = next;
}

void FlowTable::drop( Entries::iterator entry, EndReason reason )
{
   report( *entry, reason );
   flows_.erase( entry->key );
   reports_.erase( entry->report );
   idle_.erase( entry );
}

void FlowTable::tick( Time now )
{
   now_ = std::max( now_, now );
   while ( !idle_.empty() && now_ - idle_.front().seen >= limits_.inactive ) {
      drop( idle_.begin(), EndReason::idle );
   }
   while ( limits_.active != 0 && !reports_.empty() &&
         now_ - reports_.front()->since >= limits_.active ) {
      Entry & entry = *reports_.front();
      report( entry, EndReason::active );
      entry.since = now_;
      reports_.splice( reports_.end(), reports_, reports_.begin() );
   }
}

void FlowTable::flush( EndReason reason )
{
   while ( !idle_.empty() ) {
      drop( idle_.begin(), reason );
   }
}

} // namespace FlowtrackPlatform
