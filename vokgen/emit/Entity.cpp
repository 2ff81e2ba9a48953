// The classes of entity types.
#include "vokgen/emit/Entity.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Constants.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/EntityFunctions.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

#include <algorithm>

namespace VokGen {

using Model::EntityType;

namespace {

constexpr std::string_view nodesHeading =
      "// Keys and nodes of the collections: for the framework.\n";

struct Members {
   std::string nodes;
   Paragraphs declarations; ///< Each attribute a paragraph.
   std::string checks;
   std::string functions;
   std::string data;
   Paragraphs inlines;
   Paragraphs definitions;
};

Members allMembers( const EntityType & type )
{
   Members all;
   for ( const auto & attribute : type.attributes ) {
      const Fragments one = emitterOf( *attribute ).fragments( *attribute );
      all.nodes += one.nodes;
      all.declarations.add( one.members );
      all.checks += one.checks;
      all.functions += one.functions;
      all.data += one.data;
      all.inlines.add( one.inlines );
      all.definitions.add( one.definitions );
   }
   return all;
}

/// Whether instantiate() is there without being an attribute.
bool instantiatesUnnumbered( const EntityType & type )
{
   return type.instantiates && type.ofKind( Model::AttributeKind::instantiate ).empty();
}

std::string attributeIds( const EntityType & type )
{
   std::string out =
         type.attributes.empty() ? "" : "// Ids of the attributes, as changes name them.\n";
   for ( const auto & attribute : type.attributes ) {
      out += "static constexpr Vok::AttrId " + Names::attributeId( attribute->name ) + " = " +
            std::to_string( attribute->id ) + ";\n";
   }
   return out;
}

/// The checks of a type that others derive from are theirs too: `checks x` calls them.
bool isBase( const EntityType & type )
{
   const auto & types = type.module->types;
   return std::any_of( types.begin(), types.end(), [ & ]( const auto & other ) {
      const EntityType * const entity = Model::asEntity( other.get() );
      return entity && entity->base == &type;
   } );
}

std::string unnumberedInstantiate( const EntityType & type )
{
   return instantiatesUnnumbered( type )
         ? instantiateDeclaration( type, "A fresh one with the same constructor arguments." )
         : "";
}

} // namespace

std::string entityClass( const EntityType & type )
{
   const Members all = allMembers( type );
   const std::string base = type.base ? Scope( type ).name( type.base->fullName ) : "Vok::Entity";
   return fill(
         { { "comment", comment( { type.documentation } ) },
               { "name", type.name },
               { "base", base },
               { "flowOut", type.base ? "" : "using FlowOut = Vok::FlowOut< " + type.name + " >;" },
               { "enums", nestedEnums( type ) },
               { "nodes", all.nodes.empty() ? "" : std::string( nodesHeading ) + all.nodes },
               { "ids", attributeIds( type ) },
               { "creator", creatorDeclaration( type ) },
               { "members", all.declarations.text() },
               { "instantiate", unnumberedInstantiate( type ) },
               { "constructor", constructorDeclaration( type ) },
               { "sharedChecks", isBase( type ) ? all.checks : "" },
               { "ownChecks", isBase( type ) ? "" : all.checks },
               { "reinstantiate", reinstantiateDeclaration( type ) },
               { "functions", all.functions },
               { "data", all.data } },
         R"(
      $comment$
      class VOK_EXPORT $name$ : public $base$ {
       public:
         $flowOut$

         $enums$

         $nodes$

         $ids$

         $creator$

         $members$

         $instantiate$

         const Vok::TypeData & typeData() const noexcept override;
         static const Vok::TypeData & vokType() noexcept; ///< For the framework.
         struct VOK_HIDDEN VokTable;

       protected:
         $constructor$
         ~$name$() override;
         $sharedChecks$

       private:
         friend struct Vok::Detail::EntityAccess;
         $reinstantiate$
         $ownChecks$
         $functions$

         $data$
      };
   )" );
}

std::string entityFactory( const EntityType & type )
{
   if ( !type.hasFactory ) {
      return "";
   }
   const auto & arguments = type.constructorArguments();
   return comment( { "The same as " + type.name + "::" + Names::creator( type.name ) + "()." } ) +
         longFunction( "inline Corvo::Ptr< " + type.name + " > " + Names::factory( type.name ) +
                     inParentheses( Scope( type.nameSpace ).parameters( arguments ) ),
               "return " + type.name + "::" + Names::creator( type.name ) +
                     inParentheses( names( arguments ) ) + ";" );
}

std::string entityInlines( const EntityType & type )
{
   return allMembers( type ).inlines.text();
}

std::string entityDefinitions( const EntityType & type )
{
   return Paragraphs()
         .add( constructorDefinition( type ) )
         .add( type.name + "::~" + type.name + "() = default;\n" )
         .add( creatorDefinition( type ) )
         .add( reinstantiateDefinition( type ) )
         .add( instantiatesUnnumbered( type ) ? instantiateDefinition( type ) : "" )
         .add( allMembers( type ).definitions.text() )
         .text();
}

} // namespace VokGen
