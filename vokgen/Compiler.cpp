#include "vokgen/Compiler.h"

#include "vokgen/Check.h"
#include "vokgen/Fingerprint.h"
#include "vokgen/Loader.h"

#include <filesystem>

namespace VokGen {
namespace {

/// Checks the loaded units in order. The last one is the module that was asked for.
std::shared_ptr< const Model::Module > check( Loader & loader, Diagnostics & diagnostics )
{
   Workspace workspace( diagnostics );
   workspace.moduleDeclaring = [ &loader ]( const std::string & fullName ) {
      return loader.moduleDeclaring( fullName );
   };
   std::unordered_map< const Unit *, std::unique_ptr< ModuleDraft > > drafts;
   std::shared_ptr< Model::Module > last;
   for ( const Unit * unit : loader.inOrder() ) {
      auto draft = std::make_unique< ModuleDraft >();
      draft->source = &unit->source;
      draft->module = std::make_shared< Model::Module >();
      draft->incomplete = unit->source.incomplete || unit->usesMissing;
      Model::Module & module = *draft->module;
      module.name = unit->source.name.text;
      module.documentation = unit->source.documentation.text;
      module.fileName = std::filesystem::path( unit->file->path() ).filename().string();
      module.header = unit->header;
      for ( const Unit * used : unit->uses ) {
         draft->uses.push_back( drafts.at( used ).get() );
         module.uses.push_back( drafts.at( used )->module );
      }
      checkModule( workspace, *draft );
      if ( !diagnostics.hasErrors() ) {
         module.fingerprint = fingerprint( module );
      }
      last = draft->module;
      drafts.emplace( unit, std::move( draft ) );
   }
   return diagnostics.hasErrors() ? nullptr : last;
}

Compilation finish( Loader & loader, Diagnostics & diagnostics, const Unit * unit )
{
   Compilation result;
   if ( unit ) {
      result.module = check( loader, diagnostics );
   }
   for ( const Unit * read : loader.inOrder() ) {
      result.files.insert( read == unit ? result.files.begin() : result.files.end(),
            read->file->path() );
   }
   result.errors = diagnostics.text( unit ? unit->file.get() : nullptr );
   return result;
}

} // namespace

Compilation compile( const std::string & path, const std::vector< std::string > & importFolders )
{
   Diagnostics diagnostics;
   Loader loader( importFolders, diagnostics );
   const Unit * unit = loader.load( path );
   return finish( loader, diagnostics, unit );
}

Compilation compileText( const std::string & path, std::string text,
      const std::vector< std::string > & importFolders )
{
   Diagnostics diagnostics;
   Loader loader( importFolders, diagnostics );
   const Unit * unit = loader.loadText( path, std::move( text ) );
   return finish( loader, diagnostics, unit );
}

} // namespace VokGen
