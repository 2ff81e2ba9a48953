// How constants types are printed.
#include "vokgen/emit/Constants.h"

#include "vokgen/Printer.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Enum.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

std::string nestedEnums( const Model::RecordType & type )
{
   Paragraphs paragraphs;
   for ( const auto & nested : type.enums ) {
      paragraphs.add( enumDefinition( *nested ) + enumInstances( *nested ) );
   }
   return paragraphs.text();
}

std::string constantsClass( const Model::ConstantsType & type )
{
   std::string members;
   for ( const auto & attribute : type.attributes ) {
      members += emitterOf( *attribute ).fragments( *attribute ).members;
   }
   return fill( { { "comment", comment( { type.documentation } ) },
                      { "name", type.name },
                      { "enums", nestedEnums( type ) },
                      { "members", members } },
         R"(
      $comment$
      class VOK_EXPORT $name$ {
       public:
         $name$() = delete;

         $enums$

         $members$

         struct VOK_HIDDEN VokTable;
      };
   )" );
}

} // namespace VokGen
