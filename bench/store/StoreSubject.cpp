// The store: its table is a tree of entities, or one entity with a map of values.
#include "bench/Check.h"
#include "bench/store/Process.h"
#include "bench/store/StoreTables.h"
#include "bench/store/Subject.h"
#include "store/Client.h"
#include "store/Wire.h"
#include "store/net/Connection.h"

#include <chrono>
#include <optional>
#include <utility>

namespace Bench {
namespace {

using Corvo::Ptr;
using std::chrono::seconds;

constexpr seconds patience{ 120 };
constexpr const char * mountPath = "flows";

template< class Kind > class StoreWriter final : public Writer {
 public:
   StoreWriter( const std::string & address, const WriterSetup & setup )
         : apart_( setup.apart ),
           connection_( loop_, wire_, Vok::Store::Address::parse( address ) )
   {
   }

   void fill( const Model & model ) override
   {
      for ( std::uint32_t member = 0; member != model.size(); ++member ) {
         members_.push_back( Kind::add( *table_, memberName( member ), model.row( member ) ) );
      }
      writing_ = client_.write( mountPath, table_ );
   }
   void change( const Change & change ) override
   {
      Kind::change( *table_, members_[ change.member ], change );
   }
   void flush() override
   {
      loop_.run();
      if ( apart_ && !wire_.output().empty() ) {
         until( [ this ] { return wire_.output().empty(); } );
      }
   }
   void settle() override
   {
      until( [ this ] { return writing_->settled(); } );
   }

 private:
   template< class Done > void until( Done done )
   {
      require( loop_.runUntil( done, patience ), "the store takes what is written" );
   }

   bool apart_;
   std::vector< typename Kind::Member > members_;
   Vok::Store::Loop loop_;
   Ptr< typename Kind::Table > table_ = Kind::make();
   Vok::Store::Wire wire_{ "writer" };
   Vok::Store::Client client_{ wire_ };
   Vok::Store::Connection connection_;
   std::unique_ptr< Vok::Store::Writing > writing_;
};

template< class Kind > class StoreSession final : public Vok::Store::MountListener,
                                                  private Corvo::Notifiee {
 public:
   StoreSession( Sink & sink, bool hears ) : sink_( sink ),
                                             hears_( hears )
   {
      reading_ = client_.read( mountPath, *this );
   }

   void connect( Vok::Store::Loop & loop, const std::string & address )
   {
      connection_.emplace( loop, wire_, Vok::Store::Address::parse( address ) );
   }
   void disconnect() { connection_.reset(); }

   void tell()
   {
      if ( table_ && sink_.marked() ) {
         sink_.tell( [ this ] { return Kind::digest( *table_ ); } );
      }
   }

   // MountListener
   void mounted( const std::string &, const Ptr< Vok::Entity > & root ) override
   {
      table_ = Ptr< typename Kind::Table >( static_cast< typename Kind::Table * >( root.get() ) );
      Kind::listen( *table_, *this, hears_ );
      sink_.changed( stampColumn, Kind::mark( *table_ ), true );
   }
   void failed( const std::string &, const std::string & text ) override
   {
      require( false, text.c_str() );
   }

 private:
   void onChange( const Corvo::Change & change ) override { Kind::told( change, sink_ ); }

   Sink & sink_;
   bool hears_;
   Vok::Store::Wire wire_{ "reader" };
   Vok::Store::Client client_{ wire_ };
   Ptr< typename Kind::Table > table_;
   std::unique_ptr< Vok::Store::Reading > reading_;
   std::optional< Vok::Store::Connection > connection_;
};

template< class Kind > class StoreReaders final : public Readers {
 public:
   StoreReaders( std::string address, std::vector< Sink > & sinks, bool hears )
         : address_( std::move( address ) )
   {
      for ( Sink & sink : sinks ) {
         sessions_.push_back( std::make_unique< StoreSession< Kind > >( sink, hears ) );
      }
   }

   void connect() override
   {
      for ( const auto & session : sessions_ ) {
         session->connect( loop_, address_ );
      }
   }
   void disconnect() override
   {
      for ( const auto & session : sessions_ ) {
         session->disconnect();
      }
   }
   void run( const std::function< bool() > & done ) override
   {
      const auto turned = [ & ] {
         for ( const auto & session : sessions_ ) {
            session->tell();
         }
         return done();
      };
      while ( !loop_.runUntil( turned, pause ) ) {
      }
   }

 private:
   std::string address_;
   Vok::Store::Loop loop_;
   std::vector< std::unique_ptr< StoreSession< Kind > > > sessions_;
};

template< class Kind > class StoreSubject final : public Subject {
 public:
   std::string name() const override { return Kind::subject; }
   std::string missing() const override { return {}; }
   std::string address( const Scratch & scratch ) const override
   {
      return "unix:" + scratchSocket( scratch );
   }
   std::unique_ptr< Process > start( const Scratch & scratch, bool ) const override
   {
      const std::vector< std::string > arguments{ address( scratch ) };
      auto server =
            std::make_unique< Process >( STORE_SERVER, arguments, scratch.file( "server.log" ) );
      awaitSocket( *server, scratchSocket( scratch ) );
      return server;
   }
   std::unique_ptr< Writer > writer(
         const std::string & address, const WriterSetup & setup ) const override
   {
      return std::make_unique< StoreWriter< Kind > >( address, setup );
   }
   std::unique_ptr< Readers > readers(
         const std::string & address, std::vector< Sink > & sinks, bool hears ) const override
   {
      return std::make_unique< StoreReaders< Kind > >( address, sinks, hears );
   }
};

} // namespace

std::unique_ptr< Subject > entitySubject()
{
   return std::make_unique< StoreSubject< Entities > >();
}

std::unique_ptr< Subject > valueSubject()
{
   return std::make_unique< StoreSubject< Values > >();
}

} // namespace Bench
