// How a client gets its connection, and another one when that is lost.
#include "store/net/Connection.h"

#include "store/net/uv/Stream.h"

#include <algorithm>
#include <random>
#include <utility>

namespace Vok::Store {

namespace Detail {

class ConnectionState final : public LoopUser, public StreamUser {
 public:
   ConnectionState( Loop & loop, Client & client, const Address & address )
         : loop_( loop.state() ),
           client_( client ),
           address_( address ),
           timer_( new uv_timer_t ),
           backoff_( std::random_device()() )
   {
      uv_timer_init( &loop_.loop, timer_ );
      timer_->data = this;
      loop_.users.push_back( this );
      connect();
   }
   ConnectionState( const ConnectionState & ) = delete;
   ConnectionState & operator=( const ConnectionState & ) = delete;

   ~ConnectionState() override
   {
      forget();
      std::erase( loop_.users, this );
      uv_close( reinterpret_cast< uv_handle_t * >( timer_ ),
            []( uv_handle_t * handle ) { delete reinterpret_cast< uv_timer_t * >( handle ); } );
      client_.disconnected();
   }

   bool connected() const noexcept { return connected_; }
   const std::string & error() const noexcept { return error_; }

   // LoopUser
   void work() override
   {
      if ( lost_ ) {
         again();
      } else if ( connected_ ) {
         client_.flush();
         stream_->send();
      }
   }

   // StreamUser
   void received( std::span< const std::byte > piece ) override
   {
      backoff_.reset();
      try {
         client_.receive( piece );
      } catch ( const FramingException & e ) {
         ended( e.what() );
      } catch ( const ProtocolException & e ) {
         ended( e.what() );
      } catch ( ... ) {
         ended( "what was told of a change ended in an exception" );
         throw;
      }
   }
   std::span< const std::byte > output() const noexcept override { return client_.output(); }
   void sent( std::size_t count ) override { client_.sent( count ); }
   void ended( const std::string & why ) override
   {
      error_ = why;
      connected_ = false;
      lost_ = true; // the stream goes once nobody uses it
   }

 private:
   /// A request to connect, which libuv holds until it is answered.
   struct Request {
      uv_connect_t request{};
      ConnectionState * owner;
      Stream * stream;
   };

   void connect()
   {
      const bool isUnix = address_.kind == Address::Kind::unixSocket;
      stream_ = std::make_unique< Stream >( loop_, isUnix );
      auto request = std::make_unique< Request >( Request{ {}, this, stream_.get() } );
      request->request.data = request.get();
      attempt_ = request.get();
      int code = 0;
      if ( isUnix ) {
         uv_pipe_connect(
               &request->request, stream_->pipe(), address_.place.c_str(), onConnected );
      } else {
         sockaddr_storage to{};
         socketAddress( to );
         code = uv_tcp_connect( &request->request, stream_->tcp(),
               reinterpret_cast< const sockaddr * >( &to ), onConnected );
      }
      if ( code != 0 ) {
         attempt_ = nullptr;
         ended( uv_strerror( code ) );
         return;
      }
      static_cast< void >( request.release() );
   }

   void socketAddress( sockaddr_storage & to ) const
   {
      const char * const place = address_.place.c_str();
      if ( uv_ip4_addr( place, address_.port, reinterpret_cast< sockaddr_in * >( &to ) ) != 0 ) {
         uv_ip6_addr( place, address_.port, reinterpret_cast< sockaddr_in6 * >( &to ) );
      }
   }

   static void onConnected( uv_connect_t * request, int status )
   {
      const std::unique_ptr< Request > held( static_cast< Request * >( request->data ) );
      ConnectionState * const self = held->owner;
      if ( !self ) {
         return; // it has gone
      }
      self->loop_.guard( [ & ] {
         self->attempt_ = nullptr;
         if ( status != 0 ) {
            self->ended( uv_strerror( status ) );
            return;
         }
         self->connected_ = true;
         self->client_.connected();
         self->stream_->start( *self );
      } );
   }

   /// What is left of a lost connection goes, and a new one is tried after a while.
   void again()
   {
      lost_ = false;
      client_.disconnected();
      forget();
      uv_update_time( &loop_.loop );
      uv_timer_start(
            timer_,
            []( uv_timer_t * timer ) {
               auto * const self = static_cast< ConnectionState * >( timer->data );
               self->loop_.guard( [ & ] { self->connect(); } );
            },
            static_cast< std::uint64_t >( backoff_.next().count() ), 0 );
   }

   void forget() noexcept
   {
      if ( attempt_ ) {
         attempt_->owner = nullptr;
         attempt_ = nullptr;
      }
      stream_.reset();
   }

   LoopState & loop_;
   Client & client_;
   Address address_;
   uv_timer_t * timer_;
   Backoff backoff_;
   std::unique_ptr< Stream > stream_;
   Request * attempt_ = nullptr;
   bool connected_ = false;
   bool lost_ = false;
   std::string error_;
};

} // namespace Detail

Connection::Connection( Loop & loop, Client & client, const Address & address )
      : state_( std::make_unique< Detail::ConnectionState >( loop, client, address ) )
{
}

Connection::~Connection() = default;

bool Connection::connected() const noexcept
{
   return state_->connected();
}

const std::string & Connection::error() const noexcept
{
   return state_->error();
}

} // namespace Vok::Store
