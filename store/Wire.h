// The carrier to a store at the other end of a connection: messages as bytes. It has no socket, no
// clock and no thread of its own; whoever has, moves the bytes and says when there is a connection.
//
//    Vok::Store::Wire wire( "agent" );
//    Vok::Store::Client client( wire );
//    wire.connected();
//    wire.receive( bytes );                   // what the store sent
//    client.flush();                          // after changes of what is written
//    write( wire.output() );                  // for the store
#pragma once

#include "Vok/Export.h"
#include "store/Carrier.h"
#include "store/Link.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace Vok::Store {

/// See the top of this file. Outlives its client. Used from one thread, the client's.
class VOK_EXPORT Wire final : public Carrier {
 public:
   /// `program` is what calls itself so, for lists of mounts.
   explicit Wire( std::string program );

   /// There is a connection, or there is none any more. Silent where it is known.
   void connected();
   void disconnected();

   /// Takes what the store sent. Throws ProtocolException and FramingException for what makes no
   /// sense, or where the store ends the connection: it is best closed. What a notifiee or a
   /// listener throws comes out too, after which the connection is best closed as well: nothing is
   /// lost with it.
   void receive( std::span< const std::byte > piece );

   /// The bytes to be sent next, none where nothing waits; they stay until `sent`.
   std::span< const std::byte > output() const noexcept;
   void sent( std::size_t count );

   /// The same output in pieces, in order, as many as `into` takes: how many. For those who gather.
   std::size_t outputs( std::span< std::span< const std::byte > > into ) const noexcept;

   /// Puts the changes of what the client writes behind what is to be sent.
   void flush();

   // Carrier
   void userIs( CarrierUser * user ) override { user_ = user; }
   bool isConnected() const noexcept override { return link_ != nullptr; }
   void send( const Message & message ) override;
   void sendBatch( std::uint32_t channel, const std::shared_ptr< const Bytes > & batch ) override;
   bool busy() const noexcept override { return !link_ || link_->pending() > busyFrom; }

 private:
   static constexpr std::size_t busyFrom = 256 << 10;

   /// The longest batch of a mount.
   static constexpr std::size_t batchLimit = std::size_t{ 1 } << 30;

   void handle( const Message & message );
   void piece( const BatchPiece & message );

   std::string program_;
   CarrierUser * user_ = nullptr;
   std::shared_ptr< Link > link_; // null: no connection
   std::map< std::pair< std::uint32_t, std::uint32_t >, BatchAssembly > assemblies_; // begun ones
};

} // namespace Vok::Store
