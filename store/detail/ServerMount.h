// One mount: its tree, the stream that its writer sends in, and the one that its readers get.
#pragma once

#include "Vok/Vok.h"
#include "store/Link.h"
#include "store/Server.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Vok::Store {

/// A reader of a mount: where it is in the stream. Nothing else is kept for it, however far it is
/// behind.
struct MountReader {
   Detail::SessionState * session;
   std::uint32_t channel;
   ServerMount * mount;
   StreamPosition has;
   bool announced = false;
   bool behind = false; ///< it was passed over, and its session knows
};

/// The writer of a mount.
struct MountWriter {
   Detail::SessionState * session;
   std::uint32_t channel;
   ServerMount * mount;
   BatchAssembly assembly;
   bool opened = false; ///< it was told where to go on
};

class ServerMount {
 public:
   /// `root` is the tree as it was made.
   ServerMount( Server & server, std::uint32_t number, std::string path,
         const Corvo::Ptr< Entity > & root );

   std::uint32_t number() const noexcept { return number_; }
   const std::string & path() const noexcept { return path_; }
   std::string type() const { return std::string( root_->typeData().name() ); }
   const std::string & program() const noexcept { return program_; }
   bool stale() const noexcept { return writer_ == nullptr; }
   MountWriter * writer() const noexcept { return writer_; }
   MountInfo info() const;
   MountEntry entry( bool withTree );
   std::optional< Server::TreeInfo > tree();
   bool hasTree() const noexcept { return out_.position().batch != 0; }

   /// Nothing was ever told of it, and nothing was kept.
   bool isEmpty() const noexcept { return in_.position().batch == 0 && !hasTree(); }

   /// Takes what was kept of it. Throws NboAttrLog::Exception.
   void recover( const Keeper::Kept & kept );

   /// A writer begins, or the one that it had goes. Readers are told.
   void writerIs( MountWriter & writer );
   void writerGone();

   /// Applies a writer's batch. Throws NboAttrLog::Exception, and ProtocolException for a batch
   /// that may not come now.
   void apply( std::span< const std::byte > batch );

   void add( MountReader & reader );
   void remove( MountReader & reader ) noexcept;

   /// Keeps what changed where the mount is kept, else sends it to the readers.
   void publish();

   /// Tells a reader what it misses, once there is a tree to be told of.
   void serve( MountReader & reader );

   /// What has become of a batch that was to be kept.
   void kept( const Keeper::Result & result );
   void keepAgain();

 private:
   /// A batch that is being kept. Nobody has it before it is, and no other one is taken.
   struct Commit {
      std::uint64_t number; ///< of the request
      StreamPosition before; ///< where readers are that get the batch as it is
      std::shared_ptr< const Bytes > batch;
      bool failed; ///< to be tried again
   };

   /// Kept bytes that follow a whole tree, beyond which it is kept anew.
   static constexpr std::size_t keptAnewFrom = 64 << 10;

   void pendingIs();
   void open();
   void acknowledge();
   void measure();
   void deliver( const StreamPosition & before, const std::shared_ptr< const Bytes > & batch );
   void send( MountReader & reader, const std::shared_ptr< const Bytes > & batch );
   std::shared_ptr< const Bytes > missedSince( const StreamPosition & has );
   std::shared_ptr< const Bytes > whole();
   void keep();
   void announce( MountReader & reader );
   MountState state() const;
   void tellState( const MountReader & reader ) const;
   void tellWriter() const;
   void tellAll() const;
   void tellPassedOver();
   void happened( Event::Kind kind, std::string_view text = {} ) const;

   Server & server_;
   std::uint32_t number_;
   std::string path_;
   Corvo::Ptr< Entity > root_;
   EntityVokNboAttrLogReader in_;
   EntityVokNboAttrLogSa out_;
   StreamPlace start_{ out_ }; // since which every reader can be served
   std::weak_ptr< const Bytes > whole_; // the whole tree, while it is on its way to readers
   std::uint64_t wholeAt_ = 0; // the batch that it is at
   std::weak_ptr< const Bytes > missed_; // the same of what one missed, from here to there
   StreamPosition missedFrom_;
   StreamPosition missedTo_;
   bool pending_ = false; // among the server's changed ones
   MountWriter * writer_ = nullptr;
   StreamPosition acknowledged_; // what the writer knows that the store has
   std::string program_; // that writes or wrote it
   Clock::Wall since_;
   std::vector< MountReader * > readers_;
   std::set< std::string > passedOver_; // all of it, since the mount is there
   Counters counters_;
   std::uint64_t measured_ = 0; // bytes that had come in when the tree was measured

   bool isKept_; // it outlives the store
   std::optional< Commit > commit_;
   std::string problem_; // why the last batch could not be kept
   bool keepWhole_ = true; // what is kept is another stream's, or not all of it
   std::size_t keptWhole_ = 0; // bytes of the whole tree that is kept
   std::size_t keptSince_ = 0; // bytes of what is kept behind it
};

} // namespace Vok::Store
