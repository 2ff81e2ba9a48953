// Holds a replica of a table of applications, which writers stream to it one after another, and
// prints every change that it hears of:
//
//    applications-reader SOCKET CONNECTIONS
#include "StreamSocket.h"

#include "FlowTracker/ApplicationId.h"
#include "Vok/Vok.h"
#include "store/Framing.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <vector>

namespace {

using FlowTracking::Application;
using FlowTracking::ApplicationId;
using FlowTracking::ApplicationIdMap;

/// Prints changes of the table.
class Printer : public Corvo::Notifiee {
 public:
   explicit Printer( const ApplicationIdMap & map ) : map_( map )
   {
      map.publisher().notifieeIs( this );
   }

   void onChange( const Corvo::Change & change ) override
   {
      const ApplicationId key = *change.key< ApplicationId >();
      const auto * const before = change.oldValue< Application >();
      const bool there = map_.application().contains( key );
      std::cout << ( before ? there ? "changed " : "removed " : "added " ) << key.value() << " "
                << ( there ? map_.application( key ) : *before ).appName() << "\n";
   }

 private:
   const ApplicationIdMap & map_;
};

void follow( const StreamSocket & socket, Vok::EntityVokNboAttrLogReader & reader )
{
   Vok::Store::FrameReader frames;
   std::vector< std::byte > buffer( 1 << 16 );
   while ( const std::size_t received = socket.receive( buffer ) ) {
      std::span< const std::byte > piece( buffer.data(), received );
      while ( const auto frame = frames.feed( piece ) ) {
         Vok::NboAttrLog::In in( frame->data(), frame->size() );
         reader.read( in );
      }
   }
   frames.end();
}

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 3 ) {
      std::cerr << "usage: applications-reader SOCKET CONNECTIONS\n";
      return 2;
   }
   try {
      const auto map = FlowTracking::applicationIdMapFactory( "replica" );
      Printer printer( *map );
      Vok::EntityVokNboAttrLogReader reader( map );
      const StreamSocket listener = StreamSocket::listenAt( argv[ 1 ] );
      for ( long left = std::strtol( argv[ 2 ], nullptr, 10 ); left > 0; --left ) {
         follow( listener.accept(), reader );
         std::cout << "reader " << map->application().size() << " "
                   << Vok::treeDigest( *map ).text() << "\n";
      }
   } catch ( const std::exception & e ) {
      std::cerr << "applications-reader: " << e.what() << "\n";
      return 1;
   }
}
