// Entities are filled attribute by attribute; what refers to others comes when those are there.
// Where something is wrong reading goes on, with a default in its place, to find what else is.
#include "tools/flowtrack/json/Load.h"

#include "tools/flowtrack/json/Json.h"
#include "tools/flowtrack/json/Loader.h"
#include "tools/flowtrack/json/Text.h"
#include "tools/flowtrack/json/Words.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace FlowtrackJson {

using Vok::AttributeKind;
using Vok::TypeData;
using Kind = Node::Kind;

const Node * memberOf( const Node & object, std::string_view name )
{
   const auto found = std::find_if( object.members.begin(), object.members.end(),
         [ & ]( const Member & member ) { return member.name == name; } );
   return found == object.members.end() ? nullptr : &found->value;
}

void Loader::run( const Node & node, Entity & root )
{
   Skipped skipped;
   if ( const AttributeData * const identity = identityOf( root.typeData() ) ) {
      skipped.outside.insert( identity );
   }
   entity( node, root, { "", std::string( root.typeData().name() ) }, skipped );
   for ( std::size_t i = 0; i != later_.size(); ++i ) {
      const auto refer = std::move( later_[ i ] ); // which may add more
      refer();
   }
   if ( !reading_.problems.empty() ) {
      std::stable_sort( reading_.problems.begin(), reading_.problems.end(),
            []( const Problem & a, const Problem & b ) {
               return std::pair( a.line, a.column ) < std::pair( b.line, b.column );
            } );
      throw DocumentError( std::move( reading_.problems ) );
   }
}

void Loader::entity( const Node & node, Entity & e, const Spot & spot, const Skipped & skipped )
{
   const TypeData & type = e.typeData();
   std::vector< std::string > names;
   for ( const AttributeData & a : type.attributes() ) {
      if ( isContent( a ) && !skipped.outside.contains( &a ) ) {
         names.emplace_back( jsonName( a ) );
      }
   }
   if ( !reading_.is( Kind::object, node, spot, "an object with " + oneOf( names ) ) ) {
      return;
   }
   std::set< const AttributeData * > named = skipped.given;
   for ( const Member & member : node.members ) {
      const AttributeData * const a = attributeOf( type, member.name );
      if ( !a || std::find( names.begin(), names.end(), member.name ) == names.end() ) {
         reading_.unknown( member, spot, type, names );
      } else if ( named.insert( a ).second ) {
         attribute( member.value, e, *a, below( spot, member.name, definitionOf( type, *a ) ) );
      }
   }
   for ( const AttributeData & a : type.attributes() ) {
      if ( how_ == How::replace && isContent( a ) && !named.contains( &a ) ) {
         reset( e, a );
      }
   }
}

void Loader::attribute( const Node & node, Entity & e, const AttributeData & a, const Spot & spot )
{
   switch ( a.kind() ) {
   case AttributeKind::map:
   case AttributeKind::children:
      return members( node, e, a, spot );
   case AttributeKind::set:
      return set( node, e, a, spot );
   case AttributeKind::child:
      return node.kind == Kind::null ? a.memberDel( e, "" ) : child( node, e, a, "", spot );
   case AttributeKind::references:
      later_.push_back( [ this, &node, &e, &a, spot ] { references( node, e, a, spot ); } );
      return;
   default:
      return value( node, e, a, spot );
   }
}

void Loader::value( const Node & node, Entity & e, const AttributeData & a, const Spot & spot )
{
   if ( a.kind() == AttributeKind::optional && node.kind == Kind::null ) {
      return a.set( e, "" );
   }
   if ( isReference( a ) ) {
      const std::string path = unicodeOf( a.get( e ) );
      if ( node.kind != Kind::text || node.text != path ) {
         reading_.wrong( node, spot, Json( path ).dump() + ", which stays for life" );
      }
      return;
   }
   const auto text = reading_.text( node, shapeOfAttribute( e.typeData(), a ), spot );
   if ( !text ) {
      return;
   }
   if ( a.settable() ) {
      reading_.done( node, spot, [ & ] { a.set( e, *text ); } );
   } else if ( a.get( e ) != *text ) {
      const Json value = valueJson( shapeOf( a.typeName() ), a.get( e ) );
      reading_.wrong( node, spot, value.dump() + ", which stays for life" );
   }
}

