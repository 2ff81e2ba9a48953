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
   client->send( message );
}

void ReadingState::refused( const Refused & message )
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

void ReadingState::mounted( const Mounted & message )
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

void ReadingState::batch( const BatchPiece & message )
{
   const auto at = find( message.mount );
   if ( at == replicas_.end() ) {
      return; // it cannot be read here
   }
   const auto batch = at->second->assembly.add( message );
   if ( !batch ) {
      return;
   }
   NboAttrLog::In in( *batch );
   const std::string path = at->first;
   try {
      at->second->reader.read( in );
   } catch ( const NboAttrLog::Exception & e ) {
      fail( path, e.what() );
      return;
   }
   if ( !at->second->told ) {
      give( path, *at->second );
   }
}

void ReadingState::give( const std::string & path, Replica & replica )
{
   replica.told = true;
   const MountState state = replica.state;
   listener_.mounted( path, replica.root );
   listener_.stateIs( path, state );
}

void ReadingState::stateIs( const MountState & message )
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

void ReadingState::unmounted( const Unmounted & message )
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
      at->second->assembly.reset();
      at = at->second->told ? std::next( at ) : replicas_.erase( at );
   }
}

} // namespace Vok::Store::Detail
