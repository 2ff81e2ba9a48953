// JSON-RPC over a Unix socket.
#include "bench/store/JsonRpc.h"

#include "bench/Check.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace Bench {

std::string_view JsonSplitter::next()
{
   if ( begin_ == seen_ && begin_ != 0 ) {
      text_.erase( 0, begin_ );
      begin_ = seen_ = 0;
   }
   for ( ; seen_ != text_.size(); ++seen_ ) {
      const char letter = text_[ seen_ ];
      if ( inText_ ) {
         inText_ = escaped_ || letter != '"';
         escaped_ = !escaped_ && letter == '\\';
      } else if ( letter == '"' ) {
         inText_ = true;
      } else if ( letter == '{' || letter == '[' ) {
         ++depth_;
      } else if ( ( letter == '}' || letter == ']' ) && --depth_ == 0 ) {
         ++seen_;
         const auto value = std::string_view( text_ ).substr( begin_, seen_ - begin_ );
         begin_ = seen_;
         return value;
      }
   }
   return {};
}

JsonConnection::JsonConnection( const std::string & path )
      : socket_( socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0 ) )
{
   sockaddr_un to{};
   to.sun_family = AF_UNIX;
   std::memcpy( to.sun_path, path.c_str(), std::min( path.size(), sizeof to.sun_path - 1 ) );
   require( connect( socket_, reinterpret_cast< const sockaddr * >( &to ), sizeof to ) == 0,
         "a connection for JSON-RPC" );
}

JsonConnection::~JsonConnection()
{
   close( socket_ );
}

void JsonConnection::send( std::string_view text ) const
{
   while ( !text.empty() ) {
      const ssize_t done = ::send( socket_, text.data(), text.size(), MSG_NOSIGNAL );
      require( done > 0, "the other side takes JSON-RPC" );
      text.remove_prefix( static_cast< std::size_t >( done ) );
   }
}

bool JsonConnection::receive()
{
   char piece[ 65536 ];
   const ssize_t size = read( socket_, piece, sizeof piece );
   if ( size <= 0 ) {
      return false;
   }
   values_.add( { piece, static_cast< std::size_t >( size ) } );
   return true;
}

std::string_view JsonConnection::await()
{
   while ( true ) {
      if ( const std::string_view value = next(); !value.empty() ) {
         return value;
      }
      require( receive(), "an answer over JSON-RPC" );
   }
}

} // namespace Bench
