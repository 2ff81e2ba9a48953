// How a client reads mounts: replicas that outlive connections.
#include "store/detail/ClientState.h"

namespace Vok::Store::Detail {

ReadingState::ReadingState( ClientState & owner, std::uint32_t number, PathPattern pattern,
      MountListener & listener )
      : client( &owner ),
        channel( number ),
        pattern_( std::move( pattern ) ),
        listener_( listener )
{
}

void ReadingState::open()
{
   OpenReader message{ channel, pattern_.text(), {} };
   for ( const auto & [ path, replica ] : replicas_ ) {
      const StreamPosition has = replica->reader.position();
      message.known.push_back( { path, has.stream, has.batch } );
   }
   client->carrier().send( message );
}

void ReadingState::on( const Refused & message )
{
   listener_.failed( pattern_.text(), message.text );
}

Corvo::Ptr< Entity > ReadingState::root( const std::string & path ) const
{
   const auto at = replicas_.find( path );
   return at != replicas_.end() && at->second->told ? at->second->root : nullptr;
}

ReadingState::Replicas::iterator ReadingState::find( std::uint32_t mount )
{
   const auto at = paths_.find( mount );
   return at == paths_.end() ? replicas_.end() : replicas_.find( at->second );
}

void ReadingState::on( const Mounted & message )
{
   const auto known = replicas_.find( message.path );
   if ( known != replicas_.end() &&
         known->second->root->typeData().name() == message.type ) {
      paths_[ message.mount ] = message.path;
      return;
   }
   const TypeData * const type = Corvo::ModuleInspectData::findType( message.type );
   if ( !type || type->kind() != TypeKind::entity ) {
      listener_.failed( message.path, "no entity type " + message.type + " is known here" );
      return;
   }
   Corvo::Ptr< Entity > root;
   try {
      root = type->instantiate( message.path );
   } catch ( const std::exception & e ) {
      listener_.failed( message.path, e.what() );
      return;
   }
   paths_[ message.mount ] = message.path;
   replicas_[ message.path ] = std::make_unique< Replica >( root );
}

void ReadingState::batch( std::uint32_t mount, std::span< const std::byte > batch )
{
   const auto at = find( mount );
   if ( at == replicas_.end() ) {
      return; // it cannot be read here
   }
   NboAttrLog::In in( batch );
   const std::string path = at->first;
   Replica & replica = *at->second;
   std::vector< std::string > missed;
   try {
      replica.reader.read( in );
   } catch ( const NboAttrLog::Exception & e ) {
      fail( path, e.what() );
      return;
   }
   for ( const Corvo::String & text : replica.reader.passedOver() ) {
      missed.emplace_back( text.view() );
   }
   if ( !replica.told ) {
      give( path, replica );
   }
   tellPassedOver( path, missed );
}

void ReadingState::on( const PassedOver & message )
{
   if ( const auto at = find( message.mount ); at != replicas_.end() ) {
      tellPassedOver( at->first, message.texts );
   }
}

// A text is told once.
void ReadingState::tellPassedOver(
      const std::string & path, const std::vector< std::string > & texts )
{
   const auto at = replicas_.find( path ); // a listener may have ended it
   if ( at == replicas_.end() ) {
      return;
   }
   std::vector< std::string > fresh;
   for ( const std::string & text : texts ) {
      if ( at->second->passedOver.insert( text ).second ) {
         fresh.push_back( text );
      }
   }
   if ( !fresh.empty() ) {
      listener_.passedOver( path, fresh );
   }
}

void ReadingState::give( const std::string & path, Replica & replica )
{
   replica.told = true;
   const MountState state = replica.state;
   listener_.mounted( path, replica.root );
   listener_.stateIs( path, state );
}

void ReadingState::on( const MountState & message )
{
   const auto at = find( message.mount );
   if ( at == replicas_.end() ) {
      return;
   }
   at->second->state = message;
   if ( at->second->told ) {
      listener_.stateIs( at->first, message );
   }
}

void ReadingState::on( const Unmounted & message )
{
   const auto at = find( message.mount );
   if ( at != replicas_.end() ) {
      const std::string path = at->first;
      const bool told = at->second->told;
      replicas_.erase( at );
      paths_.erase( message.mount );
      if ( told ) {
         listener_.unmounted( path );
      }
   }
}

// It stays as it is; nothing that the store tells of it can be read any more.
void ReadingState::fail( const std::string & path, const std::string & text )
{
   std::erase_if( paths_, [ & ]( const auto & entry ) { return entry.second == path; } );
   listener_.failed( path, text );
}

void ReadingState::disconnected()
{
   paths_.clear();
   for ( auto at = replicas_.begin(); at != replicas_.end(); ) {
      at = at->second->told ? std::next( at ) : replicas_.erase( at );
   }
}

} // namespace Vok::Store::Detail
