// The form of log lines and of metrics.
#include "tools/flowtrackd/Log.h"
#include "tests/store/World.h"
#include "tools/flowtrackd/Metrics.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <string>

namespace {

using Flowtrackd::Level;
using Flowtrackd::Log;

/// What `f` writes to standard error.
template< class F > std::string written( F f )
{
   testing::internal::CaptureStderr();
   f();
   return testing::internal::GetCapturedStderr();
}

TEST( LogTest, aLineHasTimeLevelEventAndFields )
{
   ASSERT_EQ( unsetenv( "JOURNAL_STREAM" ), 0 );
   const Log log;
   const std::string line = written( [ & ] {
      log.line( Level::warning, "refused",
            { { "path", "a/b" }, { "program", "" }, { "text", "a \"b\"\n" } } );
   } );
   EXPECT_TRUE( std::regex_match( line,
         std::regex( "time=\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z level=warning "
                     "event=refused path=a/b text=\"a \\\\\"b\\\\\"\\\\x0a\"\n" ) ) )
         << line;
}

TEST( LogTest, theJournalIsToldTheLevelInItsOwnWay )
{
   ASSERT_EQ( setenv( "JOURNAL_STREAM", "8:1", 1 ), 0 );
   Log log;
   using Vok::Store::Event;
   EXPECT_EQ( written( [ & ] { log.happened( { Event::Kind::notKept, "a", "p", {}, "full" } ); } ),
         "<3>level=error event=notKept path=a program=p text=full\n" );
   EXPECT_EQ( written( [ & ] { log.happened( { Event::Kind::greeted, {}, "p", "pid 1", {} } ); } ),
         "<6>level=info event=greeted program=p peer=\"pid 1\"\n" );
   ASSERT_EQ( unsetenv( "JOURNAL_STREAM" ), 0 );
}

/// Nothing that a client calls itself makes two lines of one, or another field.
TEST( LogTest, aValueStaysOneField )
{
   for ( const char * const value : { "", "a b", "a=b", "\"", "\\", "\n", "\x7f", "a\tb" } ) {
      std::string line;
      Flowtrackd::appendField( line, "x", value );
      EXPECT_TRUE( std::regex_match( line, std::regex( " x=\"([^\"\\\\\n]|\\\\.)*\"" ) ) ) << line;
   }
   std::string line;
   Flowtrackd::appendField( line, "x", "a/b-c.d:1" );
   EXPECT_EQ( line, " x=a/b-c.d:1" );
}

TEST( MetricsTest, areTheStoresCounters )
{
   TestSupport::TestStore store;
   TestSupport::TestClient one( store, "one" );
   TestSupport::TestClient two( store, "two" );
   one.connect();
   two.connect();
   const auto root = ::Test::Root::RootIs( "a" );
   const auto writing = one.client.write( "a/b", root );
   TestSupport::Mounts mounts;
   const auto reading = two.client.read( "a/b", mounts );
   settle( store, { &one, &two } );
   root->midIs( 7 );
   settle( store, { &one, &two } );
   const std::string text = Flowtrackd::metricsText( *store.server );
   for ( const char * const line : { "\n# TYPE flowtrackd_batches_in_total counter\n",
               "\nflowtrackd_sessions 2\n", "\nflowtrackd_sessions_total 2\n",
               "\nflowtrackd_mounts 1\n", "\nflowtrackd_refusals_total 0\n",
               "\nflowtrackd_mount_batches_in_total{path=\"a/b\"} 2\n",
               "\nflowtrackd_mount_whole_trees_total{path=\"a/b\"} 1\n",
               "\nflowtrackd_mount_readers{path=\"a/b\"} 1\n",
               "\nflowtrackd_mount_stale{path=\"a/b\"} 0\n",
               "\nflowtrackd_mount_since_seconds{path=\"a/b\"} 1\n",
               "\nflowtrackd_mount_not_kept{path=\"a/b\"} 0\n" } ) {
      EXPECT_NE( ( "\n" + text ).find( line ), std::string::npos ) << line << text;
   }
}

} // namespace
