// The list of a module's files.
#include "vokgen/emit/Emit.h"

#include "vokgen/emit/FinishedCode.h"
#include "vokgen/emit/Header.h"
#include "vokgen/emit/ModuleNames.h"
#include "vokgen/emit/Reference.h"
#include "vokgen/emit/Reflection.h"
#include "vokgen/emit/SourceFile.h"

namespace VokGen {

namespace {

OutputFile code(
      const Model::Module & module, const std::string & ending, const std::string & text )
{
   const std::string path = moduleFile( module, ending );
   return { path, finishedCode( path, text ) };
}

} // namespace

std::vector< OutputFile > emitModule( const Model::Module & module )
{
   return {
      code( module, ".h", headerText( module ) ),
      code( module, ".cpp", sourceText( module ) ),
      code( module, ".reflect.cpp", reflectionText( module ) ),
      { moduleFile( module, ".md" ), referenceText( module ) },
   };
}

} // namespace VokGen
