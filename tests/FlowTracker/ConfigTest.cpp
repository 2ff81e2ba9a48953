// The root of a configuration, as a client writes it.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace FlowTracking;
using Ipfix::TemplateId;
using TestSupport::Heard;
using TestSupport::Recorder;

constexpr const char * agentMessage =
      "FlowTracking::Config::sftAgentCount < 1 or > (FlowTracking::InstanceId::max + 1) "
      "not allowed";

TEST( ConfigTest, aFreshRootHasItsDefaults )
{
   const auto config = configFactory( "sampled" );
   EXPECT_EQ( config->name(), "sampled" );
   EXPECT_FALSE( config->enabled() );
   EXPECT_TRUE( config->bgpExport() );
   EXPECT_EQ( config->sftAgentCount(), 1 );
   static_assert( Config::sftAgentCountDefault() == 1 );
   EXPECT_EQ( config->sampleRate(), SampleRate( 1048576 ) );
   EXPECT_EQ( config->minSamplesBeforeHwOffload(), 1U );
   EXPECT_EQ( config->pktDropsThreshold(), PktDropsThreshold( 50 ) );
   EXPECT_EQ( config->packetBufferSampleProb(), SampleProbability( 0 ) );
   EXPECT_FALSE( config->sampleSize().has_value() || config->sampleLimit().has_value() ||
         config->trapSuppression().has_value() || config->packetBufferSampleProb25().has_value() ||
         config->packetBufferSampleProb50().has_value() ||
         config->packetBufferSampleProb75().has_value() ||
         config->packetBufferSampleProb100().has_value() );
   EXPECT_TRUE( config->flowTrackerConfig().empty() && config->templateConfig().empty() );
   EXPECT_TRUE( config->encap().empty() && config->filter().empty() &&
         config->ignorableRocev2QpId().empty() );
   EXPECT_EQ( config->routingSimCacheConfig(), RoutingSimCacheConfig( 100000, 30000, 30 ) );
   EXPECT_EQ( config->bgpSimCacheConfig(), BgpSimCacheConfig( 500000, 30 ) );
}

TEST( ConfigTest, cachesStartAsDefaultConstructedOnes )
{
   const auto config = configFactory( "sampled" );
   EXPECT_EQ( config->routingSimCacheConfig(), RoutingSimCacheConfig() );
   EXPECT_EQ( config->bgpSimCacheConfig(), BgpSimCacheConfig() );
}

TEST( ConfigTest, agentsAreOneToEight )
{
   const auto config = configFactory( "sampled" );
   Recorder recorder( *config );
   config->sftAgentCountIs( 1 );
   EXPECT_EQ( recorder.take(), Heard{} );
   const std::uint8_t beyond[] = { 0, 9, 255 };
   for ( const std::uint8_t count : beyond ) {
      try {
         config->sftAgentCountIs( count );
         ADD_FAILURE() << unsigned( count ) << " was taken";
      } catch ( const Corvo::RangeException & e ) {
         EXPECT_EQ( std::string( e.what() ), agentMessage );
      }
      EXPECT_EQ( config->sftAgentCount(), 1 );
   }
   EXPECT_EQ( recorder.take(), Heard{} );
   config->sftAgentCountIs( 8 );
   EXPECT_EQ( recorder.take(), Heard{ "261 was 1" } );
}

TEST( ConfigTest, paths )
{
   const auto config = configFactory( "sampled" );
   const struct {
      const char * function;
      Corvo::String typed;
      const char * path;
   } rows[] = {
      { "sampledFlowTrackingCliConfigPath", config->sampledFlowTrackingCliConfigPath(),
            "flowtracking/input/config/sampled/cli" },
      { "hardwareFlowTrackingCliConfigPath", config->hardwareFlowTrackingCliConfigPath(),
            "flowtracking/input/config/hardware/cli" },
      { "hardwareFlowTrackingFlowWatcherConfigPath",
            config->hardwareFlowTrackingFlowWatcherConfigPath(),
            "flowtracking/input/config/hardware/flowwatcher" },
      { "inbandTelemetryFlowTrackingCliConfigPath",
            config->inbandTelemetryFlowTrackingCliConfigPath(),
            "flowtracking/input/config/inbandTelemetry/cli" },
      { "mirrorOnDropFlowTrackingCliConfigPath", config->mirrorOnDropFlowTrackingCliConfigPath(),
            "flowtracking/input/config/mirrorOnDrop/cli" },
      { "cpuQueueFlowTrackingCliConfigPath", config->cpuQueueFlowTrackingCliConfigPath(),
            "flowtracking/input/config/cpuQueue/cli" },
      { "dfwFlowTrackingCliConfigPath", config->dfwFlowTrackingCliConfigPath(),
            "flowtracking/input/config/dfw/cli" },
   };
   for ( const auto & row : rows ) {
      EXPECT_EQ( row.typed, row.path );
      EXPECT_EQ( config->typeData().attribute( row.function )->call( *config ), row.path );
   }
}

