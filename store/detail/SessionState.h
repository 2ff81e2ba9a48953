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
   explicit SessionState( Server & server );
   SessionState( const SessionState & ) = delete;
   SessionState & operator=( const SessionState & ) = delete;
   ~SessionState();

   void receive( std::span< const std::byte > piece );
   void sent( std::size_t count );
   bool finished() const noexcept { return finished_; }

   Link & link() noexcept { return link_; }
   const Link & link() const noexcept { return link_; }

   /// Whether so much waits to be sent that nothing new is put behind it.
   bool busy() const noexcept { return finished_ || link_.pending() > busyFrom; }

   /// A mount has come, or goes.
   void appeared( ServerMount & mount );
   void gone( ServerMount & mount );

   /// Tells writers what the store has of their batches.
   void acknowledge();

   /// Another writer takes the mount.
   void takenOver( const ServerMount & mount, const std::string & by );

 private:
   static constexpr std::size_t busyFrom = 64 << 10;

   /// The longest batch of a writer.
   static constexpr std::size_t batchLimit = std::size_t{ 1 } << 30;

   struct Writing {
      ServerMount * mount;
      BatchAssembly assembly{ batchLimit };
      bool told = true; ///< the writer knows of all that the store has
   };
   struct Pattern {
      PathPattern pattern;
      std::vector< Known > known;
      std::vector< std::unique_ptr< Reading > > readings;
   };

   void handle( const Message & message );
   void on( const Hello & message );
   void on( const OpenWriter & message );
   void on( const OpenReader & message );
   void on( const BatchPiece & message );
   void on( const Close & message );
   template< class M > void on( const M & );

   void refuse( std::uint32_t channel, Refusal reason, const std::string & text );
   void finish( const std::string & text );
   void needFree( std::uint32_t channel ) const;
   void read( std::uint32_t channel, Pattern & pattern, ServerMount & mount );
   void closeWriter( std::uint32_t channel );
   void closeReader( std::uint32_t channel );

   Server & server_;
   Link link_;
   bool finished_ = false;
   bool greeted_ = false;
   std::string program_;
   std::map< std::uint32_t, Writing > writers_;
   std::map< std::uint32_t, Pattern > readers_;
};

} // namespace Vok::Store::Detail
