// What a client keeps: its connection, and what it reads and writes over it.
#pragma once

#include "store/Client.h"
#include "store/Link.h"
#include "store/Path.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace Vok::Store::Detail {

/// A tree that is written. The place in its stream is where the store is known to be.
class WritingState {
 public:
   WritingState( ClientState & client, std::uint32_t channel, std::string path,
         const Corvo::Ptr< Entity > & root, bool takeOver );

   void open();
   void opened( const Opened & message );
   void refused( const Refused & message );
   void acknowledged( const Acknowledged & message );
   void disconnected() noexcept { open_ = false; }
   void flush();

   bool isOpen() const noexcept { return open_; }
   bool settled() const noexcept
   {
      return open_ && !stream_.hasChanges() && store_.position() == stream_.position();
   }
   const std::string & refusal() const noexcept { return refusal_; }

   ClientState * client; ///< null: it is gone
   const std::uint32_t channel;
   bool remove = false;

 private:
   void send( const NboAttrLog::Out & batch );

   std::string path_;
   Corvo::Ptr< Entity > root_;
   bool takeOver_;
   EntityVokNboAttrLogSa stream_;
   StreamPlace store_{ stream_ };
   bool open_ = false;
   std::string refusal_;
};

/// The mounts of a pattern.
class ReadingState {
 public:
   ReadingState( ClientState & client, std::uint32_t channel, PathPattern pattern,
         MountListener & listener );

   void open();
   void refused( const Refused & message );
   void mounted( const Mounted & message );
   void stateIs( const MountState & message );
   void batch( const BatchPiece & message );
   void unmounted( const Unmounted & message );
   void disconnected();
   Corvo::Ptr< Entity > root( const std::string & path ) const;

   ClientState * client; ///< null: it is gone
   const std::uint32_t channel;

 private:
   /// The longest batch of a mount.
   static constexpr std::size_t batchLimit = std::size_t{ 1 } << 30;

   struct Replica {
      explicit Replica( const Corvo::Ptr< Entity > & tree ) : root( tree ),
                                                              reader( tree ) {}

      Corvo::Ptr< Entity > root;
      EntityVokNboAttrLogReader reader;
      BatchAssembly assembly{ batchLimit };
      MountState state;
      bool told = false; ///< the listener knows of it
   };
   using Replicas = std::map< std::string, std::unique_ptr< Replica > >;

   Replicas::iterator find( std::uint32_t mount );
   void give( const std::string & path, Replica & replica );
   void fail( const std::string & path, const std::string & text );

   PathPattern pattern_;
   MountListener & listener_;
   Replicas replicas_;
   std::map< std::uint32_t, std::string > paths_; // of the mounts that this connection told of
};

class ClientState {
 public:
   explicit ClientState( std::string program ) : program_( std::move( program ) ) {}
   ~ClientState();

   void connected();
   void disconnected();
   bool isConnected() const noexcept { return link_ != nullptr; }
   void receive( std::span< const std::byte > piece );
   void flush();
   std::span< const std::byte > output() const noexcept;
   void sent( std::size_t count );

   /// Nothing is sent without a connection.
   void send( const Message & message );
   void sendBatch( std::uint32_t channel, const std::shared_ptr< const Bytes > & batch );

   /// Whether so much waits to be sent that changes wait, and are told once.
   bool busy() const noexcept { return !link_ || link_->pending() > busyFrom; }

   std::uint32_t newChannel() noexcept { return ++lastChannel_; }
   void add( std::shared_ptr< WritingState > writing );
   void add( std::shared_ptr< ReadingState > reading );
   void remove( WritingState & writing );
   void remove( ReadingState & reading );

 private:
   static constexpr std::size_t busyFrom = 256 << 10;

   void handle( const Message & message );
   void on( const Welcome & ) {}
   void on( const Opened & message );
   void on( const Refused & message );
   void on( const Acknowledged & message );
   template< class M > void on( const M & message );

   std::string program_;
   std::unique_ptr< Link > link_; // null: no connection
   std::uint32_t lastChannel_ = 0;
   std::map< std::uint32_t, std::shared_ptr< WritingState > > writings_;
   std::map< std::uint32_t, std::shared_ptr< ReadingState > > readings_;
};

} // namespace Vok::Store::Detail
