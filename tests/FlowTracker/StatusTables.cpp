// What each attribute of the status is: id, name, form, default, another value or a key, and what a
// change of it needs besides.
#include "tests/FlowTracker/StatusTables.h"

namespace FlowTrackerTest {

using namespace TestSupport;

EntityTable exporterStatus()
{
   // A reason is the word of its flags: 8 is an invalid VRF, 72 that and an invalid format.
   const std::vector< AttributeRow > rows = {
      { 258, "inactiveReason",
            map( "Wyre::AddressFamily", "FlowTracking::ExporterInactiveReason" ), "", "ipv4",
            { "8", "72" } },
      { 259, "active", plain( "bool" ), "false", "true" },
      { 260, "collectorStatus", children( "FlowTracking::CollectorStatus", "hostname" ), "",
            "collector" },
   };
   return { "FlowTracking::ExporterStatus", "nameString", rows };
}

EntityTable collectorStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "hostname", argument( "Corvo::String" ), "collector" },
      { 259, "inactiveReason", plain( "FlowTracking::CollectorInactiveReason" ),
            "collectorInactiveReasonUnknown", "collectorNotProcessed" },
      { 260, "active", plain( "bool" ), "false", "true" },
   };
   return { "FlowTracking::CollectorStatus", "hostname", rows };
}

EntityTable pktDropCounterUpdateRequest()
{
   const std::vector< AttributeRow > rows = {
      { 258, "readerSeqNo", plain( "u8" ), "0", "255" },
   };
   return { "FlowTracking::PktDropCounterUpdateRequest", "nameString", rows };
}

EntityTable ftIdStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "nextFtId", plain( "u32" ), "0", "4294967295" },
      { 259, "ftIdToFtName", map( "FlowTracking::FtId", "Corvo::String" ), "", "65535",
            { "campus", R"("")" } },
      { 260, "ftNameToFtId", map( "Corvo::String", "FlowTracking::FtId" ), "", "campus",
            { "0", "65535" } },
   };
   return { "FlowTracking::FtIdStatus", "nameString", rows };
}

EntityTable status()
{
   const std::vector< Corvo::String > responses = {
      "FlowTracking::PktDropCounterUpdateResponse[pktDropReason=ftFullDrops,pktDrops=1,pkts=2,"
      "writerSeqNo=3]",
      "FlowTracking::PktDropCounterUpdateResponse[pktDropReason=ftFullDrops,pktDrops=1,pkts=2,"
      "writerSeqNo=4]",
   };
   const std::vector< AttributeRow > rows = {
      { 258, "ftStatus", children( "FlowTracking::TrackerStatus" ), "", "tracker" },
      { 259, "pktDropResp",
            mapBy( "pktDropReason", "FlowTracking::PktDropReason",
                  "FlowTracking::PktDropCounterUpdateResponse" ),
            "", "ftFullDrops", responses },
   };
   return { "FlowTracking::Status", "nameString", rows };
}

EntityTable trackerStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "inactiveReason", plain( "FlowTracking::TrackerInactiveReason" ),
            "trackerInactiveReasonUnknown", "maxTrackersLimit" },
      { 259, "active", plain( "bool" ), "false", "true" },
      { 260, "expStatus", children( "FlowTracking::ExporterStatus" ), "", "exporter" },
   };
   return { "FlowTracking::TrackerStatus", "nameString", rows };
}

} // namespace FlowTrackerTest
