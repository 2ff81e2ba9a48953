// flowtrack get: values for scripts; flowtrack digest: whether trees are equal.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Place.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Hint.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

/// The value of an attribute or of a member, or the keys of a collection, each on a line.
void printOne( std::ostream & out, const Vok::Entity & entity, const std::string & text )
{
   const Member member = Member::parse( text );
   const Vok::AttributeData & attribute = attributeOf( entity.typeData(), member.attribute );
   if ( isSingle( attribute ) && !member.key ) {
      out << attribute.get( entity ) << '\n';
   } else if ( isCollection( attribute ) && !member.key ) {
      for ( const std::string & key : keysOf( entity, attribute ) ) {
         out << key << '\n';
      }
   } else if ( isCollection( attribute ) ) {
      const auto value = valueOf( entity, attribute, *member.key );
      if ( !value ) {
         throw CommandError( notFound, member.attribute + " has no member " + *member.key,
               FlowtrackJson::didYouMean( *member.key, keysOf( entity, attribute ) ) );
      }
      out << *value << '\n';
   } else {
      throw CommandError( wrongUsage,
            text + " of " + std::string( entity.typeData().name() ) + " has no value to get" );
   }
}

void printAll( std::ostream & out, const Vok::Entity & entity )
{
   eachOwnItem( entity, [ & ]( const Item & item ) {
      out << item.attribute.name();
      if ( item.isMember ) {
         out << '[' << item.key << ']';
      }
      out << '=' << item.value << '\n';
   } );
}

} // namespace

void addGet( CLI::App & app, Context & context )
{
   struct Wanted {
      std::string path;
      std::vector< std::string > attributes;
   };
   CLI::App * const command = app.add_subcommand( "get",
         "Prints values of one entity, a line each: of an attribute its value, of a member its "
         "value, of a collection its keys." );
   const auto wanted = std::make_shared< Wanted >();
   command->add_option( "PATH", wanted->path, "the entity" )->required();
   command->add_option( "ATTRIBUTE", wanted->attributes,
         "NAME or NAME[KEY]; without any all are printed, as NAME=VALUE" );
   command->callback( [ &context, wanted ] {
      const auto entity = context.read( wanted->path );
      if ( wanted->attributes.empty() ) {
         printAll( context.out, *entity );
      }
      for ( const std::string & attribute : wanted->attributes ) {
         printOne( context.out, *entity, attribute );
      }
   } );
}

void addDigest( CLI::App & app, Context & context )
{
   CLI::App * const command = app.add_subcommand( "digest",
         "Prints the digest of a tree: equal trees have equal digests, wherever they are." );
   const auto path = std::make_shared< std::string >();
   command->add_option( "PATH", *path, "the entity, with all that is below it" )->required();
   command->callback( [ &context, path ] {
      context.out << Vok::treeDigest( *context.read( *path ) ).text() << '\n';
   } );
}

} // namespace Flowtrack
