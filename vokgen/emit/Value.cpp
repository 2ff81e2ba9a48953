// The classes of value types.
#include "vokgen/emit/Value.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Constants.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/FinishedCode.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

using Model::Attribute;
using Model::AttributeKind;
using Model::ValueType;

namespace {

/// The texts of all members, each kind in declared order.
Fragments allFragments( const ValueType & type )
{
   Fragments all;
   Paragraphs definitions;
   for ( const auto & attribute : type.attributes ) {
      const Fragments one = emitterOf( *attribute ).fragments( *attribute );
      all.nodes += one.nodes;
      all.members += one.members;
      all.checks += one.checks;
      all.functions += one.functions;
      all.data += one.data;
      all.inlines += one.inlines;
      definitions.add( one.definitions );
   }
   all.definitions = definitions.text();
   return all;
}

/// Functions without an id, written by hand.
std::string methods( const ValueType & type )
{
   const Scope scope( type );
   std::string out;
   for ( const auto & method : type.methods ) {
      out += comment( { method->documentation } ) + ( method->isStatic ? "static " : "" ) +
            scope.result( *method ) + " " + method->name +
            inParentheses( scope.parameters( *method ) ) + ( method->isStatic ? "" : " const" ) +
            ";\n";
   }
   return out;
}

/// The comment of validate() lists all that it refuses.
std::string validateDeclaration( const ValueType & type )
{
   std::string refusals;
   for ( const auto & attribute : type.attributes ) {
      if ( attribute->bounds && attribute->bounds->time == Model::CheckTime::validated ) {
         refusals += ( refusals.empty() ? "" : " " ) + validationInWords( *attribute );
      }
   }
   return refusals.empty() ? "" : comment( { refusals } ) + "void validate() const;\n";
}

std::string handLog( const ValueType & type )
{
   return type.logByHand ? "/// The attribute log, written by hand.\n"
                           "std::size_t logSize() const;\n"
                           "void writeLog( Vok::NboAttrLog::Out & log ) const;\n"
                           "void readLog( Vok::NboAttrLog::In & log );\n"
                         : "";
}

std::string constant( const ValueType & type )
{
   return isLiteral( type ) ? "constexpr " : "";
}

std::string bothSides( const ValueType & type )
{
   return "( const " + type.name + " & a, const " + type.name + " & b )";
}

/// Equality, order, truth and size in a log.
std::string relations( const ValueType & type )
{
   std::string out = comment( { "Whether all fields are equal." } ) + constant( type ) +
         "bool isEq( const " + type.name + " & other ) const;\n" +
         shortFunction( "friend " + constant( type ) + "bool operator==" + bothSides( type ),
               "return a.isEq( b );", 3 );
   if ( type.ordered ) {
      out += comment( { "Field by field, in declared order." } ) + "friend " + constant( type ) +
            "bool operator<" + bothSides( type ) + ";\n";
   }
   if ( type.truth ) {
      out += comment( { "Whether it differs from the default." } ) +
            shortFunction(
                  "explicit operator bool() const", "return !isEq( " + type.name + "() );", 3 );
   }
   return out + comment( { "The bytes that it takes in an attribute log." } ) +
         shortFunction( "friend std::size_t attrLogSize( const " + type.name + " & v )",
               "return Vok::ValueType< " + type.name + " >::logSize( v );", 3 );
}

/// What the compiler can only define once it has seen the list of the fields, behind the class.
std::string relationDefinitions( const ValueType & type )
{
   const std::string start = isLiteral( type ) ? "constexpr bool " : "inline bool ";
   std::string out =
         longFunction( start + type.name + "::isEq( const " + type.name + " & other ) const",
               "return Vok::equalFields( *this, other );" );
   if ( type.ordered ) {
      out += longFunction(
            start + "operator<" + bothSides( type ), "return Vok::lessFields( a, b );" );
   }
   return out;
}

/// What the framework looks up in the class.
std::string marks( const ValueType & type )
{
   const auto mark = []( bool holds, const std::string & name ) {
      return holds ? "using " + name + " = void;\n" : std::string();
   };
   return "static constexpr std::string_view vokName = " + cppLiteral( type.fullName ) + ";\n" +
         mark( !type.textable, "VokUntextable" ) + mark( type.textByHand, "VokHandText" ) +
         mark( type.logByHand, "VokHandLog" ) + "struct VOK_HIDDEN VokTable;\n";
}

/// One field as the loops of the framework see it; its check only where it has one.
std::string fieldEntry( const ValueType & type, const Attribute & field )
{
   const std::string name = cppLiteral( field.name );
   const std::string member = "&" + type.name + "::" + Names::dataMember( field.name );
   if ( !isCheckedAlways( field ) ) {
      return "Vok::Field{ " + name + ", " + member + " }";
   }
   const Scope scope( type );
   const std::string wide = field.builtFrom ? ", " + scope.type( *field.builtFrom ) : "";
   return "Vok::Field< " + type.name + ", " + scope.type( field.type ) + wide + " >{ " + name +
         ", " + member + ", &" + type.name + "::" + checkName( field ) + " }";
}

std::string fieldTable( const ValueType & type )
{
   std::string entries;
   for ( const auto & attribute : type.attributes ) {
      const bool stored = attribute->kind == AttributeKind::plain || attribute->isCollection() ||
            attribute->kind == AttributeKind::constructorArgument;
      if ( stored ) {
         entries += ( entries.empty() ? "" : ",\n      " ) + fieldEntry( type, *attribute );
      }
   }
   return entries.empty() ? "std::tuple<>()" : "std::tuple(\n      " + entries + " )";
}

/// The statement with which validate() checks one field.
std::string validation( const Attribute & field )
{
   const std::string member = Names::dataMember( field.name );
   std::string condition = outside( field, member );
   if ( field.bounds->except ) {
      condition = fill( { { "member", member },
                              { "exempt", numberLiteral( *field.bounds->except ) },
                              { "outside", condition } },
            "$member$ != $exempt$ && ( $outside$ )" );
   }
   return fill(
         { { "condition", condition }, { "throw", throwStatement( field.bounds->message ) } },
         R"(
      if ( $condition$ ) {
         $throw$
      }
   )" );
}

std::string validateDefinition( const ValueType & type )
{
   std::string checks;
   for ( const auto & attribute : type.attributes ) {
      if ( attribute->bounds && attribute->bounds->time == Model::CheckTime::validated ) {
         checks += validation( *attribute );
      }
   }
   return checks.empty() ? "" : longFunction( "void " + type.name + "::validate() const", checks );
}

} // namespace

