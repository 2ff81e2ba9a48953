// Disks that fail: what is told to be kept is kept, what is not is told, and the next whole tree
// is kept once the disk works again.
#include "tests/store/sqlite/Keeping.h"
#include "tests/store/sqlite/TestDisk.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <system_error>

namespace {

using namespace TestSupport;

constexpr std::size_t large = 280000; // more than SQLite's cache has

struct Step {
   const char * path;
   bool whole;
   std::optional< std::size_t > size; ///< none: it is removed
};

constexpr std::array< Step, 15 > steps = { {
      { "a", true, 300 },
      { "a", false, 100 },
      { "config/b", true, 5000 },
      { "config/b", false, 5000 },
      { "a", false, 100 },
      { "a", true, 9000 },
      { "config/b", true, 200 },
      { "config/b", false, large },
      { "a", false, std::nullopt },
      { "a", true, 100 },
      { "c", true, 100 },
      { "c", false, std::nullopt },
      { "a", false, 100 },
      { "last", true, 100 }, // after which nothing brings its name to the disk but itself
      { "last", false, 100 },
} };

/// Goes through the steps, as a store would: after a problem with whole trees, until they are kept.
class Walk {
 public:
   Walk( const std::string & folder, TestDisk & disk ) : folder_( folder ),
                                                         disk_( disk ) {}

   /// Whether all went well to the end.
   bool untilAProblem() { return walk( false ); }

   /// The disk works again from the second problem of a step on.
   void toTheEnd()
   {
      EXPECT_TRUE( walk( true ) );
   }

   /// What may be kept then.
   History history;

   /// All problems.
   std::string problems;

 private:
   bool walk( bool on )
   {
      std::unique_ptr< Keeping > one = begin( on );
      if ( one == nullptr ) {
         return false;
      }
      for ( const Step & step : steps ) {
         if ( !step.size ) {
            history.removing( step.path );
            one->keeper.remove( step.path );
         } else if ( !keep( *one, step, on ) ) {
            return false;
         }
      }
      return true;
   }

   std::unique_ptr< Keeping > begin( bool on )
   {
      try {
         return std::make_unique< Keeping >( folder_, disk_ );
      } catch ( const std::system_error & e ) {
         EXPECT_EQ( std::string( e.what() ).find( folder_.substr( 0, folder_.rfind( '/' ) ) ), 0U );
         problems += e.what();
      }
      disk_.heal();
      return on ? std::make_unique< Keeping >( folder_, disk_ ) : nullptr;
   }

   bool keep( Keeping & one, const Step & step, bool on )
   {
      for ( int i = 0; i != 3; ++i ) {
         const bool whole = step.whole || history.needsWhole( step.path );
         const auto request = requestOf( step.path, ++number_, whole, *step.size );
         history.asked( request );
         one.keeper.keep( request );
         if ( isKept( one ) ) {
            return true;
         }
         if ( !on ) {
            return false;
         }
         if ( i == 1 ) {
            disk_.heal();
         }
      }
      ADD_FAILURE() << "it is not kept although the disk works: " << problems;
      return false;
   }

   /// Of the last one that was asked. What could not be removed before is told, too.
   bool isKept( Keeping & one )
   {
      while ( true ) {
         for ( const auto & result : one.next() ) {
            history.told( result );
            if ( !result.problem.empty() ) {
               problems += result.problem + "\n";
            }
            if ( result.number == number_ ) {
               return result.problem.empty();
            }
         }
      }
   }

