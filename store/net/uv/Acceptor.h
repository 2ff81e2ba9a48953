// A socket at which is listened. Part of Listener.cpp.
#pragma once

#include "store/net/Address.h"
#include "store/net/uv/LoopState.h"
#include "store/net/uv/Socket.h"
#include "store/net/uv/Timer.h"

#include <uv.h>

#include <functional>

namespace Vok::Store::Detail {

class Acceptor {
 public:
   using Come = std::function< void( Socket socket, const SocketAddress & from ) >;

   /// `come` is given each connection. Throws std::system_error.
   Acceptor( LoopState & loop, const Address & address, Come come );
   Acceptor( const Acceptor & ) = delete;
   Acceptor & operator=( const Acceptor & ) = delete;
   ~Acceptor();

   /// With the port that the system chose where that was 0.
   const Address & address() const noexcept { return address_; }

 private:
   void bind();
   void start();
   void accept();
   [[noreturn]] void fail( int error ) const;

   LoopState & loop_;
   Address address_;
   Come come_;
   Socket socket_;
   uv_poll_t * poll_ = nullptr; // libuv needs it until it is closed
   Timer pause_;
};

} // namespace Vok::Store::Detail
