// Making entities.
#include "vokgen/emit/EntityFunctions.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Spelling.h"

namespace VokGen {

using Model::Attribute;
using Model::EntityType;

namespace {

std::string parameters( const EntityType & type )
{
   return Scope( type ).parameters( type.constructorArguments() );
}

/// " with this name", " with this name and seqno"; nothing without arguments.
std::string argumentsInWords( const EntityType & type )
{
   const auto & arguments = type.constructorArguments();
   std::string out;
   for ( std::size_t i = 0; i != arguments.size(); ++i ) {
      const bool last = i + 1 == arguments.size();
      out += ( i == 0 ? " with this " : last ? " and "
                                             : ", " ) +
            arguments[ i ]->name;
   }
   return out;
}

/// The text that a type's identity has as a name, given the argument.
std::string nameOf( const Attribute & identity )
{
   return identity.type.isText() ? identity.name : identity.name + ".stringValue()";
}

/// Behind the constructor's head: what the base takes, and the stored arguments.
std::string initialisers( const EntityType & type )
{
   if ( type.base ) {
      const auto arguments = names( type.constructorArguments() );
      return ": " + Scope( type ).name( type.base->fullName ) + inParentheses( arguments );
   }
   const Attribute * const identity = type.identityArgument();
   std::string out = ": Vok::Entity" + inParentheses( identity ? nameOf( *identity ) : "" );
   for ( const Attribute * const argument : type.ownConstructorArguments ) {
      const bool keptByEntity = argument->isIdentity && argument->type.isText();
      if ( !keptByEntity ) {
         out += ",\n  " + Names::dataMember( argument->name ) + "( " + argument->name + " )";
      }
   }
   return out;
}

/// What the constructor does once everything has its default.
std::string constructorBody( const EntityType & type )
{
   std::string out;
   for ( const auto & attribute : type.attributes ) {
      if ( attribute->validated ) {
         out += Names::dataMember( attribute->name ) + ".validate();\n";
      }
   }
   for ( const Attribute * const attribute : type.checks ) {
      if ( hasCheck( *attribute ) ) {
         out += checkName( *attribute ) + "( " + attribute->name + "() );\n";
      }
   }
   for ( const auto & attribute : type.attributes ) {
      if ( attribute->isCollection() && attribute->collection->constructed ) {
         out += Names::mutator( attribute->name ) + "();\n";
      }
   }
   return out;
}

/// One statement for each constant argument: another value is refused. The name is attribute 154.
std::string sameArgument( const EntityType & type, const Attribute & argument )
{
   const bool plainName = &argument == type.nameArgument.get();
   const std::string id =
         plainName ? std::to_string( argument.id ) : Names::attributeId( argument.name );
   return "Vok::Attribute::sameArgument( *this, " + id + ", " + cppLiteral( argument.name ) +
         ", this->" + argument.name + "(), " + argument.name + " );\n";
}

std::string reinstantiateBody( const EntityType & type )
{
   std::string refused;
   std::string updated;
   for ( const Attribute * const argument : type.ownConstructorArguments ) {
      if ( argument->settable ) {
         updated += Names::mutator( argument->name ) + "( " + argument->name + " );\n";
      } else {
         refused += sameArgument( type, *argument );
      }
   }
   return refused + updated;
}

} // namespace

std::string creatorDeclaration( const EntityType & type )
{
   return comment( { "A new " + type.name + argumentsInWords( type ) + ", without a parent." } ) +
         "static Corvo::Ptr< " + type.name + " > " + Names::creator( type.name ) +
         inParentheses( parameters( type ) ) + ";\n";
}

std::string creatorDefinition( const EntityType & type )
{
   return longFunction( "Corvo::Ptr< " + type.name + " > " + type.name +
               "::" + Names::creator( type.name ) + inParentheses( parameters( type ) ),
         "return Vok::Detail::EntityAccess::make< " + type.name + " >" +
               inParentheses( names( type.constructorArguments() ) ) + ";" );
}

std::string constructorDeclaration( const EntityType & type )
{
   const bool single = type.constructorArguments().size() == 1;
   return ( single ? "explicit " : "" ) + type.name + inParentheses( parameters( type ) ) + ";\n";
}

std::string constructorDefinition( const EntityType & type )
{
   return fill( { { "head", type.name + "::" + type.name + inParentheses( parameters( type ) ) },
                      { "initialisers", initialisers( type ) },
                      { "body", constructorBody( type ) } },
         R"(
      $head$
            $initialisers$
      {
         $body$
      }
   )" );
}

std::string reinstantiateDeclaration( const EntityType & type )
{
   return type.base ? "" : "void vokReinstantiate" + inParentheses( parameters( type ) ) + ";\n";
}

std::string reinstantiateDefinition( const EntityType & type )
{
   return type.base ? ""
                    : longFunction( "void " + type.name + "::vokReinstantiate" +
                                  inParentheses( parameters( type ) ),
                            reinstantiateBody( type ) );
}

std::string instantiateDeclaration( const EntityType & type, const std::string & documentation )
{
   return comment( { documentation } ) + "Corvo::Ptr< " + type.name + " > instantiate() const;\n";
}

std::string instantiateDefinition( const EntityType & type )
{
   std::string arguments;
   for ( const Attribute * const argument : type.constructorArguments() ) {
      arguments += ( arguments.empty() ? "" : ", " ) + argument->name + "()";
   }
   return longFunction( "Corvo::Ptr< " + type.name + " > " + type.name + "::instantiate() const",
         "return " + Names::creator( type.name ) + inParentheses( arguments ) + ";" );
}

} // namespace VokGen
