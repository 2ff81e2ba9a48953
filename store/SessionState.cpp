// What the store does with each message of a client.
#include "store/detail/SessionState.h"

#include <algorithm>
#include <utility>

namespace Vok::Store::Detail {

SessionState::SessionState( Server & server ) : server_( server )
{
   server_.sessions_.push_back( this );
}

SessionState::~SessionState()
{
   while ( !readers_.empty() ) {
      closeReader( readers_.begin()->first );
   }
   while ( !writers_.empty() ) {
      closeWriter( writers_.begin()->first );
   }
   std::erase( server_.sessions_, this );
}

void SessionState::receive( std::span< const std::byte > piece )
{
   if ( finished_ ) {
      return;
   }
   try {
      link_.receive( piece, [ this ]( const Message & message ) { handle( message ); } );
   } catch ( const FramingException & e ) {
      finish( e.what() );
   } catch ( const ProtocolException & e ) {
      finish( e.what() );
   }
}

void SessionState::sent( std::size_t count )
{
   link_.sent( count );
   if ( busy() ) {
      return;
   }
   for ( auto & [ channel, pattern ] : readers_ ) {
      for ( const auto & reading : pattern.readings ) {
         reading->mount->serve( *reading );
      }
   }
}

void SessionState::finish( const std::string & text )
{
   refuse( 0, Refusal::protocol, text );
   finished_ = true;
}

void SessionState::refuse( std::uint32_t channel, Refusal reason, const std::string & text )
{
   link_.send( Refused{ channel, static_cast< std::uint8_t >( reason ), text } );
}

void SessionState::handle( const Message & message )
{
   if ( finished_ ) {
      return;
   }
   if ( !greeted_ && !std::holds_alternative< Hello >( message ) ) {
      throw ProtocolException( "a connection begins with a greeting" );
   }
   std::visit( [ this ]( const auto & one ) { on( one ); }, message );
}

template< class M > void SessionState::on( const M & )
{
   throw ProtocolException( "a client sends what only the store sends" );
}

void SessionState::on( const Hello & message )
{
   if ( std::exchange( greeted_, true ) ) {
      throw ProtocolException( "a connection has one greeting" );
   }
   if ( message.version != protocolVersion ) {
      throw ProtocolException( "the client speaks version " + std::to_string( message.version ) +
            " of the protocol, the store speaks version " + std::to_string( protocolVersion ) );
   }
   program_ = message.program.substr( 0, longestPath );
   link_.send( Welcome{} );
}

void SessionState::needFree( std::uint32_t channel ) const
{
   if ( channel == 0 || writers_.contains( channel ) || readers_.contains( channel ) ) {
      throw ProtocolException( "channel " + std::to_string( channel ) +
            ( channel == 0 ? " is the connection's own" : " is in use" ) );
   }
}

void SessionState::on( const OpenWriter & message )
{
   needFree( message.channel );
   ServerMount * mount = nullptr;
   try {
      checkPath( message.path );
      mount = server_.mount( message.path );
      if ( mount && mount->type() != message.type ) {
         throw std::invalid_argument( message.path + " is a " + mount->type() + ", not a " +
               message.type );
      }
      if ( mount && !mount->stale() && !message.takeOver ) {
         refuse( message.channel, Refusal::writer,
               message.path + " is written by " + mount->writer() );
         return;
      }
      if ( !mount ) {
         mount = &server_.make( message.path, message.type );
      }
   } catch ( const PathException & e ) {
      refuse( message.channel, Refusal::path, e.what() );
      return;
   } catch ( const std::invalid_argument & e ) {
      refuse( message.channel, Refusal::type, e.what() );
      return;
   }
   for ( SessionState * const session : server_.sessions_ ) {
      session->takenOver( *mount, program_ );
   }
   Writing & writing = writers_.try_emplace( message.channel ).first->second;
   writing.mount = mount;
   const StreamPosition has = mount->written();
   mount->writerIs( program_ );
   link_.send( Opened{ message.channel, has.stream, has.batch } );
}

void SessionState::takenOver( const ServerMount & mount, const std::string & by )
{
   for ( auto at = writers_.begin(); at != writers_.end(); ++at ) {
      if ( at->second.mount == &mount ) {
         refuse( at->first, Refusal::takenOver, mount.path() + " is taken over by " + by );
         writers_.erase( at );
         return;
      }
   }
}

void SessionState::on( const OpenReader & message )
{
   needFree( message.channel );
   try {
      PathPattern text( message.pattern );
      Pattern & pattern =
            readers_.try_emplace( message.channel, Pattern{ std::move( text ), message.known, {} } )
                  .first->second;
      for ( const auto & [ path, mount ] : server_.mounts_ ) {
         read( message.channel, pattern, *mount );
      }
   } catch ( const PathException & e ) {
      refuse( message.channel, Refusal::path, e.what() );
   }
}

void SessionState::appeared( ServerMount & mount )
{
   for ( auto & [ channel, pattern ] : readers_ ) {
      read( channel, pattern, mount );
   }
}

void SessionState::read( std::uint32_t channel, Pattern & pattern, ServerMount & mount )
{
   if ( !pattern.pattern.matches( mount.path() ) ) {
      return;
   }
   StreamPosition has;
   for ( const Known & known : pattern.known ) {
      if ( known.path == mount.path() ) {
         has = { known.stream, known.batch };
      }
   }
   pattern.readings.push_back(
         std::make_unique< Reading >( Reading{ this, channel, &mount, has, false } ) );
   Reading & reading = *pattern.readings.back();
   mount.add( reading );
   mount.serve( reading );
}

void SessionState::gone( ServerMount & mount )
{
   for ( auto & entry : readers_ ) {
      const std::uint32_t channel = entry.first;
      std::erase_if( entry.second.readings, [ & ]( const auto & reading ) {
         if ( reading->mount != &mount ) {
            return false;
         }
         if ( reading->announced ) {
            link_.send( Unmounted{ channel, mount.number() } );
         }
         mount.remove( *reading );
         return true;
      } );
   }
}

void SessionState::on( const BatchPiece & message )
{
   const auto at = writers_.find( message.channel );
   if ( at == writers_.end() ) {
      return; // it was refused meanwhile, and the client does not know yet
   }
   Writing & writing = at->second;
   const auto batch = writing.assembly.add( message );
   if ( !batch ) {
      return;
   }
   try {
      writing.mount->apply( *batch );
      writing.told = false;
   } catch ( const NboAttrLog::Exception & e ) {
      const std::uint32_t channel = at->first;
      closeWriter( channel );
      refuse( channel, Refusal::batch, e.what() );
   }
}

void SessionState::acknowledge()
{
   for ( auto & [ channel, writing ] : writers_ ) {
      if ( !std::exchange( writing.told, true ) ) {
         link_.send( Acknowledged{ channel, writing.mount->written().batch } );
      }
   }
}

void SessionState::on( const Close & message )
{
   if ( const auto at = writers_.find( message.channel ); at != writers_.end() ) {
      ServerMount & mount = *at->second.mount;
      closeWriter( message.channel );
      if ( message.remove ) {
         server_.remove( mount );
      }
   } else {
      closeReader( message.channel );
   }
}

void SessionState::closeWriter( std::uint32_t channel )
{
   const auto at = writers_.find( channel );
   ServerMount & mount = *at->second.mount;
   writers_.erase( at );
   mount.writerGone();
}

void SessionState::closeReader( std::uint32_t channel )
{
   const auto at = readers_.find( channel );
   if ( at == readers_.end() ) {
      return; // refused meanwhile
   }
   for ( const auto & reading : at->second.readings ) {
      reading->mount->remove( *reading );
   }
   readers_.erase( at );
}

} // namespace Vok::Store::Detail
