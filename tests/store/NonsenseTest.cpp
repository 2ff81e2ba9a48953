// Clients that send what makes no sense. They are told so, and who goes on with it is sent away.
#include "tests/store/Hostile.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace Vok::Store;
using TestSupport::bytes;
using TestSupport::frame;
using TestSupport::greeting;
using TestSupport::RawClient;
using TestSupport::wholeTree;

class NonsenseTest : public TestSupport::HostileTest {};

TEST_P( NonsenseTest, whatBeginsWithNoFrame )
{
   RawClient & one = world.raw();
   one.send( std::as_bytes( std::span( std::string_view( "GET / HTTP/1.1\r\n\r\n" ) ) ) );
   EXPECT_EQ( endOf( one ), "frame begins with 47 45 54 20, expected 56 6f 6b 31" );
}

TEST_P( NonsenseTest, whatComesBeforeAGreeting )
{
   const Bytes piece( 10 );
   const std::vector< Message > messages{ OpenWriter{ 1, "hostile", "Test::Root", false },
      OpenReader{ 1, "**", {} }, BatchPiece{ 1, 0, true, piece }, Close{ 1, true },
      ListMounts{ 1, "**", false }, Welcome{} };
   for ( const Message & message : messages ) {
      RawClient & one = world.raw();
      one.send( message );
      EXPECT_EQ( endOf( one ), "a connection begins with a greeting" ) << message.index();
   }
   RawClient & twice = world.greeted();
   twice.send( greeting() );
   EXPECT_EQ( endOf( twice ), "a connection has one greeting" );
}

TEST_P( NonsenseTest, endlessFrames )
{
   RawClient & before = world.raw();
   before.send( bytes( { 'V', 'o', 'k', '1', 255, 255, 255, 255, 0, 0, 0 } ) );
   EXPECT_EQ( endOf( before ), "frame of 4294967295 bytes, the limit is 4096" );
   RawClient & after = world.greeted();
   after.send( bytes( { 'V', 'o', 'k', '1', 255, 255, 255, 255, 0, 0, 0 } ) );
   EXPECT_EQ( endOf( after ), "frame of 4294967295 bytes, the limit is 4194304" );
}

TEST_P( NonsenseTest, batchesWithoutEnd )
{
   RawClient & one = world.greeted();
   one.send( OpenWriter{ 1, "hostile/a", "Test::Root", false } );
   const Bytes piece( 10000 );
   for ( int i = 0; i != 20; ++i ) {
      one.send( BatchPiece{ 1, 0, false, piece } );
   }
   EXPECT_EQ( endOf( one ), "a batch is longer than 100000 bytes" );
   RawClient & two = world.greeted();
   for ( std::uint32_t channel = 1; channel != 4; ++channel ) {
      two.send(
            OpenWriter{ channel, "hostile/" + std::to_string( channel ), "Test::Root", false } );
      for ( int i = 0; i != 9; ++i ) {
         two.send( BatchPiece{ channel, 0, false, piece } );
      }
   }
   EXPECT_EQ(
         endOf( two ), "the batches that a connection has begun may have 150000 bytes in all" );
}

TEST_P( NonsenseTest, aBatchWithAWrongChecksum )
{
   RawClient & one = world.greeted();
   Bytes batch = wholeTree();
   batch.back() ^= std::byte{ 1 };
   one.send( OpenWriter{ 1, "hostile", "Test::Root", false } );
   one.send( BatchPiece{ 1, 0, true, batch } );
   EXPECT_NE( refusalOf( one, 1 ).find( "checksum" ), std::string::npos ) << refusalOf( one, 1 );
   EXPECT_TRUE( serves( one ) );
   batch.back() ^= std::byte{ 1 };
   one.send( OpenWriter{ 2, "hostile", "Test::Root", false } );
   one.send( BatchPiece{ 2, 0, true, batch } );
   EXPECT_TRUE( world.until( [ & ] { return one.has< Acknowledged >(); } ) );
}

TEST_P( NonsenseTest, wrongTypes )
{
   RawClient & one = world.greeted();
   one.send( OpenWriter{ 1, "hostile", "Test::NoSuchType", false } );
   EXPECT_EQ( refusalOf( one, 1 ), "the store knows no entity type Test::NoSuchType" );
   one.send( OpenWriter{ 2, "a", "Test::Tree", true } );
   EXPECT_EQ( refusalOf( one, 2 ), "a is a Test::Root, not a Test::Tree" );
   one.send( Welcome{} );
   EXPECT_EQ( endOf( one ), "a client sends what only the store sends" );
}

TEST_P( NonsenseTest, randomBytes )
{
   TestSupport::Random random( 20 );
   for ( int i = 0; i != 100; ++i ) {
      RawClient & one = i % 2 == 0 ? world.raw() : world.greeted();
      Bytes noise( 1 + random.below( 5000 ) );
      for ( std::byte & b : noise ) {
         b = static_cast< std::byte >( random.below( 256 ) );
      }
      // Every fourth one is a frame at least, and every message is of a kind that there is.
      if ( i % 4 == 3 ) {
         noise.front() = static_cast< std::byte >( random.below( 5 ) );
         Bytes framed;
         FrameWriter().append( noise, framed );
         noise = framed;
      }
      one.send( noise );
      ASSERT_NE( endOf( one ), "nothing" ) << i;
      if ( i % 20 == 19 ) {
         ASSERT_TRUE( bystanders.undisturbed() );
      }
   }
}

/// What a client said once, with a byte changed: it ends, or goes on.
TEST_P( NonsenseTest, changedBytes )
{
   Bytes said = greeting();
   for ( const Message & message : std::initializer_list< Message >{
               OpenWriter{ 1, "hostile", "Test::Root", false },
               OpenReader{ 2, "*", { { "a", 1, 1 } } },
               BatchPiece{ 1, 0, true, {} }, Close{ 2, false } } ) {
      const Bytes one = frame( message );
      said.insert( said.end(), one.begin(), one.end() );
   }
   TestSupport::Random random( 21 );
   for ( std::size_t at = 0; at != said.size(); ++at ) {
      Bytes changed = said;
      changed[ at ] ^= static_cast< std::byte >( 1 + random.below( 255 ) );
      RawClient & one = world.raw();
      one.send( changed );
      one.step();
      one.finish();
      ASSERT_TRUE( world.until( [ & ] { return one.closed(); } ) ) << at;
      world.raws.clear();
   }
}

INSTANTIATE_TEST_SUITE_P( Kinds, NonsenseTest, TestSupport::eachKind, TestSupport::nameOf );

} // namespace
