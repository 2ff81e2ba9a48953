// Whole configurations as change streams: what a reader has is what the writer has.
#include "tests/FlowTracker/ConfigTables.h"
#include "tests/support/DescribeTree.h"
#include "tests/support/RandomEntity.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

namespace {

using namespace FlowTrackerTest;
using TestSupport::describeTree;
using TestSupport::EntityTable;
using TestSupport::setAll;
using Root = Corvo::Ptr< Vok::Entity >;

/// A tree and its replica.
class Replicated {
 public:
   explicit Replicated( const EntityTable & table ) : root( entityOf( table ) ),
                                                      replica( entityOf( table ) )
   {
   }

   /// What is pending goes to the reader.
   void follow()
   {
      Vok::NboAttrLog::Out out;
      writer.write( out );
      if ( out.size() != 0 ) {
         Vok::NboAttrLog::In in( out.data(), out.size() );
         reader.read( in );
         ASSERT_EQ( in.remaining(), 0U );
      }
      ASSERT_EQ( describeTree( *root ), describeTree( *replica ) );
      ASSERT_EQ( Vok::treeDigest( *root ), Vok::treeDigest( *replica ) );
   }

   Root root;
   Root replica;
   Vok::EntityVokNboAttrLogSa writer{ root };
   Vok::EntityVokNboAttrLogReader reader{ replica };
};

Root child( const Root & parent, std::string_view attribute, std::string_view key = "" )
{
   return parent->typeData().attribute( attribute )->child( *parent, key );
}

/// Gives every attribute of every entity of a configuration another value than its default.
void setTree( const Root & root, const EntityTable & table )
{
   setAll( *root, table );
   const Root tracker = child( root, "flowTrackerConfig", "tracker" );
   setAll( *tracker, flowTrackerConfig() );
   setAll( *child( tracker, "expConfig", "exporter" ), exporterConfig() );
   setAll( *child( tracker, "fgConfig", "group" ), flowGroup() );
   setAll( *child( tracker, "congestionConfig" ), congestionConfig() );
   setAll( *child( tracker, "cpuQueuesBuffersDumpLocation" ), dumpBuffersInstructions() );
}

/// Whether an attribute can be, and is, other than in a fresh entity.
bool isAway( const Vok::Entity & entity, const Vok::AttributeData & a )
{
   switch ( a.kind() ) {
   case Vok::AttributeKind::plain:
   case Vok::AttributeKind::optional:
      return a.get( entity ) != a.defaultText();
   case Vok::AttributeKind::map:
   case Vok::AttributeKind::set:
   case Vok::AttributeKind::children:
      return !a.keys( entity ).empty();
   case Vok::AttributeKind::child:
      return a.child( entity, "" ) != nullptr;
   default:
      return false;
   }
}

/// Adds the attributes of a tree that are away from their defaults, such as
/// `FlowTracking::FlowGroup::flowDomain`.
void collectAway( const Vok::Entity & entity, std::set< std::string > & away )
{
   for ( const Vok::AttributeData & a : entity.typeData().attributes() ) {
      if ( isAway( entity, a ) ) {
         away.insert( std::string( entity.typeData().name() ).append( "::" ).append( a.name() ) );
         if ( a.kind() == Vok::AttributeKind::child ) {
            collectAway( *a.child( entity, "" ), away );
         } else if ( a.kind() == Vok::AttributeKind::children ) {
            for ( const Corvo::String & key : a.keys( entity ) ) {
               collectAway( *a.child( entity, key ), away );
            }
         }
      }
   }
}

/// What could be away in a configuration of this type, but never was; a type of one value cannot.
std::string neverAway( const EntityTable & root, const std::set< std::string > & away )
{
   std::string never;
   for ( const EntityTable & table : { root, flowTrackerConfig(), exporterConfig(), flowGroup(),
               congestionConfig(), dumpBuffersInstructions() } ) {
      for ( const TestSupport::AttributeRow & row : table.attributes ) {
         const std::string name = std::string( table.type ).append( "::" ).append( row.name );
         const bool can = row.form.settable && row.name != "ipfixVersion" &&
               row.form.kind != Vok::AttributeKind::constructorArgument;
         if ( can && !away.contains( name ) ) {
            never.append( name ).append( " " );
         }
      }
   }
   return never;
}

/// Every attribute away from its default replicates, survives a resync and reaches a late reader.
void expectWholeTree( const EntityTable & table )
{
   Replicated tree( table );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const Vok::Digest before = Vok::treeDigest( *tree.root );
   setTree( tree.root, table );
   std::set< std::string > away;
   collectAway( *tree.root, away );
   EXPECT_EQ( neverAway( table, away ), "" );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_FALSE( before == Vok::treeDigest( *tree.replica ) );

   tree.writer.resync();
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   tree.writer.resync();
   Vok::NboAttrLog::Out out;
   tree.writer.write( out );
   const Root late = entityOf( table );
   Vok::EntityVokNboAttrLogReader reader( late );
   Vok::NboAttrLog::In in( out.data(), out.size() );
   reader.read( in );
   EXPECT_TRUE( reader.passedOver().empty() );
   EXPECT_EQ( Vok::treeDigest( *tree.root ), Vok::treeDigest( *late ) );
}

void expectRandomTrees( const EntityTable & table )
{
   std::set< std::string > away;
   for ( std::uint64_t seed = 0; seed != 60; ++seed ) {
      TestSupport::Random random( seed );
      Replicated tree( table );
      TestSupport::RandomEntity changes( *tree.root, random );
      for ( unsigned round = 0; round != 40; ++round ) {
         changes.changes( 1 + random.below( 60 ) );
         if ( random.oneIn( 10 ) ) {
            tree.writer.resync();
         }
         ASSERT_NO_FATAL_FAILURE( tree.follow() ) << "seed " << seed << " round " << round;
      }
      collectAway( *tree.replica, away );
   }
   EXPECT_EQ( neverAway( table, away ), "" );
}

TEST( ConfigReplicationTest, everyAttributeAwayFromItsDefault )
{
   expectWholeTree( config() );
   expectWholeTree( mirrorOnDropConfig() );
}

TEST( ConfigReplicationTest, randomTrees )
{
   expectRandomTrees( config() );
}

TEST( ConfigReplicationTest, randomTreesOfMirrorOnDrop )
{
   expectRandomTrees( mirrorOnDropConfig() );
}

TEST( ConfigReplicationTest, randomBindings )
{
   for ( std::uint64_t seed = 0; seed != 60; ++seed ) {
      TestSupport::Random random( seed );
      Replicated tree( flowTrackerIntfConfigs() );
      TestSupport::RandomEntity changes( *tree.root, random );
      for ( unsigned round = 0; round != 20; ++round ) {
         changes.changes( 1 + random.below( 10 ) );
         ASSERT_NO_FATAL_FAILURE( tree.follow() ) << "seed " << seed << " round " << round;
      }
   }
}

} // namespace
