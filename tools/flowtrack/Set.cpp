// flowtrack set, add and del: changes of one entity, each whole or not at all.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Place.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/Values.h"
#include "tools/flowtrack/json/Hint.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

using Vok::AttributeData;
using Vok::AttributeKind;

/// What the three commands are told.
struct Wanted {
   std::string path;
   std::string attribute;
   std::string key;
   std::vector< std::string > words;
};

void set( Vok::Entity & entity, const Wanted & wanted )
{
   const Member member = Member::parse( wanted.attribute );
   const AttributeData & attribute = attributeOf( entity.typeData(), member.attribute );
   if ( isSingle( attribute ) ) {
      if ( member.key ) {
         throw CommandError( wrongUsage, member.attribute + " has no keys" );
      }
      setAttribute( entity, attribute, wanted.words );
      return;
   }
   if ( attribute.kind() != AttributeKind::map || !member.key ) {
      throw CommandError( wrongUsage,
            member.attribute + " is " + stringValue( attribute.kind() ) +
                  "; expected an attribute of one value, or a member of a map",
            isCollection( attribute ) ? "flowtrack add and flowtrack del change its members" : "" );
   }
   setMember( entity, attribute, *member.key, wanted.words );
}

void add( Vok::Entity & entity, const Wanted & wanted )
{
   const AttributeData & attribute = attributeOf( entity.typeData(), wanted.attribute );
   if ( isChild( attribute ) ) {
      std::vector< Corvo::String > arguments;
      if ( attribute.kind() == AttributeKind::child && !wanted.key.empty() ) {
         arguments.emplace_back( wanted.key );
      }
      for ( const std::string & word : wanted.words ) {
         arguments.emplace_back( word );
      }
      attribute.childIs( entity, wanted.key, arguments );
   } else if ( attribute.kind() == AttributeKind::map ||
         attribute.kind() == AttributeKind::set ) {
      setMember( entity, attribute, wanted.key, wanted.words );
   } else {
      throw CommandError( wrongUsage,
            wanted.attribute + " is " + stringValue( attribute.kind() ) +
                  "; expected a map, a set or children",
            isSingle( attribute ) ? "flowtrack set changes its value" : "" );
   }
}

void del( Vok::Entity & entity, const Wanted & wanted )
{
   const AttributeData & attribute = attributeOf( entity.typeData(), wanted.attribute );
   if ( isSingle( attribute ) || !( isCollection( attribute ) || isChild( attribute ) ) ) {
      throw CommandError( wrongUsage,
            wanted.attribute + " is " + stringValue( attribute.kind() ) +
                  "; expected a collection or a child" );
   }
   if ( isCollection( attribute ) ) {
      const auto keys = keysOf( entity, attribute );
      if ( std::find( keys.begin(), keys.end(), wanted.key ) == keys.end() ) {
         throw CommandError( notFound, wanted.attribute + " has no member " + wanted.key,
               FlowtrackJson::didYouMean( wanted.key, keys ) );
      }
   } else if ( !attribute.child( entity, "" ) ) {
      throw CommandError( notFound, "there is no " + wanted.attribute );
   }
   attribute.memberDel( entity, wanted.key );
}

CLI::App * addCommand( CLI::App & app, Context & context, const char * name,
      const char * description, const std::shared_ptr< Wanted > & wanted,
      void ( *change )( Vok::Entity &, const Wanted & ) )
{
   CLI::App * const command = app.add_subcommand( name, description );
   command->add_option( "PATH", wanted->path, "the entity that changes" )->required();
   command->callback( [ &context, wanted, change ] {
      context.edit( wanted->path, context.options.type,
            [ & ]( Vok::Entity & entity ) { change( entity, *wanted ); } );
   } );
   return command;
}

} // namespace

void addSet( CLI::App & app, Context & context )
{
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command = addCommand( app, context, "set",
         "Sets an attribute, or the value of a member of a map.", wanted, set );
   command->add_option( "ATTRIBUTE", wanted->attribute, "NAME or NAME[KEY]" )->required();
   command->add_option( "VALUE", wanted->words,
                "its text; '' unsets what is optional; or FIELD=VALUE, any number of times, for "
                "some fields of a value" )
         ->required();
}

void addAdd( CLI::App & app, Context & context )
{
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command = addCommand( app, context, "add",
         "Adds a child, or a member of a map or a set; what is there stays.", wanted, add );
   command->add_option( "ATTRIBUTE", wanted->attribute, "the collection, or a single child" )
         ->required();
   command->add_option(
         "KEY", wanted->key, "of the new member; of a single child its name, if it has one" );
   command->add_option( "VALUE", wanted->words,
         "of a map's member, its text or FIELD=VALUE; of a child, its further constructor "
         "arguments" );
}

void addDel( CLI::App & app, Context & context )
{
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command = addCommand( app, context, "del",
         "Deletes a member of a collection, or a single child.", wanted, del );
   command->add_option( "ATTRIBUTE", wanted->attribute, "the collection, or a single child" )
         ->required();
   command->add_option( "KEY", wanted->key, "of the member" );
}

} // namespace Flowtrack
