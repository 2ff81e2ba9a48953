// The entity types of operators' requests as tables of their attributes.
#pragma once

#include "tests/support/EntityTable.h"

namespace FlowTrackerTest {

TestSupport::EntityTable configReq();
TestSupport::EntityTable agentReq();

} // namespace FlowTrackerTest
