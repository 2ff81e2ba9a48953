// Both trees are walked together, each attribute by the union of its keys.
#include "tools/flowtrack/json/Diff.h"

#include "tools/flowtrack/json/Text.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <stdexcept>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::Entity;

namespace {

using Keys = std::set< Corvo::String >;

Keys keysOf( const Entity & entity, const AttributeData & collection )
{
   const auto keys = collection.keys( entity );
   return Keys( keys.begin(), keys.end() );
}

std::vector< Corvo::String > unionOf( const Keys & a, const Keys & b )
{
   std::vector< Corvo::String > keys;
   std::set_union( a.begin(), a.end(), b.begin(), b.end(), std::back_inserter( keys ) );
   std::sort( keys.begin(), keys.end(), keyLess );
   return keys;
}

class Comparison {
 public:
   std::vector< Difference > found;

   void entities( const Entity & before, const Entity & after )
   {
      const AttributeData * const identity = identityOf( before.typeData() );
      for ( const AttributeData & a : before.typeData().attributes() ) {
         if ( isContent( a ) && &a != identity ) {
            attribute( before, after, a );
         }
      }
   }

 private:
   void attribute( const Entity & before, const Entity & after, const AttributeData & a )
   {
      switch ( a.kind() ) {
      case AttributeKind::map:
         return members( before, after, a, mapMember );
      case AttributeKind::set:
         return members( before, after, a, setMember );
      case AttributeKind::references:
         return members( before, after, a, referenceMember );
      case AttributeKind::children:
         for ( const auto & key : unionOf( keysOf( before, a ), keysOf( after, a ) ) ) {
            child( before, after, a, key );
         }
         return;
      case AttributeKind::child:
         return child( before, after, a, {} );
      default:
         return value( before, after, a );
      }
   }

   static Json mapMember( const Entity & e, const AttributeData & map, const Corvo::String & key )
   {
      return memberJson( e, map, key );
   }

   static Json setMember( const Entity &, const AttributeData & set, const Corvo::String & key )
   {
      return valueJson( shapeOf( set.keyTypeName() ), key );
   }

   /// Of an entity outside of the tree there is no path.
   static Json referenceMember(
         const Entity & e, const AttributeData & references, const Corvo::String & key )
   {
      const auto target = references.child( e, key );
      const bool inside = &Vok::rootOf( *target ) == &Vok::rootOf( e );
      return Json( inside ? unicodeOf( Vok::pathOf( *target ) ) : std::string() );
   }

   void value( const Entity & before, const Entity & after, const AttributeData & a )
   {
      const Corvo::String was = a.get( before );
      const Corvo::String is = a.get( after );
      if ( was != is ) {
         const auto json = [ & ]( const Corvo::String & text ) {
            if ( isReference( a ) ) {
               return Json( unicodeOf( text ) );
            }
            const bool none = a.kind() == AttributeKind::optional && text.empty();
            return none ? Json() : valueJson( shapeOf( a.typeName() ), text );
         };
         add( before, a, nullptr, json( was ), json( is ) );
      }
   }

   template< class Member > void members(
         const Entity & before, const Entity & after, const AttributeData & a, Member member )
   {
      const Keys had = keysOf( before, a );
      const Keys has = keysOf( after, a );
      for ( const Corvo::String & key : unionOf( had, has ) ) {
         Json was = had.contains( key ) ? member( before, a, key ) : Json();
         Json is = has.contains( key ) ? member( after, a, key ) : Json();
         if ( was != is ) {
            add( before, a, &key, std::move( was ), std::move( is ) );
         }
      }
   }

   void child( const Entity & before, const Entity & after, const AttributeData & a,
         const Corvo::String & key )
   {
      const auto was = a.child( before, key );
      const auto is = a.child( after, key );
      const bool isKeyed = a.kind() == AttributeKind::children;
      if ( was && is && sameArguments( *was, *is ) ) {
         entities( *was, *is );
      } else if ( was || is ) {
         const auto json = [ & ]( const auto & entity ) {
            return entity ? childJson( *entity, isKeyed ? a.keyField() : "", Extent::changed )
                          : Json();
         };
         add( before, a, isKeyed ? &key : nullptr, json( was ), json( is ) );
      }
   }

   /// Whether one can become the other without being made anew.
   static bool sameArguments( const Entity & a, const Entity & b )
   {
      const auto arguments = a.typeData().constructorArguments();
      return std::all_of( arguments.begin(), arguments.end(), [ & ]( const AttributeData & one ) {
         return one.settable() || one.get( a ) == one.get( b );
      } );
   }

   void add( const Entity & entity, const AttributeData & a, const Corvo::String * key, Json was,
         Json is )
   {
      found.push_back( { std::string( Vok::pathOf( entity ) ), std::string( jsonName( a ) ),
            key ? std::string( *key ) : std::string(), key != nullptr, std::move( was ),
            std::move( is ) } );
   }
};

} // namespace

std::vector< Difference > differences( const Entity & before, const Entity & after )
{
   if ( &before.typeData() != &after.typeData() ) {
      throw std::invalid_argument( std::string( before.typeData().name() ) + " and " +
            std::string( after.typeData().name() ) + " are two types" );
   }
   Comparison comparison;
   comparison.entities( before, after );
   return std::move( comparison.found );
}

std::string textOf( const std::vector< Difference > & differences )
{
   std::string text;
   for ( const Difference & d : differences ) {
      const bool isNew = d.before.is_null();
      const bool isGone = d.after.is_null();
      text += isNew ? "+ " : isGone ? "- "
                                    : "~ ";
      text += d.path + " " + d.attribute + ( d.keyed ? "[" + d.key + "]" : "" ) + ": ";
      text += ( isNew ? "" : d.before.dump() ) + ( isNew || isGone ? "" : " -> " ) +
            ( isGone ? "" : d.after.dump() ) + "\n";
   }
   return text;
}

Json jsonOf( const std::vector< Difference > & differences )
{
   Json list = Json::array();
   for ( const Difference & d : differences ) {
      Json one = Json::object();
      append( one, "path", unicodeOf( d.path ) );
      append( one, "attribute", d.attribute );
      if ( d.keyed ) {
         append( one, "key", unicodeOf( d.key ) );
      }
      if ( !d.before.is_null() ) {
         append( one, "old", d.before );
      }
      if ( !d.after.is_null() ) {
         append( one, "new", d.after );
      }
      list.push_back( std::move( one ) );
   }
   return list;
}

} // namespace FlowtrackJson
