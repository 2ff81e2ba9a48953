// Numbers of trackers: what stays, what hardware brings, what is given out.
#include "tools/derive/TrackerIds.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Derive::TrackerIds;
using FlowTracking::FtId;

class TrackerIdsTest : public ::testing::Test {
 protected:
   std::uint32_t id( const char * name ) const { return ids.idOf( name )->value(); }

   Corvo::Ptr< FlowTracking::FtIdStatus > status = FlowTracking::ftIdStatusFactory( "ids" );
   TrackerIds ids{ status };
};

TEST_F( TrackerIdsTest, givesThemOutInOrder )
{
   ids.assign( { "b", "a" }, {} );
   EXPECT_EQ( id( "a" ), 0U );
   EXPECT_EQ( id( "b" ), 1U );
   EXPECT_EQ( status->ftIdToFtName( FtId( 1 ) ), "b" );
   EXPECT_EQ( status->nextFtId(), 2U );
}

TEST_F( TrackerIdsTest, whatStaysKeepsItsNumberAndAFreeOneIsNotGivenOutNext )
{
   ids.assign( { "a", "b" }, {} );
   ids.assign( { "b" }, {} );
   EXPECT_FALSE( ids.idOf( "a" ) );
   EXPECT_FALSE( status->ftIdToFtName().contains( FtId( 0 ) ) );
   ids.assign( { "b", "c" }, {} );
   EXPECT_EQ( id( "b" ), 1U );
   EXPECT_EQ( id( "c" ), 2U );
}

TEST_F( TrackerIdsTest, beginsAgainBehindTheLastOne )
{
   status->nextFtIdIs( FtId::maxFtId() );
   ids.assign( { "a" }, {} );
   EXPECT_EQ( id( "a" ), FtId::maxFtId() );
   EXPECT_EQ( status->nextFtId(), FtId::maxFtId() + 1 );
   ids.assign( { "a", "b" }, {} );
   EXPECT_EQ( id( "b" ), 0U );
   EXPECT_EQ( status->nextFtId(), 1U );
}

TEST_F( TrackerIdsTest, takesWhatHardwareHasWhereTheMapsAreLost )
{
   ids.assign( { "a", "b", "c" }, { { "b", FtId( 7 ) }, { "c", FtId( 7 ) } } );
   EXPECT_EQ( id( "b" ), 7U );
   EXPECT_EQ( id( "a" ), 8U ) << "what hardware brought is behind";
   EXPECT_EQ( id( "c" ), 9U ) << "the number of another one";
}

TEST_F( TrackerIdsTest, mendsMapsThatDisagree )
{
   status->ftNameToFtIdIs( "a", FtId( 3 ) );
   status->ftNameToFtIdIs( "b", FtId( 3 ) );
   status->ftIdToFtNameIs( FtId( 3 ), "b" );
   status->ftIdToFtNameIs( FtId( 4 ), "gone" );
   ids.assign( { "a", "b" }, {} );
   EXPECT_EQ( id( "b" ), 3U );
   EXPECT_EQ( id( "a" ), 0U );
   EXPECT_EQ( status->ftIdToFtName().size(), 2U );
   EXPECT_EQ( status->ftNameToFtId().size(), 2U );
}

TEST_F( TrackerIdsTest, theLastByNameGetNoneWhereAllAreGiven )
{
   TrackerIds::Names names;
   for ( unsigned i = 0; i != FtId::maxFtId() + 2; ++i ) {
      names.insert( std::to_string( 100000 + i ) );
   }
   ids.assign( names, {} );
   EXPECT_EQ( status->ftIdToFtName().size(), FtId::maxFtId() + 1U );
   EXPECT_FALSE( ids.idOf( *names.rbegin() ) );
   names.erase( names.begin() );
   ids.assign( names, {} );
   EXPECT_EQ( ids.idOf( *names.rbegin() ), FtId( 0 ) );
}

} // namespace
