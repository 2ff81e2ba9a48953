// File names, banner and accessor of a module.
#include "vokgen/emit/ModuleNames.h"

namespace VokGen {

std::string moduleFunction( const Model::Module & module )
{
   return "Vok::Modules::" + module.name;
}

std::string moduleFile( const Model::Module & module, const std::string & ending )
{
   const std::string & file = module.fileName;
   return file.substr( 0, file.rfind( '.' ) ) + ending;
}

std::string banner( const Model::Module & module )
{
   return "// Made by vokgen from " + module.fileName + ". Do not edit.\n";
}

} // namespace VokGen
