// Exporters and local collectors of the hardware configuration as a client writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace HwFlowTracking;
using FlowTracking::IpfixMtu;
using TestSupport::Heard;
using TestSupport::Recorder;
using Wyre::Ip6Addr;
using Wyre::Ip6AndPort;
using Wyre::IpAddr;
using Wyre::IpAndPort;

TEST( HwExporterTest, aFreshExporterHasItsDefaults )
{
   const auto exporter = exporterConfigFactory( "e" );
   EXPECT_EQ( exporter->name(), "e" );
   EXPECT_TRUE( exporter->vrfName().stringValue().empty() );
   EXPECT_TRUE( exporter->localIntfName().empty() );
   EXPECT_EQ( exporter->ipfixMtu(), IpfixMtu( 9152 ) );
   EXPECT_EQ( exporter->ipfixMaxMsgSize(), 9104U );
   static_assert( ExporterConfig::ip6HdrSize() == 40 && ExporterConfig::udpHdrLen() == 8 );
   EXPECT_EQ( exporter->dscpValue().value(), 0 );
   EXPECT_EQ( exporter->ipfixVersion().value(), 10 );
   EXPECT_EQ( exporter->templateInterval().value(), 3600000U );
   EXPECT_EQ( exporter->srcIpAddr().stringValue(), "0.0.0.0" );
   EXPECT_EQ( exporter->srcIp6Addr().stringValue(), "::" );
   EXPECT_FALSE( exporter->exporter4Resolved() || exporter->exporter6Resolved() ||
         exporter->exporter4Ready() || exporter->exporter6Ready() ||
         exporter->useSflowCollectorConfig() );
   EXPECT_TRUE( exporter->collectorIpAndPort().empty() );
   EXPECT_TRUE( exporter->collectorIp6AndPort().empty() );
   EXPECT_EQ( exporter->rxPort4() + exporter->rxPort6(), 0 );
   EXPECT_EQ( exporter->exportFormat(), FlowTracking::formatDefault );
   EXPECT_EQ( exporter->templateExportReq(), 0U );
}

TEST( HwExporterTest, theLargestMessageFollowsTheMtuWithoutANotificationOfItsOwn )
{
   const auto exporter = exporterConfigFactory( "e" );
   Recorder recorder( *exporter );
   exporter->ipfixMtuIs( IpfixMtu( 1500 ) );
   EXPECT_EQ( exporter->ipfixMaxMsgSize(), 1452U );
   EXPECT_EQ( recorder.take(), Heard{ "260 was 9152" } );
   exporter->ipfixMtuIs( IpfixMtu( 512 ) );
   EXPECT_EQ( exporter->ipfixMaxMsgSize(), 464U );
   exporter->ipfixMtuIs( IpfixMtu( 65472 ) );
   const Vok::AttributeData & size = *exporter->typeData().attribute( "ipfixMaxMsgSize" );
   EXPECT_EQ( size.get( *exporter ), "65424" );
   EXPECT_THROW( IpfixMtu( 511 ), Corvo::RangeException );
}

