// What each line of the configuration file means.
#include "tools/flowtrackd/Config.h"

#include "tools/flowtrackd/ConfigFile.h"

#include <charconv>
#include <fstream>
#include <grp.h>
#include <iterator>
#include <limits>
#include <pwd.h>

namespace Flowtrackd {

namespace {

using Vok::Store::Address;
using Vok::Store::Limits;
using Vok::Store::PathPattern;

std::uint32_t numberOrName( const std::string & name, const char * what,
      std::optional< std::uint32_t > ( *find )( const char * ) )
{
   std::uint32_t number = 0;
   const char * const end = name.data() + name.size();
   const auto [ rest, error ] = std::from_chars( name.data(), end, number );
   if ( error == std::errc() && rest == end ) {
      return number;
   }
   if ( const auto found = find( name.c_str() ) ) {
      return *found;
   }
   throw std::invalid_argument( std::string( "there is no " ) + what + " " + name );
}

std::uint32_t userNamed( const std::string & name )
{
   return numberOrName( name, "user", []( const char * text ) -> std::optional< std::uint32_t > {
      const passwd * const found = getpwnam( text );
      return found ? std::optional< std::uint32_t >( found->pw_uid ) : std::nullopt;
   } );
}

std::uint32_t groupNamed( const std::string & name )
{
   return numberOrName( name, "group", []( const char * text ) -> std::optional< std::uint32_t > {
      const group * const found = getgrnam( text );
      return found ? std::optional< std::uint32_t >( found->gr_gid ) : std::nullopt;
   } );
}

void addPeer( Peers & peers, const std::string & text )
{
   const std::size_t colon = text.find( ':' );
   const std::string kind = text.substr( 0, colon );
   const std::string name = colon == std::string::npos ? "" : text.substr( colon + 1 );
   if ( text == "anyone" ) {
      peers.anyone = true;
   } else if ( kind == "user" && !name.empty() ) {
      peers.users.insert( userNamed( name ) );
   } else if ( kind == "group" && !name.empty() ) {
      peers.groups.insert( groupNamed( name ) );
   } else if ( kind == "certificate" && !name.empty() ) {
      peers.certificates.insert( name );
   } else {
      throw std::invalid_argument( "\"" + text +
            "\" is nobody; expected anyone, user:NAME, group:NAME or certificate:NAME" );
   }
}

/// Reads one file.
class Reader {
 public:
   Reader( const std::string & text, const std::string & name ) : file_( text, name ) {}

   Config read()
   {
      file_.onlyKeys( file_.root(),
            { "listen", "metrics", "socket", "tls", "kept", "access", "limits" } );
      addresses();
      socket();
      tls();
      kept();
      access();
      limits();
      file_.done();
      return std::move( config_ );
   }

 private:
   void addresses()
   {
      file_.texts( file_.root(), "listen", [ this ]( const std::string & text ) {
         const Address address = Address::parse( text );
         if ( address.kind == Address::Kind::tcp && !address.isLoopback() ) {
            throw std::invalid_argument( text +
                  " is reached from other machines; expected tls:, or a loopback address" );
         }
         if ( address.kind == Address::Kind::tls && !file_.root().contains( "tls" ) ) {
            throw std::invalid_argument( text + " needs a table tls" );
         }
         config_.listen.push_back( address );
      } );
      file_.withText( file_.root(), "metrics", [ this ]( const std::string & text ) {
         const Address address = Address::parse( text );
         if ( address.kind == Address::Kind::tls ||
               ( address.kind == Address::Kind::tcp && !address.isLoopback() ) ) {
            throw std::invalid_argument(
                  "metrics are told on loopback or a Unix socket only; expected unix:/PATH or "
                  "tcp:127.0.0.1:PORT" );
         }
         config_.metrics = address;
      } );
   }

   void socket()
   {
      if ( const toml::table * const in = file_.table( file_.root(), "socket" ) ) {
         file_.onlyKeys( *in, { "mode", "group" } );
         file_.withText( *in, "mode", [ this ]( const std::string & text ) {
            const char * const end = text.data() + text.size();
            const auto [ rest, error ] = std::from_chars( text.data(), end, config_.socketMode, 8 );
            if ( error != std::errc() || rest != end || config_.socketMode > 0777 ) {
               throw std::invalid_argument(
                     "\"" + text + "\" is no mode; expected \"0600\" to \"0777\"" );
            }
         } );
         file_.withText( *in, "group",
               [ this ]( const std::string & text ) { config_.socketGroup = groupNamed( text ); } );
      }
   }

