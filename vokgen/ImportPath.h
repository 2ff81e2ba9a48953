// The folders below which used modules are found.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace VokGen {

/// Finds definition files by the name of their module. The folders are searched once, when a file
/// is first asked for; hidden folders and CMake build folders below them are left out.
class ImportPath {
 public:
   explicit ImportPath( std::vector< std::string > folders ) : folders_( std::move( folders ) ) {}

   /// The files of that name, different ones only, in the order of the folders.
   const std::vector< std::string > & filesOf( const std::string & module );
   /// The names of all modules, sorted.
   std::vector< std::string > modules();

   /// How a module's header is included: the path of its definition file from the innermost of the
   /// folders that it lies below, or its bare name if it lies below none, with ".h" in place of
   /// ".vok".
   std::string headerOf( const std::string & file ) const;

 private:
   void search();

   std::vector< std::string > folders_;
   std::map< std::string, std::vector< std::string > > files_;
   bool searched_ = false;
};

} // namespace VokGen
