// flowtrack diff: what differs between two trees; flowtrack check: what makes no sense in them.
#include "tools/flowtrack/json/Diff.h"
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/FileTree.h"
#include "tools/flowtrack/check/Rules.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

/// Takes a tree for what its type says it is.
template< class T > bool takes( const T *& wanted, const Vok::Entity & tree )
{
   const auto * const found = dynamic_cast< const T * >( &tree );
   if ( found ) {
      wanted = found;
   }
   return found != nullptr;
}

void checkTrees( Context & context, const std::vector< std::string > & paths )
{
   static const std::string expected = "; expected a configuration, bindings of interfaces, a "
                                       "hardware configuration or capabilities";
   FlowtrackCheck::Checked checked;
   std::vector< Corvo::Ptr< Vok::Entity > > trees;
   for ( const std::string & path : paths ) {
      const auto & tree = trees.emplace_back( context.read( path ) );
      if ( !takes( checked.config, *tree ) && !takes( checked.bindings, *tree ) &&
            !takes( checked.hardware, *tree ) && !takes( checked.capabilities, *tree ) ) {
         const std::string type( tree->typeData().name() );
         throw CommandError( wrongUsage,
               std::string( path ).append( " is a " ).append( type ).append( expected ) );
      }
   }
   for ( const FlowtrackCheck::Finding & finding : FlowtrackCheck::check( checked ) ) {
      context.out << finding.path << ": " << finding.message << " (" << finding.rule << ")\n";
      context.exitCode = notFound;
   }
}

} // namespace

void addDiff( CLI::App & app, Context & context )
{
   struct Wanted {
      std::string before;
      std::string after;
      bool json = false;
   };
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command = app.add_subcommand( "diff",
         "Prints what differs between two trees of one type; exits with 1 where anything does." );
   command->add_option( "A", wanted->before, "a path, or FILE.json with --type" )->required();
   command->add_option( "B", wanted->after, "a path, or FILE.json with --type" )->required();
   command->add_flag( "--json", wanted->json, "as JSON" );
   command->callback( [ &context, wanted ] {
      const auto before = readTree( context, wanted->before );
      const auto after = readTree( context, wanted->after );
      const auto found = FlowtrackJson::differences( *before, *after );
      context.out << ( wanted->json ? jsonOf( found ).dump( 2 ) + "\n" : textOf( found ) );
      context.exitCode = found.empty() ? done : notFound;
   } );
}

void addCheck( CLI::App & app, Context & context )
{
   const auto paths = std::make_shared< std::vector< std::string > >();
   CLI::App * const command = app.add_subcommand( "check",
         "Says what makes no sense in a configuration though each value is allowed; exits with 1 "
         "where anything does not." );
   command
         ->add_option( "PATH", *paths,
               "a configuration, and beside it bindings of interfaces, a hardware configuration "
               "and capabilities, in any order" )
         ->required();
   command->callback( [ &context, paths ] { checkTrees( context, *paths ); } );
}

} // namespace Flowtrack
