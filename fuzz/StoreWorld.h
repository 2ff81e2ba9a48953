// A store with two honest clients, and the connection of a hostile one.
#pragma once

#include "fuzz/Support.h"
#include "tests/model/Everything.h"

#include "store/Client.h"
#include "store/Framing.h"
#include "store/Server.h"
#include "store/Wire.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Fuzz {

/// Those that are not honest have no rights at `honest/`.
class HonestAlone final : public Vok::Store::Access {
 public:
   bool allows( const Vok::Store::Peer & peer, Vok::Store::Right right,
         std::string_view path ) const override
   {
      return peer.user == 1U || right == Vok::Store::Right::read || !path.starts_with( "honest/" );
   }
};

/// The trees that a client reads, and what became of them.
class Trees final : public Vok::Store::MountListener {
 public:
   void mounted( const std::string & path, const Corvo::Ptr< Vok::Entity > & root ) override
   {
      roots[ path ] = root;
   }
   void unmounted( const std::string & path ) override { roots.erase( path ); }
   void failed( const std::string &, const std::string & ) override { ++failures; }

   std::map< std::string, Corvo::Ptr< Vok::Entity > > roots;
   std::size_t failures = 0;
};

/// An honest client and its connection.
class Honest {
 public:
   explicit Honest( const char * program ) : wire( program ) {}

   void connect( Vok::Store::Server & server )
   {
      session_ = server.connected( { "honest", 1, {}, {} } );
      wire.connected();
   }

   void disconnect()
   {
      session_.reset();
      wire.disconnected();
   }

   /// What waits on both sides arrives; whether anything did.
   bool move()
   {
      bool moved = false;
      for ( auto bytes = wire.output(); !bytes.empty(); bytes = wire.output() ) {
         const std::vector< std::byte > piece( bytes.begin(), bytes.end() );
         wire.sent( piece.size() );
         session_->receive( piece );
         moved = true;
      }
      for ( auto bytes = session_->output(); !bytes.empty(); bytes = session_->output() ) {
         const std::vector< std::byte > piece( bytes.begin(), bytes.end() );
         session_->sent( piece.size() );
         wire.receive( piece );
         moved = true;
      }
      return moved;
   }

   Vok::Store::Wire wire;
   Vok::Store::Client client{ wire };

 private:
   std::unique_ptr< Vok::Store::Session > session_;
};

/// The store's two honest clients: a tree is written and read, whatever others do.
class HonestPair {
 public:
   explicit HonestPair( Vok::Store::Server & server ) : server_( server )
   {
      writer_.connect( server_ );
      reader_.connect( server_ );
   }

   /// Writes something, which its reader must have then, and nobody told it anything else.
   void hold()
   {
      root_->midIs( static_cast< std::uint16_t >( root_->mid() + 1 ) );
      root_->namesIs( root_->mid() % 5U, std::to_string( root_->mid() ) );
      for ( bool moved = true; moved; ) {
         writer_.client.flush();
         moved = writer_.move();
         server_.publish();
         moved = reader_.move() || moved;
      }
      const auto at = trees_.roots.find( path );
      Fuzz::hold( writing_->settled(), "the store takes what an honest writer writes" );
      Fuzz::hold( at != trees_.roots.end() &&
                  Vok::treeDigest( *at->second ) == Vok::treeDigest( *root_ ),
            "an honest reader has it" );
      Fuzz::hold( trees_.failures == 0, "and nothing failed for it" );
   }

   static constexpr const char * path = "honest/tree";

 private:
   Vok::Store::Server & server_;
   Honest writer_{ "honest writer" };
   Honest reader_{ "honest reader" };
   Trees trees_;
   Corvo::Ptr< Test::Root > root_ = Test::Root::RootIs( "honest" );
   std::unique_ptr< Vok::Store::Writing > writing_ = writer_.client.write( path, root_ );
   std::unique_ptr< Vok::Store::Reading > reading_ = reader_.client.read( path, trees_ );
};

/// A frame around bytes.
inline std::vector< std::byte > framed( Bytes payload )
{
   std::vector< std::byte > frame;
   Vok::Store::FrameWriter().append( payload, frame );
   return frame;
}

inline std::vector< std::byte > framed( const Vok::Store::Message & message )
{
   Vok::NboAttrLog::Out out;
   Vok::Store::encode( message, out );
   return framed( Bytes( out.bytes() ) );
}

/// Times stand still.
class NoClock final : public Vok::Store::Clock {
 public:
   Wall wall() const noexcept override { return {}; }
};

} // namespace Fuzz
