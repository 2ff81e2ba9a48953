// Flow groups: order, contents, change bit maps and generations.
#include "Switch.h"

#include "tools/derive/DeriveGroups.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace DeriveTest {
namespace {

using Derive::deriveGroups;
using Ft::Constants;

class DeriveGroupsTest : public ::testing::Test {
 protected:
   void derive() { deriveGroups( *from, *to ); }

   /// The groups in hardware, in order.
   std::vector< std::string > order() const
   {
      std::vector< std::string > groups;
      for ( const auto & group : to->hwFgConfig() ) {
         const std::string name( group->fgName() );
         groups.push_back( name + " " + std::to_string( group->seqno() ) );
      }
      return groups;
   }

   Hw::FgConfig & hw( const char * name ) const
   {
      for ( const auto & [ seqno, entry ] : to->hwFgConfigMap( name )->hwFgNameAndSeqno() ) {
         return *to->hwFgConfig( seqno );
      }
      throw std::out_of_range( name );
   }

   Corvo::Ptr< Ft::FlowTrackerConfig > from = Ft::flowTrackerConfigFactory( "t" );
   Corvo::Ptr< Hw::FtConfig > to = Hw::ftConfigFactory( "t", Ft::FtId( 1 ) );
};

using Order = std::vector< std::string >;

TEST_F( DeriveGroupsTest, standInOrderOfNumberAndName )
{
   from->fgConfigIs( "late", 7 );
   from->fgConfigIs( "b", 5 );
   from->fgConfigIs( "a", 5 );
   from->fgConfigIs( "IPv6", 1 );
   derive();
   EXPECT_EQ( order(),
         ( Order{ "a 50", "b 51", "late 70",
               "IPv6 " + std::to_string( Constants::reservedFgSeqnoBase() + 1 ) } ) );
   EXPECT_EQ( to->hwFgConfigMap( "b" )->seqno(), 5U );
   EXPECT_EQ( hw( "IPv6" ).templateId(),
         Constants::reservedTemplateId( Ft::StaticTemplateId::dataTemplateHwIpv6 ) );
}

TEST_F( DeriveGroupsTest, haveRoomAtBothEnds )
{
   const std::uint32_t most = 0xffffffff;
   for ( int i = 0; i != 12; ++i ) {
      from->fgConfigIs( "low" + std::to_string( 10 + i ), 0 );
   }
   from->fgConfigIs( "next", 1 );
   from->fgConfigIs( "y", most );
   from->fgConfigIs( "x", most );
   from->fgConfigIs( "w", most - 1 );
   derive();
   const Order groups = order();
   EXPECT_EQ( groups.front(), "low10 0" );
   EXPECT_EQ( groups[ 12 ], "next 12" ) << "behind twelve of one number";
   const std::uint32_t end = Constants::reservedFgSeqnoBase();
   EXPECT_EQ( Order( groups.end() - 3, groups.end() ),
         ( Order{ "w " + std::to_string( end - 3 ), "x " + std::to_string( end - 2 ),
               "y " + std::to_string( end - 1 ) } ) );
}

TEST_F( DeriveGroupsTest, takeBothAccessListsInOrder )
{
   const auto group = from->fgConfigIs( "g", 1 );
   group->ipAccessListIs( Ft::AccessList( 10, "v4", Acl::AclType::ip ) );
   group->ip6AccessListIs( Ft::AccessList( 10, "v6", Acl::AclType::ipv6 ) );
   derive();
   EXPECT_EQ( hw( "g" ).accessList( 10 ).aclName(), "v4" );
   EXPECT_EQ( hw( "g" ).accessList( 11 ).aclName(), "v6" );
   group->ipAccessListIs( Ft::AccessList( 0xffffffff, "v4", Acl::AclType::ip ) );
   group->ip6AccessListIs( Ft::AccessList( 0xffffffff, "v6", Acl::AclType::ipv6 ) );
   derive();
   EXPECT_EQ( hw( "g" ).accessList().size(), 2U );
   EXPECT_EQ( hw( "g" ).accessList( 0xfffffffe ).aclName(), "v4" );
   group->ipAccessListIs( Ft::AccessList() );
   derive();
   EXPECT_EQ( hw( "g" ).accessList( 0xffffffff ).aclName(), "v6" );
   EXPECT_EQ( hw( "g" ).accessList().size(), 1U );
}

TEST_F( DeriveGroupsTest, noteWhatAnUpdateChanged )
{
   from->expConfigIs( "e" );
   const auto group = from->fgConfigIs( "g", 1 );
   derive();
   EXPECT_EQ( hw( "g" ).fgConfigChangeBitMap().value(), 0U );
   EXPECT_EQ( hw( "g" ).genId(), 1U );
   group->expNameIs( "e" );
   group->expNameIs( "absent" );
   group->encapTypeIs( Ft::encapVxlan );
   derive();
   EXPECT_EQ( hw( "g" ).fgConfigChangeBitMap().value(), 5U ) << "encapsulation and exporter";
   EXPECT_TRUE( hw( "g" ).encapFlags().vxlan() );
   EXPECT_EQ( hw( "g" ).expName().size(), 1U );
   EXPECT_EQ( hw( "g" ).genId(), 2U );
   group->expNameDel( "absent" );
   derive();
   EXPECT_EQ( hw( "g" ).genId(), 2U );
   group->mirrorConfigIs( Ft::MirrorConfig( "probe", Ft::InitialCopy( 5 ),
         Ft::MirrorSelectorAlgo::fixed, Ft::MirrorIntervalFixed( 7 ),
         Ft::MirrorIntervalRandom( 0 ) ) );
   group->ipAccessListIs( Ft::AccessList( 1, "l", Acl::AclType::ip ) );
   derive();
   EXPECT_EQ( hw( "g" ).fgConfigChangeBitMap().value(), 10U ) << "access lists and mirroring";
   group->flowDomainIs( "d" );
   derive();
   EXPECT_EQ( hw( "g" ).fgConfigChangeBitMap().value(), 0U ) << "it has no bit";
   EXPECT_EQ( hw( "g" ).genId(), 4U );
   EXPECT_EQ( to->hwFgConfigGenId(), 1U ) << "the set of groups stayed";
}

TEST_F( DeriveGroupsTest, aGroupThatMovesGoesOnInItsGeneration )
{
   const auto group = from->fgConfigIs( "g", 1 );
   derive();
   group->flowDomainIs( "d" );
   derive();
   from->fgConfigIs( "g", 2 );
   derive();
   EXPECT_EQ( order(), Order{ "g 20" } );
   EXPECT_EQ( hw( "g" ).genId(), 3U );
   EXPECT_EQ( hw( "g" ).flowDomain(), "d" );
   EXPECT_EQ( to->hwFgConfigMap( "g" )->seqno(), 2U );
   EXPECT_EQ( to->hwFgConfigGenId(), 2U );
}

TEST_F( DeriveGroupsTest, groupsThatChangePlacesAreMovedAtOnce )
{
   from->fgConfigIs( "a", 1 );
   from->fgConfigIs( "b", 2 );
   derive();
   from->fgConfigIs( "a", 2 );
   from->fgConfigIs( "b", 1 );
   derive();
   EXPECT_EQ( order(), ( Order{ "b 10", "a 20" } ) );
   EXPECT_EQ( to->hwFgConfigGenId(), 2U );
}

TEST_F( DeriveGroupsTest, raiseTheGenerationOnceWhenTheyAreCommitted )
{
   from->fgConfigIs( "a", 1 );
   derive();
   from->groupsCommitInProgressIs( true );
   derive();
   EXPECT_FALSE( to->hwFgConfigGenIdUpdateNeeded() );
   from->fgConfigIs( "b", 2 );
   derive();
   from->fgConfigIs( "c", 3 );
   derive();
   EXPECT_EQ( to->hwFgConfigGenId(), 1U );
   EXPECT_TRUE( to->hwFgConfigGenIdUpdateNeeded() );
   EXPECT_EQ( order().size(), 3U );
   from->groupsCommitInProgressIs( false );
   derive();
   EXPECT_EQ( to->hwFgConfigGenId(), 2U );
   EXPECT_FALSE( to->hwFgConfigGenIdUpdateNeeded() );
}

TEST_F( DeriveGroupsTest, clearWhatAnotherWriterLeft )
{
   to->hwFgConfigIs( "stranger", 10 )->flowParamIs( Ft::FlowParam() );
   to->hwFgConfigIs( "g", 99 )->genIdIs( 7 );
   to->hwFgConfigMapIs( "g", 3 );
   to->hwFgConfigMapIs( "gone", 3 );
   from->fgConfigIs( "g", 1 );
   derive();
   EXPECT_EQ( order(), Order{ "g 10" } );
   EXPECT_EQ( hw( "g" ).genId(), 8U );
   EXPECT_EQ( to->hwFgConfigMap().size(), 1U );
   EXPECT_EQ( to->hwFgConfigMap( "g" )->seqno(), 1U );
   hw( "g" ).flowParamIs( Ft::FlowParam() );
   derive();
   EXPECT_TRUE( hw( "g" ).flowParam().empty() );
   EXPECT_EQ( hw( "g" ).genId(), 9U );
}

} // namespace
} // namespace DeriveTest