   const std::string folder_;
   TestDisk & disk_;
   std::uint64_t number_ = 0;
};

class KeeperFaultTest : public testing::TestWithParam< TestDisk::Fault > {
 protected:
   /// What is found by a process that comes later.
   static void check( const std::string & folder, History & history )
   {
      TestDisk disk( 0 ); // which does not wait for syncs
      Keeping later( folder, disk );
      EXPECT_EQ( history.found( later.load() ), "" );
      const auto results = later.keeper.results();
      EXPECT_TRUE( results.empty() ) << results[ 0 ].problem;
   }
};

TEST_P( KeeperFaultTest, atEachOperationNothingIsLostThatWasKept )
{
   std::size_t k = 1;
   bool reached = true;
   for ( ; reached && !HasFailure(); ++k ) {
      SCOPED_TRACE( "operation " + std::to_string( k ) );
      const Folder folder;
      TestDisk disk( k );
      Walk walk( folder.kept(), disk );
      disk.failAt( k, GetParam() );
      walk.untilAProblem();
      reached = disk.failed();
      disk.heal();
      check( folder.kept(), walk.history );
      if ( HasFailure() ) {
         ADD_FAILURE() << walk.problems;
      }
   }
   EXPECT_GT( k, 60U ) << "too few operations to be all";
}

// The power may go then. A sync that failed may have left what the system takes for written, and
// the disk never gets.
TEST_P( KeeperFaultTest, afterEachOperationItGoesOn )
{
   std::size_t k = 1;
   std::size_t told = 0;
   std::mt19937_64 random( 7 );
   bool reached = true;
   for ( ; reached && !HasFailure(); ++k ) {
      SCOPED_TRACE( "operation " + std::to_string( k ) );
      const Folder folder;
      TestDisk disk( k );
      Walk walk( folder.kept(), disk );
      disk.failAt( k, GetParam() );
      walk.toTheEnd();
      reached = disk.failed();
      told += walk.problems.empty() ? 0U : 1U;
      for ( int i = 0; i != 2; ++i ) {
         SCOPED_TRACE( "after the power went" );
         const std::string after = folder.path() + "/after" + std::to_string( i );
         disk.restore( folder.kept(), after, random );
         History history = walk.history;
         check( after, history );
      }
      check( folder.kept(), walk.history );
      if ( HasFailure() ) {
         ADD_FAILURE() << walk.problems;
      }
   }
   EXPECT_GT( k, 60U ) << "too few operations to be all";
   EXPECT_GT( told, 30U );
}

INSTANTIATE_TEST_SUITE_P( Faults, KeeperFaultTest,
      testing::Values( TestDisk::Fault::once, TestDisk::Fault::on, TestDisk::Fault::full ),
      []( const auto & test ) {
         return test.param == TestDisk::Fault::once ? "once"
               : test.param == TestDisk::Fault::on  ? "on"
                                                    : "full";
      } );

TEST( KeeperProblemTest, aProblemSaysWhatAndWhere )
{
   const Folder folder;
   TestDisk disk( 1 );
   Keeping one( folder.kept(), disk );
   EXPECT_EQ( one.keep( "a", true, "one" ), "" );
   EXPECT_EQ( one.keep( "a", false, "two" ), "" );
   disk.failAt( 1, TestDisk::Fault::full );
   EXPECT_EQ( one.keep( "a", false, "three" ),
         folder.file( "a" ) + " cannot be used; SQLite says: database or disk is full (13)" );
   EXPECT_EQ( one.keep( "b", true, "four" ).find( folder.kept() + "/making" ), 0U );
   disk.heal();
   EXPECT_EQ( one.keep( "a", true, "five" ), "" );
}

// An error while reading is no damage: another time it may be read.
TEST( KeeperProblemTest, whatCannotBeReadIsLeftThere )
{
   const Folder folder;
   {
      Keeping one( folder.kept() );
      EXPECT_EQ( one.keep( requestOf( "a", 1, true, 30000 ) ), "" );
      EXPECT_EQ( one.keep( requestOf( "a", 2, false, 30000 ) ), "" );
      EXPECT_EQ( one.keep( requestOf( "a", 3, true, 30000 ) ), "" );
   }
   std::size_t k = 1;
   std::size_t told = 0;
   for ( bool reached = true; reached; ++k ) {
      SCOPED_TRACE( "read " + std::to_string( k ) );
      TestDisk disk( k );
      Keeping one( folder.kept(), disk );
      disk.failReadAt( k );
      const auto kept = one.load();
      reached = disk.failed();
      const auto results = one.keeper.results();
      EXPECT_EQ( kept.size() + results.size(), 1U );
      if ( !kept.empty() ) {
         EXPECT_EQ( kept.at( "a" ).batches, Batches{ batchOf( 3, 30000 ) } );
      } else if ( results.size() == 1 ) {
         EXPECT_TRUE( results[ 0 ].problem.ends_with( ": it is left there" ) )
               << results[ 0 ].problem;
         ++told;
      }
   }
   EXPECT_GT( told, 5U );
   EXPECT_TRUE( folder.aside().empty() );
}

} // namespace
