// The cases of the table of versions in docs/log.md.
#include "tests/FlowTracker/VersionCases.h"

namespace FlowTrackerTest {

namespace {

const VersionCase addedAttribute{ "adds an attribute",
   { R"(root FlowTracking::AgentReq agents
set / templateExportReq 3
set / agent sampler
batch
set / agent mirror
batch
)",
         "root FlowTracking::AgentReq agents\n",
         R"(told: / templateExportReq
passed over
has: templateExportReq = 3
end
passed over
has: templateExportReq = 3
end
)" },
   { R"(root FlowTracking::AgentReq agents
set / templateExportReq 3
batch
)",
         R"(root FlowTracking::AgentReq agents
set / agent mine
)",
         R"(told: / templateExportReq
stays: agent = mine
has: templateExportReq = 3
end
)" } };

const VersionCase removedAttribute{ "removes an attribute",
   { R"(root HwFlowWatcher::Capabilities watcher
set / broadscanSupported true
batch
)",
         R"(root HwFlowWatcher::Capabilities watcher
set / awakeSupported true
)",
         R"(told: / broadscanSupported
stays: awakeSupported = true
has: broadscanSupported = true
end
)" },
   { R"(root HwFlowWatcher::Capabilities watcher
set / awakeSupported true
set / broadscanSupported true
batch
set / awakeSupported false
batch
)",
         "root HwFlowWatcher::Capabilities watcher\n",
         R"(told: / broadscanSupported
passed over
has: broadscanSupported = true
end
passed over
has: broadscanSupported = true
end
)" } };

const VersionCase addedCollection{ "adds a collection",
   { R"(root HwFlowTracking::FgStatus group
set /mirrorStatus active true
member /mirrorStatus destination one
batch
member /mirrorStatus destination two
batch
)",
         "root HwFlowTracking::FgStatus group\n",
         R"(told: /mirrorStatus active
passed over
has: active = true
end
passed over
has: active = true
end
)" },
   { R"(root HwFlowTracking::FgStatus group
set /mirrorStatus active true
batch
)",
         R"(root HwFlowTracking::FgStatus group
member /mirrorStatus destination mine
)",
         R"(told: /mirrorStatus active
stays: destination = mine: mine
has: active = true
end
)" } };

const VersionCase addedChildren{ "adds children of a new type",
   { R"(root HwFlowTracking::FgStatus group
set / seqno 2
child / counter bytes
set /counter[bytes] packets 5
batch
set / seqno 3
set /counter[bytes] packets 6
batch
)",
         "root HwFlowTracking::FgStatus group\n",
         R"(told: / seqno
passed over
passed over: HwFlowTracking::FgCounter::packets
has: seqno = 2
end
told: / seqno
passed over: HwFlowTracking::FgCounter::packets
has: seqno = 3
end
)" },
   { R"(root HwFlowTracking::FgStatus group
set / seqno 2
batch
)",
         R"(root HwFlowTracking::FgStatus group
child / counter mine
)",
         R"(told: / seqno
has: seqno = 2
stays: counter = mine
has: HwFlowTracking::FgCounter
has: nameString = mine
has: packets = 0
end
)" } };

const VersionCase otherOrder{ "has attributes in another order",
   { R"(root HwFlowWatcher::Capabilities watcher
set / feature sampled
batch
set / broadscanSupported true
batch
)",
         "root HwFlowWatcher::Capabilities watcher\n",
         R"(told: / feature
arrives: feature = sampled
end
told: / broadscanSupported
arrives: broadscanSupported = true
arrives: feature = sampled
end
)" },
   { R"(root HwFlowWatcher::Capabilities watcher
set / feature sampled
batch
set / broadscanSupported true
batch
)",
         "root HwFlowWatcher::Capabilities watcher\n",
         R"(told: / feature
arrives: feature = sampled
end
told: / broadscanSupported
arrives: feature = sampled
arrives: broadscanSupported = true
end
)" } };

const VersionCase otherDefault{ "changes a default",
   { R"(root FlowTracking::AgentReq agents
batch
set / templateExportReq 7
batch
)",
         "root FlowTracking::AgentReq agents\n",
         R"(told: / templateExportReq
arrives: templateExportReq = 1
end
told: / templateExportReq
has: templateExportReq = 7
end
)" },
   { R"(root FlowTracking::AgentReq agents
batch
set / templateExportReq 7
batch
)",
         "root FlowTracking::AgentReq agents\n",
         R"(told: / templateExportReq
