// Batches in frames, both ways.
#include "Peer.h"

#include <array>
#include <cstddef>
#include <span>
#include <system_error>
#include <utility>

Peer::Peer( StreamSocket socket, Vok::EntityVokNboAttrLogSa & own,
      Vok::EntityVokNboAttrLogReader & other )
      : socket_( std::move( socket ) ),
        own_( own ),
        other_( other )
{
   own_.resync();
}

void Peer::send()
{
   if ( !own_.hasChanges() ) {
      return;
   }
   Vok::NboAttrLog::Out batch;
   own_.write( batch );
   try {
      socket_.send( Vok::Store::FrameWriter().header( batch.size() ) );
      socket_.send( batch.bytes() );
   } catch ( const std::system_error & ) {
      own_.resync(); // the other side has gone, as receive() will find
   }
}

int Peer::receive()
{
   std::array< std::byte, 4096 > buffer;
   std::size_t received = 0;
   try {
      received = socket_.receive( buffer );
   } catch ( const std::system_error & ) {
      return -1; // killed in the middle of what it sent
   }
   if ( received == 0 ) {
      return -1;
   }
   int batches = 0;
   std::span< const std::byte > piece( buffer.data(), received );
   while ( const auto frame = frames_.feed( piece ) ) {
      Vok::NboAttrLog::In in( frame->data(), frame->size() );
      other_.read( in );
      ++batches;
   }
   return batches;
}
