// What is kept is there again; what is replaced, removed or set aside is not.
#include "store/sqlite/SqliteKeeper.h"

#include "tests/store/sqlite/Keeping.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>

namespace {

using namespace TestSupport;
using Vok::Store::PathPattern;

TEST( SqliteKeeperTest, whatIsKeptIsThereAgain )
{
   const Folder folder;
   {
      Keeping first( folder.kept() );
      EXPECT_TRUE( first.load().empty() );
      EXPECT_EQ( first.keep( "config/a", true, "whole" ), "" );
      EXPECT_EQ( first.keep( "config/a", false, "change" ), "" );
      EXPECT_EQ( first.keep( "b", true, "" ), "" );
      const Keeper::Request last{ "config/a", "Other::Type", "other writer", 7, false,
         std::make_shared< const Keeper::Bytes >( bytesOf( std::string( 1, '\0' ) ) ) };
      EXPECT_EQ( first.keep( last ), "" );
   }
   for ( int i = 0; i != 2; ++i ) {
      Keeping again( folder.kept() );
      const auto kept = again.load();
      ASSERT_EQ( kept.size(), 2U );
      EXPECT_EQ( kept.at( "config/a" ).path, "config/a" );
      EXPECT_EQ( kept.at( "config/a" ).type, "Other::Type" );
      EXPECT_EQ( kept.at( "config/a" ).writer, "other writer" );
      Batches batches = texts( { "whole", "change" } );
      batches.push_back( bytesOf( std::string( 1, '\0' ) ) );
      EXPECT_EQ( kept.at( "config/a" ).batches, batches );
      EXPECT_EQ( kept.at( "b" ).type, "Test::Root" );
      EXPECT_EQ( kept.at( "b" ).writer, "writer" );
      EXPECT_EQ( kept.at( "b" ).batches, texts( { "" } ) );
      EXPECT_TRUE( again.keeper.results().empty() );
   }
}

TEST( SqliteKeeperTest, aWholeTreeReplacesWhatWasKept )
{
   const Folder folder;
   {
      Keeping first( folder.kept() );
      EXPECT_EQ( first.keep( "a", true, "one" ), "" );
      EXPECT_EQ( first.keep( "a", false, "two" ), "" );
      EXPECT_EQ( first.keep( "a", true, "three" ), "" );
      EXPECT_EQ( first.keep( "a", false, "four" ), "" );
   }
   Keeping again( folder.kept() );
   EXPECT_EQ( again.load().at( "a" ).batches, texts( { "three", "four" } ) );
   EXPECT_EQ( again.keep( "a", false, "five" ), "" );
   EXPECT_EQ( again.keep( "a", true, "six" ), "" );
   EXPECT_EQ( again.load().at( "a" ).batches, texts( { "six" } ) );
}

TEST( SqliteKeeperTest, whatIsRemovedIsGone )
{
   const Folder folder;
   {
      Keeping first( folder.kept() );
      EXPECT_EQ( first.keep( "a", true, "one" ), "" );
      EXPECT_EQ( first.keep( "b", true, "two" ), "" );
      first.keeper.remove( "a" );
      first.keeper.remove( "neverThere" );
      EXPECT_NE( first.keep( "a", false, "three" ), "" ) << "there is nothing that it could follow";
   }
   {
      Keeping again( folder.kept() );
      EXPECT_EQ( again.load().size(), 1U );
      EXPECT_EQ( again.keep( "a", true, "four" ), "" );
      again.keeper.remove( "b" );
   }
   Keeping last( folder.kept() );
   const auto kept = last.load();
   ASSERT_EQ( kept.size(), 1U );
   EXPECT_EQ( kept.at( "a" ).batches, texts( { "four" } ) );
   EXPECT_TRUE( last.keeper.results().empty() );
   EXPECT_TRUE( folder.aside().empty() );
}

TEST( SqliteKeeperTest, whatIsSetAsideIsWherePeopleFindIt )
{
   const Folder folder;
   {
      Keeping first( folder.kept() );
      EXPECT_EQ( first.keep( "config/a", true, "one" ), "" );
      first.keeper.setAside( "config/a", "the type Test::Root is not known" );
      EXPECT_EQ( first.keep( "config/a", true, "two" ), "" );
      first.keeper.setAside( "config/a", "nor now" );
   }
   Keeping again( folder.kept() );
   EXPECT_TRUE( again.load().empty() );
   const auto aside = folder.aside();
   ASSERT_EQ( aside.size(), 2U );
   std::string whys;
   for ( const std::string & one : aside ) {
      EXPECT_NE( one.find( "/config+a@20" ), std::string::npos ) << one;
      EXPECT_TRUE( std::filesystem::exists( one + "/mount.sqlite" ) );
      whys += fileText( one + "/why.txt" );
   }
   EXPECT_EQ( whys.find( "config/a\n20" ), 0U ) << whys;
   EXPECT_NE( whys.find( "Z\nthe type Test::Root is not known\n" ), std::string::npos ) << whys;
   EXPECT_NE( whys.find( "Z\nnor now\n" ), std::string::npos ) << whys;

   // It is a mount as it was, for who puts it back.
   std::filesystem::rename( aside[ 0 ], folder.kept() + "/mounts/config+a" );
   EXPECT_EQ( again.load().at( "config/a" ).batches.size(), 1U );
}

TEST( SqliteKeeperTest, whatCannotBeSetAsideIsTold )
{
   const Folder folder;
   Keeping one( folder.kept() );
   one.keeper.setAside( "a", "why" );
   const auto results = one.next();
   ASSERT_EQ( results.size(), 1U );
   EXPECT_EQ( results[ 0 ].path, "a" );
   EXPECT_EQ( results[ 0 ].number, 0U );
   EXPECT_NE( results[ 0 ].problem.find( "/mounts/a cannot be moved to" ), std::string::npos )
         << results[ 0 ].problem;
}

TEST( SqliteKeeperTest, batchesOfAnySizeAreKept )
{
   constexpr std::size_t piece = std::size_t{ 1 } << 20;
   const Folder folder;
   const std::size_t sizes[] = { piece - 1, piece, piece + 1, 3 * piece, 1, 0, 20 * piece + 5 };
   {
      Keeping first( folder.kept() );
      for ( std::uint64_t i = 0; i != std::size( sizes ); ++i ) {
         EXPECT_EQ( first.keep( requestOf( "a", i + 1, i == 0, sizes[ i ] ) ), "" );
      }
   }
   Keeping again( folder.kept() );
   const auto kept = again.load();
   ASSERT_EQ( kept.at( "a" ).batches.size(), std::size( sizes ) );
   for ( std::uint64_t i = 0; i != std::size( sizes ); ++i ) {
      EXPECT_TRUE( kept.at( "a" ).batches[ i ] == batchOf( i + 1, sizes[ i ] ) ) << i;
   }
}

/// Descriptors that the process has.
std::ptrdiff_t descriptors()
{
   using std::filesystem::directory_iterator;
   return std::distance( directory_iterator( "/proc/self/fd" ), directory_iterator() );
}

TEST( SqliteKeeperTest, manyMountsAreKept )
{
   const Folder folder;
   constexpr int count = 100;
   const auto before = descriptors();
   {
      Keeping first( folder.kept() );
      for ( const bool whole : { true, false } ) {
         for ( int i = 0; i != count; ++i ) {
            ASSERT_EQ( first.keep( "m/" + std::to_string( i ), whole, std::to_string( i ) ), "" );
         }
      }
      EXPECT_LT( descriptors() - before, 2 * count ) << "each that is open has three";
   }
   EXPECT_EQ( descriptors(), before );
   Keeping again( folder.kept() );
   const auto kept = again.load();
   ASSERT_EQ( kept.size(), std::size_t{ count } );
   for ( const auto & [ path, one ] : kept ) {
      const Keeper::Bytes bytes = bytesOf( path.substr( 2 ) );
      EXPECT_EQ( one.batches, ( Batches{ bytes, bytes } ) );
   }
}

TEST( SqliteKeeperTest, patternsSayWhatIsKept )
{
   const Folder folder;
   {
      Keeping all( folder.kept() );
      EXPECT_EQ( all.keep( "config/a", true, "one" ), "" );
      EXPECT_EQ( all.keep( "status/a", true, "two" ), "" );
   }
   SqliteKeeper some( folder.kept(), { PathPattern( "x" ), PathPattern( "config/*" ) }, [] {} );
   EXPECT_TRUE( some.keeps( "x" ) );
   EXPECT_TRUE( some.keeps( "config/b" ) );
   EXPECT_FALSE( some.keeps( "config" ) );
   const auto kept = some.load();
   ASSERT_EQ( kept.size(), 1U );
   EXPECT_EQ( kept[ 0 ].path, "config/a" );
   const auto results = some.results();
   ASSERT_EQ( results.size(), 1U );
   EXPECT_EQ( results[ 0 ].path, "status/a" );
   EXPECT_NE( results[ 0 ].problem.find( "is not kept any more" ), std::string::npos );
   EXPECT_TRUE( std::filesystem::exists( folder.file( "status+a" ) ) );
}

TEST( SqliteKeeperTest, whatWasAskedIsDoneBeforeTheKeeperGoes )
{
   const Folder folder;
   constexpr std::uint64_t count = 200;
   {
      Keeping one( folder.kept() );
      for ( std::uint64_t i = 1; i <= count; ++i ) {
         one.keeper.keep( requestOf( "a", i, i == 1, 10 ) );
      }
      one.keeper.keep( requestOf( "b", count + 1, true, 10 ) );
      one.keeper.remove( "b" );
   }
   EXPECT_FALSE( std::filesystem::exists( folder.file( "a" ) + "-wal" ) ) << "it was not finished";
   Keeping again( folder.kept() );
   const auto kept = again.load();
   ASSERT_EQ( kept.size(), 1U );
   EXPECT_EQ( kept.at( "a" ).batches.size(), count );
}

TEST( SqliteKeeperTest, resultsComeInOrder )
{
   const Folder folder;
   Keeping one( folder.kept() );
   constexpr std::uint64_t count = 100;
   for ( std::uint64_t i = 1; i <= count; ++i ) {
      one.keeper.keep( requestOf( i % 3 == 0 ? "a" : "b", i, i < 4, 10 ) );
   }
   std::uint64_t next = 1;
   while ( next <= count ) {
      for ( const auto & result : one.next() ) {
         EXPECT_EQ( result.number, next );
         EXPECT_EQ( result.path, next % 3 == 0 ? "a" : "b" );
         EXPECT_EQ( result.problem, "" );
         ++next;
      }
   }
}

// Somebody looks into a database and keeps it locked: a problem that passes.
TEST( SqliteKeeperTest, aDatabaseInUseIsAProblemThatPasses )
{
   const Folder folder;
   Keeping one( folder.kept() );
   EXPECT_EQ( one.keep( "a", true, "zero" ), "" );
   EXPECT_EQ( one.keep( "a", false, "one" ), "" );
   sqlite3 * other = nullptr;
   ASSERT_EQ( sqlite3_open( folder.file( "a" ).c_str(), &other ), SQLITE_OK );
   ASSERT_EQ( sqlite3_exec( other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr ), SQLITE_OK );
   const std::string problem = one.keep( "a", false, "two" );
   EXPECT_EQ( problem.find( folder.file( "a" ) ), 0U ) << problem;
   EXPECT_NE( problem.find( "database is locked" ), std::string::npos ) << problem;
   EXPECT_NE( one.keep( "a", true, "two" ).find( "is in use" ), std::string::npos );
   sqlite3_close( other );
   EXPECT_NE( one.keep( "a", false, "three" ), "" ) << "it is to be a whole tree";
   EXPECT_EQ( one.keep( "a", true, "four" ), "" );
   EXPECT_EQ( one.keep( "a", false, "five" ), "" );
   EXPECT_EQ( one.load().at( "a" ).batches, texts( { "four", "five" } ) );
}

} // namespace
