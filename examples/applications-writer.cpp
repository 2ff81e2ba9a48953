// Owns a table of applications and streams it to a reader:
//
//    ndpiReader -h | applications-writer SOCKET first    loads the table, then changes some of it
//    ndpiReader -h | applications-writer SOCKET again    a restart, with other changes
#include "NdpiTable.h"
#include "StreamSocket.h"

#include "FlowTracker/ApplicationId.h"
#include "Vok/Vok.h"
#include "store/Framing.h"

#include <exception>
#include <iostream>
#include <string>

namespace {

using FlowTracking::Application;
using FlowTracking::ApplicationId;
using FlowTracking::ApplicationIdMap;

/// Sends what changed since the last time as one frame.
class Sender {
 public:
   Sender( StreamSocket socket, const Corvo::Ptr< ApplicationIdMap > & map )
         : socket_( std::move( socket ) ),
           stream_( map )
   {
   }

   void send()
   {
      batch_.clear();
      stream_.write( batch_ );
      socket_.send( frames_.header( batch_.size() ) );
      socket_.send( batch_.bytes() );
   }

 private:
   StreamSocket socket_;
   Vok::EntityVokNboAttrLogSa stream_;
   Vok::Store::FrameWriter frames_;
   Vok::NboAttrLog::Out batch_;
};

void changeSome( ApplicationIdMap & map )
{
   Application dns = map.application( ApplicationId( 5 ) );
   dns.subCategoryIs( "Essential" );
   map.applicationIs( ApplicationId( 5 ), dns ); // changed
   map.applicationDel( ApplicationId( 1 ) ); // removed
   const Application back = map.applicationDel( ApplicationId( 2 ) );
   map.applicationIs( ApplicationId( 2 ), back ); // removed and added again: no difference
}

void run( const std::string & path, bool again )
{
   const auto map = FlowTracking::applicationIdMapFactory( "applications" );
   for ( const Application & application : readNdpiTable( std::cin ) ) {
      map->applicationIs( application.appId(), application );
   }
   if ( again ) {
      map->applicationDel( ApplicationId( 3 ) );
   }
   Sender sender( StreamSocket::connectTo( path ), map );
   sender.send();
   if ( !again ) {
      changeSome( *map );
      sender.send();
   }
   std::cout << "writer " << map->application().size() << " " << Vok::treeDigest( *map ).text()
             << "\n";
}

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 3 ) {
      std::cerr << "usage: applications-writer SOCKET first|again < table\n";
      return 2;
   }
   try {
      run( argv[ 1 ], std::string( argv[ 2 ] ) == "again" );
   } catch ( const std::exception & e ) {
      std::cerr << "applications-writer: " << e.what() << "\n";
      return 1;
   }
}
