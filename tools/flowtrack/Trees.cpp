// Copies of trees, and walks over them by reflection.
#include "tools/flowtrack/Trees.h"

#include "tools/flowtrack/Errors.h"
#include "tools/flowtrack/json/Hint.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <stdexcept>

namespace Flowtrack {

using Vok::AttributeData;
using Vok::AttributeKind;

namespace {

bool isDigit( char c )
{
   return std::isdigit( static_cast< unsigned char >( c ) ) != 0;
}

/// The number at a place of a text, without leading zeros.
std::string_view numberAt( const std::string & text, std::size_t & at )
{
   while ( at + 1 < text.size() && text[ at ] == '0' && isDigit( text[ at + 1 ] ) ) {
      ++at;
   }
   const std::size_t from = at;
   while ( at < text.size() && isDigit( text[ at ] ) ) {
      ++at;
   }
   return std::string_view( text ).substr( from, at - from );
}

/// Numbers in texts count as numbers.
bool before( const std::string & a, const std::string & b )
{
   std::size_t i = 0;
   std::size_t j = 0;
   while ( i < a.size() && j < b.size() ) {
      if ( isDigit( a[ i ] ) && isDigit( b[ j ] ) ) {
         const std::string_view x = numberAt( a, i );
         const std::string_view y = numberAt( b, j );
         if ( x != y ) {
            return x.size() != y.size() ? x.size() < y.size() : x < y;
         }
      } else if ( a[ i ] != b[ j ] ) {
         return a[ i ] < b[ j ];
      } else {
         ++i;
         ++j;
      }
   }
   return a.size() - i < b.size() - j;
}

/// Where a referred entity stands, or which it is outside the tree.
std::string referenceText( const Vok::Entity & from, const Vok::Entity & target )
{
   return std::string( &Vok::rootOf( from ) == &Vok::rootOf( target )
               ? Vok::pathOf( target ).view()
               : target.name().view() );
}

void eachMember( const Vok::Entity & entity, const AttributeData & attribute,
      const std::function< void( const Item & ) > & f )
{
   for ( const std::string & key : keysOf( entity, attribute ) ) {
      f( { entity, attribute, key, *valueOf( entity, attribute, key ), true, false } );
   }
}

/// A new entity of the same type and constructor arguments; null where those cannot be given as
/// texts.
Corvo::Ptr< Vok::Entity > newLike( const Vok::Entity & entity )
{
   std::vector< Corvo::String > arguments;
   for ( const AttributeData & argument : entity.typeData().constructorArguments() ) {
      if ( !argument.row().identity && argument.name() != "nameString" ) {
         arguments.push_back( argument.get( entity ) );
      }
   }
   try {
      return entity.typeData().instantiate( entity.name(), arguments );
   } catch ( const Corvo::ConstructorArgsException & ) {
      return nullptr;
   }
}

/// Whether a single child is as it is in a new parent.
bool isNewChild( const Vok::Entity & parent, const AttributeData & attribute )
{
   const Corvo::Ptr< Vok::Entity > other = newLike( parent );
   const Corvo::Ptr< Vok::Entity > fresh = other ? attribute.child( *other, "" ) : nullptr;
   return fresh && Vok::treeDigest( *fresh ) == Vok::treeDigest( *attribute.child( parent, "" ) );
}

} // namespace

const Vok::TypeData & entityType( const std::string & name )
{
   const Vok::TypeData * const type = Corvo::ModuleInspectData::findType( name );
   if ( type && type->kind() == Vok::TypeKind::entity ) {
      return *type;
   }
   std::vector< std::string > names;
   for ( const Corvo::ModuleInspectData & module : Corvo::ModuleInspectData::modules() ) {
      for ( const Vok::TypeData & one : module.types() ) {
         if ( one.kind() == Vok::TypeKind::entity ) {
            names.emplace_back( one.name() );
         }
      }
   }
   throw CommandError( wrongUsage,
         "there is no entity type " + name + "; flowtrack types lists them",
         FlowtrackJson::didYouMean( name, names ) );
}

Corvo::Ptr< Vok::Entity > copyOf( const Corvo::Ptr< Vok::Entity > & root )
{
   Corvo::Ptr< Vok::Entity > copy = root->typeData().instantiate( root->name() );
   becomeLike( copy, root );
   return copy;
}

void becomeLike(
      const Corvo::Ptr< Vok::Entity > & root, const Corvo::Ptr< Vok::Entity > & wanted )
{
   Vok::NboAttrLog::Out out;
   Vok::EntityVokNboAttrLogSa( wanted ).write( out );
   Vok::NboAttrLog::In in( out.bytes() );
   Vok::EntityVokNboAttrLogReader( root ).read( in );
}

std::vector< std::string > keysOf( const Vok::Entity & entity, const AttributeData & attribute )
{
   std::vector< std::string > keys;
   for ( const Corvo::String & key : attribute.keys( entity ) ) {
      keys.emplace_back( key.view() );
   }
   if ( !attribute.ordered() ) {
      std::sort( keys.begin(), keys.end(), before );
   }
   return keys;
}

bool isSingle( const AttributeData & attribute )
{
   switch ( attribute.kind() ) {
   case AttributeKind::plain:
   case AttributeKind::optional:
   case AttributeKind::constant:
   case AttributeKind::constructorArgument:
   case AttributeKind::derived:
      return true;
   default:
      return false;
   }
}

bool isCollection( const AttributeData & attribute )
{
   switch ( attribute.kind() ) {
   case AttributeKind::map:
   case AttributeKind::set:
   case AttributeKind::children:
   case AttributeKind::references:
      return true;
   default:
      return false;
   }
}

bool isChild( const AttributeData & attribute )
{
   return attribute.kind() == AttributeKind::children || attribute.kind() == AttributeKind::child;
}

std::optional< std::string > valueOf(
      const Vok::Entity & entity, const AttributeData & attribute, const std::string & key )
{
   if ( isSingle( attribute ) ) {
      return std::string( attribute.get( entity ).view() );
   }
   if ( isChild( attribute ) || attribute.kind() == AttributeKind::references ) {
      const auto child = attribute.child( entity, key );
      if ( !child ) {
         return {};
      }
      return isChild( attribute ) ? "" : referenceText( entity, *child );
   }
   try {
      const Corvo::String value = attribute.member( entity, key );
      return std::string( attribute.kind() == AttributeKind::set ? "" : value.view() );
   } catch ( const std::out_of_range & ) {
      return {};
   }
}

bool isKeyField( const Vok::Entity & entity, const AttributeData & attribute )
{
   if ( attribute.name() == "nameString" ) {
      return true;
   }
   if ( attribute.kind() != AttributeKind::constructorArgument || !entity.parent() ) {
      return false;
   }
   for ( const AttributeData & one : entity.parent()->typeData().attributes() ) {
      if ( isChild( one ) && one.typeName() == entity.typeData().name() &&
            one.keyField() == attribute.name() ) {
         return true;
      }
   }
   return false;
}

void eachOwnItem( const Vok::Entity & entity, const std::function< void( const Item & ) > & f )
{
   for ( const AttributeData & attribute : entity.typeData().attributes() ) {
      if ( isKeyField( entity, attribute ) || attribute.kind() == AttributeKind::constant ) {
         continue;
      }
      if ( isSingle( attribute ) ) {
         const std::string value( attribute.get( entity ).view() );
         const bool isDefault = value == attribute.defaultText() ||
               attribute.kind() == AttributeKind::derived;
         f( { entity, attribute, "", value, false, isDefault } );
      } else if ( isCollection( attribute ) ) {
         eachMember( entity, attribute, f );
      } else if ( attribute.kind() == AttributeKind::child && attribute.child( entity, "" ) ) {
         f( { entity, attribute, "", "", false, isNewChild( entity, attribute ) } );
      }
   }
}

void eachItem( const Vok::Entity & top, const std::function< void( const Item & ) > & f )
{
   eachOwnItem( top, [ & ]( const Item & item ) {
      f( item );
      if ( isChild( item.attribute ) ) {
         eachItem( *item.attribute.child( item.entity, item.key ), f );
      }
   } );
}

} // namespace Flowtrack
