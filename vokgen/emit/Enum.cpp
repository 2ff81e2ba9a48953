// How enumerations are printed.
#include "vokgen/emit/Enum.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Initialisers.h"
#include "vokgen/emit/ModuleNames.h"
#include "vokgen/emit/Row.h"
#include "vokgen/emit/Spelling.h"

namespace VokGen {

namespace {

std::string enumeratorLine( const Model::Enumerator & enumerator )
{
   const std::string declaration =
         enumerator.name + " = " + std::to_string( enumerator.code ) + ",";
   const std::string behind = trailingComment( declaration, enumerator.documentation );
   const std::string before = behind.empty() ? comment( { enumerator.documentation } ) : "";
   return before + declaration + behind + "\n";
}

std::string spelled( const Model::EnumType & type )
{
   return Scope( type.nameSpace ).name( type.fullName );
}

/// One enumerator of the table that reflection and text read.
std::string tableRow( const Model::Enumerator & enumerator )
{
   const std::string start =
         std::to_string( enumerator.code ) + ( enumerator.code > 2147483647U ? "U" : "" ) + ", " +
         cppLiteral( enumerator.name ) + ",";
   const std::string line =
         "{ " + start + " " + cppLiteral( enumerator.documentation, 1000 ) + " },\n";
   return line.size() <= 97
         ? line
         : fill( { { "start", start }, { "text", cppLiteral( enumerator.documentation, 85 ) } },
                 R"(
      { $start$
            $text$ },
   )" );
}

} // namespace

std::string enumDefinition( const Model::EnumType & type )
{
   std::string enumerators;
   for ( const auto & enumerator : type.enumerators ) {
      enumerators += enumeratorLine( *enumerator );
   }
   return fill( { { "comment", comment( { type.documentation } ) },
                      { "name", type.name },
                      { "bits", std::to_string( type.bits ) },
                      { "enumerators", enumerators } },
         R"(
      $comment$
      enum class $name$ : std::uint$bits$_t {
         $enumerators$
      };
      using enum $name$;
   )" );
}

std::string enumInstances( const Model::EnumType & type )
{
   const std::string start = ( type.holder ? "static " : "inline " ) + type.name + " " +
         Names::instance( type.name );
   const std::size_t indentation = type.holder ? 3 : 0;
   return comment( { "The enumerator of a code or a name; throws Corvo::EnumRangeException where "
                     "there is none." } ) +
         shortFunction( start + "( unsigned code )",
               "return Vok::Enumeration::ofCode< " + type.name + " >( code );", indentation ) +
         shortFunction( start + "( std::string_view name )",
               "return Vok::Enumeration::ofName< " + type.name + " >( name );", indentation );
}

std::string enumFunctions( const Model::EnumType & type )
{
   const std::string name = shortFunction(
         "inline const char * stringValue( " + spelled( type ) + " e )",
         "return Vok::Enumeration::name( e );" );
   return fill( { { "type", spelled( type ) }, { "fullName", cppLiteral( type.fullName ) },
                      { "stringValue", name } },
         R"(
      VOK_EXPORT const Vok::EnumTable & vokEnumTable( $type$ ) noexcept;
      constexpr std::string_view vokEnumName( $type$ ) noexcept
      {
         return $fullName$;
      }
      /// The enumerator's name; a code without one ends the process by assertion.
      $stringValue$
      /// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
      /// nothing.
      inline void sequenceToValue( Vok::CharRange & range, $type$ * value )
      {
         Vok::Enumeration::read( range, value );
      }
      inline std::ostream & operator<<( std::ostream & out, $type$ e )
      {
         return out << stringValue( e );
      }
   )" );
}

std::string enumTables( const Model::EnumType & type, const std::string & identifier )
{
   std::string rows;
   for ( const auto & enumerator : type.enumerators ) {
      rows += tableRow( *enumerator );
   }
   Initialisers fields( 6 );
   fields.text( "name", type.fullName );
   fields.text( "documentation", type.documentation );
   fields.code( "kind", "Vok::TypeKind::enumeration" );
   fields.code( "module", "&" + moduleFunction( *type.module ) );
   fields.code( "enumerators", identifier + "Enumerators" );
   fields.code( "value", valueOps( type.fullName ) );
   return fill( { { "id", identifier },
                      { "type", type.fullName },
                      { "nameSpace", type.nameSpace },
                      { "name", cppLiteral( type.fullName ) },
                      { "fields", fields.lines() },
                      { "rows", rows } },
         R"(
      namespace {
      constexpr Vok::Enumerator $id$Enumerators[] = {
         $rows$
      };
      constexpr Vok::EnumTable $id$Table{
         $name$,
         $id$Enumerators
      };
      constinit const Vok::TypeData $id$Type{ {
            $fields$
      } };
      } // namespace

      const Vok::EnumTable & $nameSpace$::vokEnumTable( $type$ ) noexcept
      {
         return $id$Table;
      }
   )" );
}

} // namespace VokGen
