// Exporters as a client writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;
using Wyre::DscpValue;
using Wyre::HostAndPort;

TEST( ExporterConfigTest, aFreshExporterHasItsDefaults )
{
   const auto exporter = exporterConfigFactory( "e" );
   EXPECT_EQ( exporter->name(), "e" );
   EXPECT_TRUE( exporter->localIntfName().empty() );
   EXPECT_EQ( exporter->ipfixMtu(), IpfixMtu( 9152 ) );
   EXPECT_EQ( exporter->dscpValue(), DscpValue( 0 ) );
   EXPECT_EQ( exporter->ipfixVersion(), IpfixVersion( 10 ) );
   EXPECT_EQ( exporter->templateInterval(), TemplateInterval( 3600000 ) );
   EXPECT_FALSE( exporter->useSflowCollectorConfig() );
   EXPECT_EQ( exporter->exportFormat(), formatDefault );
   EXPECT_TRUE( exporter->collectorHostAndPort().empty() );
   EXPECT_EQ( ExporterConfig::ExporterConfigIs( "f" )->name(), "f" );
}

TEST( ExporterConfigTest, aHostIsOneCollectorWithTheLaterPort )
{
   const auto exporter = exporterConfigFactory( "e" );
   Recorder recorder( *exporter );
   exporter->collectorHostAndPortIs( HostAndPort( "collector", 4739 ) );
   exporter->collectorHostAndPortIs( HostAndPort( "collector", 4739 ) );
   EXPECT_EQ( recorder.take(), Heard{ "265[collector]" } );
   exporter->collectorHostAndPortIs( HostAndPort( "collector", 2055 ) );
   EXPECT_EQ( recorder.take(),
         Heard{ "265[collector] was Wyre::HostAndPort[hostname=collector,port=4739]" } );
   EXPECT_EQ( exporter->collectorHostAndPort().size(), 1U );
   EXPECT_EQ( exporter->collectorHostAndPort( "collector" ).port(), 2055 );
   EXPECT_EQ( exporter->collectorHostAndPort( "another" ), HostAndPort() );
   EXPECT_EQ( exporter->collectorHostAndPortDel( "another" ), HostAndPort() );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( exporter->collectorHostAndPortDel( "collector" ), HostAndPort( "collector", 2055 ) );
   EXPECT_EQ( recorder.take().size(), 1U );
}

TEST( ExporterConfigTest, codePointsReachTo63 )
{
   const auto exporter = exporterConfigFactory( "e" );
   exporter->dscpValueIs( DscpValue( 63 ) );
   Recorder recorder( *exporter );
   try {
      exporter->dscpValueIs( DscpValue( 64 ) );
      ADD_FAILURE() << "64 was taken";
   } catch ( const Corvo::RangeException & e ) {
      EXPECT_EQ( std::string( e.what() ),
            "FlowTracking::ExporterConfig::dscpValue < Wyre::DscpValue::min or > "
            "Wyre::DscpValue::max not allowed" );
   }
   EXPECT_EQ( exporter->dscpValue(), DscpValue( 63 ) );
   EXPECT_EQ( recorder.take(), Heard{} );
}

} // namespace
