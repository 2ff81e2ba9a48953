// The folder of kept mounts: its names, whose it is, and what in it is not the keeper's.
#include "store/sqlite/detail/MountFolder.h"

#include "tests/store/sqlite/Keeping.h"

#include <gtest/gtest.h>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>

namespace {

using namespace TestSupport;

TEST( KeeperFolderTest, namesOfPathsComeBack )
{
   using Vok::Store::Detail::nameOfPath;
   using Vok::Store::Detail::pathOfName;
   const std::string longest( Vok::Store::longestPath, 'x' );
   for ( const std::string & path : { std::string( "a" ), std::string( "." ), std::string( ".." ),
               std::string( "./.." ), std::string( "../a/." ), std::string( "A-z_0.9:x/lock" ),
               longest } ) {
      const std::string name = nameOfPath( path );
      EXPECT_EQ( name.find( '/' ), std::string::npos );
      EXPECT_NE( name, "." );
      EXPECT_NE( name, ".." );
      EXPECT_EQ( pathOfName( name ), path );
   }
   for ( const char * const name : { "", "+", "+a", "a+", "a++b", "+...", "a b", "a@b" } ) {
      EXPECT_EQ( pathOfName( name ), std::nullopt ) << name;
   }
}

TEST( KeeperFolderTest, everyPathIsKept )
{
   const Folder folder;
   const std::string paths[] = { ".", "..", "./..", "lock", "aside/mounts",
      std::string( Vok::Store::longestPath, 'x' ), "a", "A" };
   {
      Keeping first( folder.kept() );
      for ( const std::string & path : paths ) {
         EXPECT_EQ( first.keep( path, true, path ), "" );
         first.keeper.setAside( path, "for a while" );
         EXPECT_EQ( first.keep( path, true, path + " again" ), "" );
      }
   }
   Keeping again( folder.kept() );
   const auto kept = again.load();
   EXPECT_EQ( kept.size(), std::size( paths ) );
   for ( const std::string & path : paths ) {
      EXPECT_EQ( kept.at( path ).batches, Batches{ bytesOf( path + " again" ) } ) << path;
   }
   EXPECT_EQ( folder.aside().size(), std::size( paths ) );
}

TEST( KeeperFolderTest, theFolderIsForTheOwnerAlone )
{
   const Folder folder;
   const Keeping one( folder.kept() );
   struct stat status {};
   ASSERT_EQ( stat( folder.kept().c_str(), &status ), 0 );
   EXPECT_EQ( status.st_mode & 0777, 0700U );
}

/// What the constructor says of a folder.
std::string refusal( const std::string & folder, std::errc code )
{
   try {
      const Keeping one( folder );
   } catch ( const std::system_error & e ) {
      EXPECT_EQ( e.code(), code ) << e.what();
      return e.what();
   }
   return "";
}

TEST( KeeperFolderTest, aFolderThatCannotBeUsedIsRefusedByName )
{
   const Folder folder;
   writeFile( folder.kept(), "text" );
   EXPECT_EQ( refusal( folder.kept(), std::errc::not_a_directory ).find( folder.kept() ), 0U );
   const std::string missing = folder.path() + "/missing/kept";
   EXPECT_EQ( refusal( missing, std::errc::no_such_file_or_directory ).find( missing ), 0U );
   const std::string longest = folder.path() + "/" + std::string( 240, 'x' );
   EXPECT_EQ( refusal( longest, std::errc::filename_too_long ).find( longest ), 0U );
   if ( geteuid() != 0 ) { // who may do everything
      const std::string locked = folder.path() + "/locked";
      std::filesystem::create_directory( locked );
      std::filesystem::permissions( locked, std::filesystem::perms::owner_read );
      EXPECT_EQ( refusal( locked, std::errc::permission_denied ).find( locked ), 0U );
   }
}

TEST( KeeperFolderTest, aFolderHasOneKeeperAtATime )
{
   const Folder folder;
   {
      Keeping first( folder.kept() );
      const std::string why = refusal( folder.kept(), std::errc::device_or_resource_busy );
      EXPECT_EQ( why.find( folder.kept() + " is in use by process " + std::to_string( getpid() ) ),
            0U )
            << why;
      EXPECT_EQ( first.keep( "a", true, "one" ), "" );
   }
   Keeping second( folder.kept() );
   EXPECT_EQ( second.load().size(), 1U );
}

TEST( KeeperFolderTest, aRelativeFolderStaysWhereItWas )
{
   const Folder folder;
   const auto before = std::filesystem::current_path();
   std::filesystem::current_path( folder.path() );
   {
      Keeping one( "kept/" );
      std::filesystem::current_path( before );
      EXPECT_EQ( one.keep( "a", true, "one" ), "" );
   }
   EXPECT_TRUE( std::filesystem::exists( folder.file( "a" ) ) );
}

TEST( KeeperFolderTest, whatIsNoMountIsLeftAlone )
{
   const Folder folder;
   Keeping one( folder.kept() );
   EXPECT_EQ( one.keep( "a", true, "one" ), "" );
   writeFile( folder.kept() + "/notes", "text" );
   writeFile( folder.kept() + "/mounts/a b", "text" );
   EXPECT_EQ( one.load().size(), 1U );
   const auto results = one.next();
   ASSERT_EQ( results.size(), 1U );
   EXPECT_EQ( results[ 0 ].path, "a b" );
   EXPECT_EQ( fileText( folder.kept() + "/mounts/a b" ), "text" );
   EXPECT_EQ( fileText( folder.kept() + "/notes" ), "text" );
}

/// A file that is not the keeper's, or that it does not know.
class KeeperForeignTest : public testing::TestWithParam< const char * > {};

TEST_P( KeeperForeignTest, isNotTouched )
{
   const Folder folder;
   {
      Keeping first( folder.kept() );
      EXPECT_EQ( first.keep( "a", true, "one" ), "" );
      EXPECT_EQ( first.keep( "b", true, "two" ), "" );
   }
   runIn( folder.file( "a" ), GetParam() );
   const std::string before = fileText( folder.file( "a" ) );
   {
      Keeping again( folder.kept() );
      const auto kept = again.load();
      EXPECT_EQ( kept.size(), 1U );
      EXPECT_TRUE( kept.contains( "b" ) );
      const auto results = again.next();
      ASSERT_EQ( results.size(), 1U );
      EXPECT_EQ( results[ 0 ].path, "a" );
      EXPECT_EQ( results[ 0 ].number, 0U );
      EXPECT_EQ( results[ 0 ].problem.find( folder.file( "a" ) + " is " ), 0U )
            << results[ 0 ].problem;
      EXPECT_EQ( again.keep( "a", true, "three" ) + ": it is left there", results[ 0 ].problem );
   }
   EXPECT_TRUE( fileText( folder.file( "a" ) ) == before );
   EXPECT_TRUE( folder.aside().empty() );
}

INSTANTIATE_TEST_SUITE_P( Kinds, KeeperForeignTest,
      testing::Values( "PRAGMA application_id = 77", "PRAGMA user_version = 2",
            "PRAGMA application_id = 0; PRAGMA journal_mode = DELETE" ) );

// Who goes on after a newer version has ended without time to finish: what is newer is in the log.
TEST( KeeperFolderTest, aNewerVersionInTheLogIsNotTouched )
{
   const Folder folder;
   {
      Keeping first( folder.kept() );
      EXPECT_EQ( first.keep( "a", true, "one" ), "" );
   }
   sqlite3 * newer = nullptr;
   ASSERT_EQ( sqlite3_open( folder.file( "a" ).c_str(), &newer ), SQLITE_OK );
   sqlite3_db_config( newer, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr );
   EXPECT_EQ( sqlite3_exec( newer, "PRAGMA user_version = 2", nullptr, nullptr, nullptr ),
         SQLITE_OK );
   sqlite3_close( newer );
   const std::string log = folder.file( "a" ) + "-wal";
   const std::string before = fileText( log );
   ASSERT_FALSE( before.empty() );
   Keeping again( folder.kept() );
   EXPECT_TRUE( again.load().empty() );
   EXPECT_EQ( again.next().size(), 1U );
   EXPECT_NE( again.keep( "a", true, "two" ).find( "is of version 2" ), std::string::npos );
   EXPECT_TRUE( fileText( log ) == before );
}

// A process was killed that wrote it: SQLite would take back what that had begun.
TEST( KeeperFolderTest, whatAnotherHasBegunIsNotTouched )
{
   const Folder folder;
   const std::string begun = folder.path() + "/begun";
   sqlite3 * other = nullptr;
   ASSERT_EQ( sqlite3_open( begun.c_str(), &other ), SQLITE_OK );
   EXPECT_EQ( sqlite3_exec( other,
                    "PRAGMA application_id = 77; CREATE TABLE t( x ); PRAGMA cache_size = 1;"
                    "BEGIN; INSERT INTO t VALUES( zeroblob( 1000000 ) )",
                    nullptr, nullptr, nullptr ),
         SQLITE_OK );
   const std::string database = fileText( begun );
   const std::string journal = fileText( begun + "-journal" );
   sqlite3_close( other );
   ASSERT_GT( database.size(), 500000U );
   ASSERT_FALSE( journal.empty() );

   Keeping one( folder.kept() );
   std::filesystem::create_directory( folder.kept() + "/mounts/a" );
   writeFile( folder.file( "a" ), database );
   writeFile( folder.file( "a" ) + "-journal", journal );
   EXPECT_TRUE( one.load().empty() );
   EXPECT_NE( one.next().at( 0 ).problem.find( "is no kept mount" ), std::string::npos );
   EXPECT_NE( one.keep( "a", true, "one" ), "" );
   EXPECT_TRUE( fileText( folder.file( "a" ) ) == database );
   EXPECT_TRUE( fileText( folder.file( "a" ) + "-journal" ) == journal );
}

} // namespace
