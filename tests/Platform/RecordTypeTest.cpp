// Ipfix::RecordType, the registry of information elements.
#include "Ipfix/IpfixTypes.h"

#include "Vok/ModuleInspectData.h"
#include "Vok/TypeData.h"
#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

using Ipfix::RecordType;
using PlatformTest::expectText;

constexpr std::uint32_t last = 533;

// What the documentation of the enumeration says.
bool isMissing( std::uint32_t code )
{
   return code == 0 || ( code >= 65 && code <= 69 ) || code == 97 ||
         ( code >= 105 && code <= 127 ) || code == 416 || code == 419 || code > last;
}

const Vok::TypeData & type()
{
   const Vok::TypeData * const found = Corvo::ModuleInspectData::findType( "Ipfix::RecordType" );
   if ( !found ) {
      throw std::logic_error( "Ipfix::RecordType is not registered" );
   }
   return *found;
}

TEST( RecordTypeTest, CodesAscendAndNamesAreUnique )
{
   const auto enumerators = type().enumerators();
   EXPECT_EQ( enumerators.size(), 502u );
   std::set< std::string_view > names;
   std::uint32_t before = 0;
   for ( const auto & [ code, name ] : enumerators ) {
      EXPECT_GT( code, before ) << name;
      EXPECT_TRUE( names.insert( name ).second ) << name;
      EXPECT_FALSE( type().enumeratorDocumentation( code ).empty() ) << name;
      before = code;
   }
   EXPECT_EQ( before, last );
}

TEST( RecordTypeTest, EveryCodeAndNameLeadsToItsElement )
{
   for ( const auto & [ code, name ] : type().enumerators() ) {
      const RecordType element = Ipfix::RecordTypeInstance( code );
      EXPECT_EQ( static_cast< std::uint32_t >( element ), code );
      EXPECT_EQ( Ipfix::RecordTypeInstance( name ), element );
      EXPECT_EQ( stringValue( element ), name );
      expectText( element, name );
   }
}

TEST( RecordTypeTest, ExactlyTheDocumentedNumbersAreMissing )
{
   for ( std::uint32_t code = 0; code <= 1000; ++code ) {
      if ( isMissing( code ) ) {
         EXPECT_THROW( Ipfix::RecordTypeInstance( code ), Corvo::EnumRangeException ) << code;
      } else {
         EXPECT_NO_THROW( Ipfix::RecordTypeInstance( code ) ) << code;
      }
   }
   for ( const std::uint32_t code : { 32768u, 65535u, 65537u, 4294967295u } ) {
      EXPECT_THROW( Ipfix::RecordTypeInstance( code ), Corvo::EnumRangeException ) << code;
   }
   EXPECT_THROW( Ipfix::RecordTypeInstance( "OctetDeltaCount" ), Corvo::EnumRangeException );
   for ( const std::string_view part : { "up to number 533", "0, which is reserved",
               "65 to 69, 97 and 105 to 127", "416 and 419" } ) {
      EXPECT_NE( type().documentation().find( part ), std::string_view::npos ) << part;
   }
}

// A few of each part of the registry.
TEST( RecordTypeTest, WellKnownElements )
{
   static_assert( std::is_same_v< std::underlying_type_t< RecordType >, std::uint32_t > );
   const std::pair< RecordType, std::uint32_t > elements[] = {
      { RecordType::octetDeltaCount, 1 },
      { Ipfix::packetDeltaCount, 2 },
      { Ipfix::protocolIdentifier, 4 },
      { Ipfix::sourceTransportPort, 7 },
      { Ipfix::sourceIPv4Address, 8 },
      { Ipfix::ingressInterface, 10 },
      { Ipfix::destinationTransportPort, 11 },
      { Ipfix::destinationIPv4Address, 12 },
      { Ipfix::egressInterface, 14 },
      { Ipfix::sourceIPv6Address, 27 },
      { Ipfix::ipVersion, 60 },
      { Ipfix::forwardingStatus, 89 },
      { Ipfix::flowEndReason, 136 },
      { Ipfix::flowStartMilliseconds, 152 },
      { Ipfix::flowEndNanoseconds, 157 },
      { Ipfix::tcpWindowSize, 186 },
      { Ipfix::paddingOctets, 210 },
      { Ipfix::VRFname, 236 },
      { Ipfix::basicList, 291 },
      { Ipfix::IPSecSPI, 295 },
      { Ipfix::samplingProbability, 311 },
      { Ipfix::dataLinkFrameSection, 315 },
      { Ipfix::hashInitialiserValue, 334 },
      { Ipfix::privateEnterpriseNumber, 346 },
      { Ipfix::originalFlowsPresent, 375 },
      { Ipfix::mibObjectValueInteger, 434 },
      { Ipfix::bgpCommunity, 483 },
      { Ipfix::srhFlagsIPv6, 492 },
      { Ipfix::ipv6ExtensionHeadersFull, 515 },
      { Ipfix::udpUnsafeExIDList, 529 },
   };
   for ( const auto & [ element, code ] : elements ) {
      EXPECT_EQ( static_cast< std::uint32_t >( element ), code ) << element;
   }
}

} // namespace
