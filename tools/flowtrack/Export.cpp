// flowtrack export: a tree as a document; flowtrack schema: what documents of a type look like.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/FileTree.h"
#include "tools/flowtrack/json/Json.h"
#include "tools/flowtrack/json/JsonSchema.h"
#include "tools/flowtrack/json/Yang.h"

#include <CLI/CLI.hpp>

#include <fstream>
#include <memory>
#include <ostream>
#include <string>

namespace Flowtrack {

namespace {

struct Wanted {
   std::string what;
   std::string file;
   bool changed = false;
   bool yang = false;
};

void exportTree( Context & context, const Wanted & wanted )
{
   const auto entity = readTree( context, wanted.what );
   if ( wanted.yang && entity->parent() ) {
      throw CommandError( wrongUsage, "YANG modules are of whole trees; expected a root" );
   }
   const auto extent =
         wanted.changed ? FlowtrackJson::Extent::changed : FlowtrackJson::Extent::all;
   const std::string text = wanted.yang ? FlowtrackJson::rfc7951( *entity ).dump( 2 ) + "\n"
                                        : FlowtrackJson::jsonText( *entity, extent );
   if ( wanted.file.empty() ) {
      context.out << text;
      return;
   }
   std::ofstream to( wanted.file, std::ios::binary );
   to << text << std::flush;
   if ( !to ) {
      throw CommandError( notFound, wanted.file + " cannot be written" );
   }
}

} // namespace

void addExport( CLI::App & app, Context & context )
{
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command =
         app.add_subcommand( "export", "Writes an entity, with all below it, as JSON." );
   command->add_option( "PATH", wanted->what, "the entity" )->required();
   command->add_option( "--output,-o", wanted->file, "the file; else standard output" );
   const auto changed =
         command->add_flag( "--changed", wanted->changed, "leaves out what a new tree has" );
   command
         ->add_flag( "--rfc7951", wanted->yang,
               "a whole tree, as data of the YANG module that schema --yang prints" )
         ->excludes( changed );
   command->callback( [ &context, wanted ] { exportTree( context, *wanted ); } );
}

void addSchema( CLI::App & app, Context & context )
{
   struct Type {
      std::string name;
      bool json = false;
      bool yang = false;
   };
   const auto type = std::make_shared< Type >();
   CLI::App * const command = app.add_subcommand(
         "schema", "Prints what documents of a type of trees look like, for other programs." );
   command->add_option( "TYPE", type->name, "full name of the root's type" )->required();
   const auto json = command->add_flag( "--json-schema", type->json,
         "JSON Schema 2020-12, of what export writes and load takes" );
   command
         ->add_flag( "--yang", type->yang, "YANG 1.1, of what export --rfc7951 writes" )
         ->excludes( json );
   command->callback( [ &context, type ] {
      if ( type->json == type->yang ) {
         throw CommandError( wrongUsage, "expected --json-schema or --yang" );
      }
      const Vok::TypeData & record = FlowtrackJson::entityType( type->name );
      context.out << ( type->yang ? FlowtrackJson::yangModule( record )
                                  : FlowtrackJson::jsonSchema( record ).dump( 2 ) + "\n" );
   } );
}

} // namespace Flowtrack
