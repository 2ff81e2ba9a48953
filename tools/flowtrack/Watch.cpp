// flowtrack watch: every change, as it comes.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Place.h"
#include "tools/flowtrack/Session.h"
#include "tools/flowtrack/Time.h"
#include "tools/flowtrack/Trees.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <chrono>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace Flowtrack {

namespace {

/// One line. What is there neither before nor after has no text.
struct Line {
   std::string place;
   std::string attribute;
   std::optional< std::string > key;
   std::optional< std::string > before;
   std::optional< std::string > after;
};

/// The place of the child that a line is of.
std::string childPlace( const Line & line )
{
   return ( line.place == "/" ? "" : line.place ) + "/" + line.attribute +
         ( line.key ? "[" + *line.key + "]" : "" );
}

bool isAtOrBelow( std::string_view place, std::string_view top )
{
   return top == "/" || place == top ||
         ( place.starts_with( top ) && place[ top.size() ] == '/' );
}

class Watcher final : public Vok::Store::MountListener {
 public:
   Watcher( Context & context, const Place & place, bool json )
         : context_( context ),
           place_( place ),
           json_( json )
   {
   }

   void mounted( const std::string &, const Corvo::Ptr< Vok::Entity > & root ) override
   {
      tellMount( "mounted" );
      follower_.emplace( *root, [ this ]( const auto & change, const auto & attribute ) {
         tellChange( change, attribute );
      } );
   }
   void unmounted( const std::string & ) override
   {
      follower_.reset();
      tellMount( "unmounted" );
   }
   void failed( const std::string & path, const std::string & text ) override
   {
      throw CommandError( refused, path + ": " + text );
   }
   void stateIs( const std::string &, const Vok::Store::MountState & state ) override
   {
      tellMount( state.stale ? "left by " + state.writer : "written by " + state.writer );
   }

 private:
   void tellMount( const std::string & what )
   {
      const std::string time = timeText( now() );
      if ( json_ ) {
         const nlohmann::ordered_json line{ { "time", time }, { "mount", place_.mount },
            { "event", what } };
         context_.out << line.dump() << std::endl;
      } else {
         context_.out << time << ' ' << place_.mount << ' ' << what << std::endl;
      }
   }

   void tellChange( const Corvo::Change & change, const Vok::AttributeData & attribute )
   {
      Line line{ std::string( Vok::pathOf( change.entity ).view() ),
         std::string( attribute.name() ), {}, {}, {} };
      if ( change.hasKey() ) {
         line.key = change.keyText().view();
      }
      line.after = valueOf( change.entity, attribute, line.key.value_or( "" ) );
      if ( change.hasOldValue() || !line.after ) { // the member of a set has no value
         line.before = isChild( attribute ) ? "" : change.oldValueText().view();
      }
      tell( line, isChild( attribute ) );
      if ( isChild( attribute ) && line.after ) {
         tellContent( *attribute.child( change.entity, line.key.value_or( "" ) ) );
      }
   }

   /// A child comes with what it holds.
   void tellContent( const Vok::Entity & child )
   {
      eachItem( child, [ & ]( const Item & item ) {
         if ( item.isDefault ) {
            return;
         }
         Line line{ std::string( Vok::pathOf( item.entity ).view() ),
            std::string( item.attribute.name() ), {}, {}, item.value };
         if ( item.isMember ) {
            line.key = item.key;
         } else if ( isSingle( item.attribute ) ) {
            line.before = item.attribute.defaultText();
         }
         tell( line, isChild( item.attribute ) );
      } );
   }

   void tell( const Line & line, bool isChild )
   {
      if ( isAtOrBelow( isChild ? childPlace( line ) : line.place, place_.inTree ) ) {
         json_ ? tellJson( line ) : tellText( line );
      }
   }

   void tellText( const Line & line )
   {
      const auto coloured = [ & ]( const char * colour, const std::string & text ) {
         return context_.colours ? colour + text + "\033[0m" : text;
      };
      const auto shown = []( const std::string & text ) {
         return text.empty() ? "(none)" : text;
      };
      const std::string name = line.attribute + ( line.key ? "[" + *line.key + "]" : "" );
      context_.out << timeText( now() ) << ' ' << line.place << ' ' << name << ": ";
      if ( !line.before ) {
         context_.out << coloured( "\033[32m", "added" )
                      << ( line.after->empty() ? "" : " " + *line.after );
      } else if ( !line.after ) {
         context_.out << coloured( "\033[31m", "deleted" )
                      << ( line.before->empty() ? "" : " " + *line.before );
      } else {
         context_.out << coloured( "\033[31m", shown( *line.before ) ) << " -> "
                      << coloured( "\033[32m", shown( *line.after ) );
      }
      context_.out << std::endl;
   }

   void tellJson( const Line & line )
   {
      nlohmann::ordered_json json{ { "time", timeText( now() ) }, { "mount", place_.mount },
         { "place", line.place }, { "attribute", line.attribute } };
      const auto put = [ & ]( const char * name, const std::optional< std::string > & text ) {
         if ( text ) {
            json[ name ] = *text;
         }
      };
      put( "key", line.key );
      put( "old", line.before );
      put( "new", line.after );
      context_.out << json.dump() << std::endl;
   }

   Context & context_;
   Place place_;
   bool json_;
   std::optional< Vok::TreeFollower > follower_;
};

} // namespace

void addWatch( CLI::App & app, Context & context )
{
   struct Wanted {
      std::string path;
      bool json = false;
   };
   CLI::App * const command = app.add_subcommand( "watch",
         "Prints every change from now on, with its time, until it is interrupted." );
   const auto wanted = std::make_shared< Wanted >();
   command->add_option( "PATH", wanted->path, "the entity, with all that is below it" )
         ->required();
   command->add_flag( "--json", wanted->json, "prints a JSON object a line" );
   command->callback( [ &context, wanted ] {
      Session & session = context.session();
      context.read( wanted->path ); // what is not there is told at once
      const Place place = Place::parse( wanted->path, false );
      Watcher watcher( context, place, wanted->json );
      const auto reading = session.client().read( place.mount, watcher );
      while ( context.isHeard() ) {
         session.loop().runUntil( [] { return false; }, std::chrono::seconds( 1 ) );
      }
   } );
}

} // namespace Flowtrack
