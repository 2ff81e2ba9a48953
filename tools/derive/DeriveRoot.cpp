// The root: sampling, offload to hardware, export, the packet buffer.
#include "tools/derive/DeriveRoot.h"

#include <algorithm>

namespace Derive {

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

void deriveSampling( const Sources & from, Hw::Config & to )
{
   const Ft::Config & config = *from.config;
   to.sampleRateIs( config.sampleRate().value() );
   const auto limit = config.sampleLimit();
   to.sampleLimitIs(
         limit ? limit->value() : from.capabilities->defaultSampleLimit().value_or( 0 ) );
   to.sampleSizeIs( config.sampleSize().value_or( Ft::SampleSize() ) );
   to.encapFlagsIs( encapFlags( config.encap() ) );
   Ft::FilterTypes filters;
   filters.rpfIs( config.filter( Ft::FilterType::filterRpf ) );
   to.filterTypesIs( filters );
   to.trapSuppressionIs( config.trapSuppression().value_or(
         from.capabilities->modDefaultTrapSuppression().value_or( false ) ) );
}

/// When something started that is on now: once it is on, the time stays.
Corvo::Duration startTime( bool on, const Corvo::Duration & before, const Sources & from )
{
   if ( !on ) {
      return Corvo::Duration::infinity();
   }
   return before == Corvo::Duration::infinity() ? from.now() : before;
}

void deriveOffload( const Sources & from, Hw::Config & to )
{
   const Ft::Config & config = *from.config;
   const bool several = config.sftAgentCount() > 1;
   to.hwOffloadIpv4ConflictWithMultipleInstancesIs( several && config.hwOffloadIpv4() );
   to.hwOffloadIpv6ConflictWithMultipleInstancesIs( several && config.hwOffloadIpv6() );
   to.hwOffloadIpv4Is( config.hwOffloadIpv4() && !several );
   to.hwOffloadIpv6Is( config.hwOffloadIpv6() && !several );
   to.hwOffloadIpv4Rocev2Is( config.hwOffloadRocev2() );
   to.hwOffloadIpv6Rocev2Is( config.hwOffloadRocev2() );
   to.hwOffloadIpv4StartTimeIs(
         startTime( to.hwOffloadIpv4(), to.hwOffloadIpv4StartTime(), from ) );
   to.hwOffloadIpv6StartTimeIs(
         startTime( to.hwOffloadIpv6(), to.hwOffloadIpv6StartTime(), from ) );
   // The configuration takes 0 as well, hardware does not.
   to.minSamplesBeforeHwOffloadIs( std::max(
         config.minSamplesBeforeHwOffload(), Ft::HoHeuristicsConstants::minSamplesLb() ) );
}

void deriveExport( const Ft::Config & config, Hw::Config & to )
{
   to.ipfixExportShapingDisabledIs( config.ipfixExportShapingDisabled() );
   to.ipfixExportShapingRateIs( config.ipfixExportShapingRate() );
   to.swExportIs( config.swExport() );
}

void derivePacketBuffer( const Ft::Config & config, Hw::Config & to )
{
   const Ft::SampleProbability all = config.packetBufferSampleProb();
   to.packetBufferSampleProb25Is( config.packetBufferSampleProb25().value_or( all ) );
   to.packetBufferSampleProb50Is( config.packetBufferSampleProb50().value_or( all ) );
   to.packetBufferSampleProb75Is( config.packetBufferSampleProb75().value_or( all ) );
   to.packetBufferSampleProb100Is( config.packetBufferSampleProb100().value_or( all ) );
   to.packetBufferShaperRateIs( config.packetBufferShaperRate() );
   to.packetBufferShaperBurstIs( config.packetBufferShaperBurst() );
}

} // namespace

void deriveRoot( const Sources & from, Hw::Config & to )
{
   deriveSampling( from, to );
   deriveOffload( from, to );
   deriveExport( *from.config, to );
   derivePacketBuffer( *from.config, to );
}

} // namespace Derive
