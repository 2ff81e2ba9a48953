// Owns the counters of dropped packets, and answers whoever asks for them:
//
//    drop-counter-owner SOCKET
//
// It publishes a FlowTracking::Status, and holds a replica of the reader's request. A request is a
// number; the answers carry it, so that the reader can tell them from older ones.
#include "DropCounters.h"
#include "Peer.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <exception>
#include <filesystem>
#include <iostream>

namespace {

using FlowTracking::PktDropCounterUpdateRequest;
using FlowTracking::PktDropCounterUpdateResponse;
using FlowTracking::PktDropReason;

void answer( FlowTracking::Status & status, std::uint8_t number )
{
   const DropCounters kernel = interfaceDrops();
   const DropCounters full = fullBufferDrops();
   status.pktDropRespIs( PktDropCounterUpdateResponse(
         PktDropReason::kernelDrops, kernel.drops, kernel.packets, number ) );
   status.pktDropRespIs( PktDropCounterUpdateResponse(
         PktDropReason::ftFullDrops, full.drops, full.packets, number ) );
}

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 2 ) {
      std::cerr << "usage: drop-counter-owner SOCKET\n";
      return 2;
   }
   try {
      const auto status = FlowTracking::statusFactory( "sampled" );
      const auto request = FlowTracking::pktDropCounterUpdateRequestFactory( "replica" );
      Vok::EntityVokNboAttrLogSa writer( status );
      Vok::EntityVokNboAttrLogReader reader( request );

      // However many requests a batch coalesced, the last one is answered, once.
      Vok::Deferred toAnswer( [ & ] { answer( *status, request->readerSeqNo() ); } );
      const Vok::Follower asked( *request, PktDropCounterUpdateRequest::readerSeqNoAttrId,
            [ & ]( const Corvo::Change & ) { toAnswer.request(); } );

      std::filesystem::remove( argv[ 1 ] ); // of an owner that was killed
      const StreamSocket listener = StreamSocket::listenAt( argv[ 1 ] );
      for ( ;; ) {
         Peer peer( listener.accept(), writer, reader );
         peer.send();
         // A reader that comes back may still wait for a number that looks as the one before: 0.
         toAnswer.request();
         for ( int batches = peer.receive(); batches >= 0; batches = peer.receive() ) {
            if ( batches > 0 ) {
               toAnswer.run();
               peer.send();
            }
         }
      }
   } catch ( const std::exception & e ) {
      std::cerr << "drop-counter-owner: " << e.what() << "\n";
      return 1;
   }
}
