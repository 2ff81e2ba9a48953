// Values of several fields, and the collections in them.
#include "tools/flowtrack/json/Read.h"

#include "tools/flowtrack/json/Words.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;
using Kind = Node::Kind;

namespace {

/// Fields of a type that cannot be changed are given when a value is made.
bool isFixed( const std::vector< const AttributeData * > & fields )
{
   return std::none_of( fields.begin(), fields.end(), []( const AttributeData * field ) {
      return field->settable() || field->kind() == AttributeKind::map ||
            field->kind() == AttributeKind::set;
   } );
}

/// A value with the key that stands outside of it.
Vok::Value withKey( const TypeData & type, std::string_view keyField, std::string_view key )
{
   const AttributeData * const field = keyField.empty() ? nullptr : type.attribute( keyField );
   if ( !field ) {
      return type.make();
   }
   if ( field->settable() ) {
      Vok::Value value = type.make();
      type.fieldSet( value.data(), keyField, key );
      return value;
   }
   const Vok::Value preset = type.make();
   std::vector< Corvo::String > args;
   for ( const AttributeData * const f : fieldsOf( type ) ) {
      if ( f == field ) {
         args.emplace_back( key );
      } else if ( f->kind() != AttributeKind::map && f->kind() != AttributeKind::set ) {
         args.push_back( type.fieldGet( preset.data(), f->name() ) );
      }
   }
   return type.make( args );
}

} // namespace

std::optional< Vok::Value > Reading::value( const Node & node, const Shape & shape,
      const Spot & spot, std::string_view keyField, std::string_view key )
{
   if ( shape.form == Form::object ) {
      return is( Kind::object, node, spot, allowedBy( shape ) )
            ? object( node, withKey( *shape.type, keyField, key ), spot, keyField )
            : std::nullopt;
   }
   const auto read = text( node, shape, spot );
   Vok::Value made = shape.type->make();
   const bool good = read && done( node, spot, [ & ] {
      Vok::CharRange range( *read );
      shape.type->strepToValue( range, made.data() );
   } );
   return good ? std::optional( std::move( made ) ) : std::nullopt;
}

std::optional< Vok::Value > Reading::object(
      const Node & node, Vok::Value made, const Spot & spot, std::string_view keyField )
{
   const TypeData & type = made.typeData();
   const auto fields = fieldsOf( type );
   const bool fixed = isFixed( fields );
   std::vector< Corvo::String > args;
   std::vector< std::string > names;
   for ( const AttributeData * const f : fields ) {
      names.emplace_back( f->name() == keyField ? std::string_view() : f->name() );
      args.push_back( fixed ? type.fieldGet( made.data(), f->name() ) : Corvo::String() );
   }
   bool good = true;
   for ( const Member & member : node.members ) {
      const auto found = std::find( names.begin(), names.end(), member.name );
      if ( found == names.end() || found->empty() ) {
         std::vector< std::string > offered = names;
         std::erase( offered, "" );
         unknown( member, spot, type, offered );
         good = false;
         continue;
      }
      const auto index = static_cast< std::size_t >( found - names.begin() );
      const AttributeData & f = *fields[ index ];
      const Spot at = below( spot, member.name, definitionOf( type, f ) );
      if ( !fixed ) {
         good = field( made, member.value, f, at ) && good;
      } else if ( const auto read = text( member.value, shapeOf( type, f ), at ) ) {
         args[ index ] = Corvo::String( *read );
      } else {
         good = false;
      }
   }
   if ( good && fixed ) {
      good = done( node, spot, [ & ] { made = type.make( args ); } );
   }
   return good ? std::optional( std::move( made ) ) : std::nullopt;
}

bool Reading::field( Vok::Value & value, const Node & node, const AttributeData & field,
      const Spot & spot )
{
   if ( field.kind() == AttributeKind::map || field.kind() == AttributeKind::set ) {
      return fieldCollection( value, node, field, spot );
   }
   const TypeData & type = value.typeData();
   const auto read = text( node, shapeOf( type, field ), spot );
   return read &&
         done( node, spot, [ & ] { type.fieldSet( value.data(), field.name(), *read ); } );
}

bool Reading::fieldCollection( Vok::Value & value, const Node & node, const AttributeData & field,
      const Spot & spot )
{
   const Shape & keyShape = shapeOf( field.keyTypeName() );
   const bool listed = field.kind() == AttributeKind::set || field.ordered();
   if ( !is( listed ? Kind::array : Kind::object, node, spot,
              listed ? "an array" : "an object" ) ) {
      return false;
   }
   const bool isSet = field.kind() == AttributeKind::set;
   bool good = true;
   std::set< std::string > seen;
   for ( std::size_t i = 0; i != node.elements.size(); ++i ) {
      const Node & element = node.elements[ i ];
      const Spot at = below( spot, std::to_string( i ), spot.definition );
      const Entry found = isSet ? Entry{ &element, &element } : entry( element, at );
      const auto key = found.key
            ? text( *found.key, keyShape, isSet ? at : below( at, "key", at.definition ) )
            : std::nullopt;
      if ( key && !seen.insert( *key ).second ) {
         wrong( *found.key, at, "each key once" );
         good = false;
      } else {
         good = key && found.value &&
               fieldMember( value, *found.value, field, *key,
                     isSet ? at : below( at, "value", at.definition ) ) &&
               good;
      }
   }
   for ( const Member & member : node.members ) {
      const Spot at = below( spot, member.name, spot.definition );
      const auto keyText = key( member, keyShape, at );
      good = keyText && fieldMember( value, member.value, field, *keyText, at ) && good;
   }
   return good;
}

Entry Reading::entry( const Node & node, const Spot & spot )
{
   static const std::string allowed = R"(an object with "key" and "value")";
   Entry found;
   if ( !is( Kind::object, node, spot, allowed ) ) {
      return found;
   }
   for ( const Member & member : node.members ) {
      if ( member.name == "key" ) {
         found.key = &member.value;
      } else if ( member.name == "value" ) {
         found.value = &member.value;
      } else {
         wrong( member.offset, below( spot, member.name, spot.definition ),
               described( Node( Kind::text, member.name ) ), allowed );
      }
   }
   if ( !found.key || !found.value ) {
      wrong( node, spot, allowed );
   }
   return found;
}

bool Reading::fieldMember( Vok::Value & value, const Node & node, const AttributeData & field,
      const std::string & key, const Spot & spot )
{
   std::optional< std::string > read( "" );
   if ( field.kind() == AttributeKind::map ) {
      read = text( node, shapeOf( field.typeName() ), spot );
   }
   return read && done( node, spot, [ & ] {
      value.typeData().fieldMemberIs( value.data(), field.name(), key, *read );
   } );
}

} // namespace FlowtrackJson