std::string valueClass( const ValueType & type )
{
   const Fragments all = allFragments( type );
   return fill( { { "comment", comment( { type.documentation } ) },
                      { "name", type.name },
                      { "enums", nestedEnums( type ) },
                      { "nodes", all.nodes },
                      { "constructors", valueConstructors( type ) },
                      { "members", all.members },
                      { "methods", methods( type ) },
                      { "validate", validateDeclaration( type ) },
                      { "handLog", handLog( type ) },
                      { "relations", relations( type ) },
                      { "marks", marks( type ) },
                      { "checks", all.checks },
                      { "fields", fieldTable( type ) },
                      { "functions", all.functions },
                      { "data", all.data } },
                R"(
      $comment$
      class VOK_EXPORT $name$ {
       public:
         $enums$

         $nodes$

         $constructors$

         $members$
         $methods$
         $validate$
         $handLog$

         $relations$

         // For the framework.
         $marks$

       private:
         friend struct Vok::Detail::ValueAccess;

         $checks$
         static constexpr auto vokFields()
         {
            return $fields$;
         }
         void vokDecode( Vok::NboAttrLog::In & log );
         $functions$

         $data$
      };
   )" ) + "\n" +
         relationDefinitions( type );
}

std::string valueInlines( const ValueType & type )
{
   return allFragments( type ).inlines;
}

std::string valueDefinitions( const ValueType & type )
{
   return Paragraphs()
         .add( valueConstructorDefinitions( type ) )
         .add( validateDefinition( type ) )
         .add( allFragments( type ).definitions )
         .text();
}

std::string valueHash( const ValueType & type )
{
   if ( !type.hashable ) {
      return "";
   }
   const std::string hash = "template<> struct std::hash< " + type.fullName + " >";
   const std::string base = ": Vok::ValueHash< " + type.fullName + " > {";
   const bool fits = hash.size() + 1 + base.size() <= columnLimit;
   return hash + ( fits ? " " : "\n      " ) + base + "\n};\n";
}

} // namespace VokGen
