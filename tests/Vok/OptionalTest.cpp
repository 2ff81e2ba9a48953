// Vok::Optional, with its truth value in one byte, and the two time values.
#include "Vok/Optional.h"
#include "Vok/String.h"
#include "Vok/Time.h"

#include <gtest/gtest.h>

#include <bit>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

namespace {

using Maybe = Vok::Optional< bool >;

static_assert( std::same_as< Vok::Optional< int >, std::optional< int > > );
static_assert( std::same_as< Vok::Optional< Corvo::String >, std::optional< Corvo::String > > );
static_assert( sizeof( Maybe ) == 1 );
static_assert( std::same_as< decltype( *std::declval< Maybe & >() ), bool > );
static_assert( std::same_as< decltype( std::declval< Maybe & >().value() ), bool > );
static_assert( !std::convertible_to< Maybe, bool > );
template< class O >
concept HasArrow = requires( const O & o )
{
   o.operator->();
};
static_assert( HasArrow< std::optional< Corvo::String > > && !HasArrow< Maybe > );

constexpr Maybe none;
constexpr Maybe no = false;
constexpr Maybe yes = true;

TEST( OptionalTest, aTruthValueHasThreeStates )
{
   static_assert( !none.has_value() && no.has_value() && yes.has_value() );
   static_assert( !none && no && yes );
   static_assert( !*no && *yes );
   static_assert( !no.value() && yes.value() );
   static_assert( none.value_or( true ) && !none.value_or( false ) && !no.value_or( true ) );
   EXPECT_THROW( static_cast< void >( none.value() ), std::bad_optional_access );
}

TEST( OptionalTest, aTruthValueIs255ForNone )
{
   for ( const auto & [ value, byte ] :
         { std::pair{ none, 255U }, std::pair{ no, 0U }, std::pair{ yes, 1U } } ) {
      EXPECT_EQ( std::bit_cast< std::uint8_t >( value ), byte );
   }
}

TEST( OptionalTest, aTruthValueIsSetAndReset )
{
   Maybe maybe = true;
   maybe.reset();
   EXPECT_EQ( maybe, std::nullopt );
   EXPECT_FALSE( maybe.emplace() );
   EXPECT_EQ( maybe, false );
   EXPECT_TRUE( maybe.emplace( true ) );
   EXPECT_EQ( maybe, true );
   maybe = std::nullopt;
   EXPECT_FALSE( maybe.has_value() );
   maybe = std::optional< bool >( false );
   EXPECT_EQ( maybe, no );
   maybe = std::optional< bool >();
   EXPECT_EQ( maybe, none );
}

TEST( OptionalTest, comparisons )
{
   static_assert( none == none && none != no && no != yes && yes == Maybe( true ) );
   static_assert( none == std::nullopt && no != std::nullopt && std::nullopt != yes );
   static_assert( no == false && no != true && false == no && none != false && none != true );
   static_assert( none < no && no < yes && none < yes && !( yes < yes ) && yes > none );
}

TEST( OptionalTest, everyOtherTypeHasTheStandardOne )
{
   Vok::Optional< Corvo::String > text;
   EXPECT_FALSE( text );
   text = "word";
   EXPECT_EQ( text->size(), 4U );
   EXPECT_EQ( *text, "word" );
   EXPECT_EQ( text.value_or( "none" ), "word" );
   text.reset();
   EXPECT_EQ( text, std::nullopt );
}

TEST( TimeTest, seconds )
{
   static_assert( Vok::Seconds().value() == 0.0 && Vok::Seconds( 1.5 ).value() == 1.5 );
   static_assert( std::constructible_from< Vok::Seconds, double > );
   static_assert( !std::convertible_to< double, Vok::Seconds > );
   static_assert(
         Vok::Seconds( 1 ) == Vok::Seconds( 1 ) && Vok::Seconds( 1 ) != Vok::Seconds( 2 ) );
   EXPECT_TRUE( Vok::Seconds( 1 ) < Vok::Seconds( 2 ) );
   EXPECT_TRUE( Vok::Seconds( 3 ).isEq( Vok::Seconds( 3 ) ) );
}

TEST( TimeTest, durations )
{
   static_assert( Corvo::Duration( 2.5 ).seconds() == 2.5 );
   static_assert( !std::convertible_to< double, Corvo::Duration > );
   EXPECT_EQ( Corvo::Duration::infinity().seconds(), std::numeric_limits< double >::infinity() );
   EXPECT_EQ( Corvo::Duration::infinity(), Corvo::Duration::infinity() );
   EXPECT_NE( Corvo::Duration::infinity(), Corvo::Duration() );
}

} // namespace
