// The mounts of a store, and the connections to them.
#include "store/Server.h"

#include "store/detail/SessionState.h"

#include <algorithm>
#include <stdexcept>

namespace Vok::Store {

Session::Session( std::unique_ptr< Detail::SessionState > state ) : state_( std::move( state ) ) {}

Session::~Session() = default;

void Session::receive( std::span< const std::byte > piece )
{
   state_->receive( piece );
}

std::span< const std::byte > Session::output() const noexcept
{
   return state_->link().output();
}

void Session::sent( std::size_t count )
{
   state_->sent( count );
}

bool Session::finished() const noexcept
{
   return state_->finished();
}

Server::Server( const Clock & clock ) : clock_( clock ) {}

Server::~Server() = default;

std::unique_ptr< Session > Server::connected()
{
   return std::unique_ptr< Session >(
         new Session( std::make_unique< Detail::SessionState >( *this ) ) );
}

void Server::publish()
{
   while ( !changed_.empty() ) {
      changed_.back()->publish(); // where it throws, the next call publishes it
      changed_.pop_back();
   }
   for ( Detail::SessionState * const session : sessions_ ) {
      session->acknowledge();
   }
}

std::vector< MountInfo > Server::mounts() const
{
   std::vector< MountInfo > list;
   for ( const auto & [ path, mount ] : mounts_ ) {
      list.push_back( { path, mount->type(), mount->writer(), mount->stale(), mount->since(),
            mount->readers() } );
   }
   return list;
}

ServerMount * Server::mount( const std::string & path )
{
   const auto at = mounts_.find( path );
   return at == mounts_.end() ? nullptr : at->second.get();
}

// Throws std::invalid_argument where there is no such type, or its root takes more than a name.
ServerMount & Server::make( const std::string & path, const std::string & type )
{
   const TypeData * const data = Corvo::ModuleInspectData::findType( type );
   if ( !data || data->kind() != TypeKind::entity ) {
      throw std::invalid_argument( "the store knows no entity type " + type );
   }
   Corvo::Ptr< Entity > root;
   try {
      root = data->instantiate( path );
   } catch ( const std::exception & e ) {
      throw std::invalid_argument( "no " + type + " can be mounted: " + e.what() );
   }
   auto made = std::make_unique< ServerMount >( *this, ++lastMount_, path, root );
   ServerMount & mount = *mounts_.emplace( path, std::move( made ) ).first->second;
   for ( Detail::SessionState * const session : sessions_ ) {
      session->appeared( mount );
   }
   return mount;
}

void Server::remove( ServerMount & mount )
{
   for ( Detail::SessionState * const session : sessions_ ) {
      session->gone( mount );
   }
   std::erase( changed_, &mount );
   mounts_.erase( mount.path() );
}

} // namespace Vok::Store
