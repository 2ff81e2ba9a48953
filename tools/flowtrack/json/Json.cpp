// Trees are written attribute by attribute, as their types list them.
#include "tools/flowtrack/json/Json.h"

#include "tools/flowtrack/json/Text.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;

namespace {

Json realJson( std::string_view text )
{
   const double real = Corvo::strepToValue< double >( text );
   constexpr double exact = 9007199254740992; // whole numbers up to it are written as such
   if ( !std::isfinite( real ) ) {
      return Json( text );
   }
   if ( real == std::floor( real ) && std::fabs( real ) <= exact ) {
      return Json( static_cast< std::int64_t >( real ) );
   }
   return Json( real );
}

Json flagsJson( const Shape & shape, std::string_view text )
{
   const std::uint64_t word = std::stoull( std::string( text ) );
   Json names = Json::array();
   for ( const Flag & flag : shape.flags ) {
      if ( ( word >> flag.bit & 1 ) != 0 ) {
         names.push_back( flag.name );
      }
   }
   return names;
}

/// A collection inside a value: its members by their keys' texts.
Json fieldCollectionJson( const Vok::Value & value, const AttributeData & field )
{
   const TypeData & type = value.typeData();
   const Shape & key = shapeOf( field.keyTypeName() );
   std::vector< Corvo::String > keys = type.fieldKeys( value.data(), field.name() );
   std::sort( keys.begin(), keys.end(), keyLess );
   const bool listed = field.kind() == AttributeKind::set || field.ordered();
   Json members = listed ? Json::array() : Json::object();
   for ( const Corvo::String & at : keys ) {
      if ( field.kind() == AttributeKind::set ) {
         members.push_back( valueJson( key, at ) );
         continue;
      }
      Json member = valueJson( shapeOf( field.typeName() ),
            type.fieldMember( value.data(), field.name(), at ) );
      if ( listed ) {
         members.push_back( Json{ { "key", valueJson( key, at ) }, { "value", member } } );
      } else {
         append( members, keyName( key, at ), std::move( member ) );
      }
   }
   return members;
}

/// Puts the key in front of what an object says.
Json keyed( std::string_view field, Json key, Json object )
{
   Json whole = Json::object();
   append( whole, field, std::move( key ) );
   for ( auto & [ name, value ] : object.items() ) {
      append( whole, name, std::move( value ) );
   }
   return whole;
}

class Writer {
 public:
   explicit Writer( Extent extent ) : extent_( extent ) {}

   /// What stands outside of the object, its key or its name, is left out.
   Json object( const Vok::Entity & entity, std::string_view without )
   {
      Json object = Json::object();
      for ( const AttributeData & a : entity.typeData().attributes() ) {
         if ( isContent( a ) && jsonName( a ) != without ) {
            Json value = attribute( entity, a );
            if ( !value.is_discarded() && !isDefault( entity, a, value ) ) {
               append( object, jsonName( a ), std::move( value ) );
            }
         }
      }
      return object;
   }

 private:
   /// Discarded where nothing stands for it: an optional without a value.
   Json attribute( const Vok::Entity & entity, const AttributeData & a )
   {
      switch ( a.kind() ) {
      case AttributeKind::map:
         return map( entity, a );
      case AttributeKind::set:
         return set( entity, a );
      case AttributeKind::children:
         return children( entity, a );
      case AttributeKind::child: {
         const auto child = a.child( entity, "" );
         return child ? object( *child, {} ) : Json( nullptr );
      }
      case AttributeKind::references:
         return references( entity, a );
      default:
         break;
      }
      const Corvo::String text = a.get( entity );
      if ( isReference( a ) ) {
         return unicodeOf( text );
      }
      if ( a.kind() == AttributeKind::optional && text.empty() ) {
         return Json::value_t::discarded;
      }
      return valueJson( shapeOf( a.typeName() ), text );
   }

   static Json map( const Vok::Entity & entity, const AttributeData & a )
   {
      const Shape & key = shapeOf( a.keyTypeName() );
      Json members = a.ordered() ? Json::array() : Json::object();
      for ( const Corvo::String & at : sortedKeys( entity, a ) ) {
         Json value = memberJson( entity, a, at );
         if ( !a.ordered() ) {
            append( members, keyName( key, at ), std::move( value ) );
         } else if ( a.keyField().empty() ) {
            members.push_back( Json{ { "key", valueJson( key, at ) }, { "value", value } } );
         } else {
            members.push_back( keyed( a.keyField(), valueJson( key, at ), std::move( value ) ) );
         }
      }
      return members;
   }

   static Json set( const Vok::Entity & entity, const AttributeData & a )
   {
      const Shape & shape = shapeOf( a.keyTypeName() );
      Json elements = Json::array();
      for ( const Corvo::String & element : sortedKeys( entity, a ) ) {
         elements.push_back( valueJson( shape, element ) );
      }
      return elements;
   }

