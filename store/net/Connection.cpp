// How a client gets its connection, and another one when that is lost.
#include "store/net/Connection.h"

#include "store/Backoff.h"
#include "store/net/uv/Stream.h"
#include "store/net/uv/Timer.h"
#include "store/net/uv/TlsFilter.h"

#include <algorithm>
#include <cerrno>
#include <random>
#include <stdexcept>
#include <utility>

namespace Vok::Store {

namespace Detail {

namespace {

// How long a connection may take to come about.
constexpr std::chrono::milliseconds connectTime( 10000 );

} // namespace

class ConnectionState final : public LoopUser, public TlsUser {
 public:
   ConnectionState( Loop & loop, Wire & wire, const Address & address, const TlsContext * tls,
         const std::string & server )
         : loop_( loop.state() ),
           wire_( wire ),
           address_( address ),
           context_( address.kind == Address::Kind::tls && tls ? &tls->state() : nullptr ),
           server_( server.empty() ? address.place : server ),
           timer_( loop_, [ this ] { due(); } ),
           backoff_( std::random_device()() )
   {
      if ( address.kind == Address::Kind::tls && !tls ) {
         throw std::invalid_argument( address.text() + " needs a TLS context" );
      }
      connect();
      loop_.users.push_back( this );
   }
   ConnectionState( const ConnectionState & ) = delete;
   ConnectionState & operator=( const ConnectionState & ) = delete;

   ~ConnectionState() override
   {
      std::erase( loop_.users, this );
      wire_.disconnected();
   }

   bool connected() const noexcept { return connected_; }
   const std::string & error() const noexcept { return error_; }
   const ThreadCheck & thread() const noexcept { return loop_.thread; }

   // LoopUser
   void work() override
   {
      if ( lost_ ) {
         again();
      } else if ( connected_ ) {
         wire_.flush();
         stream_->send();
      }
   }
   bool hasWork() const noexcept override { return lost_; }

   // TlsUser
   void received( std::span< const std::byte > piece ) override
   {
      if ( lost_ ) {
         return;
      }
      backoff_.reset();
      try {
         wire_.receive( piece );
      } catch ( const FramingException & e ) {
         ended( e.what() );
      } catch ( const ProtocolException & e ) {
         ended( e.what() );
      } catch ( ... ) {
         ended( "what was told of a change ended in an exception" );
         throw;
      }
   }
   std::size_t outputs( std::span< std::span< const std::byte > > into ) override
   {
      return wire_.outputs( into );
   }
   void sent( std::size_t count ) override { wire_.sent( count ); }
   void ended( const std::string & why ) override
   {
      if ( !std::exchange( lost_, true ) ) { // what is left goes once nobody uses it
         error_ = why;
         connected_ = false;
      }
   }
   void secured() override
   {
      timer_.stop();
      connected_ = true;
      wire_.connected();
   }
   void unsecured( const std::string & why ) override { ended( why ); }

 private:
   void connect()
   {
      const SocketAddress to( address_ );
      Socket socket = Socket::make( to.family() );
      if ( !socket ) {
         failed( errno );
         return;
      }
      if ( address_.kind != Address::Kind::unixSocket ) {
         socket.tuneTcp();
      }
      stream_ = std::make_unique< Stream >( loop_, std::move( socket ) );
      if ( context_ ) {
         tls_ = std::make_unique< TlsFilter >(
               loop_, context_->connecting( server_ ), *stream_, *this );
      }
      const int error = stream_->connect( to, [ this ]( int code ) { answered( code ); } );
      if ( error != 0 ) {
         failed( error );
         return;
      }
      timer_.start( connectTime );
   }

   void answered( int error )
   {
      if ( error != 0 ) {
         failed( error );
      } else if ( tls_ ) {
         tls_->start();
      } else {
         secured();
         stream_->start( *this );
      }
   }

   void failed( int error ) { ended( std::generic_category().message( error ) ); }

   /// It is time for another attempt, or none has come to anything so far.
   void due()
   {
      if ( stream_ ) {
         ended( "no connection came about within " + std::to_string( connectTime.count() ) +
               " milliseconds" );
      } else {
         connect();
      }
   }

   /// What is left of a lost connection goes, and a new one is tried after a while.
   void again()
   {
      lost_ = false;
      wire_.disconnected();
      tls_.reset();
      stream_.reset();
      timer_.start( backoff_.next() );
   }

   LoopState & loop_;
   Wire & wire_;
   Address address_;
   const TlsState * context_; // null where the connection is plain
   std::string server_; // what its certificate is for
   Timer timer_; // until it is connected, or while there is no attempt
   Backoff backoff_;
   std::unique_ptr< Stream > stream_; // null: no attempt
   std::unique_ptr< TlsFilter > tls_;
   bool connected_ = false;
   bool lost_ = false;
   std::string error_;
};

} // namespace Detail

Connection::Connection( Loop & loop, Wire & wire, const Address & address,
      const TlsContext * tls, const std::string & server )
{
   loop.state().thread.check( "Connection::Connection" );
   state_ = std::make_unique< Detail::ConnectionState >( loop, wire, address, tls, server );
}

Connection::~Connection()
{
   state_->thread().check( "Connection::~Connection" );
}

bool Connection::connected() const noexcept
{
   state_->thread().check( "Connection::connected" );
   return state_->connected();
}

const std::string & Connection::error() const noexcept
{
   state_->thread().check( "Connection::error" );
   return state_->error();
}

} // namespace Vok::Store
