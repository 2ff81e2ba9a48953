// What commands ask of the store.
#include "tools/flowtrack/Session.h"

#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Hint.h"

#include <chrono>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <utility>

namespace Flowtrack {

using namespace Vok::Store;

namespace {

/// How long the store may take for an answer, and other commands for their changes.
constexpr std::chrono::seconds patience( 10 );

Derive::StoreAddress storeAt( const Derive::StoreOptions & options )
{
   try {
      return Derive::StoreAddress( options );
   } catch ( const AddressException & e ) {
      throw CommandError( wrongUsage, e.what() );
   } catch ( const TlsException & e ) {
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

Session::Session( const Derive::StoreOptions & store )
      : store_( storeAt( store ) ),
        connection_( loop_, wire_, store_.address(), store_.tls() )
{
   loop_.runUntil(
         [ this ] { return connection_.connected() || !connection_.error().empty(); }, patience );
   if ( !connection_.connected() ) {
      const std::string why = connection_.error().empty() ? "no answer" : connection_.error();
      throw CommandError( refused, "the store at " + store.address + " cannot be reached: " + why,
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
            "the connection to the store at " + store_.address().text() +
                  " is lost: " + connection_.error() );
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
   const std::string hint = FlowtrackJson::didYouMean( mount, paths );
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

bool Session::isOpen( const Writing & writing, const std::string & mount, bool last )
{
   wait( [ & ] { return writing.open() || !writing.refusal().empty(); },
         "the store does not answer whether " + mount + " may be written" );
   const std::string & refusal = writing.refusal();
   const std::string another = mount + " is written by ";
   if ( refusal.empty() ) {
      return true;
   }
   if ( refusal == another + programName && !last ) {
      return false;
   }
   throw CommandError( refused, refusal,
         refusal.starts_with( another ) ? "--take-over takes the mount from who writes it" : "" );
}

bool Session::make(
      const Place & place, const std::string & type, const Change & change, bool last )
{
   if ( type.empty() ) {
      throwNoMount( place.mount );
   }
   Listener listener; // hears of what another command makes meanwhile
   const auto reading = client_.read( place.mount, listener );
   const Corvo::Ptr< Vok::Entity > root = entityType( type ).instantiate( place.mount );
   change( *entityAt( root, place.inTree ) );
   auto writing = client_.write( place.mount, root );
   if ( !isOpen( *writing, place.mount, last ) ) {
      return false;
   }
   if ( !listener.roots.empty() ) { // it was made, and left, since: this tree has taken its place
      const Corvo::Ptr< Vok::Entity > wanted = copyOf( listener.roots.begin()->second );
      change( *entityAt( wanted, place.inTree ) );
      becomeLike( root, wanted );
   }
   settle( std::move( writing ), place.mount );
   return true;
}

bool Session::tryEdit( const Place & place, const std::string & type, bool takeOver,
      const Change & change, bool last )
{
   const std::vector< MountEntry > there = list( place.mount, false );
   if ( there.empty() ) {
      return make( place, type, change, last );
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
   if ( !isOpen( *writing, place.mount, last ) ) {
      return false;
   }
   mount.end();
   const Corvo::Ptr< Vok::Entity > wanted = copyOf( root );
   change( *entityAt( wanted, place.inTree ) );
   becomeLike( root, wanted );
   settle( std::move( writing ), place.mount );
   return true;
}

void Session::edit(
      const Place & place, const std::string & type, bool takeOver, const Change & change )
{
   // Commands that wait for one another do not come back all at once.
   std::minstd_rand random( std::random_device{}() );
   std::uniform_int_distribution< int > milliseconds( 10, 50 );
   const auto end = std::chrono::steady_clock::now() + patience;
   while ( !tryEdit( place, type, takeOver, change, std::chrono::steady_clock::now() >= end ) ) {
      loop_.runUntil(
            [] { return false; }, std::chrono::milliseconds( milliseconds( random ) ) );
   }
}

} // namespace Flowtrack
