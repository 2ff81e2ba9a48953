// How a test talks over a socket.
#include "tests/store/RawClient.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace TestSupport {

namespace {

int connectedTo( const Vok::Store::Address & address )
{
   union {
      sockaddr any;
      sockaddr_un local;
      sockaddr_in ip;
   } to{};
   socklen_t size = sizeof to.ip;
   if ( address.kind == Vok::Store::Address::Kind::unixSocket ) {
      to.local.sun_family = AF_UNIX;
      address.place.copy( to.local.sun_path, sizeof to.local.sun_path - 1 );
      size = sizeof to.local;
   } else {
      to.ip.sin_family = AF_INET;
      to.ip.sin_port = htons( address.port );
      inet_pton( AF_INET, address.place.c_str(), &to.ip.sin_addr );
   }
   const int made = socket( to.any.sa_family, SOCK_STREAM | SOCK_CLOEXEC, 0 );
   if ( made < 0 || connect( made, &to.any, size ) != 0 ) {
      throw std::system_error( errno, std::generic_category(), address.text() );
   }
   return made;
}

} // namespace

Vok::Store::Bytes frame( const Vok::Store::Message & message )
{
   Vok::NboAttrLog::Out out;
   encode( message, out );
   Vok::Store::Bytes bytes;
   Vok::Store::FrameWriter().append( out.bytes(), bytes );
   return bytes;
}

Vok::Store::Bytes greeting()
{
   return frame( Vok::Store::Hello{ Vok::Store::protocolVersion, "raw" } );
}

RawClient::RawClient( const Vok::Store::Address & address, Ssl ssl )
      : socket_( connectedTo( address ) ),
        ssl_( std::move( ssl ) )
{
   if ( ssl_ ) {
      SSL_set_connect_state( ssl_.get() );
      SSL_set_bio( ssl_.get(), BIO_new( BIO_s_mem() ), BIO_new( BIO_s_mem() ) );
      BIO_set_mem_eof_return( SSL_get_rbio( ssl_.get() ), -1 );
   }
}

RawClient::~RawClient()
{
   if ( socket_ >= 0 ) {
      close( socket_ );
   }
}

void RawClient::send( std::span< const std::byte > bytes )
{
   Bytes & to = ssl_ ? plain_ : unsent_;
   to.insert( to.end(), bytes.begin(), bytes.end() );
}

void RawClient::step()
{
   if ( socket_ < 0 ) {
      return;
   }
   if ( reading_ ) {
      read();
   }
   if ( ssl_ ) {
      protect();
   }
   write();
}

void RawClient::write()
{
   if ( unsent_.empty() ) {
      return;
   }
   const ssize_t size = ::send( socket_, unsent_.data(), unsent_.size(),
         MSG_NOSIGNAL | MSG_DONTWAIT );
   if ( size > 0 ) {
      sent_ += static_cast< std::size_t >( size );
      unsent_.erase( unsent_.begin(), unsent_.begin() + size );
   } else if ( errno != EAGAIN ) {
      unsent_.clear(); // the other side has gone; what it said before can still be read
   }
}

void RawClient::read()
{
   std::array< std::byte, 65536 > buffer;
   while ( !closed_ ) {
      const ssize_t size = recv( socket_, buffer.data(), buffer.size(), MSG_DONTWAIT );
      if ( size <= 0 ) {
         closed_ = size == 0 || errno != EAGAIN;
         return;
      }
      const auto piece = std::span( buffer ).first( static_cast< std::size_t >( size ) );
      if ( ssl_ ) {
         BIO_write( SSL_get_rbio( ssl_.get() ), piece.data(), static_cast< int >( piece.size() ) );
         unprotect();
      } else {
         take( piece );
      }
   }
}

void RawClient::take( std::span< const std::byte > piece )
{
   received_ += piece.size();
   try {
      while ( auto one = reader_.feed( piece ) ) {
         frames_.push_back( std::move( *one ) );
      }
   } catch ( const Vok::Store::FramingException & e ) {
      error_ = e.what();
   }
}

void RawClient::unprotect()
{
   std::array< std::byte, 16384 > buffer;
   while ( error_.empty() ) {
      ERR_clear_error();
      const int size =
            SSL_read( ssl_.get(), buffer.data(), static_cast< int >( buffer.size() ) );
      if ( size <= 0 ) {
         end( size );
         return;
      }
      take( std::span( buffer ).first( static_cast< std::size_t >( size ) ) );
   }
}

void RawClient::protect()
{
   ERR_clear_error();
   if ( const int code = SSL_do_handshake( ssl_.get() ); code != 1 ) {
      end( code );
   } else if ( !plain_.empty() && unsent_.empty() ) {
      if ( SSL_write( ssl_.get(), plain_.data(), static_cast< int >( plain_.size() ) ) > 0 ) {
         plain_.clear();
      }
   }
   std::array< std::byte, 16384 > buffer;
   for ( int size = 0; ( size = BIO_read( SSL_get_wbio( ssl_.get() ), buffer.data(),
                               static_cast< int >( buffer.size() ) ) ) > 0; ) {
      unsent_.insert( unsent_.end(), buffer.begin(), buffer.begin() + size );
   }
}

void RawClient::end( int code )
{
   const int error = SSL_get_error( ssl_.get(), code );
   if ( error == SSL_ERROR_ZERO_RETURN ) {
      closed_ = true;
   } else if ( error != SSL_ERROR_WANT_READ && error_.empty() ) {
      error_ = sslReason();
   }
}

void RawClient::finish() noexcept
{
   shutdown( socket_, SHUT_WR );
}

void RawClient::reset() noexcept
{
   const linger none{ 1, 0 };
   setsockopt( socket_, SOL_SOCKET, SO_LINGER, &none, sizeof none );
   close( std::exchange( socket_, -1 ) );
   closed_ = true;
}

std::optional< std::string > RawClient::refusal( std::uint32_t channel ) const
{
   for ( const Bytes & one : frames_ ) {
      const auto message = Vok::Store::decode( one );
      const auto * const refused = std::get_if< Vok::Store::Refused >( &message );
      if ( refused && refused->channel == channel ) {
         return refused->text;
      }
   }
   return std::nullopt;
}

} // namespace TestSupport