   Json children( const Vok::Entity & entity, const AttributeData & a )
   {
      const Shape & key = shapeOf( a.keyTypeName() );
      Json members = a.ordered() ? Json::array() : Json::object();
      for ( const Corvo::String & at : sortedKeys( entity, a ) ) {
         Json child = object( *a.child( entity, at ), a.keyField() );
         if ( a.ordered() ) {
            members.push_back( keyed( a.keyField(), valueJson( key, at ), std::move( child ) ) );
         } else {
            append( members, keyName( key, at ), std::move( child ) );
         }
      }
      return members;
   }

   /// What has left the tree has no path, and is left out.
   static Json references( const Vok::Entity & entity, const AttributeData & a )
   {
      Json paths = Json::array();
      for ( const Corvo::String & at : sortedKeys( entity, a ) ) {
         const auto target = a.child( entity, at );
         if ( &Vok::rootOf( *target ) == &Vok::rootOf( entity ) ) {
            paths.push_back( unicodeOf( Vok::pathOf( *target ) ) );
         }
      }
      return paths;
   }

   /// Whether an attribute need not be written. What a constructor takes has to be.
   bool isDefault( const Vok::Entity & entity, const AttributeData & a, const Json & value )
   {
      if ( extent_ == Extent::all || a.kind() == AttributeKind::constructorArgument ) {
         return false;
      }
      const Vok::Entity * const fresh = freshOf( entity.typeData() );
      return fresh && fresh != &entity && value == attribute( *fresh, a );
   }

   Extent extent_;
};

std::string_view identityName( const TypeData & type )
{
   const AttributeData * const identity = identityOf( type );
   return identity ? jsonName( *identity ) : std::string_view();
}

} // namespace

Json toJson( const Vok::Entity & entity, Extent extent )
{
   return Writer( extent ).object( entity, identityName( entity.typeData() ) );
}

Json childJson( const Vok::Entity & child, std::string_view keyField, Extent extent )
{
   return Writer( extent ).object( child, keyField );
}

std::string jsonText( const Vok::Entity & entity, Extent extent )
{
   return toJson( entity, extent ).dump( 2 ) + "\n";
}

Json valueJson( const Shape & shape, std::string_view text )
{
   switch ( shape.form ) {
   case Form::truth:
      return Json( text == "true" );
   case Form::number:
      return Json( std::stoull( std::string( text ) ) );
   case Form::real:
      return realJson( text );
   case Form::text:
      return Json( unicodeOf( Corvo::strepToValue< Corvo::String >( text ) ) );
   case Form::flags:
      return flagsJson( shape, text );
   case Form::object: {
      Vok::Value value = shape.type->make();
      Vok::CharRange range( text );
      shape.type->strepToValue( range, value.data() );
      return valueJson( value );
   }
   default:
      return Json( text );
   }
}

Json valueJson( const Vok::Value & value, std::string_view without )
{
   const TypeData & type = value.typeData();
   const Shape & shape = shapeOf( type.name() );
   if ( shape.form != Form::object ) {
      return valueJson( shape, type.valueToStrep( value.data() ) );
   }
   Json object = Json::object();
   for ( const AttributeData * const field : fieldsOf( type ) ) {
      if ( field->name() == without ) {
         continue;
      }
      append( object, field->name(),
            field->kind() == AttributeKind::map || field->kind() == AttributeKind::set
                  ? fieldCollectionJson( value, *field )
                  : valueJson( shapeOf( type, *field ),
                          type.fieldGet( value.data(), field->name() ) ) );
   }
   return object;
}

Json memberJson( const Vok::Entity & entity, const AttributeData & map, std::string_view keyText )
{
   const Shape & shape = shapeOf( map.typeName() );
   return shape.form == Form::object
         ? valueJson( map.memberValue( entity, keyText ), map.keyField() )
         : valueJson( shape, map.member( entity, keyText ) );
}

std::string keyName( const Shape & key, std::string_view text )
{
   return key.form == Form::text ? unicodeOf( Corvo::strepToValue< Corvo::String >( text ) )
                                 : std::string( text );
}

std::string keyText( const Shape & key, std::string_view name )
{
   return key.form == Form::text
         ? std::string( Corvo::valueToStrep( Corvo::String( bytesOf( name ) ) ) )
         : std::string( name );
}

std::vector< Corvo::String > sortedKeys(
      const Vok::Entity & entity, const AttributeData & collection )
{
   std::vector< Corvo::String > keys = collection.keys( entity );
   if ( !collection.ordered() ) {
      std::sort( keys.begin(), keys.end(), keyLess );
   }
   return keys;
}

void append( Json & object, std::string_view name, Json value )
{
   object.get_ref< Json::object_t & >().Container::emplace_back(
         std::string( name ), std::move( value ) );
}

} // namespace FlowtrackJson
