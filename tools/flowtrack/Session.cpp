// What commands ask of the store.
#include "tools/flowtrack/Session.h"

#include "tools/flowtrack/Hint.h"
#include "tools/flowtrack/Trees.h"

#include <chrono>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

namespace Flowtrack {

using namespace Vok::Store;

namespace {

/// How long the store may take for an answer.
constexpr std::chrono::seconds patience( 10 );

Address parseAddress( const std::string & text )
{
   try {
      return Address::parse( text );
   } catch ( const AddressException & e ) {
      throw CommandError( wrongUsage, e.what() );
   }
}

/// Takes what it is told, and waits for as many mounts as it is to have.
class Listener final : public MountListener {
 public:
   void mounted( const std::string & path, const Corvo::Ptr< Vok::Entity > & root ) override
   {
      roots[ path ] = root;
   }
   void unmounted( const std::string & path ) override { roots.erase( path ); }
   void failed( const std::string & path, const std::string & text ) override
   {
      failures[ path ] = text;
   }

   std::map< std::string, Corvo::Ptr< Vok::Entity > > roots;
   std::map< std::string, std::string > failures;
};

/// A mount that is read, until it is there or fails.
class OneMount {
 public:
   OneMount( Session & session, const std::string & mount )
   {
      reading_ = session.client().read( mount, listener_ );
      session.wait( [ this ] { return !listener_.roots.empty() || !listener_.failures.empty(); },
            "the store does not send " + mount );
      if ( !listener_.failures.empty() ) {
         throw CommandError( refused, mount + ": " + listener_.failures.begin()->second );
      }
      root_ = listener_.roots.begin()->second;
   }

   const Corvo::Ptr< Vok::Entity > & root() const noexcept { return root_; }

   /// The tree stays as it is from now on.
   void end() { reading_.reset(); }

 private:
   Listener listener_;
   std::unique_ptr< Reading > reading_;
   Corvo::Ptr< Vok::Entity > root_;
};

} // namespace

Session::Session( const std::string & address )
      : address_( address ),
        connection_( loop_, wire_, parseAddress( address ) )
{
   loop_.runUntil(
         [ this ] { return connection_.connected() || !connection_.error().empty(); }, patience );
   if ( !connection_.connected() ) {
      const std::string why = connection_.error().empty() ? "no answer" : connection_.error();
      throw CommandError( refused, "the store at " + address + " cannot be reached: " + why,
            "is flowtrackd running? --store or FLOWTRACK_STORE says where" );
   }
}

void Session::wait( const std::function< bool() > & holds, const std::string & what )
{
   bool lost = false;
   const bool held = loop_.runUntil(
         [ & ] {
            lost = !connection_.connected();
            return lost || holds();
         },
         patience );
   if ( lost ) {
      throw CommandError( refused,
            "the connection to the store at " + address_ + " is lost: " + connection_.error() );
   }
   if ( !held ) {
      throw CommandError( refused, what );
   }
}

std::vector< MountEntry > Session::list( const std::string & pattern, bool trees )
{
   std::vector< MountEntry > mounts;
   bool answered = false;
   try {
      client_.list( pattern, trees, [ & ]( const std::vector< MountEntry > & answer ) {
         mounts = answer;
         answered = true;
      } );
   } catch ( const PathException & e ) {
      throw CommandError( wrongUsage, e.what() );
   }
   wait( [ & ] { return answered; }, "the store does not answer which mounts there are" );
   return mounts;
}

void Session::throwNoMount( const std::string & mount )
{
   std::vector< std::string > paths;
   for ( const MountEntry & entry : list( "**", false ) ) {
      paths.push_back( entry.path );
   }
   const std::string hint = didYouMean( mount, paths );
   throw CommandError( notFound, "there is no mount at " + mount,
         hint.empty() ? "flowtrack mounts lists them" : hint );
}

Corvo::Ptr< Vok::Entity > Session::read( const std::string & mount )
{
   if ( list( mount, false ).empty() ) {
      throwNoMount( mount );
   }
   return OneMount( *this, mount ).root();
}

std::vector< std::pair< std::string, Corvo::Ptr< Vok::Entity > > > Session::readAll(
      const std::string & pattern )
{
   const std::size_t count = list( pattern, false ).size();
   Listener listener;
   const auto reading = client_.read( pattern, listener );
   wait( [ & ] { return listener.roots.size() + listener.failures.size() >= count; },
         "the store does not send " + pattern );
   return { listener.roots.begin(), listener.roots.end() };
}

void Session::settle( std::unique_ptr< Writing > writing, const std::string & mount )
{
   client_.flush();
   wait(
         [ & ] {
            return writing->settled() || !writing->refusal().empty() ||
                  !writing->problem().empty();
         },
         "the store does not acknowledge " + mount );
   if ( !writing->refusal().empty() ) {
      throw CommandError( refused, writing->refusal() );
   }
   if ( !writing->problem().empty() ) {
      throw CommandError( refused, mount + " is not kept: " + writing->problem() );
   }
   writing.reset();
   list( mount, false ); // with its answer the mount is free for the next command
}

void Session::make( const Place & place, const std::string & type, const Change & change )
{
   if ( type.empty() ) {
      throwNoMount( place.mount );
   }
   const Corvo::Ptr< Vok::Entity > root = entityType( type ).instantiate( place.mount );
   change( *entityAt( root, place.inTree ) );
   settle( client_.write( place.mount, root ), place.mount );
}

void Session::edit(
      const Place & place, const std::string & type, bool takeOver, const Change & change )
{
   const std::vector< MountEntry > there = list( place.mount, false );
   if ( there.empty() ) {
      make( place, type, change );
      return;
   }
   if ( !type.empty() && there.front().type != type ) {
      throw CommandError( invalidData,
            place.mount + " is a " + there.front().type + "; expected " + type );
   }
   OneMount mount( *this, place.mount );
   const Corvo::Ptr< Vok::Entity > & root = mount.root();
   change( *entityAt( copyOf( root ), place.inTree ) );
   // Once the mount is this client's, nobody else changes it: what others did until then has come,
   // and the change is made of that.
   auto writing = client_.write( place.mount, root, takeOver );
   wait( [ & ] { return writing->open() || !writing->refusal().empty(); },
         "the store does not answer whether " + place.mount + " may be written" );
   if ( !writing->refusal().empty() ) {
      throw CommandError( refused, writing->refusal(),
            there.front().stale ? "" : "--take-over takes the mount from who writes it" );
   }
   mount.end();
   const Corvo::Ptr< Vok::Entity > wanted = copyOf( root );
   change( *entityAt( wanted, place.inTree ) );
   becomeLike( root, wanted );
   settle( std::move( writing ), place.mount );
}

} // namespace Flowtrack
