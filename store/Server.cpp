// The mounts of a store, and the connections to them.
#include "store/Server.h"

#include "store/detail/SessionState.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

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

std::size_t Session::outputs( std::span< std::span< const std::byte > > into ) const noexcept
{
   return state_->link().outputs( into );
}

void Session::onOutput( std::function< void() > call )
{
   state_->link().onOutput( std::move( call ) );
}

bool Session::finished() const noexcept
{
   return state_->finished();
}

bool Session::greeted() const noexcept
{
   return state_->greeted();
}

bool Session::takesMore() const noexcept
{
   return state_->takesMore();
}

void Session::end( const std::string & why )
{
   state_->finish( Refusal::protocol, why );
}

Server::Server( const Clock & clock, const ServerSetup & setup ) : clock_( clock ),
                                                                   setup_( setup )
{
   if ( setup_.keeper ) {
      recover();
   }
}

Server::~Server() = default;

void Server::happened( const Event & event ) const
{
   if ( setup_.observer ) {
      setup_.observer->happened( event );
   }
}

std::unique_ptr< Session > Server::connected( Peer peer )
{
   return std::unique_ptr< Session >(
         new Session( std::make_unique< Detail::SessionState >( *this, std::move( peer ) ) ) );
}

void Server::refused( const Peer & peer, const std::string & why )
{
   ++counters_.refusals;
   happened( { Event::Kind::refused, {}, {}, peer.name, why } );
}

void Server::publish()
{
   if ( setup_.keeper ) {
      for ( const Keeper::Result & result : setup_.keeper->results() ) {
         if ( result.number == 0 ) {
            happened( { Event::Kind::setAside, result.path, {}, {}, result.problem } );
         } else if ( ServerMount * const one = mount( result.path ) ) {
            one->kept( result );
         }
      }
   }
   while ( !changed_.empty() ) {
      changed_.back()->publish(); // where it throws, the next call publishes it
      changed_.pop_back();
   }
}

void Server::keepAgain()
{
   for ( const auto & [ path, mount ] : mounts_ ) {
      mount->keepAgain();
   }
}

std::vector< MountInfo > Server::mounts() const
{
   std::vector< MountInfo > list;
   for ( const auto & [ path, mount ] : mounts_ ) {
      list.push_back( mount->info() );
   }
   return list;
}

std::optional< Server::TreeInfo > Server::tree( const std::string & path )
{
   ServerMount * const one = mount( path );
   return one ? one->tree() : std::nullopt;
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
   happened( { Event::Kind::mounted, path, {}, {}, type } );
   for ( Detail::SessionState * const session : sessions_ ) {
      session->appeared( mount );
   }
   return mount;
}

void Server::recover()
{
   for ( const Keeper::Kept & kept : setup_.keeper->load() ) {
      try {
         checkPath( kept.path );
         make( kept.path, kept.type ).recover( kept );
      } catch ( const std::bad_alloc & ) {
         throw;
      } catch ( const std::exception & e ) {
         if ( ServerMount * const made = mount( kept.path ) ) {
            remove( *made );
         }
         setup_.keeper->setAside( kept.path, e.what() );
         happened( { Event::Kind::setAside, kept.path, kept.writer, {}, e.what() } );
      }
   }
}

void Server::unmount( ServerMount & mount )
{
   if ( mount.info().kept ) {
      setup_.keeper->remove( mount.path() );
   }
   remove( mount );
}

void Server::remove( ServerMount & mount )
{
   for ( Detail::SessionState * const session : sessions_ ) {
      session->gone( mount );
   }
   std::erase( changed_, &mount );
   const auto at = mounts_.find( mount.path() );
   happened( { Event::Kind::unmounted, mount.path(), mount.program(), {}, {} } );
   mounts_.erase( at );
}

std::string_view name( Event::Kind kind ) noexcept
{
   static constexpr std::string_view names[] = { "connected", "greeted", "disconnected", "refused",
      "mounted", "unmounted", "writerCame", "writerGone", "takenOver", "wholeTree",
      "passedOver", "recovered", "setAside", "notKept", "keptAgain" };
   return names[ static_cast< std::size_t >( kind ) ];
}

} // namespace Vok::Store
