// The entity types of the configuration as tables of their attributes.
#pragma once

#include "tests/support/EntityTable.h"

namespace FlowTrackerTest {

TestSupport::EntityTable congestionConfig();
TestSupport::EntityTable effectiveCongestionConfig();
TestSupport::EntityTable flowGroup();
TestSupport::EntityTable flowTrackerIntfConfig();
TestSupport::EntityTable flowTrackerIntfConfigs();
TestSupport::EntityTable dumpBuffersInstructions();
TestSupport::EntityTable exporterConfig();
TestSupport::EntityTable flowTrackerConfig();
TestSupport::EntityTable config();
TestSupport::EntityTable mirrorOnDropConfig();

} // namespace FlowTrackerTest
