// What each attribute of the requests is: id, name, form, default and another value.
#include "tests/FlowTracker/RequestTables.h"

namespace FlowTrackerTest {

using namespace TestSupport;

EntityTable configReq()
{
   const std::vector< AttributeRow > rows = {
      { 258, "clearCounters", plain( "FlowTracking::ClearCountersReq" ),
            R"(FlowTracking::ClearCountersReq[tracker="",exporter="",reqTime=0])",
            "FlowTracking::ClearCountersReq[tracker=campus,exporter=operators,reqTime=12.5]" },
      { 259, "clearFtStatistics", plain( "FlowTracking::ClearFtStatisticsReq" ), "0", "0.5" },
   };
   return { "FlowTracking::ConfigReq", "nameString", rows };
}

EntityTable agentReq()
{
   const std::vector< AttributeRow > rows = {
      { 258, "templateExportReq", plain( "u32" ), "0", "4294967295" },
   };
   return { "FlowTracking::AgentReq", "nameString", rows };
}

} // namespace FlowTrackerTest
