// Trees as data of their YANG modules: the same walk as for JSON, in YANG's forms.
#include "tools/flowtrack/json/Text.h"
#include "tools/flowtrack/json/Yang.h"

#include <algorithm>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;

Json rfc7951Leaf( const Shape & shape, std::string_view text )
{
   switch ( shape.form ) {
   case Form::real:
      return Json( text );
   case Form::flags: {
      std::string names;
      for ( const Json & name : valueJson( shape, text ) ) {
         names += ( names.empty() ? "" : " " ) + yangName( name.get< std::string >() );
      }
      return Json( names );
   }
   case Form::object:
      return Json( unicodeOf( text ) );
   default:
      return valueJson( shape, text );
   }
}

namespace {

void appendUnlessEmpty( Json & object, const std::string & name, Json list )
{
   if ( !list.empty() ) {
      append( object, name, std::move( list ) );
   }
}

Json valueData( const Shape & shape, std::string_view text );

Json fieldsData( const Vok::Value & value, std::string_view without )
{
   const TypeData & type = value.typeData();
   Json object = Json::object();
   for ( const AttributeData * const f : fieldsOf( type ) ) {
      if ( f->name() == without ) {
         continue;
      }
      if ( f->kind() != AttributeKind::set && f->kind() != AttributeKind::map ) {
         append( object, yangName( f->name() ),
               valueData( shapeOf( type, *f ), type.fieldGet( value.data(), f->name() ) ) );
         continue;
      }
      Json list = Json::array();
      const Shape & key = shapeOf( f->keyTypeName() );
      for ( const Corvo::String & at : type.fieldKeys( value.data(), f->name() ) ) {
         if ( f->kind() == AttributeKind::set ) {
            list.push_back( rfc7951Leaf( key, at ) );
         } else {
            const Corvo::String text = type.fieldMember( value.data(), f->name(), at );
            list.push_back( Json{ { "key", rfc7951Leaf( key, at ) },
                  { "value", valueData( shapeOf( f->typeName() ), text ) } } );
         }
      }
      appendUnlessEmpty( object, yangName( f->name() ), std::move( list ) );
   }
   return object;
}

Json valueData( const Shape & shape, std::string_view text )
{
   if ( shape.form != Form::object ) {
      return rfc7951Leaf( shape, text );
   }
   Vok::Value value = shape.type->make();
   Vok::CharRange range( text );
   shape.type->strepToValue( range, value.data() );
   return fieldsData( value, "" );
}

Json entityData( const Vok::Entity & entity, std::string_view without );

Json withKey( const std::string & key, Json at, Json rest )
{
   Json object = Json::object();
   append( object, key, std::move( at ) );
   for ( auto & [ name, value ] : rest.items() ) {
      append( object, name, std::move( value ) );
   }
   return object;
}

Json member( const Vok::Entity & entity, const AttributeData & a, const Corvo::String & at )
{
   Json key = rfc7951Leaf( shapeOf( a.keyTypeName() ), at );
   const std::string keyName = a.keyField().empty() ? "key" : yangName( a.keyField() );
   if ( a.kind() == AttributeKind::set ) {
      return key;
   }
   if ( a.kind() == AttributeKind::children ) {
      return withKey(
            keyName, std::move( key ), entityData( *a.child( entity, at ), a.keyField() ) );
   }
   const Shape & shape = shapeOf( a.typeName() );
   if ( !a.keyField().empty() ) {
      return withKey(
            keyName, std::move( key ), fieldsData( a.memberValue( entity, at ), a.keyField() ) );
   }
   Json value = shape.form == Form::object ? fieldsData( a.memberValue( entity, at ), "" )
                                           : rfc7951Leaf( shape, a.member( entity, at ) );
   return Json{ { keyName, std::move( key ) }, { "value", std::move( value ) } };
}

void attributeData( Json & object, const Vok::Entity & entity, const AttributeData & a )
{
   const std::string name = yangName( jsonName( a ) );
   Json list = Json::array();
   switch ( a.kind() ) {
   case AttributeKind::map:
   case AttributeKind::set:
   case AttributeKind::children:
      for ( const Corvo::String & at : sortedKeys( entity, a ) ) {
         list.push_back( member( entity, a, at ) );
      }
      return appendUnlessEmpty( object, name, std::move( list ) );
   case AttributeKind::references:
      for ( const Corvo::String & at : sortedKeys( entity, a ) ) {
         const auto to = a.child( entity, at );
         if ( &Vok::rootOf( *to ) == &Vok::rootOf( entity ) ) {
            list.push_back( unicodeOf( Vok::pathOf( *to ) ) );
         }
      }
      return appendUnlessEmpty( object, name, std::move( list ) );
   case AttributeKind::child:
      if ( const auto child = a.child( entity, "" ) ) {
         append( object, name, entityData( *child, "" ) );
      }
      return;
   default:
      break;
   }
   const Corvo::String text = a.get( entity );
   if ( isReference( a ) ) {
      append( object, name, unicodeOf( text ) );
   } else if ( a.kind() != AttributeKind::optional || !text.empty() ) {
      append( object, name, valueData( shapeOf( a.typeName() ), text ) );
   }
}

Json entityData( const Vok::Entity & entity, std::string_view without )
{
   Json object = Json::object();
   for ( const AttributeData & a : entity.typeData().attributes() ) {
      if ( isContent( a ) && jsonName( a ) != without ) {
         attributeData( object, entity, a );
      }
   }
   return object;
}

} // namespace

Json rfc7951( const Vok::Entity & root )
{
   const TypeData & type = root.typeData();
   const AttributeData * const identity = identityOf( type );
   Json document = Json::object();
   append( document, yangTypeName( type.name() ) + ":" + yangContainer( type ),
         entityData( root, identity ? jsonName( *identity ) : "" ) );
   return document;
}

} // namespace FlowtrackJson
