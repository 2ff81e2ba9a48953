// A client's connection, as the store has it. Part of Listener.cpp.
#pragma once

#include "store/Server.h"
#include "store/net/uv/Stream.h"
#include "store/net/uv/Timer.h"
#include "store/net/uv/TlsFilter.h"

#include <memory>
#include <string>

namespace Vok::Store::Detail {

class Accepted;

/// Who has the connections. None of these destroys one.
class AcceptedOwner {
 public:
   virtual ~AcceptedOwner() = default;

   /// It has output, and is to be told to `send`.
   virtual void hasOutput( Accepted & one ) noexcept = 0;

   /// Nothing more comes of it: it is to be destroyed.
   virtual void isOver( Accepted & one ) noexcept = 0;
};

class Accepted final : public TlsUser {
 public:
   /// `tls`: null where the connection is plain. Throws std::system_error.
   Accepted( LoopState & loop, Server & server, AcceptedOwner & owner, Socket socket, Peer peer,
         const TlsState * tls );

   void start();
   void send();

   /// Whether the other side has proved who it is, where it has to.
   bool identified() const noexcept { return session_ != nullptr; }

   // TlsUser
   void received( std::span< const std::byte > piece ) override;
   std::size_t outputs( std::span< std::span< const std::byte > > into ) override;
   void sent( std::size_t count ) override;
   void ended( const std::string & why ) override;
   void secured() override;
   void unsecured( const std::string & why ) override;

   std::size_t place = 0; ///< among its owner's

 private:
   void open();
   void hasOutput() noexcept;
   void settle();
   void linger();
   void due();
   void over() noexcept;

   Server & server_;
   AcceptedOwner & owner_;
   Peer peer_;
   Stream stream_;
   Timer timer_; // until it has greeted, and while it lingers
   std::unique_ptr< TlsFilter > tls_;
   std::unique_ptr< Session > session_; // null until it is known who the other side is
   bool greeted_ = false;
   bool lingering_ = false;
   bool ready_ = false; // its owner knows that it has output
   bool over_ = false;
};

} // namespace Vok::Store::Detail
