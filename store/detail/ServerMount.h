// One mount: its tree, the stream that its writer sends in, and the one that its readers get.
#pragma once

#include "Vok/Vok.h"
#include "store/Link.h"
#include "store/Server.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Vok::Store {

/// A reader of a mount: where it is in the stream. Nothing else is kept for it, however far it is
/// behind.
struct Reading {
   Detail::SessionState * session;
   std::uint32_t channel;
   ServerMount * mount;
   StreamPosition has;
   bool announced = false;
};

class ServerMount {
 public:
   /// `root` is the tree as it was made.
   ServerMount( Server & server, std::uint32_t number, std::string path,
         const Corvo::Ptr< Entity > & root );

   std::uint32_t number() const noexcept { return number_; }
   const std::string & path() const noexcept { return path_; }
   std::string type() const { return std::string( root_->typeData().name() ); }
   const std::string & writer() const noexcept { return writer_; }
   bool stale() const noexcept { return stale_; }
   Clock::Wall since() const noexcept { return since_; }
   std::size_t readers() const noexcept { return readers_.size(); }

   /// What it has of a writer's stream.
   StreamPosition written() const noexcept { return in_.position(); }

   /// A writer begins, or the one that it had goes. Readers are told.
   void writerIs( const std::string & program );
   void writerGone();

   /// Applies a writer's batch. Throws NboAttrLog::Exception.
   void apply( std::span< const std::byte > batch );

   void add( Reading & reading );
   void remove( Reading & reading ) noexcept;

   /// Sends what changed to the readers that have all before it and are not busy.
   void publish();

   /// Tells a reader what it misses, once there is a tree to be told of.
   void serve( Reading & reading );

 private:
   void announce( Reading & reading );
   void tellState( const Reading & reading ) const;
   void tellAll();

   Server & server_;
   std::uint32_t number_;
   std::string path_;
   Corvo::Ptr< Entity > root_;
   EntityVokNboAttrLogReader in_;
   EntityVokNboAttrLogSa out_;
   StreamPlace start_{ out_ }; // since which every reader can be served
   bool pending_ = false; // among the server's changed ones
   std::string writer_;
   bool stale_ = true;
   Clock::Wall since_;
   std::vector< Reading * > readers_;
};

} // namespace Vok::Store
