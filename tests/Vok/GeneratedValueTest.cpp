// Generated value types: what is checked where they are built, set and read.
#include "Vok/Exceptions.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/Strep.h"
#include "Vok/TypeData.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using ::Test::Narrow;
using ::Test::Span;
using ::Test::Wider;

const std::string countMessage =
      "Test::Wider::count < Test::Wider::least or > Test::Wider::most not allowed";
const std::string smallMessage = "Test::Wider::small < 0 or > 200 not allowed";

/// The message of the Corvo::RangeException that a call throws.
template< class Call > std::string refusalOf( Call call )
{
   try {
      call();
   } catch ( const Corvo::RangeException & e ) {
      return e.what();
   }
   return "none";
}

const Vok::TypeData & record( std::string_view name )
{
   return *Corvo::ModuleInspectData::findType( name );
}

// 65537 would be 1 and 256 would be 0, were they narrowed before they are checked.
TEST( WiderNumbers, areCheckedBeforeTheyAreNarrowed )
{
   EXPECT_EQ( refusalOf( [] { Wider( 65537, 0 ); } ), countMessage );
   EXPECT_EQ( refusalOf( [] { Wider( 1, 256 ); } ), smallMessage );
   EXPECT_EQ( refusalOf( [] { Corvo::strepToValue< Wider >(
                                    "Test::Wider[count=65537,small=0]" ); } ),
         "attribute count: " + countMessage );

   Wider wider( 40000, 200 );
   EXPECT_EQ( refusalOf( [ & ] { wider.countIs( 65537 ); } ), countMessage );
   EXPECT_EQ( refusalOf( [ & ] { wider.countIs( 0 ); } ), countMessage );
   EXPECT_EQ( refusalOf( [ & ] { wider.smallIs( 4294967296 ); } ), smallMessage );
   EXPECT_EQ( wider, Wider( 40000, 200 ) );
   wider.countIs( 7 );
   wider.smallIs( 9 );
   EXPECT_EQ( wider.count(), 7 );
   EXPECT_EQ( wider.small(), 9 );
}

TEST( WiderNumbers, areCheckedAlikeByReflection )
{
   const Vok::TypeData & type = record( "Test::Wider" );
   Wider wider( 40000, 200 );
   const auto set = [ & ]( std::string_view field, std::string_view text ) {
      return refusalOf( [ & ] { type.fieldSet( &wider, field, text ); } );
   };
   EXPECT_EQ( set( "count", "65537" ), countMessage );
   EXPECT_EQ( set( "count", "0" ), countMessage );
   EXPECT_EQ( set( "small", "18446744073709551615" ), smallMessage );
   EXPECT_THROW( type.fieldSet( &wider, "count", "4294967296" ), Corvo::ParseException );
   EXPECT_EQ( wider, Wider( 40000, 200 ) );
   EXPECT_EQ( set( "count", "7" ), "none" );
   EXPECT_EQ( type.fieldGet( &wider, "count" ), "7" );

   EXPECT_EQ( refusalOf( [ & ] { type.make( { "65537", "0" } ); } ), countMessage );
   const Vok::Value made = type.make( { "3", "4" } );
   EXPECT_EQ( *static_cast< const Wider * >( made.data() ), Wider( 3, 4 ) );
}

// What has no mutator is checked as its constructor does.
TEST( FixedValues, areCheckedWhereReflectionMakesThem )
{
   EXPECT_EQ( refusalOf( [] { record( "Test::Narrow" ).make( { "255" } ); } ),
         "Test::Narrow::value < Test::Narrow::min or > Test::Narrow::max not allowed" );
   EXPECT_EQ( refusalOf( [] { record( "Test::Label" ).make( { "123456789012345678901" } ); } ),
         "Test::Label::bytes > maxLength() not allowed" );
   Narrow narrow;
   EXPECT_THROW( record( "Test::Narrow" ).fieldSet( &narrow, "value", "300" ),
         std::invalid_argument );
}

// What only constructors written by hand can make.
TEST( ValuesWithoutFieldConstructor, areMadeByNothingElse )
{
   EXPECT_EQ( refusalOf( [] { Span( 2, 1 ); } ),
         "Test::Span::last < Test::Span::first not allowed" );

   const Vok::TypeData & type = record( "Test::Span" );
   EXPECT_EQ( *static_cast< const Span * >( type.make().data() ), Span() );
   try {
      type.make( { "1", "2" } );
      ADD_FAILURE() << "it was made";
   } catch ( const Corvo::ConstructorArgsException & e ) {
      EXPECT_STREQ( e.what(), "Test::Span is not made from its fields" );
   }
   EXPECT_THROW( type.make( { "1" } ), Corvo::ConstructorArgsException );
   Span span( 1, 2 );
   EXPECT_THROW( type.fieldSet( &span, "first", "3" ), std::invalid_argument );
   EXPECT_EQ( span, Span( "1-2" ) );
   EXPECT_EQ( refusalOf( [] { Corvo::strepToValue< Span >( "2-1" ); } ),
         "Test::Span::last < Test::Span::first not allowed" );
}

} // namespace
