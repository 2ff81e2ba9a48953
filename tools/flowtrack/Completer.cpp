// From the words of a line to the argument that is typed, and from that to what it may be.
#include "tools/flowtrack/Completer.h"

#include "tools/flowtrack/Manual.h"
#include "tools/flowtrack/Place.h"
#include "tools/flowtrack/Session.h"
#include "tools/flowtrack/Trees.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>

namespace Flowtrack {

namespace {

using Words = std::vector< std::string >;

/// Where a line stands: the command that it has come to, and its arguments so far.
struct At {
   const CLI::App * command;
   Words arguments;
   const CLI::Option * option = nullptr; ///< whose value is next
   std::map< std::string, std::string > given = {}; ///< what options are given, by name
};

const CLI::Option * optionNamed( const CLI::App & command, const std::string & word )
{
   for ( const CLI::App * app = &command; app; app = app->get_parent() ) {
      for ( const CLI::Option * const option : optionsOf( *app ) ) {
         if ( !option->get_positional() && option->check_name( word ) ) {
            return option;
         }
      }
   }
   return nullptr;
}

At locate( const CLI::App & program, const Words & words )
{
   At at{ &program, {}, nullptr, {} };
   for ( std::size_t i = 1; i + 1 < words.size(); ++i ) {
      const std::string & word = words[ i ];
      if ( at.option ) {
         at.given[ at.option->get_name() ] = word;
         at.option = nullptr;
         continue;
      }
      if ( const CLI::Option * const option = optionNamed( *at.command, word ) ) {
         at.option = option->get_items_expected_max() > 0 ? option : nullptr;
         continue;
      }
      const auto commands = visibleCommands( *at.command );
      const auto named = std::find_if( commands.begin(), commands.end(),
            [ & ]( const CLI::App * one ) { return one->get_name() == word; } );
      if ( named != commands.end() ) {
         at.command = *named;
      } else {
         at.arguments.push_back( word );
      }
   }
   return at;
}

/// The options that may stand in a command.
Words options( const CLI::App & command )
{
   Words names;
   for ( const CLI::App * app = &command; app; app = app->get_parent() ) {
      for ( const CLI::Option * const option : optionsOf( *app ) ) {
         for ( const std::string & name : option->get_lnames() ) {
            names.push_back( "--" + name );
         }
      }
   }
   std::sort( names.begin(), names.end() );
   names.erase( std::unique( names.begin(), names.end() ), names.end() );
   return names;
}

/// The positional argument after so many; the last one may come more than once.
const CLI::Option * positional( const CLI::App & command, std::size_t count )
{
   const CLI::Option * last = nullptr;
   for ( const CLI::Option * const option : optionsOf( command ) ) {
      if ( option->get_positional() ) {
         last = option;
         if ( count-- == 0 ) {
            return option;
         }
      }
   }
   return last && last->get_items_expected_max() > 1 ? last : nullptr;
}

Words enumerators( std::string_view typeName )
{
   Words names;
   if ( typeName == "bool" ) {
      return { "true", "false" };
   }
   if ( const auto * const type = Corvo::ModuleInspectData::findType( typeName ) ) {
      for ( const auto & [ code, name ] : type->enumerators() ) {
         names.emplace_back( name );
      }
   }
   return names;
}

} // namespace

Words Completer::complete( const ShellLine & line )
{
   const Words & words = line.words();
   const std::string & word = words.back();
   const At at = locate( program_, words );
   storeIs( at.given );
   Words all;
   if ( at.option ) {
      all = at.option->check_name( "--type" ) ? types() : Words();
   } else if ( word.starts_with( '-' ) ) {
      all = options( *at.command );
   } else if ( const auto commands = visibleCommands( *at.command ); !commands.empty() ) {
      for ( const CLI::App * const command : commands ) {
         all.push_back( command->get_name() );
      }
   } else if ( const auto * const next = positional( *at.command, at.arguments.size() ) ) {
      try {
         all = argument( next->get_name( true ), at.arguments, word );
      } catch ( const std::exception & ) {
         return {}; // no store, or nothing there: nothing to say
      }
   }
   std::erase_if( all, [ & ]( const std::string & one ) { return !one.starts_with( word ); } );
   std::transform( all.begin(), all.end(), all.begin(),
         [ & ]( const std::string & one ) { return line.completed( one ); } );
   return all;
}

/// The store that is meant is the one that the line says.
void Completer::storeIs( const std::map< std::string, std::string > & given )
{
   Derive::StoreOptions & store = context_.options.store;
   const auto take = [ & ]( const char * option, std::string & value ) {
      if ( const auto found = given.find( option ); found != given.end() ) {
         value = found->second;
      }
   };
   take( "--store", store.address );
   take( "--certificate", store.files.certificate );
   take( "--key", store.files.key );
   take( "--authority", store.files.authority );
}

Words Completer::argument(
      const std::string & name, const Words & before, const std::string & word )
{
   if ( name == "PATH" ) {
      return paths( word );
   }
   if ( name == "TYPE" ) {
      return types();
   }
   if ( name == "SHELL" ) {
      return { "bash", "zsh" };
   }
   if ( before.empty() || ( name != "ATTRIBUTE" && name != "KEY" && name != "VALUE" ) ) {
      return {};
   }
   const auto entity = context_.read( before[ 0 ] );
   if ( name == "ATTRIBUTE" ) {
      return attributes( *entity );
   }
   return name == "KEY" ? keys( *entity, before[ 1 ] ) : values( *entity, before[ 1 ] );
}

Words Completer::paths( const std::string & word )
{
   if ( word.find( ":/" ) != std::string::npos ) {
      return places( word );
   }
   Words all;
   for ( const auto & mount : context_.session().list( "**", false ) ) {
      all.push_back( mount.path );
      if ( word == mount.path || word == mount.path + ":" ) {
         all.push_back( mount.path + ":/" );
      }
   }
   return all;
}

Words Completer::places( const std::string & word )
{
   const Place place = Place::parse( word, false );
   const Steps steps = Steps::parse( place.inTree );
   const auto root = context_.read( place.mount );
   const Reached reached = follow( root, steps.complete );
   Words all;
   if ( reached.taken != steps.complete.size() ) {
      return all;
   }
   const std::string front = word.substr( 0, word.size() - steps.rest.size() ) + "/";
   for ( const Vok::AttributeData & attribute : reached.entity->typeData().attributes() ) {
      if ( !isChild( attribute ) ) {
         continue;
      }
      const std::string name( attribute.name() );
      if ( attribute.kind() == Vok::AttributeKind::child ) {
         all.push_back( front + name );
         continue;
      }
      for ( const std::string & key : keysOf( *reached.entity, attribute ) ) {
         all.push_back(
               std::string( front ).append( name ).append( "[" ).append( key ).append( "]" ) );
      }
   }
   return all;
}

Words Completer::attributes( const Vok::Entity & entity ) const
{
   Words all;
   for ( const Vok::AttributeData & attribute : entity.typeData().attributes() ) {
      if ( attribute.kind() != Vok::AttributeKind::function ) {
         all.emplace_back( attribute.name() );
      }
   }
   return all;
}

Words Completer::keys( const Vok::Entity & entity, const std::string & attribute ) const
{
   const Vok::AttributeData & data = attributeOf( entity.typeData(), attribute );
   Words all = keysOf( entity, data );
   const Words possible = enumerators( data.keyTypeName() );
   all.insert( all.end(), possible.begin(), possible.end() );
   return all;
}

Words Completer::values( const Vok::Entity & entity, const std::string & attribute ) const
{
   const Member member = Member::parse( attribute );
   const Vok::AttributeData & data = attributeOf( entity.typeData(), member.attribute );
   Words all = enumerators( data.typeName() );
   const auto * const type = Corvo::ModuleInspectData::findType( data.typeName() );
   if ( type && type->kind() == Vok::TypeKind::value ) {
      for ( const Vok::AttributeData & field : type->attributes() ) {
         if ( field.settable() && isSingle( field ) ) {
            all.push_back( std::string( field.name() ) + "=" );
         }
      }
   }
   return all;
}

Words Completer::types()
{
   Words all;
   for ( const Corvo::ModuleInspectData & module : Corvo::ModuleInspectData::modules() ) {
      for ( const Vok::TypeData & type : module.types() ) {
         all.emplace_back( type.name() );
      }
   }
   return all;
}

} // namespace Flowtrack
