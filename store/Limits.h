// What the store gives to its clients at most, so that none can take what others need.
#pragma once

#include <chrono>
#include <cstddef>

namespace Vok::Store {

struct Limits {
   std::size_t sessions = 4096; ///< connections in all
   std::size_t sessionsOfUser = 1024; ///< of one user, one certificate, or all that have neither
   std::size_t mounts = 10000; ///< in all
   std::size_t channels = 256; ///< that one connection has open at a time
   std::size_t greeting = 4096; ///< bytes of a frame before the client has said who it is
   std::size_t batch = std::size_t{ 256 } << 20; ///< bytes of a batch

   /// Bytes of a mount's tree, written as a batch. It may have a quarter more until it is measured.
   std::size_t tree = std::size_t{ 1 } << 30;

   /// Bytes of a connection's batches whose end has not come.
   std::size_t unfinished = std::size_t{ 256 } << 20;

   std::chrono::milliseconds greetingTime{ 10000 }; ///< to say who it is
};

} // namespace Vok::Store