TEST( HwExporterTest, theSameCollectorTwiceIsHeardOnce )
{
   const auto exporter = exporterConfigFactory( "e" );
   Recorder recorder( *exporter );
   const IpAndPort first( IpAddr( "10.0.0.1" ), 4739 );
   exporter->collectorIpAndPortIs( "collector", first );
   exporter->collectorIpAndPortIs( "collector", first );
   EXPECT_EQ( recorder.take(), Heard{ "269[collector]" } );
   exporter->collectorIpAndPortIs( "collector", IpAndPort( IpAddr( "10.0.0.1" ), 2055 ) );
   EXPECT_EQ( recorder.take(),
         Heard{ "269[collector] was Wyre::IpAndPort[ip=10.0.0.1,port=4739]" } );
   EXPECT_EQ( exporter->collectorIpAndPort( "collector" ).port(), 2055 );
   EXPECT_EQ( exporter->collectorIpAndPort( "another" ), IpAndPort() );
   EXPECT_EQ( exporter->collectorIpAndPortDel( "another" ), IpAndPort() );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( HwExporterTest, collectorsOfBothFamiliesAreKeptApart )
{
   const auto exporter = exporterConfigFactory( "e" );
   const Ip6AndPort sixth( Ip6Addr( "fd00::1" ), 4739 );
   Recorder recorder( *exporter );
   exporter->collectorIp6AndPortIs( "collector", sixth );
   exporter->collectorIp6AndPortIs( "collector", sixth );
   EXPECT_EQ( recorder.take(), Heard{ "270[collector]" } );
   EXPECT_TRUE( exporter->collectorIpAndPort().empty() );
   EXPECT_EQ( exporter->collectorIp6AndPort( "collector" ), sixth );
   EXPECT_EQ( exporter->collectorIp6AndPortDel( "collector" ), sixth );
   EXPECT_EQ( exporter->collectorIp6AndPort( "collector" ), Ip6AndPort() );
}

TEST( HwExporterTest, requestsForTemplatesWrapAroundAndStandStillForNought )
{
   const auto exporter = exporterConfigFactory( "e" );
   Recorder recorder( *exporter );
   EXPECT_EQ( exporter->templateExportReqInc( 0 ), 0U );
   EXPECT_EQ( recorder.take(), Heard{} );
   exporter->templateExportReqIs( 4294967295 );
   EXPECT_EQ( exporter->templateExportReqInc( 1 ), 0U );
   EXPECT_EQ( recorder.take(), ( Heard{ "279 was 0", "279 was 4294967295" } ) );
}

TEST( HwExporterTest, aVrfOfMoreThan100BytesIsRefused )
{
   const auto exporter = exporterConfigFactory( "e" );
   exporter->vrfNameIs( L3::VrfName( std::string( 100, 'v' ) ) );
   Recorder recorder( *exporter );
   try {
      exporter->vrfNameIs( L3::VrfName( std::string( 101, 'v' ) ) );
      ADD_FAILURE() << "101 bytes were taken";
   } catch ( const Corvo::RangeException & e ) {
      EXPECT_EQ( std::string( e.what() ), "Vok::String::bytes > maxLength() not allowed" );
   }
   EXPECT_EQ( exporter->vrfName().stringValue().size(), 100U );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( HwExporterTest, aFreshOneLikeItHasItsNameAndNothingElse )
{
   const auto exporter = exporterConfigFactory( "e" );
   exporter->rxPort4Is( 4739 );
   const auto fresh = exporter->instantiate();
   EXPECT_NE( fresh, exporter );
   EXPECT_EQ( fresh->name(), "e" );
   EXPECT_EQ( fresh->rxPort4(), 0 );
   EXPECT_EQ( fresh->parent(), nullptr );
}

TEST( HwExporterTest, aFreshLocalCollectorHasItsDefaults )
{
   const auto local = localCollectorConfigFactory( "l" );
   EXPECT_EQ( local->name(), "l" );
   EXPECT_TRUE( local->expName().empty() );
   EXPECT_TRUE( local->vrfName().stringValue().empty() );
   EXPECT_EQ( local->srcIp().family(), Wyre::AddressFamily::ipunknown );
   EXPECT_EQ( local->destIp().family(), Wyre::AddressFamily::ipunknown );
   EXPECT_EQ( local->srcPort() + local->destPort(), 0 );
   EXPECT_EQ( local->dscpValue().value(), 0 );
   EXPECT_FALSE( local->exporterReady() );
}

TEST( HwExporterTest, aLocalCollectorTakesAddressesOfEitherFamily )
{
   const auto local = localCollectorConfigFactory( "l" );
   Recorder recorder( *local );
   local->srcIpIs( Wyre::IpGenAddr( "10.0.0.1" ) );
   local->srcIpIs( Wyre::IpGenAddr( IpAddr( "10.0.0.1" ) ) );
   local->destIpIs( Wyre::IpGenAddr() );
   EXPECT_EQ( recorder.take(), Heard{ R"(260 was "")" } );
   local->srcIpIs( Wyre::IpGenAddr( "fd00::1" ) );
   EXPECT_EQ( recorder.take(), Heard{ "260 was 10.0.0.1" } );
}

} // namespace
