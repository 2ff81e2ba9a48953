// Each type has its definition, and one more for each field that stands outside as its key.
#include "tools/flowtrack/json/JsonSchema.h"

#include "tools/flowtrack/json/Pattern.h"

#include <algorithm>
#include <set>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;

namespace {

std::string anchored( const std::string & pattern ) { return "^(" + pattern + ")$"; }

Json described( std::string_view documentation, Json schema )
{
   if ( !documentation.empty() ) {
      schema[ "description" ] = documentation;
   }
   return schema;
}

Json orNull( Json schema )
{
   return { { "anyOf", { std::move( schema ), { { "type", "null" } } } } };
}

Json closed( Json properties, Json required )
{
   Json schema = { { "type", "object" }, { "properties", std::move( properties ) } };
   if ( !required.empty() ) {
      schema[ "required" ] = std::move( required );
   }
   schema[ "additionalProperties" ] = false;
   return schema;
}

Json arrayOf( Json items ) { return { { "type", "array" }, { "items", std::move( items ) } }; }

Json setOf( Json items )
{
   Json schema = arrayOf( std::move( items ) );
   schema[ "uniqueItems" ] = true;
   return schema;
}

Json numberSchema( const Shape & shape )
{
   return { { "type", "integer" }, { "minimum", shape.least }, { "maximum", shape.most } };
}

Json textSchema( const std::string & pattern )
{
   Json schema = { { "type", "string" } };
   if ( !pattern.empty() ) {
      schema[ "pattern" ] = anchored( pattern );
   }
   return schema;
}

Json choiceSchema( const TypeData & type )
{
   Json choices = Json::array();
   for ( const auto & [ code, name ] : type.enumerators() ) {
      choices.push_back(
            described( type.enumeratorDocumentation( code ), { { "const", name } } ) );
   }
   return { { "oneOf", std::move( choices ) } };
}

Json flagsSchema( const Shape & shape )
{
   Json choices = Json::array();
   for ( const Flag & flag : shape.flags ) {
      choices.push_back( described( flag.documentation, { { "const", flag.name } } ) );
   }
   return setOf( { { "oneOf", std::move( choices ) } } );
}

/// The name of a member that is a key.
Json nameSchema( const Shape & key )
{
   switch ( key.form ) {
   case Form::number:
   case Form::bigNumber:
      return { { "pattern", anchored( decimalPattern( key.least, key.most ) ) } };
   case Form::choice:
      return choiceSchema( *key.choices );
   case Form::text:
      return textSchema( textPattern( key ) );
   default:
      return Json::object();
   }
}

class Schema {
 public:
   Json of( const TypeData & type )
   {
      const AttributeData * const identity = identityOf( type );
      Json schema = { { "$schema", "https://json-schema.org/draft/2020-12/schema" },
         { "title", type.name() } };
      schema.update( described( type.documentation(),
            entityObject( type, identity ? jsonName( *identity ) : "" ) ) );
      schema[ "$defs" ] = std::move( definitions_ );
      return schema;
   }

 private:
   template< class Make > Json reference(
         const TypeData & type, std::string_view without, Make make )
   {
      std::string name( type.name() );
      if ( !without.empty() ) {
         name.append( "-by-" ).append( without );
      }
      if ( begun_.insert( name ).second ) {
         Json schema = described( type.documentation(), make() );
         definitions_[ name ] = std::move( schema );
      }
      return { { "$ref", "#/$defs/" + name } };
   }

   Json entity( const TypeData & type, std::string_view without )
   {
      return reference( type, without, [ & ] { return entityObject( type, without ); } );
   }

   Json entityObject( const TypeData & type, std::string_view without )
   {
      Json properties = Json::object();
      Json required = Json::array();
      for ( const AttributeData & a : type.attributes() ) {
         if ( isContent( a ) && jsonName( a ) != without ) {
            properties[ std::string( jsonName( a ) ) ] =
                  described( a.documentation(), attribute( type, a ) );
            if ( a.kind() == AttributeKind::constructorArgument ) {
               required.push_back( jsonName( a ) );
            }
         }
      }
      return closed( std::move( properties ), std::move( required ) );
   }

