// What carries a client's batches to whoever holds the mounts, and others' batches back. Nothing
// above it assumes that this is one process, or one machine.
#pragma once

#include "Vok/Export.h"
#include "store/Link.h"
#include "store/Message.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace Vok::Store {

/// What a carrier tells: a client is one.
class VOK_EXPORT CarrierUser {
 public:
   virtual ~CarrierUser() = default;

   /// From now on messages get through; those of before are forgotten by the other side.
   virtual void connected() = 0;
   virtual void disconnected() = 0;

   /// What came, in the order in which it was sent: a message, but for batches, or a whole batch of
   /// a mount that is read. Throws ProtocolException for what may not come.
   virtual void received( const Message & message ) = 0;
   virtual void received(
         std::uint32_t channel, std::uint32_t mount, std::span< const std::byte > batch ) = 0;

   /// The carrier takes batches again.
   virtual void flush() = 0;
};

/// The messages that a client may send are OpenWriter, OpenReader, Close and ListMounts, in
/// store/Message.h, which says what is answered. What a carrier has to keep: the order of what is
/// sent on a channel; that a batch arrives whole or not at all; and that what is on its way is lost
/// only with `disconnected`.
class VOK_EXPORT Carrier {
 public:
   virtual ~Carrier() = default;

   /// Who is told; null: nobody any more.
   virtual void userIs( CarrierUser * user ) = 0;

   virtual bool isConnected() const noexcept = 0;

   /// Nothing is sent without a connection.
   virtual void send( const Message & message ) = 0;
   virtual void sendBatch(
         std::uint32_t channel, const std::shared_ptr< const Bytes > & batch ) = 0;

   /// Whether so much is on its way that batches had better wait, and tell changes once.
   virtual bool busy() const noexcept = 0;
};

} // namespace Vok::Store
