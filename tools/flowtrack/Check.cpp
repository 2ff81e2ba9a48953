// flowtrack check: what makes no sense in a configuration, of a store and of files.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/FileTree.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/check/Rules.h"
#include "tools/flowtrack/json/Shape.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

/// The types of what is checked together, the first one preferred.
const std::array< std::string, 4 > & checkedTypes()
{
   static const std::array< std::string, 4 > all = { "FlowTracking::Config",
      "FlowTracking::FlowTrackerIntfConfigs", "HwFlowTracking::Config",
      "HwFlowTracking::Capabilities" };
   return all;
}

/// How many of a document's names a type does not have.
std::size_t unknownNames( const FlowtrackJson::Document & document, const std::string & type )
{
   const Vok::TypeData & record = entityType( type );
   const auto & members = document.root().members;
   return static_cast< std::size_t >(
         std::count_if( members.begin(), members.end(), [ & ]( const auto & member ) {
            return !FlowtrackJson::attributeOf( record, member.name );
         } ) );
}

/// The type that a document is most likely of: it says none.
const std::string & likelyType( const FlowtrackJson::Document & document )
{
   const std::string * best = nullptr;
   std::size_t least = std::numeric_limits< std::size_t >::max();
   for ( const std::string & type : checkedTypes() ) {
      if ( const std::size_t count = unknownNames( document, type ); count < least ) {
         least = count;
         best = &type;
      }
   }
   return *best;
}

Corvo::Ptr< Vok::Entity > treeFor( Context & context, const std::string & what )
{
   if ( !isFile( what ) || !context.options.type.empty() ) {
      return readTree( context, what );
   }
   const FlowtrackJson::Document document = readDocument( what );
   return treeOf( document, what, likelyType( document ) );
}

/// Takes a tree for what its type says it is.
template< class T > bool takes( const T *& wanted, const Vok::Entity & tree,
      const std::string & from )
{
   const auto * const found = dynamic_cast< const T * >( &tree );
   if ( found && wanted ) {
      throw CommandError( wrongUsage,
            from + " is another " + std::string( T::vokType().name() ) +
                  "; expected one of each type" );
   }
   wanted = found ? found : wanted;
   return found != nullptr;
}

void check( Context & context, const std::vector< std::string > & places )
{
   static const std::string expected = "; expected a configuration, bindings of interfaces, a "
                                       "hardware configuration or capabilities";
   FlowtrackCheck::Checked checked;
   std::vector< Corvo::Ptr< Vok::Entity > > trees;
   for ( const std::string & place : places ) {
      const auto & tree = trees.emplace_back( treeFor( context, place ) );
      if ( !takes( checked.config, *tree, place ) && !takes( checked.bindings, *tree, place ) &&
            !takes( checked.hardware, *tree, place ) &&
            !takes( checked.capabilities, *tree, place ) ) {
         const std::string type( tree->typeData().name() );
         throw CommandError( wrongUsage,
               std::string( place ).append( " is a " ).append( type ).append( expected ) );
      }
   }
   for ( const FlowtrackCheck::Finding & finding : FlowtrackCheck::check( checked ) ) {
      context.out << finding.path << ": " << finding.message << " (" << finding.rule << ")\n";
      context.exitCode = notFound;
   }
}

} // namespace

void addCheck( CLI::App & app, Context & context )
{
   const auto places = std::make_shared< std::vector< std::string > >();
   CLI::App * const command = app.add_subcommand( "check",
         "Says what makes no sense in a configuration though each value is allowed; exits with 1 "
         "where anything does not." );
   command
         ->add_option( "PATH", *places,
               "a configuration, and beside it bindings of interfaces, a hardware configuration "
               "and capabilities, in any order; each a path, or FILE.json, whose type follows from "
               "its names where --type does not say it" )
         ->required();
   command->callback( [ &context, places ] { check( context, *places ); } );
}

} // namespace Flowtrack
