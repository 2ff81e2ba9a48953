// Asks for the counters of dropped packets, so many times, and prints each fresh answer:
//
//    drop-counter-reader SOCKET TIMES
//
// It publishes its request, and holds a replica of the owner's status. Either side may be killed
// and started again at any moment.
#include "Peer.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string>

namespace {

using FlowTracking::PktDropCounterUpdateRequest;
using FlowTracking::PktDropReason;
using FlowTracking::Status;

constexpr PktDropReason reasons[] = { PktDropReason::kernelDrops, PktDropReason::ftFullDrops };

class DropCounterReader {
 public:
   explicit DropCounterReader( std::string path ) : path_( std::move( path ) ) {}

   void ask()
   {
      while ( !connected() ) {
      }
      raise();
      bool answered = false;
      const Vok::When fresh(
            *status_, Status::pktDropRespAttrId,
            [ this ] { return isFresh(); }, [ &answered ] { answered = true; } );
      showStale();
      peer_->send();
      while ( !answered ) {
         // A connection that is lost brings a new one, and with it the number once more.
         if ( peer_->receive() < 0 ) {
            peer_.reset();
            while ( !connected() ) {
            }
            peer_->send();
         }
      }
      for ( const PktDropReason reason : reasons ) {
         const auto & answer = status_->pktDropResp( reason );
         std::cout << "answer " << unsigned( answer.writerSeqNo() ) << ": " << reason << " "
                   << answer.pktDrops() << " of " << answer.pkts() << std::endl;
      }
   }

 private:
   /// Connects where there is no connection, and waits until the owner's status is known: only then
   /// is it known which numbers would look answered.
   bool connected()
   {
      if ( peer_ ) {
         return true;
      }
      auto peer = std::make_unique< Peer >( StreamSocket::connectTo( path_ ), writer_, reader_ );
      for ( int batches = 0; batches == 0; ) {
         batches = peer->receive();
         if ( batches < 0 ) {
            return false;
         }
      }
      peer_ = std::move( peer );
      return true;
   }

   /// The next number that no answer carries.
   void raise()
   {
      bool taken = true;
      while ( taken ) {
         const std::uint8_t number = request_->readerSeqNoInc( 1 );
         taken = false;
         for ( const auto & [ reason, answer ] : status_->pktDropResp() ) {
            taken = taken || answer.writerSeqNo() == number;
         }
      }
   }

   bool isFresh() const
   {
      for ( const PktDropReason reason : reasons ) {
         if ( !status_->pktDropResp().contains( reason ) ||
               status_->pktDropResp( reason ).writerSeqNo() != request_->readerSeqNo() ) {
            return false;
         }
      }
      return true;
   }

   /// What is there before the answer comes, once: counters of some time before.
   void showStale()
   {
      for ( const auto & [ reason, answer ] : status_->pktDropResp() ) {
         if ( !shown_ ) {
            std::cout << "stale " << unsigned( answer.writerSeqNo() ) << ", asked "
                      << unsigned( request_->readerSeqNo() ) << ": " << reason << std::endl;
            shown_ = true;
         }
      }
   }

   std::string path_;
   Corvo::Ptr< PktDropCounterUpdateRequest > request_ =
         FlowTracking::pktDropCounterUpdateRequestFactory( "reader" );
   Corvo::Ptr< Status > status_ = FlowTracking::statusFactory( "replica" );
   Vok::EntityVokNboAttrLogSa writer_{ request_ };
   Vok::EntityVokNboAttrLogReader reader_{ status_ };
   std::unique_ptr< Peer > peer_;
   bool shown_ = false;
};

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 3 ) {
      std::cerr << "usage: drop-counter-reader SOCKET TIMES\n";
      return 2;
   }
   try {
      DropCounterReader reader( argv[ 1 ] );
      for ( long left = std::strtol( argv[ 2 ], nullptr, 10 ); left > 0; --left ) {
         reader.ask();
      }
   } catch ( const std::exception & e ) {
      std::cerr << "drop-counter-reader: " << e.what() << "\n";
      return 1;
   }
}
