// The entity types of the hardware configuration as tables of their attributes.
#pragma once

#include "tests/support/EntityTable.h"

namespace FlowTrackerTest {

TestSupport::EntityTable fgConfig();
TestSupport::EntityTable hwFgConfigMap();
TestSupport::EntityTable hwExporterConfig();
TestSupport::EntityTable localCollectorConfig();
TestSupport::EntityTable monitoredCpuQueue();
TestSupport::EntityTable ftConfig();
TestSupport::EntityTable intfFtConfig();
TestSupport::EntityTable hwConfig();

} // namespace FlowTrackerTest
