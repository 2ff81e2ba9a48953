// Connections that come and go.
#include "Link.h"

#include <cerrno>
#include <filesystem>
#include <poll.h>
#include <system_error>
#include <utility>

namespace Derive {

Link::Link( const std::string & path, End end, const Corvo::Ptr< Vok::Entity > & own,
      const Corvo::Ptr< Vok::Entity > & other )
      : path_( path ),
        writer_( own ),
        reader_( other )
{
   if ( end == End::listens ) {
      std::filesystem::remove( path ); // of a process that was killed
      listener_.emplace( StreamSocket::listenAt( path ) );
   } else {
      reconnect();
   }
}

void Link::begin( StreamSocket socket )
{
   peer_ = std::make_unique< Peer >( std::move( socket ), writer_, reader_ );
   peer_->send();
}

void Link::send()
{
   if ( peer_ ) {
      peer_->send();
   }
}

void Link::take()
{
   if ( !peer_ ) {
      return begin( listener_->accept() );
   }
   const int batches = peer_->receive();
   heard_ = heard_ || batches > 0;
   if ( batches < 0 ) {
      peer_.reset();
   }
}

void Link::reconnect()
{
   if ( !peer_ ) {
      begin( StreamSocket::connectTo( path_ ) );
   }
}

int Link::descriptor() const noexcept
{
   return peer_ ? peer_->descriptor() : listener_ ? listener_->descriptor()
                                                  : -1;
}

bool takeAny( const std::vector< Link * > & links, int other, int milliseconds )
{
   std::vector< pollfd > waiting;
   for ( const Link * const link : links ) {
      waiting.push_back( { link->descriptor(), POLLIN, 0 } );
   }
   waiting.push_back( { other, POLLIN, 0 } );
   if ( ::poll( waiting.data(), waiting.size(), milliseconds ) < 0 && errno != EINTR ) {
      throw std::system_error( errno, std::generic_category(), "poll" );
   }
   bool any = waiting.back().revents != 0;
   for ( std::size_t i = 0; i != links.size(); ++i ) {
      if ( waiting[ i ].revents != 0 ) {
         links[ i ]->take();
         any = true;
      }
   }
   return any;
}

} // namespace Derive
