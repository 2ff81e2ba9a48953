// Timeouts and intervals: their texts for people, seconds, and the checks that are their own.
#include "tests/support/NumberTable.h"
#include "tests/support/ValueTable.h"

#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace FlowTracking;
using TestSupport::constant;
using TestSupport::plain;
using TestSupport::within;

constexpr const char * beforeMessage =
      "FlowTracking::CongestionInterval::before < FlowTracking::CongestionInterval::minInterval or "
      "> FlowTracking::CongestionInterval::maxInterval not allowed";
constexpr const char * afterMessage =
      "FlowTracking::CongestionInterval::after < FlowTracking::CongestionInterval::minInterval or "
      "> FlowTracking::CongestionInterval::maxInterval not allowed";

/// What a call throws: its message, or nothing.
template< class E = Corvo::RangeException, class Call > std::string refusal( Call call )
{
   try {
      call();
   } catch ( const E & e ) {
      return e.what();
   }
   return "";
}

TEST( IntervalsTest, textsForPeople )
{
   EXPECT_EQ( InactiveTimeout().stringValue(), "15000 ms" );
   EXPECT_EQ( InactiveTimeout( 900000 ).stringValue(), "900000 ms" );
   EXPECT_EQ( TemplateInterval().stringValue(), "3600000 ms" );
   EXPECT_EQ( TemplateInterval( 5000 ).stringValue(), "5000 ms" );
   EXPECT_EQ( ActiveInterval( 0 ).stringValue(), "disabled" );
   EXPECT_EQ( ActiveInterval( 300000 ).stringValue(), "300000 ms" );
   EXPECT_EQ( ActiveInterval( 4294967295 ).stringValue(), "4294967295 ms" );
   EXPECT_EQ( CongestionInterval().stringValue(), "[-30,30]" );
   EXPECT_EQ( CongestionInterval( 1, 300 ).stringValue(), "[-1,300]" );
}

TEST( IntervalsTest, theTextFormIsTheNumberAllTheSame )
{
   EXPECT_EQ( Corvo::valueToStrep( InactiveTimeout() ), "15000" );
   EXPECT_EQ( Corvo::valueToStrep( ActiveInterval( 0 ) ), "0" );
   EXPECT_THROW( Corvo::strepToValue< ActiveInterval >( "disabled" ), Corvo::ParseException );
}

TEST( IntervalsTest, seconds )
{
   EXPECT_EQ( InactiveTimeout( 15000 ).seconds(), 15.0 );
   EXPECT_EQ( InactiveTimeout( 3001 ).seconds(), 3.001 );
   EXPECT_EQ( ActiveInterval( 1 ).seconds(), 0.001 );
   EXPECT_EQ( ActiveInterval( 0 ).seconds(), 0.0 );
}

TEST( IntervalsTest, onlyValidateChecksAnActiveInterval )
{
   const struct {
      std::uint32_t value;
      const char * message;
   } cases[] = { { 0, "" }, { 1, "value is out of bounds" }, { 999, "value is out of bounds" },
      { 1000, "" }, { 1001, "" }, { 300000, "" }, { 36000000, "" },
      { 36000001, "value is out of bounds" }, { 4294967295, "value is out of bounds" } };
   for ( const auto & c : cases ) {
      const auto parsed = Corvo::strepToValue< ActiveInterval >( std::to_string( c.value ) );
      EXPECT_EQ( parsed.value(), c.value );
      EXPECT_EQ( refusal( [ & ] { parsed.validate(); } ), c.message ) << c.value;
   }
}

TEST( IntervalsTest, aCongestionIntervalIsAsItsTableSays )
{
   const std::vector< TestSupport::AttributeRow > fields = {
      { 2, "before", plain( "u16" ), "30", "1", {}, within( 1, 300, beforeMessage ) },
      { 3, "after", plain( "u16" ), "30", "300", {}, within( 1, 300, afterMessage ) },
      { 4, "minInterval", constant( "u16" ), "1" },
      { 5, "maxInterval", constant( "u16" ), "300" },
   };
   TestSupport::expectValue( { "FlowTracking::CongestionInterval", fields } );
}

TEST( IntervalsTest, aCongestionIntervalReportsBeforeFirst )
{
   const struct {
      std::uint16_t before;
      std::uint16_t after;
      const char * message;
   } cases[] = { { 0, 0, beforeMessage }, { 301, 301, beforeMessage }, { 0, 30, beforeMessage },
      { 30, 0, afterMessage }, { 30, 301, afterMessage }, { 1, 1, "" }, { 300, 300, "" } };
   for ( const auto & c : cases ) {
      SCOPED_TRACE( std::to_string( c.before ) + " " + std::to_string( c.after ) );
      EXPECT_EQ( refusal( [ & ] { CongestionInterval( c.before, c.after ); } ), c.message );
      const std::string text = "FlowTracking::CongestionInterval[before=" +
            std::to_string( c.before ) + ",after=" + std::to_string( c.after ) + "]";
      EXPECT_EQ( refusal( [ & ] { Corvo::strepToValue< CongestionInterval >( text ); } ),
            c.message );
      Vok::NboAttrLog::Out out;
      out.put( c.before );
      out.put( c.after );
      Vok::NboAttrLog::In in( out.data(), out.size() );
      EXPECT_EQ( refusal( [ & ] { CongestionInterval{ &in }; } ), c.message );
   }
}

TEST( IntervalsTest, eachSpanOfACongestionIntervalIsSetByItself )
{
   CongestionInterval interval;
   EXPECT_EQ( refusal( [ & ] { interval.beforeIs( 0 ); } ), beforeMessage );
   EXPECT_EQ( refusal( [ & ] { interval.afterIs( 301 ); } ), afterMessage );
   EXPECT_EQ( interval, CongestionInterval() );
   interval.beforeIs( 1 );
   interval.afterIs( 300 );
   EXPECT_EQ( interval, CongestionInterval( 1, 300 ) );
   Vok::NboAttrLog::Out out;
   out << interval;
   EXPECT_EQ( TestSupport::hexOf( out ), "0001012c" );
   EXPECT_EQ( attrLogSize( interval ), 4U );
}

} // namespace
