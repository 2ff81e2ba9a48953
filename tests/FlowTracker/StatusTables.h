// The entity types of the status as tables of their attributes.
#pragma once

#include "tests/support/EntityTable.h"

namespace FlowTrackerTest {

TestSupport::EntityTable exporterStatus();
TestSupport::EntityTable collectorStatus();
TestSupport::EntityTable pktDropCounterUpdateRequest();
TestSupport::EntityTable ftIdStatus();
TestSupport::EntityTable status();
TestSupport::EntityTable trackerStatus();

} // namespace FlowTrackerTest
