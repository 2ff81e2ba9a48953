// Definition files read and parsed: one, and all those that it uses.
#pragma once

#include "vokgen/Ast.h"
#include "vokgen/Diagnostics.h"
#include "vokgen/ImportPath.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace VokGen {

/// A parsed file.
struct Unit {
   std::unique_ptr< SourceFile > file;
   std::string header; ///< How others include what is generated of it.
   Ast::Module source;
   std::vector< Unit * > uses; ///< In written order; without what could not be found.
   bool usesMissing = false; ///< One could not be found; that has been reported.
   std::size_t depth = 1; ///< Longest chain of uses from here, itself included.
};

/// Loads modules for one run of the generator, each file once.
class Loader {
 public:
   Loader( std::vector< std::string > importFolders, Diagnostics & diagnostics );

   /// Reads and parses a file and what it uses. Null where the file cannot be read; that is
   /// reported.
   Unit * load( const std::string & path );
   /// The same for a text that is in no file; `path` is how messages name it.
   Unit * loadText( const std::string & path, std::string text );

   /// The units loaded, each after those that it uses.
   const std::vector< Unit * > & inOrder() const { return order_; }

   /// The name of the module below the import folders that declares a type of that full name; empty
   /// where there is none. Parses every file there the first time.
   std::string moduleDeclaring( const std::string & fullName );

 private:
   Unit * add( const std::string & path, std::string text );
   void loadUses( Unit & unit );
   void loadUse( Unit & unit, const Ast::Name & use );
   Unit * fileOf( const Unit & user, const Ast::Name & use );
   void checkDepth( Unit & unit, const Ast::Name & use, const Unit & used );

   Diagnostics & diagnostics_;
   ImportPath imports_;
   std::map< std::string, std::unique_ptr< Unit > > units_; ///< By path.
   std::vector< Unit * > loading_; ///< From the first file to the one being read.
   std::vector< Unit * > order_;
   std::map< std::string, std::string > declaring_; ///< Module by the full name of a type.
   bool declaringKnown_ = false;
};

} // namespace VokGen