TEST( ConfigTest, aPathIsBuiltOfTheTextAsItIs )
{
   const auto config = configFactory( "sampled" );
   EXPECT_EQ( config->flowTrackingCliConfigPath( "sampled" ),
         config->sampledFlowTrackingCliConfigPath() );
   EXPECT_EQ( config->flowTrackingCliConfigPath( "" ), "flowtracking/input/config//cli" );
   EXPECT_EQ( config->flowTrackingCliConfigPath( "/a b/" ), "flowtracking/input/config//a b//cli" );
   const Vok::AttributeData & path =
         *config->typeData().attribute( "flowTrackingCliConfigPath" );
   EXPECT_EQ( path.call( *config, { "dfw" } ), "flowtracking/input/config/dfw/cli" );
   EXPECT_THROW( path.call( *config ), Corvo::ConstructorArgsException );
}

TEST( ConfigTest, aTrackerIsMadeOnce )
{
   const auto config = configFactory( "sampled" );
   Recorder recorder( *config );
   const auto tracker = config->flowTrackerConfigIs( "t" );
   EXPECT_EQ( config->flowTrackerConfigIs( "t" ), tracker );
   EXPECT_EQ( recorder.take(), Heard{ "258[t]" } );
   EXPECT_EQ( tracker->parent(), config.get() );
   EXPECT_EQ( config->flowTrackerConfigDel( "t" ), tracker );
   EXPECT_EQ( tracker->parent(), nullptr );
   EXPECT_EQ( config->flowTrackerConfig( "t" ), nullptr );
}

TEST( ConfigTest, deletingWhatIsAbsentIsSilent )
{
   const auto config = configFactory( "sampled" );
   Recorder recorder( *config );
   EXPECT_EQ( config->flowTrackerConfigDel( "t" ), nullptr );
   EXPECT_EQ( config->templateConfigDel( TemplateId( 300 ) ), TemplateConfig() );
   config->encapDel( encapGre );
   config->filterDel( filterRpf );
   config->ignorableRocev2QpIdDel( 7 );
   config->encapDelAll();
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( ConfigTest, templatesAreKeptUnderTheirIds )
{
   const auto config = configFactory( "sampled" );
   TemplateConfig first( TemplateId( 300 ) );
   first.fieldIs( 1, FieldSpecifierConfig( 8, 0 ) );
   Recorder recorder( *config );
   config->templateConfigIs( first );
   config->templateConfigIs( first );
   EXPECT_EQ( recorder.take(), Heard{ "278[300]" } );
   TemplateConfig second( TemplateId( 300 ) );
   config->templateConfigIs( second );
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_EQ( config->templateConfig().size(), 1U );
   EXPECT_EQ( config->templateConfig( TemplateId( 300 ) ), second );
   EXPECT_EQ( config->templateConfigGet( TemplateId( 301 ) ), TemplateConfig() );
   EXPECT_EQ( config->templateConfigDel( TemplateId( 300 ) ), second );
   EXPECT_TRUE( config->templateConfig().empty() );
}

TEST( ConfigTest, unsetAndSetAreDifferentValues )
{
   const auto config = configFactory( "sampled" );
   Recorder recorder( *config );
   config->trapSuppressionIs( std::nullopt );
   EXPECT_EQ( recorder.take(), Heard{} );
   config->trapSuppressionIs( false );
   config->trapSuppressionIs( false );
   EXPECT_EQ( recorder.take(), Heard{ "277 was " } );
   config->sampleSizeIs( SampleSize( 0 ) );
   config->sampleSizeIs( std::nullopt );
   EXPECT_EQ( recorder.take(), ( Heard{ "263 was ", "263 was 0" } ) );
}

TEST( ConfigTest, deletingARootReleasesItsTrackers )
{
   auto config = configFactory( "sampled" );
   const auto tracker = config->flowTrackerConfigIs( "t" );
   config->flowTrackerConfigIs( "u" );
   const std::size_t live = Vok::AllocTracker::liveCount( "FlowTracking::FlowTrackerConfig" );
   config = nullptr;
   EXPECT_EQ( Vok::AllocTracker::liveCount( "FlowTracking::FlowTrackerConfig" ), live - 1 );
   EXPECT_EQ( tracker->parent(), nullptr );
}

TEST( ConfigTest, argumentsBeyondTheNameAreRefused )
{
   for ( const char * name : { "FlowTracking::Config", "FlowTracking::MirrorOnDropConfig" } ) {
      const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( name );
      EXPECT_EQ( type.instantiate( "root" )->name(), "root" );
      EXPECT_THROW( type.instantiate( "root", { "more" } ), Corvo::ConstructorArgsException );
   }
}

} // namespace
