// flowtrack show: a tree for people, as tables, or a line for each value.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Table.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Json.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

struct Wanted {
   std::string path;
   bool all = false;
   bool table = false;
   bool text = false;
   bool json = false;
};

/// `name`, `name[key]`.
std::string label( const Item & item )
{
   const std::string name( item.attribute.name() );
   return item.isMember ? name + "[" + item.key + "]" : name;
}

/// Whether a member or an attribute has a value besides its key.
bool hasValue( const Item & item )
{
   return !isChild( item.attribute ) && item.attribute.kind() != Vok::AttributeKind::set;
}

void printTree( std::ostream & out, const Vok::Entity & entity, bool all, std::size_t depth )
{
   eachOwnItem( entity, [ & ]( const Item & item ) {
      if ( item.isDefault && !all ) {
         return;
      }
      out << std::string( 3 * depth, ' ' ) << label( item );
      if ( hasValue( item ) ) {
         out << " = " << item.value;
      }
      out << '\n';
      if ( isChild( item.attribute ) ) {
         printTree( out, *item.attribute.child( item.entity, item.key ), all, depth + 1 );
      }
   } );
}

void printText( std::ostream & out, const Vok::Entity & entity, bool all )
{
   eachItem( entity, [ & ]( const Item & item ) {
      if ( item.isDefault && !all ) {
         return;
      }
      out << Vok::pathOf( item.entity ) << ' ' << label( item );
      if ( hasValue( item ) ) {
         out << " = " << item.value;
      }
      out << '\n';
   } );
}

/// What a column of a table of children shows of one of them: an attribute; of a collection its
/// members.
std::string cell( const Vok::Entity & entity, const Vok::AttributeData & attribute, bool all )
{
   std::string text;
   eachOwnItem( entity, [ & ]( const Item & item ) {
      if ( item.attribute.id() != attribute.id() || ( item.isDefault && !all ) ) {
         return;
      }
      const std::string one = !item.isMember ? item.value
            : hasValue( item )               ? item.key + "=" + item.value
                                             : item.key;
      text.append( text.empty() ? "" : " " ).append( one );
   } );
   return text;
}

/// A table of the children of one collection: a row for each.
void printChildren( Context & context, const Vok::Entity & parent,
      const Vok::AttributeData & children, bool all )
{
   std::vector< std::string > heading{ std::string( children.name() ) };
   std::vector< const Vok::AttributeData * > columns;
   const auto keys = keysOf( parent, children );
   const auto first = children.child( parent, keys.front() );
   for ( const Vok::AttributeData & attribute : first->typeData().attributes() ) {
      if ( !isKeyField( *first, attribute ) ) {
         heading.emplace_back( attribute.name() );
         columns.push_back( &attribute );
      }
   }
   Table table( heading );
   for ( const std::string & key : keys ) {
      const auto child = children.child( parent, key );
      const std::string name( child->name().view() );
      std::vector< std::string > row{ !key.empty() ? key : !name.empty() ? name
                                                                         : "-" };
      for ( const Vok::AttributeData * const column : columns ) {
         row.push_back( cell( *child, *column, all ) );
      }
      table.add( row );
   }
   table.dropEmptyColumns();
   table.print( context.out, context.colours );
}

/// The entity's own values, then a table for each collection of children.
void printTables( Context & context, const Vok::Entity & entity, bool all )
{
   Table own( { "ATTRIBUTE", "VALUE" } );
   std::vector< const Vok::AttributeData * > collections;
   eachOwnItem( entity, [ & ]( const Item & item ) {
      if ( !isChild( item.attribute ) ) {
         if ( all || !item.isDefault ) {
            own.add( { label( item ), item.value } );
         }
      } else if ( item.isDefault && !all ) {
         return;
      } else if ( collections.empty() || collections.back() != &item.attribute ) {
         collections.push_back( &item.attribute );
      }
   } );
   bool blank = !own.empty();
   if ( !own.empty() ) {
      own.print( context.out, context.colours );
   }
   for ( const Vok::AttributeData * const children : collections ) {
      context.out << ( blank ? "\n" : "" );
      printChildren( context, entity, *children, all );
      blank = true;
   }
}

void show( Context & context, const Wanted & wanted )
{
   const auto entity = context.read( wanted.path );
   if ( wanted.table ) {
      printTables( context, *entity, wanted.all );
   } else if ( wanted.text ) {
      printText( context.out, *entity, wanted.all );
   } else if ( wanted.json ) {
      context.out << FlowtrackJson::jsonText( *entity,
            wanted.all ? FlowtrackJson::Extent::all : FlowtrackJson::Extent::changed );
   } else {
      printTree( context.out, *entity, wanted.all, 0 );
   }
}

} // namespace

void addShow( CLI::App & app, Context & context )
{
   CLI::App * const command = app.add_subcommand( "show",
         "Shows a tree, or what is below a place in it: whatever differs from a new one." );
   const auto wanted = std::make_shared< Wanted >();
   command->add_option( "PATH", wanted->path, "what is shown" )->required();
   command->add_flag( "--all", wanted->all, "shows what is as in a new one, too" );
   const auto table =
         command->add_flag( "--table", wanted->table, "tables: values, then children by row" );
   const auto text = command
                           ->add_flag( "--text", wanted->text,
                                 "a line for each value: PLACE ATTRIBUTE = VALUE" )
                           ->excludes( table );
   command->add_flag( "--json", wanted->json, "a JSON object" )
         ->excludes( table )
         ->excludes( text );
   command->callback( [ &context, wanted ] { show( context, *wanted ); } );
}

} // namespace Flowtrack
