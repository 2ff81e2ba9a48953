// How designated initialisers are printed.
#include "vokgen/emit/Initialisers.h"

#include "vokgen/Printer.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/FinishedCode.h"

namespace VokGen {

Initialisers::Initialisers( std::size_t indentation ) : room_( columnLimit - indentation ) {}

void Initialisers::flag( const std::string & field, bool value )
{
   if ( value ) {
      add( field, "true" );
   }
}

void Initialisers::text( const std::string & field, const std::string & value )
{
   if ( value.empty() ) {
      return;
   }
   // One literal where it fits behind its field, else as many as it takes below.
   const std::string whole = cppLiteral( value, columnLimit * 8 );
   const bool fits = field.size() + whole.size() + 5 <= room_;
   add( field, fits ? whole : cppLiteral( value, room_ - continuationIndent - 1 ) );
}

void Initialisers::code( const std::string & field, const std::string & value )
{
   if ( !value.empty() ) {
      add( field, value );
   }
}

void Initialisers::add( const std::string & field, const std::string & value )
{
   const std::string line = "." + field + " = " + value + ",\n";
   const bool fits = line.size() - 1 <= room_ && value.find( '\n' ) == std::string::npos;
   lines_ += fits ? line : fill( { { "field", field }, { "value", value } }, R"(
      .$field$ =
            $value$,
   )" );
}

} // namespace VokGen
