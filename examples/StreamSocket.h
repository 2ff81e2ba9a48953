// A Unix domain stream socket that closes itself: as little as two example programs need.
#pragma once

#include <cstddef>
#include <span>
#include <string>

/// One end of a connection, or a listening socket. All functions throw std::system_error.
class StreamSocket {
 public:
   /// Listens at a path, at which nothing may stand.
   static StreamSocket listenAt( const std::string & path );

   /// Connects to a path, waiting up to ten seconds for someone to listen there.
   static StreamSocket connectTo( const std::string & path );

   StreamSocket( StreamSocket && other ) noexcept : descriptor_( other.descriptor_ )
   {
      other.descriptor_ = -1;
   }
   StreamSocket & operator=( StreamSocket && ) = delete;
   ~StreamSocket();

   /// Waits for a connection.
   StreamSocket accept() const;

   /// For poll(2): readable when a connection, bytes or the end are there.
   int descriptor() const noexcept { return descriptor_; }

   /// Sends all bytes.
   void send( std::span< const std::byte > bytes ) const;

   /// Waits for bytes and says how many came; 0 where the other side has closed.
   std::size_t receive( std::span< std::byte > into ) const;

 private:
   explicit StreamSocket( int descriptor ) noexcept : descriptor_( descriptor ) {}

   int descriptor_;
};
