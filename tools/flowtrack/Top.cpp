// flowtrack top: what is in service, and why the rest is not.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Session.h"
#include "tools/flowtrack/Table.h"
#include "tools/flowtrack/Time.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Json.h"
#include "tools/flowtrack/json/Shape.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <map>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

/// Whether a type has a few values, each with a meaning: an enumeration, or a set of bits.
bool isState( std::string_view typeName )
{
   const Vok::TypeData * const type = Corvo::ModuleInspectData::findType( typeName );
   if ( !type ) {
      return false;
   }
   for ( const Vok::AttributeData & field : type->attributes() ) {
      if ( field.kind() == Vok::AttributeKind::plain && field.row().mask != 0 ) {
         return true;
      }
   }
   return type->kind() == Vok::TypeKind::enumeration;
}

/// A state as it is read: of a set of bits the names of those that are set.
std::string namesOf( std::string_view typeName, const std::string & text )
{
   const FlowtrackJson::Shape & shape = FlowtrackJson::shapeOf( typeName );
   if ( shape.form != FlowtrackJson::Form::flags ) {
      return text;
   }
   std::string names;
   for ( const FlowtrackJson::Json & name : FlowtrackJson::valueJson( shape, text ) ) {
      names.append( names.empty() ? "" : "," ).append( name.get< std::string >() );
   }
   return names.empty() ? "none" : names;
}

/// The states of an entity, and the truth values beside them; nothing for one without states.
std::string stateText( const Vok::Entity & entity )
{
   std::string text;
   bool hasState = false;
   for ( const Vok::AttributeData & attribute : entity.typeData().attributes() ) {
      hasState = hasState || isState( attribute.typeName() );
   }
   eachOwnItem( entity, [ & ]( const Item & item ) {
      const std::string_view type = item.attribute.typeName();
      if ( hasState && ( isState( type ) || type == "bool" ) && !item.value.empty() ) {
         text.append( text.empty() ? "" : " " ).append( item.attribute.name() );
         text.append( item.isMember ? "[" + item.key + "]" : "" );
         text.append( "=" + namesOf( type, item.value ) );
      }
   } );
   return text;
}

/// Mounts as they come and go.
class Seen final : public Vok::Store::MountListener {
 public:
   void mounted( const std::string & path, const Corvo::Ptr< Vok::Entity > & root ) override
   {
      mounts[ path ].root = root;
   }
   void stateIs( const std::string & path, const Vok::Store::MountState & state ) override
   {
      mounts[ path ].state = state;
   }
   void unmounted( const std::string & path ) override { mounts.erase( path ); }
   void failed( const std::string & path, const std::string & text ) override
   {
      mounts[ path ].failure = text;
   }

   struct Mount {
      Corvo::Ptr< Vok::Entity > root;
      Vok::Store::MountState state;
      std::string failure;
   };
   std::map< std::string, Mount > mounts;
};

void addRows( Table & table, const Vok::Entity & entity )
{
   if ( const std::string text = stateText( entity ); !text.empty() ) {
      table.add( { "  " + std::string( Vok::pathOf( entity ).view() ), text } );
   }
   eachItem( entity, [ & ]( const Item & item ) {
      if ( isChild( item.attribute ) ) {
         const auto child = item.attribute.child( item.entity, item.key );
         if ( const std::string text = stateText( *child ); !text.empty() ) {
            table.add( { "  " + std::string( Vok::pathOf( *child ).view() ), text } );
         }
      }
   } );
}

std::string screen( const Seen & seen, bool bold )
{
   Table table( { "PLACE", "STATE" } );
   for ( const auto & [ path, mount ] : seen.mounts ) {
      if ( !mount.failure.empty() ) {
         table.add( { path, mount.failure } );
         continue;
      }
      table.add( { path,
            ( mount.state.stale ? "left by " : "written by " ) + mount.state.writer + " since " +
                  timeText( std::chrono::milliseconds( mount.state.since ) ) } );
      addRows( table, *mount.root );
   }
   std::ostringstream text;
   table.print( text, bold );
   return text.str();
}

/// On a terminal the screen follows; elsewhere it is printed once.
void top( Context & context, const std::string & pattern )
{
   Session & session = context.session();
   Seen seen;
   const std::size_t count = session.list( pattern, false ).size();
   const auto reading = session.client().read( pattern, seen );
   session.wait( [ & ] { return seen.mounts.size() >= count; },
         "the store does not send " + pattern );
   std::string shown;
   do {
      const std::string text = screen( seen, context.colours );
      if ( text != shown ) {
         context.out << ( context.terminal ? "\033[H\033[2J" : "" ) << text << std::flush;
         shown = text;
      }
      if ( context.terminal ) {
         session.loop().runUntil( [] { return false; }, std::chrono::seconds( 1 ) );
      }
   } while ( context.terminal && context.isHeard() );
}

} // namespace

void addTop( CLI::App & app, Context & context )
{
   CLI::App * const command = app.add_subcommand( "top",
         "Shows the states in status mounts: enumerations, sets of bits, and truth values beside "
         "them. On a terminal it goes on until it is interrupted." );
   const auto pattern = std::make_shared< std::string >( "flowtracking/status/*" );
   command->add_option( "PATTERN", *pattern, "the mounts that are shown" )->capture_default_str();
   command->callback( [ &context, pattern ] { top( context, *pattern ); } );
}

} // namespace Flowtrack