   void tls()
   {
      if ( const toml::table * const in = file_.table( file_.root(), "tls" ) ) {
         file_.onlyKeys( *in, { "certificate", "key", "authority" } );
         config_.tls.emplace();
         needed( *in, "certificate", config_.tls->certificate );
         needed( *in, "key", config_.tls->key );
         needed( *in, "authority", config_.tls->authority );
      }
   }

   void kept()
   {
      if ( const toml::table * const in = file_.table( file_.root(), "kept" ) ) {
         file_.onlyKeys( *in, { "folder", "paths" } );
         needed( *in, "folder", config_.keptFolder );
         file_.texts( *in, "paths",
               [ this ]( const std::string & text ) { config_.kept.emplace_back( text ); } );
      }
   }

   void access()
   {
      file_.tables( file_.root(), "access", [ this ]( const toml::table & in ) {
         file_.onlyKeys( in, { "path", "read", "write", "take-over" } );
         std::string path;
         needed( in, "path", path );
         if ( path.empty() ) {
            return;
         }
         AccessRule rule{ PathPattern( path ), {}, {}, {} };
         peers( in, "read", rule.read );
         peers( in, "write", rule.write );
         peers( in, "take-over", rule.takeOver );
         config_.access.push_back( std::move( rule ) );
      } );
   }

   void peers( const toml::table & in, std::string_view key, Peers & into )
   {
      file_.texts( in, key, [ & ]( const std::string & text ) { addPeer( into, text ); } );
   }

   void limits()
   {
      if ( const toml::table * const in = file_.table( file_.root(), "limits" ) ) {
         file_.onlyKeys( *in,
               { "sessions", "sessions-of-user", "mounts", "channels", "greeting-bytes",
                     "greeting-milliseconds", "batch-bytes", "tree-bytes", "unfinished-bytes" } );
         Limits & limits = config_.limits;
         size( *in, "sessions", limits.sessions );
         size( *in, "sessions-of-user", limits.sessionsOfUser );
         size( *in, "mounts", limits.mounts );
         size( *in, "channels", limits.channels );
         size( *in, "greeting-bytes", limits.greeting );
         size( *in, "batch-bytes", limits.batch );
         size( *in, "tree-bytes", limits.tree );
         size( *in, "unfinished-bytes", limits.unfinished );
         auto time = static_cast< std::size_t >( limits.greetingTime.count() );
         size( *in, "greeting-milliseconds", time );
         limits.greetingTime = std::chrono::milliseconds( time );
      }
   }

   void size( const toml::table & in, std::string_view key, std::size_t & into )
   {
      const auto * const value = file_.number( in, key );
      if ( !value ) {
         return;
      }
      constexpr std::int64_t most = std::numeric_limits< std::int32_t >::max();
      if ( value->get() < 1 || value->get() > most ) {
         const std::string found = std::to_string( value->get() );
         file_.mistake( *value,
               std::string( key ) + " is " + found + "; expected 1 to " + std::to_string( most ) );
         return;
      }
      into = static_cast< std::size_t >( value->get() );
   }

   void needed( const toml::table & in, std::string_view key, std::string & into )
   {
      if ( const auto * const value = file_.text( in, key ) ) {
         into = value->get();
      } else if ( !in.contains( key ) ) {
         file_.mistake( in, "there is no \"" + std::string( key ) + "\" here" );
      }
   }

   ConfigFile file_;
   Config config_;
};

} // namespace

Config readConfig( const std::string & file )
{
   std::ifstream in( file, std::ios::binary );
   const std::string text( std::istreambuf_iterator< char >( in ), {} );
   if ( !in ) {
      throw ConfigException( file + ": it cannot be read" );
   }
   return parseConfig( text, file );
}

Config parseConfig( const std::string & text, const std::string & file )
{
   return Reader( text, file ).read();
}

} // namespace Flowtrackd
