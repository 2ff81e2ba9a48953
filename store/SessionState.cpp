// A connection of the store: who is there, its channels, and their end.
#include "store/detail/SessionState.h"

#include <algorithm>
#include <utility>

namespace Vok::Store::Detail {

SessionState::SessionState( Server & server, Peer peer )
      : server_( server ),
        peer_( std::move( peer ) ),
        link_( server.setup_.limits.greeting )
{
   const Limits & limits = server_.setup_.limits;
   server_.sessions_.push_back( this );
   const std::size_t ofUser = ++server_.users_[ user() ];
   ++server_.counters_.sessions;
   server_.happened( { Event::Kind::connected, {}, {}, peer_.name, {} } );
   if ( server_.sessions_.size() > limits.sessions ) {
      const std::string most = std::to_string( limits.sessions );
      finish( Refusal::limit, "the store has " + most + " connections, and takes no more" );
   } else if ( ofUser > limits.sessionsOfUser ) {
      const std::string most = std::to_string( limits.sessionsOfUser );
      finish( Refusal::limit, user() + " has " + most + " connections, and gets no more" );
   }
}

SessionState::~SessionState()
{
   closeAll();
   std::erase( server_.sessions_, this );
   const auto at = server_.users_.find( user() );
   if ( --at->second == 0 ) {
      server_.users_.erase( at );
   }
   if ( !finished_ ) {
      server_.happened( { Event::Kind::disconnected, {}, program_, peer_.name, {} } );
   }
}

// Who shares a limit.
std::string SessionState::user() const
{
   if ( peer_.certificate ) {
      return "certificate " + *peer_.certificate;
   }
   return peer_.user ? "user " + std::to_string( *peer_.user ) : "an unknown user";
}

void SessionState::receive( std::span< const std::byte > piece )
{
   if ( finished_ ) {
      return;
   }
   try {
      link_.receive( piece, [ this ]( const Message & message ) { handle( message ); } );
   } catch ( const FramingException & e ) {
      finish( Refusal::protocol, e.what() );
   } catch ( const ProtocolException & e ) {
      finish( Refusal::protocol, e.what() );
   }
}

void SessionState::sent( std::size_t count )
{
   link_.sent( count );
   while ( !behind_.empty() && !busy() ) {
      MountReader & reader = *behind_.back();
      behind_.pop_back();
      reader.behind = false;
      reader.mount->serve( reader );
   }
}

void SessionState::behind( MountReader & reader )
{
   if ( !reader.behind && !finished_ ) {
      behind_.push_back( &reader );
      reader.behind = true;
   }
}

void SessionState::finish( Refusal reason, const std::string & text )
{
   if ( !std::exchange( finished_, true ) ) {
      closeAll();
      ++server_.counters_.refusals;
      link_.send( Refused{ 0, static_cast< std::uint8_t >( reason ), text } );
      server_.happened( { Event::Kind::disconnected, {}, program_, peer_.name, text } );
   }
}

void SessionState::refuse(
      std::uint32_t channel, Refusal reason, const std::string & text, std::string_view path )
{
   ++server_.counters_.refusals;
   link_.send( Refused{ channel, static_cast< std::uint8_t >( reason ), text } );
   server_.happened( { Event::Kind::refused, path, program_, peer_.name, text } );
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
   link_.allowAll();
   link_.send( Welcome{} );
   server_.happened( { Event::Kind::greeted, {}, program_, peer_.name, {} } );
}

void SessionState::needFree( std::uint32_t channel ) const
{
   if ( channel == 0 || writers_.contains( channel ) || readers_.contains( channel ) ) {
      throw ProtocolException( "channel " + std::to_string( channel ) +
            ( channel == 0 ? " is the connection's own" : " is in use" ) );
   }
}

bool SessionState::mayHaveChannel( std::uint32_t channel )
{
   const std::size_t most = server_.setup_.limits.channels;
   if ( writers_.size() + readers_.size() < most ) {
      return true;
   }
   refuse( channel, Refusal::limit,
         "a connection has " + std::to_string( most ) + " channels at most" );
   return false;
}

bool SessionState::allows( Right right, std::string_view path ) const
{
   return !server_.setup_.access || server_.setup_.access->allows( peer_, right, path );
}

void SessionState::on( const ListMounts & message )
{
   MountList answer{ message.channel, false, {} };
   try {
      const PathPattern pattern( message.pattern );
      for ( const auto & [ path, mount ] : server_.mounts_ ) {
         if ( pattern.matches( path ) && allows( Right::read, path ) ) {
            if ( answer.mounts.size() == mountListPart ) {
               link_.send( answer );
               answer.mounts.clear();
            }
            answer.mounts.push_back( mount->entry( message.trees ) );
         }
      }
   } catch ( const PathException & e ) {
      refuse( message.channel, Refusal::path, e.what() );
      return;
   }
   answer.last = true;
   link_.send( answer );
}

void SessionState::on( const Close & message )
{
   if ( writers_.contains( message.channel ) ) {
      closeWriter( message.channel, message.remove );
   } else {
      closeReader( message.channel );
   }
}

void SessionState::closeAll()
{
   while ( !readers_.empty() ) {
      closeReader( readers_.begin()->first );
   }
   while ( !writers_.empty() ) {
      closeWriter( writers_.begin()->first );
   }
}

} // namespace Vok::Store::Detail
