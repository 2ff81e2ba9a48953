// What the store keeps of one connection: its channels, and what is to be sent over it.
#pragma once

#include "store/Link.h"
#include "store/Path.h"
#include "store/detail/ServerMount.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Vok::Store::Detail {

class SessionState {
 public:
   SessionState( Server & server, Peer peer );
   SessionState( const SessionState & ) = delete;
   SessionState & operator=( const SessionState & ) = delete;
   ~SessionState();

   void receive( std::span< const std::byte > piece );
   void sent( std::size_t count );
   void finish( Refusal reason, const std::string & text );
   bool finished() const noexcept { return finished_; }
   bool greeted() const noexcept { return greeted_; }
   bool takesMore() const noexcept { return !finished_ && link_.pendingOwn() <= mostOwn; }

   Link & link() noexcept { return link_; }
   const Link & link() const noexcept { return link_; }
   const std::string & program() const noexcept { return program_; }
   const Peer & peer() const noexcept { return peer_; }

   /// Whether so much waits to be sent that nothing new is put behind it.
   bool busy() const noexcept { return finished_ || link_.pending() > busyFrom; }

   /// A reader was passed over, and is told what it missed when little waits.
   void behind( MountReader & reader );

   /// A mount has come, or goes.
   void appeared( ServerMount & mount );
   void gone( ServerMount & mount );

   /// Another writer takes the mount of a channel.
   void takenOver( std::uint32_t channel, const std::string & by );

   /// What a writer sends is refused, and its channel with it.
   void refuseWriter( std::uint32_t channel, Refusal reason, const std::string & text );

 private:
   static constexpr std::size_t busyFrom = 64 << 10;

   /// What waits to be sent to one that does not take it, batches that others get too left out:
   /// beyond that it is not listened to.
   static constexpr std::size_t mostOwn = 1 << 20;

   struct Pattern {
      PathPattern pattern;
      std::vector< std::unique_ptr< MountReader > > readers;
   };

   void handle( const Message & message );
   void on( const Hello & message );
   void on( const OpenWriter & message );
   void on( const OpenReader & message );
   void on( const BatchPiece & message );
   void on( const Close & message );
   void on( const ListMounts & message );
   template< class M > void on( const M & );

   void refuse( std::uint32_t channel, Refusal reason, const std::string & text,
         std::string_view path = {} );
   void closeAll();
   void needFree( std::uint32_t channel ) const;
   bool mayHaveChannel( std::uint32_t channel );
   bool allows( Right right, std::string_view path ) const;
   ServerMount * mountToWrite( const OpenWriter & message );
   void read( std::uint32_t channel, Pattern & pattern, ServerMount & mount,
         const StreamPosition & has );
   void leave( MountReader & reader );
   void closeWriter( std::uint32_t channel, bool remove = false );
   void closeReader( std::uint32_t channel );
   std::string user() const;

   Server & server_;
   Peer peer_;
   Link link_;
   bool finished_ = false;
   bool greeted_ = false;
   std::string program_;
   std::map< std::uint32_t, MountWriter > writers_;
   std::map< std::uint32_t, Pattern > readers_;
   std::vector< MountReader * > behind_;
};

} // namespace Vok::Store::Detail
