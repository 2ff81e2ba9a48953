// Shapes of generated functions and data members.
#include "vokgen/emit/Functions.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/FinishedCode.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/Spelling.h"

namespace VokGen {

using Model::Attribute;

namespace {

/// A check in a class throws from inside a condition: three levels in.
constexpr std::size_t deepest = 9;

/// The number inside a value, which is what bounds are compared with: "v", "v.value()".
std::string comparand( std::string value, const Model::Type & type )
{
   const Model::Type * inner = &type;
   while ( inner->kind == Model::TypeKind::value ) {
      const Attribute * const field = inner->value->onlyField();
      value += "." + field->name + "()";
      inner = &field->type;
   }
   return value;
}

} // namespace

std::string shortFunction( const std::string & head, const std::string & statement,
      std::size_t indentation )
{
   std::string line = head + " { " + statement + " }\n";
   return indentation + line.size() - 1 <= columnLimit ? line : longFunction( head, statement );
}

std::string longFunction( const std::string & head, const std::string & statement )
{
   return fill( { { "head", head }, { "statement", statement } }, R"(
      $head$
      {
         $statement$
      }
   )" );
}

std::string dataMember( const std::string & type, const std::string & name,
      const std::string & initialiser )
{
   constexpr std::size_t indentation = 3;
   const std::string behind = name + initialiser + ";\n";
   const std::string firstLine = behind.substr( 0, behind.find( '\n' ) );
   const bool fits = indentation + type.size() + 1 + firstLine.size() <= columnLimit;
   return type + ( fits ? " " : "\n      " ) + behind;
}

const Model::Type & takenAs( const Attribute & field )
{
   return field.builtFrom ? *field.builtFrom : field.type;
}

std::string checkName( const Attribute & attribute )
{
   return Names::boundsCheck( attribute.name );
}

std::string checkHead( const Attribute & attribute, const std::string & name )
{
   return "void " + name + "( " + Scope( *attribute.owner ).given( takenAs( attribute ) ) + " v )";
}

std::string checkBody( const Attribute & attribute )
{
   const std::string condition = attribute.textLimit
         ? "v.size() > " + numberLiteral( numberOf( attribute.textLimit->most.value ) )
         : outside( attribute, comparand( "v", takenAs( attribute ) ) );
   const std::string & message =
         attribute.textLimit ? attribute.textLimit->message : attribute.bounds->message;
   return fill( { { "condition", condition }, { "throw", throwStatement( message ) } }, R"(
      {
         if ( $condition$ ) {
            $throw$
         }
      }
   )" );
}

std::string throwStatement( const std::string & message )
{
   std::string whole =
         "Corvo::RangeException::throwException( " + cppLiteral( message, 1000 ) + " );";
   if ( whole.size() + deepest <= columnLimit &&
         cppLiteral( message, 1000 ) == cppLiteral( message ) ) {
      return whole;
   }
   return fill( { { "message", cppLiteral( message, 80 ) } }, R"(
      Corvo::RangeException::throwException(
            $message$ );
   )" );
}

std::string outside( const Attribute & attribute, const std::string & value )
{
   const Model::Bounds & bounds = *attribute.bounds;
   std::string out;
   if ( bounds.lowerCanFail ) {
      out = value + " < " + numberLiteral( numberOf( bounds.lower.value ) );
   }
   if ( bounds.upperCanFail ) {
      out += ( out.empty() ? "" : " || " ) + value + " > " +
            numberLiteral( numberOf( bounds.upper.value ) );
   }
   return out;
}

} // namespace VokGen
