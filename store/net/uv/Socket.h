// A socket of the system's, and the addresses that it takes. Part of the files beside it.
#pragma once

#include "store/Peer.h"
#include "store/net/Address.h"

#include <sys/socket.h>

#include <string>
#include <utility>

namespace Vok::Store::Detail {

/// An address, as the system has it.
struct SocketAddress {
   SocketAddress() = default;
   explicit SocketAddress( const Address & address );

   int family() const noexcept { return storage.ss_family; }
   sockaddr * get() noexcept { return reinterpret_cast< sockaddr * >( &storage ); }
   const sockaddr * get() const noexcept
   {
      return reinterpret_cast< const sockaddr * >( &storage );
   }

   /// Of IP.
   std::uint16_t port() const noexcept;

   /// `127.0.0.1:4040`, `[::1]:4040`.
   std::string text() const;

   sockaddr_storage storage{};
   socklen_t size = sizeof storage;
};

/// A socket that does not wait. Owned by one.
class Socket {
 public:
   Socket() = default;
   explicit Socket( int descriptor ) noexcept : descriptor_( descriptor ) {}
   Socket( Socket && other ) noexcept : descriptor_( std::exchange( other.descriptor_, -1 ) ) {}
   Socket & operator=( Socket && other ) noexcept
   {
      std::swap( descriptor_, other.descriptor_ );
      return *this;
   }
   ~Socket();

   /// Of a family; none where the system has no descriptors left, with the error in errno.
   static Socket make( int family ) noexcept;

   explicit operator bool() const noexcept { return descriptor_ >= 0; }
   int descriptor() const noexcept { return descriptor_; }

   /// That has happened to it.
   int error() const noexcept;

   /// Of TCP: small messages go at once, and a silent peer is asked whether it is there.
   void tuneTcp() const noexcept;

   /// Who is at the other end of a Unix socket.
   Peer unixPeer() const;

 private:
   int descriptor_ = -1;
};

} // namespace Vok::Store::Detail
