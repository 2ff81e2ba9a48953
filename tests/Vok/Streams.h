// A writer's tree and its replica, for tests of change streams.
#pragma once

#include "tests/model/Everything.h"
#include "tests/model/RandomTree.h"

#include "Vok/Vok.h"
#include "Vok/detail/Hash.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

using Bytes = std::vector< std::byte >;

inline Bytes bytesOf( const Vok::NboAttrLog::Out & out )
{
   return { out.bytes().begin(), out.bytes().end() };
}

/// Gives a changed batch the length and the checksum that its bytes call for.
inline Bytes signedAgain( Bytes batch )
{
   const auto put = [ &batch ]( std::size_t at, std::uint64_t v, unsigned size ) {
      for ( unsigned i = 0; i != size; ++i ) {
         batch[ at + i ] = static_cast< std::byte >( v >> 8 * ( size - 1 - i ) );
      }
   };
   put( 4, batch.size(), 4 );
   const std::size_t covered = batch.size() - 8;
   put( covered, Vok::Detail::checksum64( batch.data(), covered ), 8 );
   return batch;
}

/// A tree and its writer.
struct Source {
   Corvo::Ptr< ::Test::Root > root = ::Test::Root::RootIs( "writer" );
   Vok::EntityVokNboAttrLogSa writer{ root };

   /// What is pending, as one batch; no bytes where nothing is.
   Bytes batch()
   {
      Vok::NboAttrLog::Out out;
      writer.write( out );
      return bytesOf( out );
   }

   Bytes whole()
   {
      writer.resync();
      return batch();
   }
};

/// A replica and its reader.
struct Replica {
   Corvo::Ptr< ::Test::Root > root = ::Test::Root::RootIs( "replica" );
   Vok::EntityVokNboAttrLogReader reader{ root };

   /// Reads all batches that the bytes hold.
   void read( std::span< const std::byte > bytes )
   {
      Vok::NboAttrLog::In in( bytes );
      while ( in.remaining() != 0 ) {
         reader.read( in );
      }
   }

   /// Why the bytes are refused, or nothing.
   std::string refusal( std::span< const std::byte > bytes )
   {
      try {
         read( bytes );
      } catch ( const Vok::NboAttrLog::Exception & e ) {
         return e.what();
      }
      return "";
   }
};

/// Both trees have the same digest, and look the same through reflection.
inline void expectEqual( const Vok::Entity & writer, const Vok::Entity & replica )
{
   ASSERT_EQ( describeTree( writer ), describeTree( replica ) );
   ASSERT_EQ( Vok::treeDigest( writer ).text(), Vok::treeDigest( replica ).text() );
}

} // namespace TestSupport
