// What each change of a newer version of the data model means for streams, tried with trees.
#pragma once

#include <string>
#include <vector>

namespace FlowTrackerTest {

/// A tree that one side writes and the other reads. The scripts and the report are those of
/// tests/versions/Side.cpp, but for the lines of the report that bear out the verdict of the page:
///
///    passed over           the attribute of the row is passed over
///    refused               the batch is refused with the message of the row
///    arrives: LINE         what the writer has is what the replica has
///    stays: LINE           what the replica had before it has still
struct VersionStream {
   std::string writer;
   std::string reader;
   std::string report;
};

/// One row of the page's table.
struct VersionCase {
   std::string change; ///< what the newer version does
   VersionStream toOlder; ///< the newer one writes
   VersionStream toNewer;
};

const std::vector< VersionCase > & versionCases();

} // namespace FlowTrackerTest
