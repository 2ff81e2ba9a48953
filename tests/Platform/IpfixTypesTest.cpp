// Module IpfixTypes: template ids and templates in use.
#include "Ipfix/IpfixTypes.h"

#include "Vok/AllocTracker.h"
#include "Vok/TypeData.h"
#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace {

using Ipfix::TemplateId;
using Ipfix::TemplateStatus;
using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectText;
using PlatformTest::messageOf;

const std::string outOfBounds = "Ipfix::TemplateId::value < Ipfix::TemplateId::minTemplateId or "
                                "> Ipfix::TemplateId::maxTemplateId not allowed";

TEST( IpfixTypesTest, TemplateIds )
{
   EXPECT_EQ( TemplateId().value(), 65535 );
   EXPECT_EQ( TemplateId( 256 ).value(), 256 );
   static_assert( TemplateId::minTemplateId() == 256 && TemplateId::maxTemplateId() == 65535 );
   static_assert( std::is_same_v< decltype( TemplateId().value() ), std::uint16_t > );
   expectAscending< TemplateId >( { TemplateId( 256 ), TemplateId( 257 ), TemplateId( 65535 ) } );
   expectText( TemplateId(), "65535" );
   expectText( TemplateId( 256 ), "256" );
   expectLog( TemplateId( 256 ), "0100" );
   expectLog( TemplateId(), "ffff" );
}

TEST( IpfixTypesTest, TemplateIdsHaveBounds )
{
   for ( const std::uint32_t value : { 0u, 255u, 65536u, 65536u + 256u, 4294967295u } ) {
      EXPECT_EQ(
            messageOf< Corvo::RangeException >( [ & ] { TemplateId{ value }; } ), outOfBounds );
      const std::string text = std::to_string( value );
      EXPECT_EQ( messageOf< Corvo::RangeException >(
                       [ & ] { Corvo::strepToValue< TemplateId >( text ); } ),
            outOfBounds );
   }
   EXPECT_THROW( Corvo::strepToValue< TemplateId >( "4294967296" ), Corvo::ParseException );
   Vok::NboAttrLog::Out log;
   log.put( std::uint16_t{ 255 } );
   Vok::NboAttrLog::In in( log.data(), log.size() );
   EXPECT_EQ( messageOf< Corvo::RangeException >( [ & ] { TemplateId{ &in }; } ), outOfBounds );
}

TEST( IpfixTypesTest, ATemplateStatusIsItsTemplateId )
{
   const std::size_t before = Vok::AllocTracker::liveCount( "Ipfix::TemplateStatus" );
   {
      const Corvo::Ptr< TemplateStatus > status =
            Ipfix::templateStatusFactory( TemplateId( 300 ) );
      EXPECT_EQ( status->templateId(), TemplateId( 300 ) );
      EXPECT_EQ( status->name(), "" );
      EXPECT_EQ( status->parent(), nullptr );
      EXPECT_EQ( status->refCount(), 1u );
      EXPECT_EQ( status->typeData().name(), "Ipfix::TemplateStatus" );
      EXPECT_EQ( TemplateStatus::TemplateStatusIs( TemplateId( 301 ) )->templateId().value(), 301 );
      EXPECT_EQ( Vok::AllocTracker::liveCount( "Ipfix::TemplateStatus" ), before + 1 );
   }
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Ipfix::TemplateStatus" ), before );
}

TEST( IpfixTypesTest, ATemplateStatusByReflection )
{
   const Vok::TypeData & type = TemplateStatus::vokType();
   ASSERT_EQ( type.attributes().size(), 1u );
   const Vok::AttributeData & id = type.attributes()[ 0 ];
   EXPECT_EQ( id.name(), "templateId" );
   EXPECT_EQ( id.id(), 258u );
   EXPECT_EQ( id.id(), TemplateStatus::templateIdAttrId );
   EXPECT_EQ( id.kind(), Vok::AttributeKind::constructorArgument );
   EXPECT_EQ( id.typeName(), "Ipfix::TemplateId" );
   const Corvo::Ptr< Vok::Entity > status = type.instantiate( "", { "300" } );
   EXPECT_EQ( id.get( *status ), "300" );
   EXPECT_THROW( type.instantiate( "" ), Corvo::ConstructorArgsException );
   EXPECT_THROW( type.instantiate( "", { "300", "1" } ), Corvo::ConstructorArgsException );
}

} // namespace