arrives: templateExportReq = 0
end
told: / templateExportReq
has: templateExportReq = 7
end
)" } };

const VersionCase widerBound{ "widens a bound",
   { R"(root HwFlowTracking::FtStatus tracker
set / inactiveTimeout 900000
batch
set / inactiveTimeout 900001
batch
set / inactiveTimeout 3000
whole
)",
         "root HwFlowTracking::FtStatus tracker\n",
         R"(told: / inactiveTimeout
has: inactiveTimeout = 900000
end
refused
told: / inactiveTimeout
has: inactiveTimeout = 3000
end
)" },
   { R"(root HwFlowTracking::FtStatus tracker
set / inactiveTimeout 900000
batch
)",
         "root HwFlowTracking::FtStatus tracker\n",
         R"(told: / inactiveTimeout
arrives: inactiveTimeout = 900000
end
)" } };

const VersionCase addedEnumerator{ "adds an enumerator",
   { R"(root HwFlowTracking::MirrorOnDropHwStatus mirror
set / modEnable enable
batch
set / modEnable partial
batch
set / modEnable error
whole
)",
         "root HwFlowTracking::MirrorOnDropHwStatus mirror\n",
         R"(told: / modEnable
has: modEnable = enable
end
refused
told: / modEnable
has: modEnable = error
end
)" },
   { R"(root HwFlowTracking::MirrorOnDropHwStatus mirror
set / modEnable error
batch
)",
         "root HwFlowTracking::MirrorOnDropHwStatus mirror\n",
         R"(told: / modEnable
arrives: modEnable = error
end
)" } };

/// A change that neither side can read: the first batch is refused, whatever it holds.
VersionCase incompatible(
      const std::string & change, const std::string & newer, const std::string & older )
{
   const std::string report = "refused\n";
   return { change, { newer + "batch\n", older, report }, { older + "batch\n", newer, report } };
}

const VersionCase otherKind = incompatible( "makes an attribute of another kind",
      "root FlowTracking::CongestionConfig congestion\nset / dampingTimeout 5\n",
      "root FlowTracking::CongestionConfig congestion\nset / dampingTimeout 7\n" );

const VersionCase otherType = incompatible( "gives an attribute another type",
      "root HwFlowTracking::Status hardware\nset / sampleRate 2\n",
      "root HwFlowTracking::Status hardware\nset / sampleRate 4\n" );

const VersionCase addedField = incompatible( "adds a field to a value",
      R"(root FlowTracking::ConfigReq operator
set / clearFtStatistics FlowTracking::ClearFtStatisticsReq[agent=a,reqTime=5]
)",
      R"(root FlowTracking::ConfigReq operator
set / clearFtStatistics 6
)" );

const VersionCase exchangedFields = incompatible( "exchanges fields of a value",
      R"(root FlowTracking::EffectiveCongestionConfig congestion
set / interval FlowTracking::CongestionInterval[after=20,before=10]
)",
      R"(root FlowTracking::EffectiveCongestionConfig congestion
set / interval FlowTracking::CongestionInterval[before=15,after=25]
)" );

const VersionCase otherKey = incompatible( "gives a collection another key",
      R"(root HwFlowTracking::Capabilities hardware
member / monitoredCpuQueueSupported 7 1
)",
      R"(root HwFlowTracking::Capabilities hardware
member / monitoredCpuQueueSupported queue 2
)" );

const VersionCase keysOfMembers = incompatible( "reads keys out of the members",
      R"(root FlowTracking::ApplicationIdMap applications
member / application 5 FlowTracking::Application[appId=5,appName="",category="",subCategory=""]
)",
      R"(root FlowTracking::ApplicationIdMap applications
member / application 6 FlowTracking::Application[appId=7,appName="",category="",subCategory=""]
)" );

const VersionCase addedArgument = incompatible( "adds an argument to a constructor",
      "root HwFlowTracking::IntfFtStatus Ethernet1 true \"\" 17\n",
      "root HwFlowTracking::IntfFtStatus Ethernet1 true \"\"\n" );

} // namespace

const std::vector< VersionCase > & versionCases()
{
   static const std::vector< VersionCase > cases = { addedAttribute, removedAttribute,
      addedCollection, addedChildren, otherOrder, otherDefault, widerBound, addedEnumerator,
      otherKind, otherType, addedField, exchangedFields, otherKey, keysOfMembers, addedArgument };
   return cases;
}

} // namespace FlowTrackerTest
