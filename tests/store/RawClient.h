// A client of the store that is none: a socket, over which a test sends what it likes.
#pragma once

#include "tests/store/OpenSsl.h"

#include "store/Link.h"
#include "store/Message.h"
#include "store/net/Address.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TestSupport {

/// The bytes of a frame with a message.
Vok::Store::Bytes frame( const Vok::Store::Message & message );

/// One who says who he is and nothing else.
Vok::Store::Bytes greeting();

/// `ssl` may be set up in any way. Nothing here waits: a test calls `step` until what it waits for
/// is so.
class RawClient {
 public:
   using Bytes = Vok::Store::Bytes;

   explicit RawClient( const Vok::Store::Address & address, Ssl ssl = {} );
   RawClient( const RawClient & ) = delete;
   RawClient & operator=( const RawClient & ) = delete;
   ~RawClient();

   /// Puts bytes behind what is to be sent.
   void send( std::span< const std::byte > bytes );
   void send( const Vok::Store::Message & message ) { send( frame( message ) ); }

   /// Sends and reads what the system takes and has at present.
   void step();

   /// Nothing is read from now on, or it is again.
   void reading( bool yes ) noexcept { reading_ = yes; }

   /// Tells the other side that nothing more comes.
   void finish() noexcept;

   /// Goes without a word: the system tells the other side that what is on its way is lost.
   void reset() noexcept;

   /// The other side has closed the connection, or what TLS says is its end.
   bool closed() const noexcept { return closed_; }

   /// What OpenSSL says was wrong, or that what came were no frames.
   const std::string & error() const noexcept { return error_; }

   std::size_t sent() const noexcept { return sent_; } ///< bytes that the system took
   std::size_t unsent() const noexcept { return unsent_.size(); }
   std::size_t received() const noexcept { return received_; }

   /// The whole frames that came, the first ones first.
   const std::vector< Bytes > & frames() const noexcept { return frames_; }

   /// Why the store ended the connection, or closed a channel.
   std::optional< std::string > refusal( std::uint32_t channel = 0 ) const;

   /// Whether a message of a kind came.
   template< class M > bool has() const
   {
      for ( const Bytes & one : frames_ ) {
         if ( std::holds_alternative< M >( Vok::Store::decode( one ) ) ) {
            return true;
         }
      }
      return false;
   }

 private:
   void write();
   void read();
   void take( std::span< const std::byte > piece );
   void protect();
   void unprotect();
   void end( int code );

   int socket_;
   Ssl ssl_;
   Bytes plain_; // to be sent, of TLS
   Bytes unsent_;
   bool reading_ = true;
   bool closed_ = false;
   std::string error_;
   std::size_t sent_ = 0;
   std::size_t received_ = 0;
   Vok::Store::FrameReader reader_;
   std::vector< Bytes > frames_;
};

} // namespace TestSupport
