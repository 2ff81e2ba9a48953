// A message of each kind.
#pragma once

#include "store/Link.h"
#include "store/Message.h"

#include <cstddef>
#include <initializer_list>
#include <vector>

namespace TestSupport {

using Vok::Store::Bytes;
using Vok::Store::Message;

inline Bytes bytesOf( const Message & message )
{
   Vok::NboAttrLog::Out out;
   Vok::Store::encode( message, out );
   return { out.bytes().begin(), out.bytes().end() };
}

inline Bytes bytes( std::initializer_list< int > list )
{
   Bytes made;
   for ( const int one : list ) {
      made.push_back( static_cast< std::byte >( one ) );
   }
   return made;
}

inline const std::vector< Message > & samples()
{
   namespace S = Vok::Store;
   static const Bytes piece = bytes( { 1, 2, 3 } );
   static const std::vector< Message > all = {
      S::Hello{ 1, "agent" },
      S::OpenWriter{ 1, "a/b", "Test::Root", true },
      S::OpenReader{ 2, "a/*", { { "a/b", 3, 4 }, { "a/c", 5, 6 } } },
      S::BatchPiece{ 3, 4, true, piece },
      S::Close{ 5, true },
      S::Welcome{ 1 },
      S::Opened{ 6, 7, 8, true },
      S::Refused{ 9, 1, "why" },
      S::Mounted{ 10, 11, "a/b", "Test::Root" },
      S::MountState{ 12, 13, true, 14, "agent", "the disk is full" },
      S::Acknowledged{ 15, 16 },
      S::Unmounted{ 17, 18 },
      S::ListMounts{ 19, "a/*", true },
      S::MountList{ 20, false,
            { { "a/b", "Test::Root", "agent", true, 1, true, "full", 2, 3, 4, 5, 6, 7, 8, 9, 10,
                  11 } } },
      S::PassedOver{ 21, 22, { "an attribute" } },
   };
   return all;
}

} // namespace TestSupport