   Json attribute( const TypeData & type, const AttributeData & a )
   {
      switch ( a.kind() ) {
      case AttributeKind::optional:
         return orNull( value( shapeOfAttribute( type, a ) ) );
      case AttributeKind::map:
         return collection(
               a, value( shapeOf( a.typeName() ), a.ordered() ? "" : a.keyField() ) );
      case AttributeKind::set:
         return setOf( value( shapeOf( a.keyTypeName() ) ) );
      case AttributeKind::children:
         return collection(
               a, entity( entityType( a.typeName() ), a.ordered() ? "" : a.keyField() ) );
      case AttributeKind::child:
         return orNull( entity( entityType( a.typeName() ), "" ) );
      case AttributeKind::references:
         return setOf( path() );
      default:
         break;
      }
      if ( isReference( a ) ) {
         return path();
      }
      const Shape & shape = shapeOfAttribute( type, a );
      Json schema = value( shape );
      if ( !a.defaultText().empty() ) {
         schema[ "default" ] = valueJson( shape, a.defaultText() );
      }
      return schema;
   }

   /// Members with keys, of an entity or of a value.
   static Json collection( const AttributeData & a, Json member )
   {
      const Shape & key = shapeOf( a.keyTypeName() );
      if ( !a.ordered() ) {
         return { { "type", "object" }, { "propertyNames", nameSchema( key ) },
            { "additionalProperties", std::move( member ) } };
      }
      if ( a.keyField().empty() ) {
         return setOf( closed( { { "key", bare( key ) }, { "value", std::move( member ) } },
               { "key", "value" } ) );
      }
      member[ "required" ] = Json::array( { a.keyField() } );
      return setOf( std::move( member ) );
   }

   static Json path() { return textSchema( "/.*" ); }

   /// A value; without a field that stands outside as its key.
   Json value( const Shape & shape, std::string_view without = {} )
   {
      if ( !shape.type ) {
         return bare( shape );
      }
      Json schema = reference( *shape.type, without, [ & ] {
         const Shape & own = shapeOf( shape.type->name() );
         return own.form == Form::object ? valueObject( *own.type, without ) : bare( own );
      } );
      const Shape & own = shapeOf( shape.type->name() );
      if ( shape.form == Form::number && ( shape.least > own.least || shape.most < own.most ) ) {
         schema.update( numberSchema( shape ) );
      }
      return schema;
   }

   /// A value of one field, with no definition of its own.
   static Json bare( const Shape & shape )
   {
      switch ( shape.form ) {
      case Form::truth:
         return { { "type", "boolean" } };
      case Form::number:
         return numberSchema( shape );
      case Form::bigNumber:
         return textSchema( decimalPattern( shape.least, shape.most ) );
      case Form::real:
         return { { "anyOf",
               { { { "type", "number" } }, { { "enum", { "inf", "-inf", "nan" } } } } } };
      case Form::choice:
         return choiceSchema( *shape.choices );
      case Form::flags:
         return flagsSchema( shape );
      default:
         return textSchema( textPattern( shape ) );
      }
   }

   Json valueObject( const TypeData & type, std::string_view without )
   {
      const Vok::Value preset = type.make();
      Json properties = Json::object();
      for ( const AttributeData * const f : fieldsOf( type ) ) {
         if ( f->name() == without ) {
            continue;
         }
         Json schema;
         if ( f->kind() == AttributeKind::set ) {
            schema = setOf( value( shapeOf( f->keyTypeName() ) ) );
         } else if ( f->kind() == AttributeKind::map ) {
            schema = collection( *f, value( shapeOf( f->typeName() ) ) );
         } else {
            const Shape & shape = shapeOf( type, *f );
            schema = shape.type ? value( shape ) : bare( shape );
            schema[ "default" ] = valueJson( shape, type.fieldGet( preset.data(), f->name() ) );
         }
         properties[ std::string( f->name() ) ] =
               described( f->documentation(), std::move( schema ) );
      }
      return closed( std::move( properties ), Json::array() );
   }

   std::set< std::string > begun_;
   Json definitions_ = Json::object();
};

} // namespace

Json jsonSchema( const TypeData & type ) { return Schema().of( type ); }

} // namespace FlowtrackJson
