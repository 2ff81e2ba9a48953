// Files that are damaged: what is loaded of them was kept at some time, or they are set aside.
#include "tests/store/sqlite/Keeping.h"
#include "tests/store/sqlite/TestDisk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace TestSupport;

/// Which file is damaged.
struct Which {
   const char * name;
   bool ended; ///< the keeper has: there is no log
   bool log; ///< it is the log, not the database
};

/// A folder with two mounts, of which one is damaged, again and again.
class KeeperDamageTest : public testing::TestWithParam< Which > {
 protected:
   // The database has a part of what was kept, and the log, if there is one, the rest.
   void SetUp() override
   {
      const Folder folder;
      {
         Keeping one( folder.kept() );
         EXPECT_EQ( one.keep( "other", true, "other" ), "" );
         keep( one, true, 3000 );
         keep( one, false, 100 );
         keep( one, true, 20000 );
      }
      {
         Keeping two( folder.kept() );
         keep( two, false, 3000 );
         keep( two, true, 9000 );
         keep( two, false, 100 );
         if ( !GetParam().ended ) {
            take( folder );
         }
      }
      if ( GetParam().ended ) {
         take( folder );
      }
      EXPECT_EQ( log.empty(), GetParam().ended );
   }

   void keep( Keeping & one, bool whole, std::size_t size )
   {
      if ( whole ) {
         state.clear();
      }
      state.push_back( batchOf( ++number, size ) );
      states.push_back( state );
      EXPECT_EQ( one.keep( requestOf( "a", number, whole, size ) ), "" );
   }

   void take( const Folder & folder )
   {
      database = fileText( folder.file( "a" ) );
      log = fileText( folder.file( "a" ) + "-wal" );
      other = fileText( folder.file( "other" ) );
   }

   /// The file that is damaged here.
   std::string & damaged() { return GetParam().log ? log : database; }

   /// What becomes of the files as they are now.
   void check()
   {
      TestDisk disk( 0 ); // because the machine's would take most of the time
      const Folder folder;
      for ( const char * const name : { "a", "other" } ) {
         std::filesystem::create_directories( folder.kept() + "/mounts/" + name );
      }
      writeFile( folder.file( "a" ), database );
      if ( !log.empty() ) {
         writeFile( folder.file( "a" ) + "-wal", log );
      }
      writeFile( folder.file( "other" ), other );

      Keeping one( folder.kept(), disk );
      const auto kept = one.load();
      ASSERT_EQ( kept.count( "other" ), 1U );
      EXPECT_EQ( kept.at( "other" ).batches, texts( { "other" } ) );
      const auto results = one.keeper.results();
      if ( const auto at = kept.find( "a" ); at != kept.end() ) {
         EXPECT_TRUE( results.empty() );
         checkLoaded( at->second );
      } else {
         ASSERT_EQ( results.size(), 1U );
         EXPECT_EQ( results[ 0 ].path, "a" );
         checkRefused( folder, one, results[ 0 ].problem );
      }
   }

   // What a log lacks at its end nobody can tell from what was never written.
   void checkLoaded( const Keeper::Kept & kept )
   {
      EXPECT_EQ( kept.type, "Test::Root" );
      const auto first = GetParam().log ? states.begin() : states.end() - 1;
      EXPECT_TRUE( std::find( first, states.end(), kept.batches ) != states.end() );
      ++loaded;
   }

   void checkRefused( const Folder & folder, Keeping & one, const std::string & problem )
   {
      EXPECT_EQ( problem.find( folder.file( "a" ) ), 0U ) << problem;
      if ( problem.ends_with( "it is left there" ) ) {
         EXPECT_TRUE( fileText( folder.file( "a" ) ) == database );
         EXPECT_NE( one.keep( "a", true, "new" ), "" );
         ++foreign;
         return;
      }
      const auto aside = folder.aside();
      ASSERT_EQ( aside.size(), 1U ) << problem;
      EXPECT_TRUE( problem.ends_with( "; it was set aside as " + aside[ 0 ] ) ) << problem;
      EXPECT_EQ( fileText( aside[ 0 ] + "/mount.sqlite" ).size(), database.size() );
      EXPECT_TRUE( fileText( aside[ 0 ] + "/mount.sqlite-wal" ) == log );
      EXPECT_NE( fileText( aside[ 0 ] + "/why.txt" )
                       .find( problem.substr( 0, problem.rfind( "; it was" ) ) ),
            std::string::npos );
      EXPECT_EQ( one.keep( "a", true, "new" ), "" );
      EXPECT_EQ( one.load().at( "a" ).batches, texts( { "new" } ) );
      ++setAside;
   }

   Batches state;
   std::vector< Batches > states; // all that were kept
   std::uint64_t number = 0;
   std::string database;
   std::string log;
   std::string other;
   int loaded = 0;
   int setAside = 0;
   int foreign = 0;
};

