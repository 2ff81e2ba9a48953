// Hostile clients over each kind of socket, beside a writer and a reader who are none: whatever
// happens in a test, those notice nothing.
#pragma once

#include "tests/store/NetWorld.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace TestSupport {

inline Vok::Store::Bytes bytes( std::initializer_list< int > list )
{
   Vok::Store::Bytes made;
   for ( const int one : list ) {
      made.push_back( static_cast< std::byte >( one ) );
   }
   return made;
}

/// What a writer of a tree sends first.
inline Vok::Store::Bytes wholeTree()
{
   const auto root = ::Test::Root::RootIs( "root" );
   Vok::EntityVokNboAttrLogSa stream( root );
   Vok::NboAttrLog::Out out;
   stream.write( out );
   return { out.bytes().begin(), out.bytes().end() };
}

class HostileTest : public testing::TestWithParam< Kind > {
 protected:
   static Vok::Store::Limits limits()
   {
      Vok::Store::Limits limits;
      limits.sessionsOfUser = 4096; // all clients here are of one user
      limits.batch = 100000;
      limits.unfinished = 150000;
      return limits;
   }

   explicit HostileTest( const Vok::Store::Limits & most = limits() )
         : world( GetParam(), Vok::Store::ServerSetup{ .limits = most } )
   {
   }

   ~HostileTest() override
   {
      EXPECT_TRUE( bystanders.undisturbed() );
      world.raws.clear();
      EXPECT_TRUE( world.until( [ & ] { return world.listener->connections() == 2; } ) );
      EXPECT_TRUE( bystanders.undisturbed() );
      EXPECT_EQ( world.server.sessions(), 2U );
   }

   /// What a client is told that the store ends; that it is ended is seen to.
   std::string endOf( const RawClient & one )
   {
      EXPECT_TRUE( world.until( [ & ] { return one.closed(); } ) );
      return one.refusal().value_or( "nothing" );
   }
   std::string refusalOf( const RawClient & one, std::uint32_t channel )
   {
      EXPECT_TRUE( world.until( [ & ] { return one.refusal( channel ).has_value(); } ) );
      return one.refusal( channel ).value_or( "nothing" );
   }
   bool serves( RawClient & one )
   {
      one.send( Vok::Store::OpenReader{ 77, "no pattern", {} } );
      return !refusalOf( one, 77 ).empty() && !one.closed();
   }

   NetWorld world;
   Bystanders bystanders{ world };
};

} // namespace TestSupport
