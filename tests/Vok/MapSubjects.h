// The maps that the shared suites run on: every kind of node, both forms of the metadata's
// comparison, bad hashes, and the standard map, which shows that the suites ask for nothing odd.
#pragma once

#include "Vok/HashMap2018.h"
#include "Vok/OrderedMap.h"
#include "Vok/String.h"
#include "tests/Vok/MapInvariants.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <unordered_map>

namespace MapSubjects {

/// A key with a hash as bad as its tag says.
template< class Tag > struct BadKey {
   std::uint32_t number = 0;
   bool operator==( const BadKey & ) const = default;
};
struct Constant {
   static std::uint64_t hash( std::uint32_t ) { return 0; }
};
struct ConstantLast {
   static std::uint64_t hash( std::uint32_t ) { return ~std::uint64_t{ 0 }; }
};
struct FewHomes {
   static std::uint64_t hash( std::uint32_t number )
   {
      return std::uint64_t{ number % 5 } << 56 | ( number % 3 );
   }
};
struct SameMark {
   static std::uint64_t hash( std::uint32_t number ) { return number; }
};

template< class Key > Key keyOf( std::uint32_t number )
{
   if constexpr ( std::is_same_v< Key, Corvo::String > ) {
      return Corvo::String( ( number % 2 == 0 ? "" : "a name of many letters, number " ) +
            std::to_string( number ) );
   } else {
      return Key{ number };
   }
}

/// The operations of the suites over an engine with a given node. `Shape` makes a node of a number
/// and its value, and reads the value out of it.
template< class Shape, class Engine > class EngineMap {
 public:
   using Node = typename Shape::Node;
   using Table = Engine;
   using Key = typename Node::Key;

   bool insert( std::uint32_t number, std::uint32_t value )
   {
      return table_
            .findOrInsert( keyOf< Key >( number ), [ & ] { return Shape::make( number, value ); } )
            .second;
   }
   std::optional< std::uint32_t > find( std::uint32_t number ) const
   {
      const Node * const node = table_.find( keyOf< Key >( number ) );
      return node != nullptr ? std::optional( Shape::value( *node ) ) : std::nullopt;
   }
   bool replace( std::uint32_t number, std::uint32_t value )
   {
      Node * const node = table_.find( keyOf< Key >( number ) );
      if ( node != nullptr ) {
         Shape::setValue( *node, value );
      }
      return node != nullptr;
   }
   std::optional< std::uint32_t > take( std::uint32_t number )
   {
      const std::optional< Node > node = table_.take( keyOf< Key >( number ) );
      return node ? std::optional( Shape::value( *node ) ) : std::nullopt;
   }
   std::size_t size() const { return table_.size(); }
   void clear() { table_.clear(); }
   void reserve( std::size_t size ) { table_.reserve( size ); }
   void swap( EngineMap & other ) { table_.swap( other.table_ ); }
   template< class F > void each( F f ) const
   {
      for ( typename Table::Cursor cursor( table_ ); !cursor.atEnd(); cursor.next() ) {
         f( Shape::value( *cursor ) );
      }
   }
   template< class F > void eachNode( F f ) const
   {
      const auto call = [ & ]( const Node & node ) { f( Shape::value( node ) ); };
      table_.eachNode( call );
   }
   void expectSound() const { Vok::Detail::TableInspector::expectSound( table_ ); }
   static std::uint32_t valueOf( const Node & node ) { return Shape::value( node ); }
   const Table & table() const { return table_; }

 private:
   Table table_;
};

template< class Shape, class Marks = Vok::Detail::DefaultMarks > using VokMap =
      EngineMap< Shape, Vok::Detail::HashTable< typename Shape::Node, Marks > >;

template< class Shape > using TreeMap =
      EngineMap< Shape, Vok::Detail::BTree< typename Shape::Node > >;

/// The same over the standard map.
class StandardMap {
 public:
   bool insert( std::uint32_t number, std::uint32_t value )
   {
      return map_.emplace( number, value ).second;
   }
   std::optional< std::uint32_t > find( std::uint32_t number ) const
   {
      const auto at = map_.find( number );
      return at != map_.end() ? std::optional( at->second ) : std::nullopt;
   }
   bool replace( std::uint32_t number, std::uint32_t value )
   {
      const auto at = map_.find( number );
      if ( at != map_.end() ) {
         at->second = value;
      }
      return at != map_.end();
   }
   std::optional< std::uint32_t > take( std::uint32_t number )
   {
      const auto value = find( number );
      map_.erase( number );
      return value;
   }
   std::size_t size() const { return map_.size(); }
   void clear() { map_.clear(); }
   void reserve( std::size_t size ) { map_.reserve( size ); }
   void swap( StandardMap & other ) { map_.swap( other.map_ ); }
   void expectSound() const {}
   template< class F > void eachNode( F f ) const { each( f ); }
   template< class F > void each( F f ) const
   {
      for ( const auto & [ key, value ] : map_ ) {
         f( value );
      }
   }

