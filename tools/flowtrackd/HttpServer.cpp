// The page over libmicrohttpd, which has no thread here: the daemon's loop runs it.
#include "tools/flowtrackd/HttpServer.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <microhttpd.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Flowtrackd {

namespace {

using Vok::Store::Address;

[[noreturn]] void fail( const Address & address )
{
   throw std::system_error(
         errno, std::generic_category(), "metrics cannot be told at " + address.text() );
}

/// A descriptor that is closed unless it is given away.
class Descriptor {
 public:
   explicit Descriptor( int number ) : number_( number ) {}
   Descriptor( const Descriptor & ) = delete;
   Descriptor & operator=( const Descriptor & ) = delete;
   ~Descriptor()
   {
      if ( number_ >= 0 ) {
         ::close( number_ );
      }
   }

   int get() const noexcept { return number_; }
   int release() noexcept { return std::exchange( number_, -1 ); }

 private:
   int number_;
};

int listening( const Address & address )
{
   const bool isUnix = address.kind == Address::Kind::unixSocket;
   const bool v6 = !isUnix && address.place.find( ':' ) != std::string::npos;
   sockaddr_storage at{};
   socklen_t size = 0;
   if ( isUnix ) {
      auto & name = reinterpret_cast< sockaddr_un & >( at );
      name.sun_family = AF_UNIX;
      address.place.copy( name.sun_path, sizeof name.sun_path - 1 );
      size = sizeof name;
      ::unlink( address.place.c_str() ); // what an earlier process left
   } else if ( v6 ) {
      auto & name = reinterpret_cast< sockaddr_in6 & >( at );
      name.sin6_family = AF_INET6;
      name.sin6_port = htons( address.port );
      inet_pton( AF_INET6, address.place.c_str(), &name.sin6_addr );
      size = sizeof name;
   } else {
      auto & name = reinterpret_cast< sockaddr_in & >( at );
      name.sin_family = AF_INET;
      name.sin_port = htons( address.port );
      inet_pton( AF_INET, address.place.c_str(), &name.sin_addr );
      size = sizeof name;
   }
   const int family = isUnix ? AF_UNIX : v6 ? AF_INET6
                                            : AF_INET;
   Descriptor made( ::socket( family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0 ) );
   const int yes = 1;
   if ( made.get() < 0 ||
         ( !isUnix &&
               ::setsockopt( made.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes ) != 0 ) ||
         ::bind( made.get(), reinterpret_cast< const sockaddr * >( &at ), size ) != 0 ||
         ::listen( made.get(), 16 ) != 0 ) {
      fail( address );
   }
   return made.release();
}

MHD_Result answer( MHD_Connection * connection, unsigned status, std::string text )
{
   MHD_Response * const response = MHD_create_response_from_buffer(
         text.size(), text.data(), MHD_RESPMEM_MUST_COPY );
   MHD_add_response_header(
         response, MHD_HTTP_HEADER_CONTENT_TYPE, "text/plain; version=0.0.4; charset=utf-8" );
   const MHD_Result result = MHD_queue_response( connection, status, response );
   MHD_destroy_response( response );
   return result;
}

} // namespace

struct HttpServer::State {
   static MHD_Result onRequest( void * self, MHD_Connection * connection, const char * url,
         const char * method, const char *, const char *, std::size_t *, void ** )
   {
      try {
         if ( std::strcmp( method, MHD_HTTP_METHOD_GET ) != 0 ) {
            return answer( connection, MHD_HTTP_METHOD_NOT_ALLOWED, "expected GET\n" );
         }
         if ( std::strcmp( url, "/metrics" ) != 0 ) {
            return answer( connection, MHD_HTTP_NOT_FOUND, "expected /metrics\n" );
         }
         return answer( connection, MHD_HTTP_OK, static_cast< State * >( self )->text() );
      } catch ( const std::exception & ) {
         return MHD_NO; // closes the connection
      }
   }

   std::function< std::string() > text;
   MHD_Daemon * daemon = nullptr;
   std::string socketFile; ///< to be removed at the end
};

HttpServer::HttpServer( const Address & address, std::function< std::string() > text )
      : state_( std::make_unique< State >() )
{
   state_->text = std::move( text );
   Descriptor socket( listening( address ) );
   state_->daemon = MHD_start_daemon( MHD_USE_EPOLL, 0, nullptr, nullptr, State::onRequest,
         state_.get(), MHD_OPTION_LISTEN_SOCKET, socket.get(), MHD_OPTION_CONNECTION_LIMIT, 16U,
         MHD_OPTION_CONNECTION_TIMEOUT, 10U, MHD_OPTION_CONNECTION_MEMORY_LIMIT,
         std::size_t{ 8192 }, MHD_OPTION_END );
   if ( !state_->daemon ) {
      fail( address );
   }
   socket.release(); // the daemon closes it
   if ( address.kind == Address::Kind::unixSocket ) {
      state_->socketFile = address.place;
   }
}

HttpServer::~HttpServer()
{
   MHD_stop_daemon( state_->daemon );
   if ( !state_->socketFile.empty() ) {
      ::unlink( state_->socketFile.c_str() );
   }
}

int HttpServer::descriptor() const noexcept
{
   return MHD_get_daemon_info( state_->daemon, MHD_DAEMON_INFO_EPOLL_FD )->epoll_fd;
}

void HttpServer::run()
{
   MHD_run( state_->daemon );
}

} // namespace Flowtrackd
