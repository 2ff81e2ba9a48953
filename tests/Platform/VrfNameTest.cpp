// L3::VrfName, a text of at most 100 bytes.
#include "L3/VrfName.h"

#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using L3::VrfName;
using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectText;
using PlatformTest::messageOf;

constexpr const char * tooLong = "Vok::String::bytes > maxLength() not allowed";

TEST( VrfNameTest, IsBuiltFromTextsOfEachKind )
{
   EXPECT_EQ( VrfName().stringValue(), "" );
   EXPECT_EQ( VrfName( "mgmt" ).stringValue(), "mgmt" );
   EXPECT_EQ( VrfName( std::string( "mgmt" ) ), VrfName( "mgmt" ) );
   EXPECT_EQ( VrfName( Corvo::String( "mgmt" ) ), VrfName( "mgmt" ) );
   expectAscending< VrfName >( { VrfName(), VrfName( "a" ), VrfName( "aa" ), VrfName( "b" ) } );
}

TEST( VrfNameTest, TextAndLog )
{
   expectText( VrfName(), "\"\"" );
   expectText( VrfName( "mgmt" ), "mgmt" );
   expectLog( VrfName( "mgmt" ), "000000046d676d74" );
}

TEST( VrfNameTest, Holds100BytesAndNoMore )
{
   static_assert( VrfName::maxLength() == 100 );
   const std::string longest( 100, 'v' );
   EXPECT_EQ( VrfName( longest ).stringValue(), longest );
   expectText( VrfName( longest ), longest );

   const std::string longer( 101, 'v' );
   EXPECT_EQ( messageOf< Corvo::RangeException >( [ & ] { VrfName{ longer }; } ), tooLong );
   EXPECT_EQ( messageOf< Corvo::RangeException >(
                    [ & ] { Corvo::strepToValue< VrfName >( longer ); } ),
         tooLong );
   Vok::NboAttrLog::Out log;
   log.putString( longer );
   Vok::NboAttrLog::In in( log.data(), log.size() );
   EXPECT_EQ( messageOf< Corvo::RangeException >( [ & ] { VrfName{ &in }; } ), tooLong );
}

} // namespace
