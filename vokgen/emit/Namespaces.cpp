// Opening and closing of namespaces.
#include "vokgen/emit/Namespaces.h"

#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/FinishedCode.h"

namespace VokGen {

void Namespaces::section( std::string_view title, std::string_view comment )
{
   heading_ = "// ---- " + std::string( title ) + " ";
   heading_.append( columnLimit - heading_.size(), '-' ).push_back( '\n' );
   if ( !comment.empty() ) {
      heading_ += "\n" + plainComment( { comment } );
   }
}

void Namespaces::add( const std::string & nameSpace, std::string_view text )
{
   if ( text.empty() ) {
      return;
   }
   if ( nameSpace != open_ ) {
      close();
      text_.add( nameSpace.empty() ? "" : "namespace " + nameSpace + " {\n" );
      open_ = nameSpace;
   }
   text_.add( heading_ ).add( text );
   heading_.clear();
}

void Namespaces::close()
{
   if ( !open_.empty() ) {
      text_.add( "} // namespace " + open_ + "\n" );
      open_.clear();
   }
}

std::string Namespaces::finish()
{
   close();
   return text_.text();
}

} // namespace VokGen
