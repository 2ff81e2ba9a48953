// getaddrinfo and getifaddrs.
#include "tools/derive/SystemResolver.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <chrono>
#include <ifaddrs.h>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <string>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace Derive {

namespace {

/// Adds an address, if it is one and lower than the one before.
void add( const sockaddr * address, Addresses & to )
{
   std::array< char, INET6_ADDRSTRLEN > text{};
   if ( !address ) {
      return;
   }
   if ( address->sa_family == AF_INET ) {
      const auto * const ip = reinterpret_cast< const sockaddr_in * >( address );
      ::inet_ntop( AF_INET, &ip->sin_addr, text.data(), text.size() );
      const Wyre::IpAddr found( text.data() );
      to.ip = to.ip && *to.ip < found ? *to.ip : found;
   } else if ( address->sa_family == AF_INET6 ) {
      const auto * const ip6 = reinterpret_cast< const sockaddr_in6 * >( address );
      ::inet_ntop( AF_INET6, &ip6->sin6_addr, text.data(), text.size() );
      const Wyre::Ip6Addr found( text.data() );
      to.ip6 = to.ip6 && *to.ip6 < found ? *to.ip6 : found;
   }
}

/// The addresses of a host; nothing where no name server answers.
std::optional< Addresses > hostAddresses( const std::string & name )
{
   addrinfo hints{};
   hints.ai_socktype = SOCK_DGRAM;
   addrinfo * list = nullptr;
   const int failed = ::getaddrinfo( name.c_str(), nullptr, &hints, &list );
   if ( failed == EAI_AGAIN || failed == EAI_SYSTEM || failed == EAI_MEMORY ) {
      return std::nullopt;
   }
   const std::unique_ptr< addrinfo, decltype( &::freeaddrinfo ) > owner( list, ::freeaddrinfo );
   Addresses found;
   for ( const addrinfo * at = list; failed == 0 && at; at = at->ai_next ) {
      add( at->ai_addr, found );
   }
   return found;
}

Addresses interfaceAddresses( const Corvo::String & name )
{
   ifaddrs * list = nullptr;
   if ( ::getifaddrs( &list ) != 0 ) {
      throw std::system_error( errno, std::generic_category(), "getifaddrs" );
   }
   const std::unique_ptr< ifaddrs, decltype( &::freeifaddrs ) > owner( list, ::freeifaddrs );
   Addresses found;
   for ( const ifaddrs * at = list; at; at = at->ifa_next ) {
      if ( name == at->ifa_name ) {
         add( at->ifa_addr, found );
      }
   }
   return found;
}

} // namespace

SystemResolver::SystemResolver() : ready_( ::eventfd( 0, EFD_CLOEXEC | EFD_NONBLOCK ) )
{
   if ( ready_ < 0 ) {
      throw std::system_error( errno, std::generic_category(), "eventfd" );
   }
   thread_ = std::jthread( [ this ]( const std::stop_token & stop ) { ask( stop ); } );
}

SystemResolver::~SystemResolver()
{
   thread_.request_stop();
   thread_.join();
   ::close( ready_ );
}

void SystemResolver::asked( const Corvo::String & name )
{
   const std::lock_guard lock( mutex_ );
   names_[ std::string( name ) ] = true;
   more_.notify_one();
}

void SystemResolver::dropped( const Corvo::String & name )
{
   const std::lock_guard lock( mutex_ );
   names_.erase( std::string( name ) );
   found_.erase( std::string( name ) );
   forget( name );
}

void SystemResolver::take()
{
   eventfd_t count = 0;
   ::eventfd_read( ready_, &count );
   std::map< std::string, Addresses > found;
   {
      const std::lock_guard lock( mutex_ );
      found.swap( found_ );
   }
   for ( const auto & [ name, addresses ] : found ) {
      answerIs( name, addresses );
   }
}

/// The thread: asks for every name that is due, without the lock, and for all again when nothing
/// came for a minute.
void SystemResolver::ask( const std::stop_token & stop )
{
   std::unique_lock lock( mutex_ );
   while ( !stop.stop_requested() ) {
      const auto due = std::find_if(
            names_.begin(), names_.end(), []( const auto & one ) { return one.second; } );
      if ( due == names_.end() ) {
         const auto came = [ this ] {
            return std::any_of(
                  names_.begin(), names_.end(), []( const auto & one ) { return one.second; } );
         };
         if ( !more_.wait_for( lock, stop, std::chrono::minutes( 1 ), came ) ) {
            for ( auto & [ name, now ] : names_ ) {
               now = true;
            }
         }
         continue;
      }
      const std::string name = due->first;
      due->second = false;
      lock.unlock();
      const auto addresses = hostAddresses( name );
      lock.lock();
      if ( addresses && names_.contains( name ) ) {
         found_[ name ] = *addresses;
         ::eventfd_write( ready_, 1 );
      }
   }
}

void SystemInterfaces::asked( const Corvo::String & name )
{
   names_.insert( name );
   answerIs( name, interfaceAddresses( name ) );
}

void SystemInterfaces::dropped( const Corvo::String & name )
{
   names_.erase( name );
   forget( name );
}

void SystemInterfaces::refresh()
{
   for ( const Corvo::String & name : names_ ) {
      answerIs( name, interfaceAddresses( name ) );
   }
}

} // namespace Derive