/// Maps and children, as objects by key or as arrays of members that have their keys.
void Loader::members( const Node & node, Entity & e, const AttributeData & a, const Spot & spot )
{
   const bool isMap = a.kind() == AttributeKind::map;
   if ( !reading_.is( a.ordered() ? Kind::array : Kind::object, node, spot,
              a.ordered() ? "an array, in the order of keys" : "an object by keys" ) ) {
      return;
   }
   Keys keys;
   const Shape & keyShape = shapeOf( a.keyTypeName() );
   const auto take = [ & ]( const std::optional< std::string > & key, std::size_t offset,
                           const Node & member, const Spot & at ) {
      if ( key && !keys.insert( *key ).second ) {
         reading_.wrong( offset, at, "the key " + *key + " a second time", "each key once" );
      } else if ( key ) {
         isMap ? map( member, e, a, *key, at ) : child( member, e, a, *key, at );
      }
   };
   for ( const Member & member : node.members ) {
      const Spot at = below( spot, member.name, spot.definition );
      take( reading_.key( member, keyShape, at ), member.offset, member.value, at );
   }
   for ( std::size_t i = 0; i != node.elements.size(); ++i ) {
      const Node & element = node.elements[ i ];
      const Spot at = below( spot, std::to_string( i ), spot.definition );
      Entry entry;
      if ( a.keyField().empty() ) {
         entry = reading_.entry( element, at );
      } else if ( reading_.is( Kind::object, element, at, "an object" ) ) {
         entry = { memberOf( element, a.keyField() ), &element };
         if ( !entry.key ) {
            reading_.wrong( element, at, "an object with " + std::string( a.keyField() ) );
         }
      }
      if ( entry.key && entry.value ) {
         const std::string_view step = a.keyField().empty() ? "key" : a.keyField();
         take( reading_.text( *entry.key, keyShape, below( at, step, spot.definition ) ),
               entry.key->offset, *entry.value, at );
      }
   }
   deleteOthers( e, a, keys );
}

void Loader::map( const Node & node, Entity & e, const AttributeData & a, const std::string & key,
      const Spot & spot )
{
   const Shape & shape = shapeOf( a.typeName() );
   if ( shape.type && shape.type->kind() == Vok::TypeKind::value ) {
      const bool inside = a.ordered() && !a.keyField().empty();
      const auto value = inside ? reading_.value( node, shape, spot )
                                : reading_.value( node, shape, spot, a.keyField(), key );
      if ( value ) {
         reading_.done( node, spot, [ & ] { a.memberValueIs( e, key, *value ); } );
      }
   } else if ( const auto text = reading_.text( node, shape, spot ) ) {
      reading_.done( node, spot, [ & ] { a.memberIs( e, key, *text ); } );
   }
}

void Loader::set( const Node & node, Entity & e, const AttributeData & a, const Spot & spot )
{
   const Shape & shape = shapeOf( a.keyTypeName() );
   if ( !reading_.is( Kind::array, node, spot, "an array, each " + allowedBy( shape ) ) ) {
      return;
   }
   Keys keys;
   for ( std::size_t i = 0; i != node.elements.size(); ++i ) {
      const Node & element = node.elements[ i ];
      const Spot at = below( spot, std::to_string( i ), spot.definition );
      const auto text = reading_.text( element, shape, at );
      if ( text && !keys.insert( *text ).second ) {
         reading_.wrong( element.offset, at, described( element ) + " a second time", "each once" );
      } else if ( text ) {
         a.memberIs( e, *text, "" );
      }
   }
   deleteOthers( e, a, keys );
}

// ---- What the document does not name ----------------------------------------------------------

void Loader::deleteOthers( Entity & e, const AttributeData & a, const Keys & keys )
{
   if ( how_ == How::replace ) {
      for ( const Corvo::String & key : a.keys( e ) ) {
         if ( !keys.contains( key.view() ) ) {
            a.memberDel( e, key );
         }
      }
   }
}

void Loader::reset( Entity & e, const AttributeData & a )
{
   switch ( a.kind() ) {
   case AttributeKind::plain:
      return a.set( e, a.defaultText() );
   case AttributeKind::optional:
      return a.set( e, "" );
   case AttributeKind::map:
   case AttributeKind::set:
   case AttributeKind::children:
   case AttributeKind::references:
      return deleteOthers( e, a, {} );
   case AttributeKind::child: {
      Entity * const fresh = freshOf( e.typeData() );
      if ( !fresh || !a.child( *fresh, "" ) ) {
         return a.memberDel( e, "" );
      }
      const Corvo::Ptr< Entity > made = a.childIs( e, "" );
      for ( const AttributeData & below : made->typeData().attributes() ) {
         if ( isContent( below ) ) {
            reset( *made, below );
         }
      }
      return;
   }
   default:
      return; // what a constructor took stays
   }
}

void load( const Document & document, Vok::Entity & entity, How how )
{
   Loader( document, how ).run( document.root(), entity );
}

} // namespace FlowtrackJson