TEST_P( KeeperDamageTest, aByteIsAnother )
{
   std::mt19937_64 random( 1 );
   std::string & bytes = damaged();
   constexpr std::size_t head = 100;
   constexpr std::size_t count = 400;
   for ( std::size_t i = 0; i != count && !HasFailure(); ++i ) {
      const std::size_t at = i < head ? i : random() % bytes.size();
      const auto change = static_cast< char >( 1 + random() % 255 );
      SCOPED_TRACE( "byte " + std::to_string( at ) + " xor " + std::to_string( +change ) );
      bytes[ at ] = static_cast< char >( bytes[ at ] ^ change );
      check();
      bytes[ at ] = static_cast< char >( bytes[ at ] ^ change );
   }
   EXPECT_GT( loaded, 20 );
   if ( GetParam().log ) {
      EXPECT_EQ( setAside + foreign, 0 ) << "what the log has is not taken from there on";
   } else {
      EXPECT_GT( setAside, 10 );
      EXPECT_GE( foreign, 4 ) << "another's mark";
   }
}

TEST_P( KeeperDamageTest, manyBytesAreOthers )
{
   std::mt19937_64 random( 2 );
   const std::string sound = damaged();
   for ( int i = 0; i != 100 && !HasFailure(); ++i ) {
      const std::size_t size = 1 + random() % 6000;
      const std::size_t at = random() % sound.size();
      SCOPED_TRACE( std::to_string( size ) + " bytes at " + std::to_string( at ) );
      std::string & bytes = damaged() = sound;
      for ( std::size_t k = at; k < std::min( sound.size(), at + size ); ++k ) {
         bytes[ k ] = i % 2 == 0 ? '\0' : static_cast< char >( random() & 0xff );
      }
      check();
   }
   EXPECT_GT( loaded + setAside, 0 );
}

// A page of an older state is a sound page.
TEST_P( KeeperDamageTest, aPageIsAnotherPage )
{
   constexpr std::size_t page = 4096;
   const std::string sound = damaged();
   for ( std::size_t to = 0; to + page <= sound.size(); to += page ) {
      for ( std::size_t from = 0; from + page <= sound.size() && !HasFailure(); from += page ) {
         SCOPED_TRACE( std::to_string( from / page ) + " to " + std::to_string( to / page ) );
         damaged() = sound;
         damaged().replace( to, page, sound, from, page );
         check();
      }
   }
   EXPECT_GT( loaded + setAside, 0 );
}

TEST_P( KeeperDamageTest, theEndIsMissing )
{
   std::mt19937_64 random( 3 );
   const std::string sound = damaged();
   std::vector< std::size_t > lengths{ 0, 1, 99, 100, 511, 512, 4095, 4096, 4097,
      sound.size() - 1, sound.size() - 4096, sound.size() };
   for ( int i = 0; i != 60; ++i ) {
      lengths.push_back( random() % sound.size() );
   }
   for ( const std::size_t length : lengths ) {
      SCOPED_TRACE( length );
      damaged() = sound.substr( 0, length );
      check();
   }
   EXPECT_GT( loaded, 0 );
   EXPECT_EQ( foreign, 0 );
   EXPECT_EQ( setAside > 0, !GetParam().log );
}

INSTANTIATE_TEST_SUITE_P( Files, KeeperDamageTest,
      testing::Values( Which{ "database", true, false }, Which{ "databaseWithLog", false, false },
            Which{ "log", false, true } ),
      []( const auto & test ) { return test.param.name; } );

/// Two pieces are as they were written, but not where.
TEST( KeeperDamageRowsTest, rowsThatAreMissingOrOthersAreFound )
{
   const char * const changes[] = {
      "DELETE FROM piece WHERE number = 2",
      "DELETE FROM piece WHERE number = 3",
      "DELETE FROM piece",
      "DELETE FROM mount",
      "INSERT INTO mount SELECT * FROM mount",
      "INSERT INTO piece SELECT 4, 4, bytes, checksum FROM piece WHERE number = 3",
      "UPDATE piece SET number = -number; UPDATE piece SET number = number + 4",
      "UPDATE piece SET batch = 1 WHERE number = 2",
      "UPDATE piece SET bytes = x'00' WHERE number = 3",
      "UPDATE mount SET writer = 'me'",
      "UPDATE mount SET path = 'b'",
      "UPDATE mount SET pieces = 2, batches = 2",
      "DROP TABLE piece",
      "ALTER TABLE piece RENAME COLUMN bytes TO data",
   };
   for ( const char * const change : changes ) {
      SCOPED_TRACE( change );
      const Folder folder;
      {
         Keeping one( folder.kept() );
         EXPECT_EQ( one.keep( "a", true, "same" ), "" );
         EXPECT_EQ( one.keep( "a", false, "same" ), "" );
         EXPECT_EQ( one.keep( "a", false, "same" ), "" );
      }
      runIn( folder.file( "a" ), change );
      Keeping one( folder.kept() );
      EXPECT_TRUE( one.load().empty() );
      EXPECT_EQ( folder.aside().size(), 1U );
      EXPECT_EQ( one.next().size(), 1U );
   }
}