 private:
   std::unordered_map< std::uint32_t, std::uint32_t > map_;
};

/// A key beside a value.
template< class Key > struct Beside {
   using Node = Vok::MapNode< Key, std::uint32_t >;
   static Node make( std::uint32_t number, std::uint32_t value )
   {
      return { keyOf< Key >( number ), value };
   }
   static std::uint32_t value( const Node & node ) { return node.value; }
   static void setValue( Node & node, std::uint32_t value ) { node.value = value; }
};

/// A value that may not be moved by copying its bytes.
struct BesideText {
   using Node = Vok::MapNode< std::uint32_t, std::string >;
   static Node make( std::uint32_t number, std::uint32_t value )
   {
      return { number, std::to_string( value ) };
   }
   static std::uint32_t value( const Node & node )
   {
      return static_cast< std::uint32_t >( std::stoul( node.value ) );
   }
   static void setValue( Node & node, std::uint32_t value )
   {
      node.value = std::to_string( value );
   }
};

struct Member {
   Corvo::String name;
   std::uint32_t value = 0;
};
struct NameOfMember {
   const Corvo::String & operator()( const Member & member ) const noexcept { return member.name; }
};

/// A key inside the value.
struct Inside {
   using Node = Vok::KeyedNode< Member, NameOfMember, 7 >;
   static Node make( std::uint32_t number, std::uint32_t value )
   {
      return { { keyOf< Corvo::String >( number ), value } };
   }
   static std::uint32_t value( const Node & node ) { return node.value.value; }
   static void setValue( Node & node, std::uint32_t value )
   {
      node.valueIs( { node.value.name, value } );
   }
};

/// A key inside a child that a counted pointer holds.
struct Child {
   using Pointer = std::shared_ptr< Member >;
   using Node = Vok::ChildNode< Member, NameOfMember, 0, Pointer >;
   static Node make( std::uint32_t number, std::uint32_t value )
   {
      return { std::make_shared< Member >( Member{ keyOf< Corvo::String >( number ), value } ) };
   }
   static std::uint32_t value( const Node & node ) { return node.child->value; }
   static void setValue( Node & node, std::uint32_t value )
   {
      node.childIs( std::make_shared< Member >( Member{ node.child->name, value } ) );
   }
};

/// A member of 64-byte alignment.
struct alignas( 64 ) Wide {
   std::uint32_t value = 0;
};
struct BesideWide {
   using Node = Vok::MapNode< std::uint64_t, Wide >;
   static Node make( std::uint32_t number, std::uint32_t value ) { return { number, { value } }; }
   static std::uint32_t value( const Node & node )
   {
      return reinterpret_cast< std::uintptr_t >( &node ) % 64 == 0 ? node.value.value : 0xffffffff;
   }
   static void setValue( Node & node, std::uint32_t value ) { node.value.value = value; }
};

using Portable = Vok::Detail::PortableMarks;

} // namespace MapSubjects

template< class Tag > struct Vok::Detail::KeyHash< MapSubjects::BadKey< Tag > > {
   static std::uint64_t hash( MapSubjects::BadKey< Tag > key, HashSeed )
   {
      return Tag::hash( key.number );
   }
};
