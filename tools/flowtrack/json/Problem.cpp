// Problems as texts.
#include "tools/flowtrack/json/Problem.h"

namespace FlowtrackJson {

namespace {

std::string joined( const Problems & problems )
{
   std::string text;
   for ( const Problem & problem : problems ) {
      text += ( text.empty() ? "" : "\n" ) + textOf( problem, "" );
   }
   return text;
}

} // namespace

std::string textOf( const Problem & problem, const std::string & file )
{
   std::string text = file + ( file.empty() ? "" : ":" );
   text += std::to_string( problem.line ) + ":" + std::to_string( problem.column ) + ": ";
   if ( !problem.pointer.empty() ) {
      text += problem.pointer + ": ";
   }
   text += "found " + problem.found + "; allowed: " + problem.allowed;
   if ( !problem.definition.empty() ) {
      text += " (" + problem.definition + ")";
   }
   return text;
}

DocumentError::DocumentError( Problems problems ) : std::runtime_error( joined( problems ) ),
                                                    problems_( std::move( problems ) )
{
}

} // namespace FlowtrackJson
