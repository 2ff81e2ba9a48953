// Whole configurations as change streams: what a reader has is what the writer has.
#include "tests/FlowTracker/ConfigTables.h"
#include "tests/support/ReplicatedTree.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace FlowTrackerTest;
using TestSupport::Away;
using TestSupport::childOf;
using TestSupport::EntityPtr;
using TestSupport::EntityTable;
using TestSupport::setAll;

/// Gives every attribute of every entity of a configuration another value than its default.
void setTree( const EntityPtr & root, const EntityTable & table )
{
   setAll( *root, table );
   const EntityPtr tracker = childOf( root, "flowTrackerConfig", "tracker" );
   setAll( *tracker, flowTrackerConfig() );
   setAll( *childOf( tracker, "expConfig", "exporter" ), exporterConfig() );
   setAll( *childOf( tracker, "fgConfig", "group" ), flowGroup() );
   setAll( *childOf( tracker, "congestionConfig" ), congestionConfig() );
   setAll( *childOf( tracker, "cpuQueuesBuffersDumpLocation" ), dumpBuffersInstructions() );
}

/// The types of a configuration with this root.
std::vector< EntityTable > typesOf( const EntityTable & root )
{
   return { root, flowTrackerConfig(), exporterConfig(), flowGroup(), congestionConfig(),
      dumpBuffersInstructions() };
}

void expectWholeTree( const EntityTable & table )
{
   expectWholeTreeFollows( table, typesOf( table ),
         [ & ]( const EntityPtr & root ) { setTree( root, table ); } );
}

void expectRandomTrees( const EntityTable & table )
{
   Away away;
   ASSERT_NO_FATAL_FAILURE( expectRandomTreesFollow( table, { 60, 40, 60 }, away ) );
   EXPECT_EQ( away.missing( typesOf( table ) ), "" );
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
   Away away;
   ASSERT_NO_FATAL_FAILURE(
         expectRandomTreesFollow( flowTrackerIntfConfigs(), { 60, 20, 10 }, away ) );
   EXPECT_EQ( away.missing( { flowTrackerIntfConfigs() } ), "" );
}

} // namespace
