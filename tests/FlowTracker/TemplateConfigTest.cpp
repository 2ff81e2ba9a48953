// IPFIX templates: an ordered collection inside a value.
#include "tests/support/NumberTable.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <concepts>
#include <csignal>
#include <string>
#include <vector>

namespace {

using FlowTracking::FieldSpecifierConfig;
using FlowTracking::TemplateConfig;
using Ipfix::TemplateId;

TemplateConfig example()
{
   TemplateConfig config( TemplateId( 300 ) );
   for ( const std::uint32_t position : { 5U, 1U, 3U } ) {
      config.fieldIs( position, FieldSpecifierConfig( position * 10, 0 ) );
   }
   return config;
}

TEST( TemplateConfigTest, isAsItsTableSays )
{
   const Vok::TypeData & type =
         *Corvo::ModuleInspectData::findType( "FlowTracking::TemplateConfig" );
   ASSERT_EQ( type.attributes().size(), 2U );
   EXPECT_EQ( type.attributes()[ 0 ].id(), 2U );
   EXPECT_EQ( type.attributes()[ 0 ].name(), "templateId" );
   EXPECT_FALSE( type.attributes()[ 0 ].settable() );
   const Vok::AttributeData & field = type.attributes()[ 1 ];
   EXPECT_EQ( field.id(), 3U );
   EXPECT_EQ( field.name(), "field" );
   EXPECT_EQ( field.kind(), Vok::AttributeKind::map );
   EXPECT_EQ( field.keyTypeName(), "u32" );
   EXPECT_EQ( field.typeName(), "FlowTracking::FieldSpecifierConfig" );
   EXPECT_TRUE( field.ordered() );
   EXPECT_THROW( type.hash( type.make().data() ), Corvo::NotHashableException );
   EXPECT_EQ( TemplateConfig().templateId(), TemplateId( 65535 ) );
   static_assert( !std::convertible_to< TemplateId, TemplateConfig > );
}

TEST( TemplateConfigTest, fieldsIterateInTheOrderOfTheirPositions )
{
   const TemplateConfig config = example();
   std::vector< std::uint32_t > positions;
   for ( const auto & [ position, field ] : config.field() ) {
      positions.push_back( position );
      EXPECT_EQ( field.elementId(), position * 10 );
   }
   EXPECT_EQ( positions, ( std::vector< std::uint32_t >{ 1, 3, 5 } ) );
}

TEST( TemplateConfigTest, anAbsentFieldReadsAsTheDefault )
{
   TemplateConfig config( TemplateId( 300 ) );
   EXPECT_EQ( config.field( 1 ), FieldSpecifierConfig( 1, 0 ) );
   EXPECT_EQ( config.fieldGet( 1 ), FieldSpecifierConfig() );
   EXPECT_EQ( config.fieldDel( 1 ), FieldSpecifierConfig() );
   config.fieldIs( 1, FieldSpecifierConfig( 8, 9 ) );
   EXPECT_EQ( config.fieldGet( 1 ), FieldSpecifierConfig( 8, 9 ) );
   config.fieldIs( 1, FieldSpecifierConfig( 8, 10 ) );
   EXPECT_EQ( config.field().size(), 1U );
   EXPECT_EQ( config.fieldDel( 1 ), FieldSpecifierConfig( 8, 10 ) );
   EXPECT_TRUE( config.field().empty() );
   TemplateConfig full = example();
   full.fieldDelAll();
   EXPECT_EQ( full, config );
}

TEST( TemplateConfigTest, equalityIsTheIdAndAllFields )
{
   EXPECT_EQ( example(), example() );
   TemplateConfig other = example();
   other.fieldIs( 5, FieldSpecifierConfig( 50, 1 ) );
   EXPECT_NE( example(), other );
   other = example();
   other.fieldDel( 5 );
   other.fieldIs( 6, FieldSpecifierConfig( 50, 0 ) );
   EXPECT_NE( example(), other );
   EXPECT_NE( TemplateConfig( TemplateId( 300 ) ), TemplateConfig( TemplateId( 301 ) ) );
}

TEST( TemplateConfigTest, copiesAreApart )
{
   const TemplateConfig config = example();
   TemplateConfig copy = config;
   copy.fieldDelAll();
   EXPECT_EQ( config.field().size(), 3U );
   copy = config;
   copy.fieldDel( 1 );
   EXPECT_EQ( config, example() );
}

TEST( TemplateConfigTest, logRoundTrip )
{
   Vok::NboAttrLog::Out out;
   out << example();
   EXPECT_EQ( attrLogSize( example() ), out.size() );
   EXPECT_EQ( TestSupport::hexOf( out ).substr( 0, 4 ), "012c" );
   Vok::NboAttrLog::In in( out.data(), out.size() );
   EXPECT_EQ( TemplateConfig( &in ), example() );
   EXPECT_EQ( in.remaining(), 0U );
}

TEST( TemplateConfigTest, itsTextIsPrintedThroughReflection )
{
   const TemplateConfig config = example();
   EXPECT_EQ( Corvo::valueToStrep( config ),
         "FlowTracking::TemplateConfig[templateId=300,field=["
         "1=FlowTracking::FieldSpecifierConfig[elementId=10,enterpriseNum=0],"
         "3=FlowTracking::FieldSpecifierConfig[elementId=30,enterpriseNum=0],"
         "5=FlowTracking::FieldSpecifierConfig[elementId=50,enterpriseNum=0]]]" );
}

TEST( TemplateConfigDeathTest, thereIsNoTextToReadItFrom )
{
   const auto read = [] {
      Vok::CharRange range( "FlowTracking::TemplateConfig[templateId=300,field=[]]" );
      TemplateConfig{ range };
   };
   EXPECT_EXIT( read(), testing::KilledBySignal( SIGABRT ),
         "No String constructor for TemplateConfig - has collection" );
}

} // namespace
