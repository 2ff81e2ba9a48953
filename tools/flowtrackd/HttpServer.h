// One page over HTTP, for collectors of metrics.
#pragma once

#include "store/net/Address.h"

#include <functional>
#include <memory>
#include <string>

namespace Flowtrackd {

/// Answers GET /metrics. Used from one thread, whose loop watches the descriptor.
class HttpServer {
 public:
   /// `text` makes the page. Throws std::system_error where it cannot listen at the address.
   HttpServer( const Vok::Store::Address & address, std::function< std::string() > text );
   HttpServer( const HttpServer & ) = delete;
   HttpServer & operator=( const HttpServer & ) = delete;
   ~HttpServer();

   /// Is readable when there is something to do.
   int descriptor() const noexcept;

   /// Does it. Also to be called every now and then, for connections that say nothing.
   void run();

 private:
   struct State;
   std::unique_ptr< State > state_;
};

} // namespace Flowtrackd
