// Output of connections in pieces, and who is told that there is some.
#include "store/Link.h"
#include "store/Server.h"
#include "store/Wire.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace {

using namespace Vok::Store;

using Pieces = std::array< std::span< const std::byte >, 4 >;

Bytes joined( const Pieces & pieces, std::size_t count )
{
   Bytes all;
   for ( std::size_t i = 0; i != count; ++i ) {
      all.insert( all.end(), pieces[ i ].begin(), pieces[ i ].end() );
   }
   return all;
}

TEST( LinkOutputTest, piecesAreTheOutputInOrder )
{
   Link link;
   Pieces pieces;
   EXPECT_EQ( link.outputs( pieces ), 0U );
   link.sendBatch( 1, 2, std::make_shared< const Bytes >( 10000 ) );
   link.send( Close{ 1, false } );
   ASSERT_EQ( link.outputs( pieces ), 3U );
   link.sent( 3 ); // a part of the first
   ASSERT_EQ( link.outputs( pieces ), 3U );
   const Bytes all = joined( pieces, 3 );
   EXPECT_EQ( all.size(), link.pending() );
   Bytes one;
   while ( link.pending() != 0 ) {
      one.insert( one.end(), link.output().begin(), link.output().end() );
      link.sent( link.output().size() );
   }
   EXPECT_EQ( one, all );
}

TEST( LinkOutputTest, asManyPiecesAsThereIsRoomFor )
{
   Link link;
   for ( int i = 0; i != 10; ++i ) {
      link.sendBatch( 1, 2, std::make_shared< const Bytes >( 10000 ) );
   }
   Pieces pieces;
   EXPECT_EQ( link.outputs( pieces ), 4U );
   EXPECT_EQ( link.outputs( std::span( pieces ).first( 2 ) ), 2U );
}

TEST( LinkOutputTest, thatThereIsSomeIsToldOnceUntilAllIsSent )
{
   Link link;
   unsigned told = 0;
   link.onOutput( [ & ] { ++told; } );
   link.send( Close{ 1, false } );
   link.send( Close{ 2, false } );
   EXPECT_EQ( told, 1U );
   link.sent( link.output().size() - 1 );
   link.send( Close{ 3, false } );
   EXPECT_EQ( told, 1U );
   link.sent( link.pending() );
   link.send( Close{ 4, false } );
   EXPECT_EQ( told, 2U );
}

TEST( LinkOutputTest, sessionsAndWiresHandItOn )
{
   const SystemClock clock;
   Server server( clock );
   Pieces pieces;
   Wire wire( "client" );
   EXPECT_EQ( wire.outputs( pieces ), 0U );
   wire.connected();
   ASSERT_EQ( wire.outputs( pieces ), 1U );
   EXPECT_EQ( pieces[ 0 ].data(), wire.output().data() );
   const auto session = server.connected();
   unsigned told = 0;
   session->onOutput( [ & ] { ++told; } );
   session->receive( wire.output() );
   EXPECT_EQ( told, 1U );
   ASSERT_EQ( session->outputs( pieces ), 1U );
   EXPECT_EQ( pieces[ 0 ].data(), session->output().data() );
}

} // namespace
