// What generated value types offer: constructors, accessors, mutators, comparison, hash.
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace {

using ::Test::Address;
using ::Test::Colour;
using ::Test::Flags;
using ::Test::Full;
using ::Test::Interval;
using ::Test::Label;
using ::Test::Lazy;
using ::Test::Level;
using ::Test::Limits;
using ::Test::Mode;
using ::Test::Narrow;
using ::Test::Pair;
using ::Test::Plain;
using ::Test::Recipe;
using ::Test::Shelf;

using LogIn = Vok::NboAttrLog::In;

// ---- Constructors -----------------------------------------------------------------------------

// What every value type has, and nothing implicit from a text or a log.
template< class V >
concept ValueLike = std::regular< V > && std::constructible_from< V, Vok::CharRange & > &&
      std::constructible_from< V, LogIn * > && !std::convertible_to< Vok::CharRange &, V > &&
      !std::convertible_to< LogIn *, V > && requires( const V & v, Vok::NboAttrLog::Out & out )
{
   {
      v.isEq( v )
      } -> std::same_as< bool >;
   {
      attrLogSize( v )
      } -> std::same_as< std::size_t >;
   {
      out << v
      } -> std::same_as< Vok::NboAttrLog::Out & >;
};

static_assert(
      ValueLike< Level > && ValueLike< Narrow > && ValueLike< Lazy > && ValueLike< Full > );
static_assert( ValueLike< Interval > && ValueLike< Flags > && ValueLike< Mode > );
static_assert( ValueLike< Label > && ValueLike< Pair > && ValueLike< Plain > );
static_assert( ValueLike< Recipe > && ValueLike< Shelf > && ValueLike< Address > );
static_assert( ValueLike< Vok::Seconds > && ValueLike< Corvo::Duration > );

// One field: explicit; several: in declared order, all of them.
static_assert( std::constructible_from< Level, std::uint32_t > );
static_assert( !std::convertible_to< std::uint32_t, Level > );
static_assert( !std::convertible_to< int, Full > );
static_assert( !std::convertible_to< Corvo::String, Label > );
static_assert( !std::convertible_to< Mode::Kind, Mode > );
static_assert( !std::convertible_to< double, Vok::Seconds > );
static_assert( !std::convertible_to< double, Corvo::Duration > );
static_assert( !std::constructible_from< Interval, std::uint16_t > );
static_assert( !std::constructible_from< Pair, std::uint32_t, Corvo::String > );
static_assert( !std::constructible_from< Level, std::nullptr_t > );
static_assert( !std::constructible_from< Flags, bool, bool, bool > );

TEST( ValueTest, defaults )
{
   EXPECT_EQ( Level().value(), 5U );
   EXPECT_EQ( Narrow().value(), 65535 );
   EXPECT_EQ( Lazy().value(), 300U );
   EXPECT_EQ( Full().value(), 1024 );
   EXPECT_EQ( Interval().before(), 30 );
   EXPECT_EQ( Flags().value(), 0 );
   EXPECT_EQ( Mode().kind(), Mode::unknown );
   EXPECT_EQ( Label().stringValue(), "" );
   EXPECT_EQ( Pair().id(), 0U );
   EXPECT_EQ( Pair().text(), "" );
   EXPECT_EQ( Pair().colour(), Colour::red );
   EXPECT_EQ( Pair().level(), Level( 5 ) );
   EXPECT_FALSE( Pair().on() );
   EXPECT_EQ( Pair().time().value(), 0.0 );
   EXPECT_EQ( Plain().ratio(), 0.5 );
   EXPECT_EQ( Recipe().id(), Narrow( 65535 ) );
   EXPECT_EQ( Address().high(), 0 );
   EXPECT_EQ( Vok::Seconds().value(), 0.0 );
   EXPECT_EQ( Corvo::Duration().seconds(), 0.0 );
}

TEST( ValueTest, aLiteralZeroIsANumber )
{
   EXPECT_EQ( Flags( 0 ).value(), 0 );
   EXPECT_EQ( Full( 0 ).value(), 0 );
   EXPECT_EQ( Lazy( 0 ).value(), 0U );
   EXPECT_EQ( Vok::Seconds( 0 ).value(), 0.0 );
   EXPECT_EQ( Corvo::Duration( 0 ).seconds(), 0.0 );
   EXPECT_THROW( Level( 0 ), Corvo::RangeException );
   EXPECT_THROW( Narrow( 0 ), Corvo::RangeException );
}

TEST( ValueTest, constantsAreConstantExpressions )
{
   static_assert( Level::low() == 1 && Level::top() == 10 );
   static_assert( Narrow::min() == 256 && Narrow::max() == 65535 );
   static_assert( Full::minSize() == 0 && Full::maxSize() == 65535 && Full::defaultSize() == 1024 );
   static_assert( Interval::least() == 1 && Interval::most() == 300 );
   static_assert( Flags::maskFirst() == 1 && Flags::maskSecond() == 2 );
   static_assert( Label::maxLength() == 20 );
   static_assert( Limits::nameMax() == 128 && Limits::truth() && Limits::computed() == 153 );
   static_assert( Limits::colourMax() == Colour::blue );
   static_assert( Limits::level().value() == 10 );
   static_assert( ::Test::Root::levelDefault() == 7 );
   static_assert(
         Level( 7 ).value() == 7 && Narrow( 300 ) == Narrow( 300 ) && Flags( 3 ).second() );
   EXPECT_EQ( Limits::label(), "a \"b\"\n" );
   EXPECT_EQ( Limits::twice( 21 ), 42U );
}

TEST( ValueTest, aConstantsTypeHasNoValues )
{
   static_assert( !std::is_default_constructible_v< Limits > );
   static_assert( !std::is_default_constructible_v< ::Test::Holder > );
}

// ---- Bounds -----------------------------------------------------------------------------------

std::string refusal( const std::function< void() > & attempt )
{
   try {
      attempt();
   } catch ( const Corvo::RangeException & e ) {
      return e.what();
   }
   return "";
}

TEST( ValueTest, boundsAreCheckedByConstructorsAndMutators )
{
   const char * const level =
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed";
   for ( const std::uint32_t v : { 0U, 11U, 4294967295U } ) {
      EXPECT_EQ( refusal( [ v ] { Level{ v }; } ), level );
      Level kept( 3 );
      EXPECT_EQ( refusal( [ & ] { kept.valueIs( v ); } ), level );
      EXPECT_EQ( kept.value(), 3U );
   }
   EXPECT_EQ( Level( 1 ).value(), 1U );
   EXPECT_EQ( Level( 10 ).value(), 10U );
}

TEST( ValueTest, aWiderNumberIsCheckedBeforeItIsNarrowed )
{
   const char * const narrow =
         "Test::Narrow::value < Test::Narrow::min or > Test::Narrow::max not allowed";
   for ( const std::uint32_t v : { 0U, 255U, 65536U, 65536U + 256U, 4294967295U } ) {
      EXPECT_EQ( refusal( [ v ] { Narrow{ v }; } ), narrow ) << v;
   }
   EXPECT_EQ( Narrow( 256 ).value(), 256 );
   EXPECT_EQ( Narrow( 65535 ).value(), 65535 );
}

TEST( ValueTest, fieldsThatShareTheirBounds )
{
   const char * const before =
         "Test::Interval::before < Test::Interval::least or > Test::Interval::most not allowed";
   const char * const after =
         "Test::Interval::after < Test::Interval::least or > Test::Interval::most not allowed";
   EXPECT_EQ( refusal( [] { Interval( 0, 1 ); } ), before );
   EXPECT_EQ( refusal( [] { Interval( 301, 1 ); } ), before );
   EXPECT_EQ( refusal( [] { Interval( 1, 0 ); } ), after );
   EXPECT_EQ( refusal( [] { Interval( 0, 0 ); } ), before );
   Interval interval( 1, 300 );
   EXPECT_EQ( refusal( [ & ] { interval.beforeIs( 0 ); } ), before );
   EXPECT_EQ( refusal( [ & ] { interval.afterIs( 301 ); } ), after );
   EXPECT_EQ( interval, Interval( 1, 300 ) );
}

TEST( ValueTest, validatedBoundsAreCheckedByValidateAlone )
{
   EXPECT_EQ( refusal( [] { Lazy( 99 ).validate(); } ), "value is out of bounds" );
   EXPECT_EQ( refusal( [] { Lazy( 1001 ).validate(); } ), "value is out of bounds" );
   for ( const std::uint32_t v : { 0U, 100U, 1000U } ) {
      EXPECT_NO_THROW( Lazy( v ).validate() );
   }
   EXPECT_EQ( Lazy( 99 ).stringValue(), "99 ms" );
   EXPECT_EQ( Lazy( 0 ).stringValue(), "off" );
}

TEST( ValueTest, theBytesOfATextAreCounted )
{
   EXPECT_EQ( Label( std::string( 20, 'x' ) ).stringValue().size(), 20U );
   EXPECT_EQ( refusal( [] { Label( std::string( 21, 'x' ) ); } ),
         "Test::Label::bytes > maxLength() not allowed" );
   EXPECT_EQ( refusal( [] {
      Label( "\xe2\x82\xac\xe2\x82\xac\xe2\x82\xac\xe2\x82\xac\xe2\x82\xac"
             "\xe2\x82\xac\xe2\x82\xac" );
   } ),
         "Test::Label::bytes > maxLength() not allowed" );
}

// ---- Accessors and mutators -------------------------------------------------------------------

static_assert( std::same_as< decltype( std::declval< const Pair & >().id() ), std::uint32_t > );
static_assert(
      std::same_as< decltype( std::declval< const Pair & >().text() ), const Corvo::String & > );
static_assert( std::same_as< decltype( std::declval< const Pair & >().colour() ), Colour > );
static_assert( std::same_as< decltype( std::declval< const Pair & >().level() ), const Level & > );
static_assert( std::same_as< decltype( std::declval< const Pair & >().on() ), bool > );
static_assert( std::same_as< decltype( std::declval< Pair & >().idIs( 1 ) ), void > );
template< class V >
concept SettableValue = requires( V & v )
{
   v.valueIs( 300 );
};
static_assert( SettableValue< Full > && !SettableValue< Narrow > );
template< class V >
concept SettableId = requires( V & v )
{
   v.idIs( Narrow() );
};
static_assert( !SettableId< Recipe > );

TEST( ValueTest, mutatorsSetOneField )
{
   Pair pair;
   pair.idIs( 9 );
   pair.textIs( "nine" );
   pair.colourIs( Colour::blue );
   pair.levelIs( Level( 9 ) );
   pair.onIs( true );
   pair.timeIs( Vok::Seconds( 9 ) );
   EXPECT_EQ( pair, Pair( 9, "nine", Colour::blue, Level( 9 ), true, Vok::Seconds( 9 ) ) );
   pair.textIs( pair.text() );
   EXPECT_EQ( pair.text(), "nine" );
}

TEST( ValueTest, flagsAreBitsOfTheWord )
{
   Flags flags( 0x82 );
   EXPECT_FALSE( flags.first() );
   EXPECT_TRUE( flags.second() );
   EXPECT_TRUE( flags.top() );
   flags.firstIs( true );
   EXPECT_EQ( flags.value(), 0x83 );
   flags.topIs( false );
   flags.topIs( false );
   EXPECT_EQ( flags.value(), 0x03 );
   flags.valueIs( 0xff );
   flags.secondIs( false );
   EXPECT_EQ( flags.value(), 0xfd );
}

// ---- Comparison -------------------------------------------------------------------------------

template< class V >
concept Ordered = requires( const V & v )
{
   {
      v < v
      } -> std::same_as< bool >;
};
static_assert( Ordered< Level > && Ordered< Narrow > && Ordered< Label > && Ordered< Address > );
static_assert( Ordered< Vok::Seconds > && Ordered< Corvo::Duration > );
static_assert( !Ordered< Full > && !Ordered< Pair > && !Ordered< Flags > && !Ordered< Recipe > );

TEST( ValueTest, equalityIsThatOfEveryField )
{
   const Pair base( 1, "a", Colour::red, Level( 1 ), false, Vok::Seconds( 1 ) );
   EXPECT_TRUE( base.isEq( base ) );
   EXPECT_TRUE( base.isEq( Pair( base ) ) );
   EXPECT_TRUE( base == Pair( base ) );
   EXPECT_FALSE( base != Pair( base ) );
   const Pair others[] = { Pair( 2, "a", Colour::red, Level( 1 ), false, Vok::Seconds( 1 ) ),
      Pair( 1, "b", Colour::red, Level( 1 ), false, Vok::Seconds( 1 ) ),
      Pair( 1, "a", Colour::blue, Level( 1 ), false, Vok::Seconds( 1 ) ),
      Pair( 1, "a", Colour::red, Level( 2 ), false, Vok::Seconds( 1 ) ),
      Pair( 1, "a", Colour::red, Level( 1 ), true, Vok::Seconds( 1 ) ),
      Pair( 1, "a", Colour::red, Level( 1 ), false, Vok::Seconds( 2 ) ) };
   for ( const Pair & other : others ) {
      EXPECT_FALSE( base.isEq( other ) );
      EXPECT_TRUE( base != other );
   }
}

TEST( ValueTest, doublesAreEqualWhenTheyPrintTheSame )
{
   const double nan = std::numeric_limits< double >::quiet_NaN();
   EXPECT_EQ( Plain( Colour::red, 0, 0, nan ), Plain( Colour::red, 0, 0, -nan ) );
   EXPECT_EQ( Plain( Colour::red, 0, 0, 0.0 ), Plain( Colour::red, 0, 0, -0.0 ) );
   EXPECT_EQ( Vok::Seconds( nan ), Vok::Seconds( -nan ) );
   EXPECT_NE( Vok::Seconds( nan ), Vok::Seconds( 0 ) );
}

TEST( ValueTest, orderIsThatOfTheFieldsInDeclaredOrder )
{
   EXPECT_TRUE( Level( 1 ) < Level( 2 ) );
   EXPECT_FALSE( Level( 2 ) < Level( 2 ) );
   EXPECT_TRUE( Label( "a" ) < Label( "b" ) );
   EXPECT_TRUE( Label( "b" ) < Label( "\xc3" ) );
   EXPECT_TRUE( Address( 1, 9 ) < Address( 2, 0 ) );
   EXPECT_TRUE( Address( 1, 1 ) < Address( 1, 2 ) );
   EXPECT_FALSE( Address( 2, 0 ) < Address( 1, 9 ) );
   EXPECT_TRUE( Corvo::Duration( 5 ) < Corvo::Duration::infinity() );
}

template< class V >
concept HasTruth = std::constructible_from< bool, const V & >;
static_assert( HasTruth< Pair > && !std::convertible_to< Pair, bool > );
static_assert( !HasTruth< Level > && !HasTruth< Plain > && !HasTruth< Flags > );

TEST( ValueTest, truthIsToDifferFromTheDefault )
{
   EXPECT_FALSE( Pair() );
   Pair pair;
   pair.onIs( true );
   EXPECT_TRUE( pair );
}

template< class V >
concept Hashable = requires( const V & v )
{
   {
      std::hash< V >()( v )
      } -> std::same_as< std::size_t >;
};
static_assert( Hashable< Level > && Hashable< Narrow > && Hashable< Lazy > && Hashable< Full > );
static_assert( Hashable< Interval > && Hashable< Flags > && Hashable< Mode > && Hashable< Label > );
static_assert( Hashable< Pair > && Hashable< Address > );
static_assert(
      Hashable< Vok::Seconds > && Hashable< Corvo::Duration > && Hashable< Corvo::String > );
static_assert( !Hashable< Plain > && !Hashable< Recipe > && !Hashable< Shelf > );

TEST( ValueTest, hashesFollowEqualityAndTellFieldsApart )
{
   std::unordered_set< std::size_t > hashes;
   std::unordered_set< Pair > values;
   for ( std::uint32_t id = 0; id != 100; ++id ) {
      for ( const char * text : { "a", "b", "" } ) {
         for ( const std::uint32_t level : { 1U, 2U } ) {
            const Pair v( id, text, Colour::red, Level( level ), false, Vok::Seconds( id ) );
            EXPECT_EQ( std::hash< Pair >()( v ), std::hash< Pair >()( Pair( v ) ) );
            hashes.insert( std::hash< Pair >()( v ) );
            values.insert( v );
         }
      }
   }
   EXPECT_EQ( values.size(), 600U );
   EXPECT_EQ( hashes.size(), 600U );
   EXPECT_NE(
         std::hash< Address >()( Address( 1, 2 ) ), std::hash< Address >()( Address( 2, 1 ) ) );
   EXPECT_EQ( std::hash< Vok::Seconds >()( Vok::Seconds( 0.0 ) ),
         std::hash< Vok::Seconds >()( Vok::Seconds( -0.0 ) ) );
}

} // namespace
