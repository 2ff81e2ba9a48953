// Flow groups as a client writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;

TEST( FlowGroupTest, aFreshGroupSelectsNothing )
{
   const auto group = flowGroupFactory( "g", 100 );
   EXPECT_EQ( group->name(), "g" );
   EXPECT_EQ( group->seqno(), 100U );
   EXPECT_TRUE( group->flowDomain().empty() );
   EXPECT_FALSE( group->ipAccessList() );
   EXPECT_FALSE( group->ip6AccessList() );
   EXPECT_FALSE( group->mirrorConfig() );
   EXPECT_TRUE( group->encapType().empty() );
   EXPECT_TRUE( group->expName().empty() );
   EXPECT_FALSE( group->groupCommitted() );
   EXPECT_EQ( FlowGroup::FlowGroupIs( "h", 5 )->seqno(), 5U );
}

TEST( FlowGroupTest, anEqualAccessListIsSilent )
{
   const auto group = flowGroupFactory( "g", 100 );
   Recorder recorder( *group );
   group->ipAccessListIs( AccessList( 1, "web", Acl::AclType::ip ) );
   EXPECT_EQ( recorder.take().size(), 1U );
   group->ipAccessListIs( AccessList( 1, "web", Acl::AclType::ip ) );
   group->ip6AccessListIs( AccessList() );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_TRUE( group->ipAccessList() );
}

TEST( FlowGroupTest, itsSequenceNumberChangesLater )
{
   const auto group = flowGroupFactory( "g", 100 );
   Recorder recorder( *group );
   group->seqnoIs( 100 );
   EXPECT_EQ( recorder.take(), Heard{} );
   group->seqnoIs( 200 );
   EXPECT_EQ( recorder.take(), Heard{ "258 was 100" } );
}

TEST( FlowGroupTest, exportersAreNamesThatNobodyChecks )
{
   const auto group = flowGroupFactory( "g", 100 );
   Recorder recorder( *group );
   group->expNameIs( "there is no such exporter" );
   group->expNameIs( "there is no such exporter" );
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_TRUE( group->expName( "there is no such exporter" ) );
   EXPECT_FALSE( group->expName( "another" ) );
   group->expNameDel( "another" );
   EXPECT_EQ( recorder.take(), Heard{} );
   group->expNameDelAll();
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_TRUE( group->expName().empty() );
}

TEST( FlowGroupTest, encapsulationsAreASet )
{
   const auto group = flowGroupFactory( "g", 100 );
   group->encapTypeIs( encapVxlan );
   group->encapTypeIs( encapGre );
   EXPECT_TRUE( group->encapType( encapVxlan ) && group->encapType().contains( encapGre ) );
   EXPECT_EQ( group->encapType().size(), 2U );
   Recorder recorder( *group );
   group->encapTypeDel( encapIpv4 );
   EXPECT_EQ( recorder.take(), Heard{} );
   group->encapTypeDelAll();
   EXPECT_EQ( recorder.take().size(), 2U );
}

TEST( FlowGroupTest, mirroringIsToldWithTheOldValue )
{
   const auto group = flowGroupFactory( "g", 100 );
   MirrorConfig mirror;
   mirror.sessionNameIs( "probe" );
   group->mirrorConfigIs( mirror );
   Recorder recorder( *group );
   bool told = false;
   recorder.then = [ & ]( const Corvo::Change & change ) {
      ASSERT_NE( change.oldValue< MirrorConfig >(), nullptr );
      EXPECT_EQ( change.oldValue< MirrorConfig >()->sessionName(), "probe" );
      told = true;
   };
   group->mirrorConfigIs( MirrorConfig() );
   EXPECT_TRUE( told );
   EXPECT_FALSE( group->mirrorConfig() );
}

} // namespace
