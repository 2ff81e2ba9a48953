// What a client keeps: what it writes and reads over its carrier.
#pragma once

#include "store/Carrier.h"
#include "store/Client.h"
#include "store/Path.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace Vok::Store::Detail {

/// A tree that is written. The place in its stream is where the store is known to be.
class WritingState {
 public:
   WritingState( ClientState & client, std::uint32_t channel, std::string path,
         const Corvo::Ptr< Entity > & root, bool takeOver );

   void open();
   void on( const Opened & message );
   void on( const Refused & message );
   void on( const Acknowledged & message );
   void on( const MountState & message );
   void on( const PassedOver & message );
   void disconnected() noexcept;
   void flush();

   bool isOpen() const noexcept { return open_; }
   bool settled() const noexcept
   {
      return open_ && !stream_.hasChanges() && store_.position() == stream_.position();
   }
   const std::string & refusal() const noexcept { return refusal_; }
   const std::string & problem() const noexcept { return problem_; }
   const std::vector< std::string > & passedOver() const noexcept { return passedOver_; }

   ClientState * client; ///< null: it is gone
   const std::uint32_t channel;
   bool remove = false;

 private:
   /// A batch that the store has not acknowledged.
   struct UnderWay {
      std::uint64_t batch;
      std::size_t bytes;
   };

   /// What may be under way together. What changes while it is goes in one batch behind it, so that
   /// a store that is slower than its writer is told what is, not all that was.
   static constexpr std::size_t underWayMost = 4096;

   bool mayGo() const noexcept;
   void send( const NboAttrLog::Out & batch );

   std::string path_;
   Corvo::Ptr< Entity > root_;
   bool takeOver_;
   EntityVokNboAttrLogSa stream_;
   StreamPlace store_{ stream_ };
   std::deque< UnderWay > underWay_;
   std::size_t underWayBytes_ = 0;
   bool open_ = false;
   bool kept_ = false; // one batch is under way at a time
   std::string refusal_;
   std::string problem_;
   std::vector< std::string > passedOver_;
};

/// The mounts of a pattern.
class ReadingState {
 public:
   ReadingState( ClientState & client, std::uint32_t channel, PathPattern pattern,
         MountListener & listener );

   void open();
   void on( const Refused & message );
   void on( const Mounted & message );
   void on( const MountState & message );
   void on( const PassedOver & message );
   void on( const Unmounted & message );
   void batch( std::uint32_t mount, std::span< const std::byte > batch );
   void disconnected();
   Corvo::Ptr< Entity > root( const std::string & path ) const;

   ClientState * client; ///< null: it is gone
   const std::uint32_t channel;

 private:
   struct Replica {
      explicit Replica( const Corvo::Ptr< Entity > & tree ) : root( tree ),
                                                              reader( tree ) {}

      Corvo::Ptr< Entity > root;
      EntityVokNboAttrLogReader reader;
      MountState state;
      std::set< std::string > passedOver; ///< that the listener knows of
      bool told = false; ///< the listener knows of it
   };
   using Replicas = std::map< std::string, std::unique_ptr< Replica > >;

   Replicas::iterator find( std::uint32_t mount );
   void give( const std::string & path, Replica & replica );
   void tellPassedOver( const std::string & path, const std::vector< std::string > & texts );
   void fail( const std::string & path, const std::string & text );

   PathPattern pattern_;
   MountListener & listener_;
   Replicas replicas_;
   std::map< std::uint32_t, std::string > paths_; // of the mounts that this connection told of
};

/// Which messages are told to what is written and to what is read.
template< class M >
concept ToWriter = requires( WritingState & state, const M & message )
{
   state.on( message );
};
template< class M >
concept ToReader = requires( ReadingState & state, const M & message )
{
   state.on( message );
};

class ClientState final : public CarrierUser {
 public:
   using Answer = std::function< void( const std::vector< MountEntry > & ) >;

   explicit ClientState( Carrier & carrier );
   ClientState( const ClientState & ) = delete;
   ClientState & operator=( const ClientState & ) = delete;
   ~ClientState() override;

   Carrier & carrier() noexcept { return carrier_; }
   std::uint32_t newChannel() noexcept { return ++lastChannel_; }
   void add( std::shared_ptr< WritingState > writing );
   void add( std::shared_ptr< ReadingState > reading );
   void remove( WritingState & writing );
   void remove( ReadingState & reading );
   void ask( ListMounts message, Answer answer );
   std::uint64_t connections() const noexcept { return connections_; }

   // CarrierUser
   void connected() override;
   void disconnected() override;
   void received( const Message & message ) override;
   void received( std::uint32_t channel, std::uint32_t mount,
         std::span< const std::byte > batch ) override;
   void flush() override;

 private:
   /// A list that was asked for.
   struct Question {
      ListMounts message;
      Answer answer;
      std::vector< MountEntry > mounts; ///< so far
   };

   void on( const Refused & message );
   void on( const MountList & message );
   template< class M > void on( const M & message );
   template< class M > void tell( const M & message );

   Carrier & carrier_;
   std::uint32_t lastChannel_ = 0;
   std::uint64_t connections_ = 0;
   std::map< std::uint32_t, std::shared_ptr< WritingState > > writings_;
   std::map< std::uint32_t, std::shared_ptr< ReadingState > > readings_;
   std::map< std::uint32_t, Question > questions_;
};

} // namespace Vok::Store::Detail
