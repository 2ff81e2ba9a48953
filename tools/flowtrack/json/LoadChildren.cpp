// Children, made with what their constructors take, and references between entities.
#include "tools/flowtrack/json/Loader.h"

#include "tools/flowtrack/json/Text.h"
#include "tools/flowtrack/json/Words.h"

#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

#include <algorithm>
#include <cstddef>

namespace FlowtrackJson {

using Vok::AttributeKind;
using Vok::TypeData;
using Kind = Node::Kind;

namespace {

bool isA( const TypeData & type, std::string_view name )
{
   return type.name() == name || ( type.base() && isA( *type.base(), name ) );
}

bool holdsReferences( const TypeData & type )
{
   const auto arguments = type.constructorArguments();
   return std::any_of( arguments.begin(), arguments.end(), isReference );
}

} // namespace

void Loader::child( const Node & node, Entity & e, const AttributeData & a, const std::string & key,
      const Spot & spot )
{
   if ( holdsReferences( entityType( a.typeName() ) ) ) {
      later_.push_back(
            [ this, &node, &e, &a, key, spot ] { makeChild( node, e, a, key, spot ); } );
   } else {
      makeChild( node, e, a, key, spot );
   }
}

void Loader::makeChild( const Node & node, Entity & e, const AttributeData & a,
      const std::string & key, const Spot & spot )
{
   const TypeData & type = entityType( a.typeName() );
   if ( !reading_.is( Kind::object, node, spot, "an object, a " + std::string( type.name() ) ) ) {
      return;
   }
   Skipped skipped;
   for ( const AttributeData & argument : type.constructorArguments() ) {
      const bool isKey =
            a.kind() == AttributeKind::children && jsonName( argument ) == a.keyField();
      ( isKey && !a.ordered() ? skipped.outside : skipped.given ).insert( &argument );
   }
   const Corvo::Ptr< Entity > existing = a.child( e, key );
   const std::size_t before = reading_.problems.size();
   std::vector< Corvo::String > texts;
   bool same = existing != nullptr;
   for ( const AttributeData * const one :
         argumentsBeside( type, a.kind() == AttributeKind::children ? a.keyField() : "" ) ) {
      texts.emplace_back( argument( node, existing.get(), *one, type, spot, e ) );
      same = same && ( one->settable() || one->get( *existing ) == texts.back() );
   }
   const bool complete = before == reading_.problems.size();
   if ( !complete && ( existing || holdsReferences( type ) ) ) {
      return;
   }
   Corvo::Ptr< Entity > made;
   if ( !reading_.done( node, spot, [ & ] {
           if ( existing && !same ) {
              a.memberDel( e, key );
           }
           made = a.childIs( e, key, texts );
        } ) ) {
      return;
   }
   entity( node, *made, { spot.pointer, std::string( type.name() ) }, skipped );
}

/// The text of a constructor argument: what the document says, or what the child has.
std::string Loader::argument( const Node & node, const Entity * existing, const AttributeData & a,
      const TypeData & type, const Spot & spot, Entity & parent )
{
   const Spot at = below( spot, jsonName( a ), definitionOf( type, a ) );
   const Node * const given = memberOf( node, jsonName( a ) );
   if ( !given && existing ) {
      return std::string( a.get( *existing ) );
   }
   std::string preset = isReference( a ) ? "" : defaultTextOf( shapeOf( a.typeName() ) );
   if ( !given ) {
      reading_.wrong( node.offset, at, "nothing",
            isReference( a ) ? "a path" : allowedBy( shapeOf( a.typeName() ) ) );
      return preset;
   }
   if ( isReference( a ) ) {
      const Entity * const to = target( *given, parent, a.typeName(), at );
      return to ? std::string( Vok::pathOf( *to ) ) : preset;
   }
   return reading_.text( *given, shapeOf( a.typeName() ), at ).value_or( preset );
}

Vok::Entity * Loader::target(
      const Node & node, Entity & from, std::string_view type, const Spot & spot )
{
   const std::string allowed = "the path of a " + std::string( type ) + " in this tree";
   if ( !reading_.is( Kind::text, node, spot, allowed ) ) {
      return nullptr;
   }
   Entity * found = nullptr;
   try {
      found = Vok::entityAt( const_cast< Entity & >( Vok::rootOf( from ) ), bytesOf( node.text ) );
   } catch ( const Corvo::ParseException & ) {
   } catch ( const Corvo::RangeException & ) {
   }
   if ( !found || !isA( found->typeData(), type ) ) {
      reading_.wrong( node, spot, allowed );
      return nullptr;
   }
   return found;
}

void Loader::references(
      const Node & node, Entity & e, const AttributeData & a, const Spot & spot )
{
   if ( !reading_.is( Kind::array, node, spot, "an array of paths" ) ) {
      return;
   }
   std::set< const Entity * > targets;
   for ( std::size_t i = 0; i != node.elements.size(); ++i ) {
      const Spot at = below( spot, std::to_string( i ), spot.definition );
      Entity * const to = target( node.elements[ i ], e, a.typeName(), at );
      if ( to && !targets.insert( to ).second ) {
         reading_.wrong( node.elements[ i ], at, "each path once" );
      }
   }
   for ( const Corvo::String & key : a.keys( e ) ) {
      if ( targets.erase( a.child( e, key ).get() ) == 0 && how_ == How::replace ) {
         a.memberDel( e, key );
      }
   }
   const Vok::Detail::AttributeRow & row = a.row();
   for ( const Entity * const to : targets ) {
      row.collection->insert( e, row.id, Vok::Detail::storageOf( e, row ), to );
   }
}

} // namespace FlowtrackJson
