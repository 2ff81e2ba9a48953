// The constructors of value types: from fields, from a text, from an attribute log, and those
// written by hand.
#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/Value.h"

namespace VokGen {

using Model::Attribute;
using Model::ValueType;

namespace {

using Fields = std::vector< const Attribute * >;

/// The fields that a constructor takes.
Fields constructorFields( const ValueType & type )
{
   const Fields arguments = type.constructorArguments();
   return arguments.empty() ? type.fields() : arguments;
}

bool hasFieldConstructor( const ValueType & type )
{
   return !type.constructorsByHand && !constructorFields( type ).empty();
}

/// Everything is taken by value: what is not literal is moved into its place.
std::string fieldParameters( const ValueType & type )
{
   const Scope scope( type );
   std::string out;
   for ( const Attribute * const field : constructorFields( type ) ) {
      out += ( out.empty() ? "" : ", " ) + scope.type( takenAs( *field ) ) + " " + field->name;
   }
   return out;
}

std::string fieldInitialisers( const ValueType & type )
{
   std::string out;
   for ( const Attribute * const field : constructorFields( type ) ) {
      const std::string value = field->builtFrom
            ? "static_cast< " + Scope( type ).type( field->type ) + " >( " + field->name + " )"
            : isLiteral( field->type ) ? field->name
                                       : "std::move( " + field->name + " )";
      out += ( out.empty() ? ": " : ",\n  " ) + Names::dataMember( field->name ) + "( " + value +
            " )";
   }
   return out;
}

/// A check sees what was given, or where that was moved away, what is stored.
std::string fieldChecks( const ValueType & type )
{
   std::string out;
   for ( const Attribute * const field : constructorFields( type ) ) {
      if ( isCheckedAlways( *field ) ) {
         const bool moved = !isLiteral( takenAs( *field ) );
         out += checkName( *field ) + "( " +
               ( moved ? Names::dataMember( field->name ) : field->name ) + " );\n";
      }
   }
   return out;
}

std::string fieldRefusals( const ValueType & type )
{
   std::string out;
   for ( const Attribute * const field : constructorFields( type ) ) {
      if ( isCheckedAlways( *field ) ) {
         out += ( out.empty() ? "" : " " ) + refusalInWords( *field, field->name );
      }
   }
   return out;
}

/// The head of the constructor from fields; `qualifier` is "Pair::" in the .cpp.
std::string fieldHead( const ValueType & type, const std::string & qualifier )
{
   return qualifier + type.name + "( " + fieldParameters( type ) + " )";
}

std::string fieldDefinition( const ValueType & type, const std::string & head )
{
   return fill( { { "head", head },
                      { "initialisers", fieldInitialisers( type ) },
                      { "checks", fieldChecks( type ) } },
         R"(
      $head$
            $initialisers$
      {
         $checks$
      }
   )" );
}

std::string fieldConstructor( const ValueType & type )
{
   if ( !hasFieldConstructor( type ) ) {
      return "";
   }
   const std::string refusals = fieldRefusals( type );
   const bool single = constructorFields( type ).size() == 1;
   const std::string start = single ? "explicit " : "";
   const std::string made = !type.constructorArguments().empty()
         ? "With this " + names( type.constructorArguments() ) + ", all else at its default."
         : single ? "From its " + constructorFields( type ).front()->name + "."
                  : "From its fields, in declared order.";
   const std::string head = fieldHead( type, "" );
   return comment( { refusals.empty() ? made : refusals } ) +
         ( isLiteral( type )
                     ? fieldDefinition( type,
                             "constexpr " + start + head + ( refusals.empty() ? " noexcept" : "" ) )
                     : start + head + ";\n" );
}

std::string handConstructors( const ValueType & type )
{
   std::string out;
   for ( const Model::ByHandConstructor & constructor : type.constructors ) {
      Model::Function shape;
      shape.parameters = constructor.parameters;
      out += comment( { constructor.documentation } ) +
            ( constructor.parameters.size() == 1 ? "explicit " : "" ) + type.name +
            inParentheses( Scope( type ).parameters( shape ) ) + ";\n";
   }
   return out;
}

std::string textComment( const ValueType & type )
{
   const std::string maker = type.textByHand ? "a text" : "fields";
   return type.textable
         ? "From its text; throws Corvo::ParseException where that does not match, and what the "
           "constructor from " +
               maker + " throws."
         : "Ends the process by assertion: there is no text to read it from.";
}

/// What the constructor from text does.
std::string textConstructor( const ValueType & type )
{
   const std::string head = type.name + "::" + type.name + "( Vok::CharRange & range )";
   if ( !type.textable ) {
      return longFunction( type.name + "::" + type.name + "( Vok::CharRange & )",
            "Vok::noStringConstructor( " + cppLiteral( type.name ) + " );" );
   }
   return longFunction( head,
         std::string( "Vok::" ) + ( type.textByHand ? "readByHand" : "readFields" ) +
               "( range, *this );" );
}

} // namespace

std::string valueConstructors( const ValueType & type )
{
   const std::string blank = isLiteral( type )
         ? "constexpr " + type.name + "() noexcept = default;\n"
         : type.name + "() = default;\n";
   return fill( { { "name", type.name },
                      { "default", blank },
                      { "fromFields", fieldConstructor( type ) },
                      { "byHand", handConstructors( type ) },
                      { "textComment", comment( { textComment( type ) } ) } },
         R"(
      $default$
      $fromFields$
      $byHand$
      $textComment$
      explicit $name$( Vok::CharRange & range );
      /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
      template< std::same_as< Vok::NboAttrLog::In > Log >
      explicit $name$( Log * log )
      {
         vokDecode( *log );
      }
   )" );
}

std::string valueConstructorDefinitions( const ValueType & type )
{
   const bool inCpp = !isLiteral( type ) && hasFieldConstructor( type );
   return Paragraphs()
         .add( inCpp ? fieldDefinition( type, fieldHead( type, type.name + "::" ) ) : "" )
         .add( textConstructor( type ) )
         .add( longFunction( "void " + type.name + "::vokDecode( Vok::NboAttrLog::In & log )",
               type.logByHand ? "readLog( log );" : "Vok::decodeFields( log, *this );" ) )
         .text();
}

} // namespace VokGen
