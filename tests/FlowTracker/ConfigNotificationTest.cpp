// Changes of a configuration as a notifiee reads them: keys and old values as their own types.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace FlowTracking;
using Corvo::Change;
using TestSupport::Recorder;

/// Does something with one change of an entity, of which there must be exactly one.
void expectOne( const Vok::Entity & entity, const std::function< void() > & cause,
      const std::function< void( const Change & ) > & check )
{
   Recorder recorder( entity );
   recorder.then = check;
   cause();
   EXPECT_EQ( recorder.take().size(), 1U );
}

template< class K > void expectKey( const Change & change, const K & expected )
{
   ASSERT_NE( change.key< K >(), nullptr );
   EXPECT_EQ( *change.key< K >(), expected );
   EXPECT_TRUE( change.hasKey() );
}

template< class V > void expectOld( const Change & change, const V & expected )
{
   ASSERT_NE( change.oldValue< V >(), nullptr );
   EXPECT_EQ( *change.oldValue< V >(), expected );
   EXPECT_TRUE( change.hasOldValue() );
}

TEST( ConfigNotificationTest, childrenByName )
{
   const auto config = configFactory( "sampled" );
   expectOne(
         *config, [ & ] { config->flowTrackerConfigIs( "t" ); },
         []( const Change & change ) {
            EXPECT_EQ( change.attrId, Config::flowTrackerConfigAttrId );
            expectKey( change, Corvo::String( "t" ) );
            EXPECT_FALSE( change.hasOldValue() );
         } );
   const auto tracker = config->flowTrackerConfig( "t" );
   expectOne(
         *config, [ & ] { config->flowTrackerConfigDel( "t" ); },
         [ & ]( const Change & change ) {
            expectKey( change, Corvo::String( "t" ) );
            expectOld( change, Corvo::Ptr< FlowTracking::FlowTrackerConfig >( tracker ) );
            EXPECT_EQ( config->flowTrackerConfig( "t" ), nullptr );
         } );
}

TEST( ConfigNotificationTest, childrenByInterface )
{
   const auto configs = flowTrackerIntfConfigsFactory( "bindings" );
   const Wyre::IntfId port( "Ethernet3/1" );
   expectOne(
         *configs, [ & ] { configs->flowTrackerEgressIntfConfigIs( port, "t", sampleModeAll ); },
         [ & ]( const Change & change ) {
            EXPECT_EQ( change.attrId, FlowTrackerIntfConfigs::flowTrackerEgressIntfConfigAttrId );
            expectKey( change, port );
            EXPECT_EQ( change.key< Corvo::String >(), nullptr );
         } );
   const auto binding = configs->flowTrackerEgressIntfConfig( port );
   expectOne(
         *configs, [ & ] { configs->flowTrackerEgressIntfConfigDel( port ); },
         [ & ]( const Change & change ) {
            expectOld( change, Corvo::Ptr< FlowTrackerIntfConfig >( binding ) );
         } );
}

TEST( ConfigNotificationTest, aSingleChild )
{
   const auto tracker = flowTrackerConfigFactory( "t" );
   const auto first = tracker->congestionConfigIs( "a" );
   expectOne(
         *tracker, [ & ] { tracker->congestionConfigIs( "b" ); },
         [ & ]( const Change & change ) {
            EXPECT_EQ( change.attrId, FlowTracking::FlowTrackerConfig::congestionConfigAttrId );
            EXPECT_FALSE( change.hasKey() );
            expectOld( change, Corvo::Ptr< CongestionConfig >( first ) );
         } );
}

TEST( ConfigNotificationTest, valuesByAKeyOfTheirOwn )
{
   const auto config = configFactory( "sampled" );
   const Ipfix::TemplateId id( 300 );
   TemplateConfig before( id );
   before.fieldIs( 1, FieldSpecifierConfig( 8, 0 ) );
   config->templateConfigIs( before );
   expectOne(
         *config, [ & ] { config->templateConfigIs( TemplateConfig( id ) ); },
         [ & ]( const Change & change ) {
            expectKey( change, id );
            expectOld( change, before );
         } );
   const auto exporter = exporterConfigFactory( "e" );
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "collector", 4739 ) );
   expectOne(
         *exporter, [ & ] { exporter->collectorHostAndPortDel( "collector" ); },
         []( const Change & change ) {
            expectKey( change, Corvo::String( "collector" ) );
            expectOld( change, Wyre::HostAndPort( "collector", 4739 ) );
         } );
}

TEST( ConfigNotificationTest, setsHaveTheElementAsKeyAndNoOldValue )
{
   const auto config = configFactory( "sampled" );
   expectOne(
         *config, [ & ] { config->encapIs( encapMpls ); },
         []( const Change & change ) { expectKey( change, EncapType::encapMpls ); } );
   expectOne(
         *config, [ & ] { config->encapDel( encapMpls ); },
         []( const Change & change ) {
            expectKey( change, EncapType::encapMpls );
            EXPECT_FALSE( change.hasOldValue() );
         } );
   expectOne(
         *config, [ & ] { config->filterIs( filterRpf ); },
         []( const Change & change ) { expectKey( change, FilterType::filterRpf ); } );
   expectOne(
         *config, [ & ] { config->ignorableRocev2QpIdIs( 77 ); },
         []( const Change & change ) { expectKey( change, std::uint32_t( 77 ) ); } );
   const auto tracker = flowTrackerConfigFactory( "t" );
   expectOne(
         *tracker, [ & ] { tracker->monitoredCpuQueueIs( "CoppSystemIpUcast" ); },
         []( const Change & change ) {
            expectKey( change, Corvo::String( "CoppSystemIpUcast" ) );
         } );
}

TEST( ConfigNotificationTest, plainAndOptionalValues )
{
   const auto config = configFactory( "sampled" );
   expectOne(
         *config, [ & ] { config->sampleRateIs( SampleRate( 16384 ) ); },
         []( const Change & change ) { expectOld( change, SampleRate( 1048576 ) ); } );
   expectOne(
         *config, [ & ] { config->bgpExportIs( false ); },
         []( const Change & change ) { expectOld( change, true ); } );
   expectOne(
         *config, [ & ] { config->trapSuppressionIs( true ); },
         []( const Change & change ) { expectOld( change, Vok::Optional< bool >() ); } );
   expectOne(
         *config, [ & ] { config->sampleSizeIs( SampleSize( 128 ) ); },
         []( const Change & change ) { expectOld( change, Vok::Optional< SampleSize >() ); } );
   expectOne(
         *config, [ & ] { config->sftAgentCountIs( 8 ); },
         []( const Change & change ) { expectOld( change, std::uint8_t( 1 ) ); } );
}

} // namespace
