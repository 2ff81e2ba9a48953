// The entity types of the hardware status and of the capabilities as tables of their attributes.
#pragma once

#include "tests/support/EntityTable.h"

namespace FlowTrackerTest {

TestSupport::EntityTable ftMirrorStatus();
TestSupport::EntityTable fgStatus();
TestSupport::EntityTable ftStatus();
TestSupport::EntityTable intfFtStatus();
TestSupport::EntityTable hwStatus();
TestSupport::EntityTable mirrorOnDropHwStatus();
TestSupport::EntityTable hwCapabilities();
TestSupport::EntityTable flowWatcherCapabilities();

} // namespace FlowTrackerTest
