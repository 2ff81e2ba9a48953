// Agents of software flow tracking from texts.
#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>

namespace {

using FlowTracking::InstanceId;

TEST( InstanceIdTest, fromText )
{
   EXPECT_EQ( InstanceId::fromString( "" ), InstanceId( 0 ) );
   EXPECT_EQ( InstanceId::fromString( "1" ), InstanceId( 1 ) );
   EXPECT_EQ( InstanceId::fromString( "7" ), InstanceId( 7 ) );
   EXPECT_EQ( InstanceId::fromString( "007" ), InstanceId( 7 ) );
}

TEST( InstanceIdTest, aTextThatIsNoNumberThrowsFromTheConversion )
{
   EXPECT_THROW( InstanceId::fromString( "seven" ), std::invalid_argument );
   EXPECT_THROW( InstanceId::fromString( " " ), std::invalid_argument );
   EXPECT_THROW( InstanceId::fromString( "99999999999999999999" ), std::out_of_range );
}

TEST( InstanceIdDeathTest, anyOtherNumberEndsTheProcess )
{
   const char * message =
         "^FlowTracker/FlowTrackingOrreryTypes:105: "
         "static FlowTracking::InstanceId "
         "FlowTracking::InstanceId::fromString\\(const String&\\): "
         "assertion \"v > 0 && v <= InstanceId::max\\(\\)\" failed\n$";
   for ( const char * text : { "0", "8", "255", "256", "4294967297", "-1" } ) {
      EXPECT_EXIT( InstanceId::fromString( text ), testing::KilledBySignal( SIGABRT ), message )
            << text;
   }
}

} // namespace
