// The map between names and numbers of trackers, as the agent that gives out numbers writes it.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <gtest/gtest.h>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;

TEST( FtIdStatusTest, aFreshMapIsEmptyAndBeginsAtZero )
{
   const auto ids = ftIdStatusFactory( "ids" );
   EXPECT_EQ( ids->name(), "ids" );
   EXPECT_EQ( ids->nameString(), "ids" );
   EXPECT_EQ( ids->nextFtId(), 0U );
   EXPECT_TRUE( ids->ftIdToFtName().empty() && ids->ftNameToFtId().empty() );
   EXPECT_EQ( ids->ftIdToFtName( FtId( 1 ) ), "" );
   EXPECT_EQ( ids->ftNameToFtId( "campus" ), FtId( 0 ) );
   EXPECT_EQ( FtIdStatus::FtIdStatusIs( "b" )->name(), "b" );
}

TEST( FtIdStatusTest, theNextNumberIsNotBoundAsNumbersOfTrackersAre )
{
   const auto ids = ftIdStatusFactory( "ids" );
   Recorder recorder( *ids );
   ids->nextFtIdIs( 0 );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_THROW( FtId( 65536 ), Corvo::RangeException );
   ids->nextFtIdIs( 65536 );
   ids->nextFtIdIs( 4294967295 );
   EXPECT_EQ( ids->nextFtId(), 4294967295U );
   EXPECT_EQ( recorder.take(), ( Heard{ "258 was 0", "258 was 65536" } ) );
}

TEST( FtIdStatusTest, namesByNumber )
{
   const auto ids = ftIdStatusFactory( "ids" );
   Recorder recorder( *ids );
   ids->ftIdToFtNameIs( FtId( 1 ), "campus" );
   ids->ftIdToFtNameIs( FtId( 1 ), "campus" );
   EXPECT_EQ( recorder.take(), Heard{ "259[1]" } );
   ids->ftIdToFtNameIs( FtId( 1 ), "edge" );
   EXPECT_EQ( recorder.take(), Heard{ "259[1] was campus" } );
   EXPECT_EQ( ids->ftIdToFtName( FtId( 1 ) ), "edge" );
   EXPECT_EQ( ids->ftIdToFtNameDel( FtId( 2 ) ), "" );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( ids->ftIdToFtNameDel( FtId( 1 ) ), "edge" );
   EXPECT_EQ( recorder.take(), Heard{ "259[1] was edge" } );
   EXPECT_TRUE( ids->ftIdToFtName().empty() );
}

TEST( FtIdStatusTest, numbersByName )
{
   const auto ids = ftIdStatusFactory( "ids" );
   Recorder recorder( *ids );
   ids->ftNameToFtIdIs( "campus", FtId( 1 ) );
   ids->ftNameToFtIdIs( "campus", FtId( 1 ) );
   EXPECT_EQ( recorder.take(), Heard{ "260[campus]" } );
   ids->ftNameToFtIdIs( "campus", FtId( 2 ) );
   EXPECT_EQ( recorder.take(), Heard{ "260[campus] was 1" } );
   EXPECT_EQ( ids->ftNameToFtId( "campus" ), FtId( 2 ) );
   EXPECT_EQ( ids->ftNameToFtIdDel( "edge" ), FtId( 0 ) );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( ids->ftNameToFtIdDel( "campus" ), FtId( 2 ) );
   EXPECT_EQ( recorder.take(), Heard{ "260[campus] was 2" } );
   EXPECT_TRUE( ids->ftNameToFtId().empty() );
}

TEST( FtIdStatusTest, theMapsAreIndependent )
{
   const auto ids = ftIdStatusFactory( "ids" );
   ids->ftIdToFtNameIs( FtId( 1 ), "campus" );
   EXPECT_TRUE( ids->ftNameToFtId().empty() );
   ids->ftNameToFtIdIs( "campus", FtId( 2 ) );
   EXPECT_EQ( ids->ftIdToFtName( FtId( 1 ) ), "campus" );
   EXPECT_FALSE( ids->ftIdToFtName().contains( FtId( 2 ) ) );
   ids->ftIdToFtNameDelAll();
   EXPECT_EQ( ids->ftNameToFtId( "campus" ), FtId( 2 ) );
   EXPECT_EQ( ids->nextFtId(), 0U );
}

TEST( FtIdStatusTest, anEmptyNameAndNumberZeroAreMembers )
{
   const auto ids = ftIdStatusFactory( "ids" );
   Recorder recorder( *ids );
   ids->ftIdToFtNameIs( FtId( 0 ), "" );
   ids->ftNameToFtIdIs( "", FtId( 0 ) );
   EXPECT_EQ( recorder.take(), ( Heard{ "259[0]", R"(260[""])" } ) );
   EXPECT_TRUE( ids->ftIdToFtName().contains( FtId( 0 ) ) );
   EXPECT_TRUE( ids->ftNameToFtId().contains( "" ) );
}

TEST( FtIdStatusTest, deletingAllIsHeardOncePerMember )
{
   const auto ids = ftIdStatusFactory( "ids" );
   for ( const std::uint32_t id : { 1U, 2U, 3U } ) {
      ids->ftIdToFtNameIs( FtId( id ), "t" );
      ids->ftNameToFtIdIs( std::to_string( id ), FtId( id ) );
   }
   Recorder recorder( *ids );
   ids->ftIdToFtNameDelAll();
   EXPECT_EQ( recorder.take().size(), 3U );
   ids->ftNameToFtIdDelAll();
   EXPECT_EQ( recorder.take().size(), 3U );
   EXPECT_TRUE( ids->ftIdToFtName().empty() && ids->ftNameToFtId().empty() );
}

} // namespace
