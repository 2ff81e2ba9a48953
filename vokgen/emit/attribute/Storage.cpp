// Accessors, mutators and data members.
#include "vokgen/emit/attribute/Storage.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/Row.h"
#include "vokgen/emit/Spelling.h"

namespace VokGen {

using Model::Attribute;
using Model::AttributeKind;

namespace {

bool isOptional( const Attribute & attribute )
{
   return attribute.kind == AttributeKind::optional;
}

std::string optionalType( const Attribute & attribute )
{
   return "Vok::Optional< " + Scope( *attribute.owner ).type( attribute.type ) + " >";
}

/// The name of an entity is kept by Vok::Entity, under whatever name the argument has.
bool isKeptByEntity( const Attribute & attribute )
{
   return attribute.isIdentity && attribute.type.isText();
}

std::string accessorType( const Attribute & attribute )
{
   if ( isOptional( attribute ) ) {
      return optionalType( attribute );
   }
   return Scope( *attribute.owner ).argumentGiven( attribute );
}

std::string mutatorType( const Attribute & attribute )
{
   const Scope scope( *attribute.owner );
   if ( isOptional( attribute ) ) {
      return "const " + optionalType( attribute ) + " &";
   }
   return scope.given( attribute.type );
}

/// "Level::checkValue"
std::string qualifiedCheck( const Attribute & attribute )
{
   return attribute.owner->name + "::" + checkName( attribute );
}

/// Whether the type's own default constructor makes the default, so that none has to be written.
bool hasOwnDefault( const Attribute & attribute )
{
   if ( attribute.type.scalar() ) {
      return false;
   }
   const Model::Constant & value = attribute.value.value;
   return value.kind == Model::Constant::Kind::ownDefault ||
         ( attribute.type.isText() && value.text.empty() );
}

} // namespace

std::string storedType( const Attribute & attribute )
{
   const Scope scope( *attribute.owner );
   if ( attribute.emptyWord ) {
      return "Vok::OptionalWord< " + scope.type( attribute.type ) + ", " +
            numberLiteral( *attribute.emptyWord ) + " >";
   }
   return isOptional( attribute ) ? optionalType( attribute ) : scope.argumentType( attribute );
}

std::string dataMember( const Attribute & attribute )
{
   if ( isKeptByEntity( attribute ) ) {
      return "";
   }
   const std::string name = Names::dataMember( attribute.name );
   const bool argumentOfEntity = attribute.kind == AttributeKind::constructorArgument &&
         Model::asEntity( attribute.owner );
   if ( isOptional( attribute ) || argumentOfEntity || hasOwnDefault( attribute ) ) {
      return dataMember( storedType( attribute ), name );
   }
   return dataMember( storedType( attribute ), name,
         " = " + literal( attribute.value.value, attribute.type, Scope( *attribute.owner ) ) );
}

std::string fieldAccessor( const Attribute & field )
{
   const bool literalClass = isLiteral( *Model::asValue( field.owner ) );
   const std::string head = std::string( literalClass ? "constexpr " : "" ) +
         Scope( *field.owner ).given( field.type ) + " " + field.name + "() const noexcept";
   return shortFunction( head, "return " + Names::dataMember( field.name ) + ";", 3 );
}

std::string fieldCheck( const Attribute & field )
{
   if ( !hasCheck( field ) ) {
      return "";
   }
   const std::string head = isLiteral( takenAs( field ) ) ? "static constexpr " : "static ";
   return head + checkHead( field, checkName( field ) ) + "\n" + checkBody( field );
}

std::string accessorHead( const Attribute & attribute, const std::string & qualifier )
{
   const bool copies = isOptional( attribute );
   return accessorType( attribute ) + " " + qualifier + attribute.name + "() const" +
         ( copies ? "" : " noexcept" );
}

std::string mutatorHead( const Attribute & attribute, const std::string & qualifier )
{
   return "void " + qualifier + Names::mutator( attribute.name ) + "( " + mutatorType( attribute ) +
         " v )";
}

std::string accessorDefinition( const Attribute & attribute )
{
   const std::string value =
         isKeptByEntity( attribute ) ? "name()" : Names::dataMember( attribute.name );
   return shortFunction( "inline " + accessorHead( attribute, attribute.owner->name + "::" ),
         "return " + value + ";" );
}

std::string mutatorDefinition( const Attribute & attribute )
{
   const std::string qualifier = attribute.owner->name + "::";
   const std::string check =
         hasCheck( attribute ) ? ", &" + qualifiedCheck( attribute ) : "";
   return shortFunction( "inline " + mutatorHead( attribute, qualifier ),
         "Vok::Attribute::plainIs( *this, " + Names::attributeId( attribute.name ) + ", " +
               Names::dataMember( attribute.name ) + ", v" + check + " );" );
}

std::string entityCheckDeclaration( const Attribute & attribute )
{
   return hasCheck( attribute ) ? "static " + checkHead( attribute, checkName( attribute ) ) + ";\n"
                                : "";
}

std::string entityCheckDefinition( const Attribute & attribute )
{
   if ( !hasCheck( attribute ) ) {
      return "";
   }
   return checkHead( attribute, qualifiedCheck( attribute ) ) + "\n" + checkBody( attribute );
}

std::string checkedBy( const Attribute & attribute )
{
   const Model::ValueType * const value = Model::asValue( attribute.owner );
   if ( value && value->constructorsByHand ) {
      return "&Vok::Detail::noField< " + value->fullName + " >";
   }
   const bool inOperations = attribute.builtFrom.has_value();
   if ( !hasCheck( attribute ) || inOperations ) {
      return "";
   }
   return "&Vok::Detail::checked< &" + qualifiedCheck( attribute ) + " >";
}

std::string reflectedOps( const Attribute & attribute )
{
   if ( !attribute.builtFrom ) {
      return valueOps( attribute.type.cppName );
   }
   return "&Vok::Detail::narrowedOps< &" + qualifiedCheck( attribute ) + ", " +
         attribute.type.cppName + " >";
}

} // namespace VokGen