// Rows of an older tree are sound in themselves.
TEST( KeeperDamageRowsTest, rowsOfAnOlderTreeAreFound )
{
   for ( const bool change : { false, true } ) {
      const Folder folder;
      {
         Keeping one( folder.kept() );
         EXPECT_EQ( one.keep( "a", true, "old" ), "" );
      }
      const std::string old = folder.path() + "/old";
      std::filesystem::copy_file( folder.file( "a" ), old );
      {
         Keeping one( folder.kept() );
         EXPECT_EQ( one.keep( "a", true, "new" ), "" );
         if ( change ) {
            EXPECT_EQ( one.keep( "a", false, "change" ), "" );
         }
      }
      runIn( folder.file( "a" ),
            "ATTACH '" + old + "' AS old; INSERT OR REPLACE INTO piece SELECT * FROM old.piece" );
      Keeping one( folder.kept() );
      EXPECT_TRUE( one.load().empty() );
      EXPECT_EQ( folder.aside().size(), 1U );
   }
}

// Who looks into it may want to see what the log has.
TEST( KeeperDamageRowsTest, theLogIsSetAsideWithTheDatabase )
{
   const Folder folder;
   {
      Keeping one( folder.kept() );
      EXPECT_EQ( one.keep( requestOf( "a", 1, true, 20000 ) ), "" );
   }
   const Folder after;
   std::string log;
   {
      Keeping one( folder.kept() );
      EXPECT_EQ( one.keep( "a", false, "change" ), "" );
      std::string bytes = fileText( folder.file( "a" ) );
      log = fileText( folder.file( "a" ) + "-wal" );
      const Keeper::Bytes batch = batchOf( 1, 20000 );
      const std::string part( reinterpret_cast< const char * >( batch.data() ) + 10000, 20 );
      ASSERT_NE( bytes.find( part ), std::string::npos );
      ++bytes[ bytes.find( part ) ];
      std::filesystem::create_directories( after.kept() + "/mounts/a" );
      writeFile( after.file( "a" ), bytes );
      writeFile( after.file( "a" ) + "-wal", log );
   }
   Keeping one( after.kept() );
   EXPECT_TRUE( one.load().empty() );
   ASSERT_EQ( after.aside().size(), 1U );
   ASSERT_FALSE( log.empty() );
   EXPECT_TRUE( fileText( after.aside()[ 0 ] + "/mount.sqlite-wal" ) == log );
}

// What is wrong there does no harm yet: the next batch would be written over the one that is kept.
TEST( KeeperDamageRowsTest, aPageThatIsFreeAndInUseIsFound )
{
   const Folder folder;
   {
      Keeping one( folder.kept() );
      EXPECT_EQ( one.keep( requestOf( "a", 1, true, 20000 ) ), "" );
      EXPECT_EQ( one.keep( requestOf( "a", 2, true, 100 ) ), "" );
   }
   std::string bytes = fileText( folder.file( "a" ) );
   constexpr std::size_t firstFree = 32; // where a database has its first free page, in four bytes
   ASSERT_NE( bytes.substr( firstFree, 4 ), std::string( 4, '\0' ) );
   bytes[ firstFree + 3 ] = 3; // in which the pieces are
   writeFile( folder.file( "a" ), bytes );
   Keeping one( folder.kept() );
   EXPECT_TRUE( one.load().empty() );
   EXPECT_NE( one.next().at( 0 ).problem.find( "is not in order" ), std::string::npos );
   EXPECT_EQ( folder.aside().size(), 1U );
}

TEST( KeeperDamageRowsTest, aFileOfAnotherMountIsSetAside )
{
   const Folder folder;
   {
      Keeping one( folder.kept() );
      EXPECT_EQ( one.keep( "a", true, "one" ), "" );
   }
   std::filesystem::rename( folder.kept() + "/mounts/a", folder.kept() + "/mounts/b" );
   Keeping one( folder.kept() );
   EXPECT_TRUE( one.load().empty() );
   EXPECT_NE( one.next().at( 0 ).problem.find( "/mounts/b/mount.sqlite is of the mount a" ),
         std::string::npos );
   EXPECT_EQ( folder.aside().size(), 1U );
}

// Found while a batch is written: the next one, a whole tree, has a file of its own.
TEST( KeeperDamageRowsTest, damageUnderTheKeeperIsSetAsideAtTheNextBatch )
{
   const Folder folder;
   Keeping one( folder.kept() );
   EXPECT_EQ( one.keep( "a", true, "one" ), "" );
   writeFile( folder.file( "a" ), std::string( 40960, 'x' ) );
   const std::string problem = one.keep( "a", false, "two" );
   EXPECT_NE( problem.find( "it was set aside as" ), std::string::npos ) << problem;
   EXPECT_NE( one.keep( "a", false, "three" ), "" );
   EXPECT_EQ( one.keep( "a", true, "four" ), "" );
   EXPECT_EQ( one.load().at( "a" ).batches, texts( { "four" } ) );
}

} // namespace
