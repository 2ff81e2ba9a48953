// HashMap2018: the suite of all maps over every kind of node, good hashes and bad, and what only it
// promises.
#include "Vok/HSet.h"
#include "tests/Vok/MapSuite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace MapSubjects;

using Maps = testing::Types< StandardMap, VokMap< Beside< std::uint32_t > >,
      VokMap< Beside< std::uint32_t >, Portable >, VokMap< Beside< Corvo::String > >,
      VokMap< BesideText >, VokMap< BesideText, Portable >, VokMap< Inside >, VokMap< Child >,
      VokMap< BesideWide >, VokMap< Beside< BadKey< Constant > > >,
      VokMap< Beside< BadKey< ConstantLast > >, Portable >,
      VokMap< Beside< BadKey< ConstantLast > > >, VokMap< Beside< BadKey< FewHomes > > >,
      VokMap< Beside< BadKey< SameMark > > > >;
INSTANTIATE_TYPED_TEST_SUITE_P( HashMap2018, MapSuite, Maps );

// What the standard map does not offer.

using Numbers = Vok::HashMap2018< Vok::MapNode< std::uint32_t, Corvo::String >, std::uint32_t,
      Corvo::String >;
using Names = Vok::HashMap2018< Vok::MapNode< Corvo::String, std::uint32_t >, Corvo::String,
      std::uint32_t >;

// A key that says where it stands: all have the same mark and are counted alike.
struct Placed {
   std::uint32_t home = 0;
   std::uint32_t number = 0;
   bool operator==( const Placed & ) const = default;
};

} // namespace

template<> struct Vok::Detail::KeyHash< Placed > {
   static std::uint64_t hash( Placed key, HashSeed ) { return key.home; }
};

namespace {

TEST( HashMap2018Test, IsOnePointer )
{
   EXPECT_EQ( sizeof( Numbers ), sizeof( void * ) );
   EXPECT_TRUE( std::is_nothrow_move_constructible_v< Numbers > );
   EXPECT_TRUE( std::is_nothrow_move_assignable_v< Numbers > );
   EXPECT_TRUE( std::is_nothrow_default_constructible_v< Numbers > );
   EXPECT_TRUE( noexcept( std::declval< Numbers & >().clear() ) );
}

TEST( HashMap2018Test, TextKeysAreLookedUpByAnyText )
{
   Names names;
   names.findOrInsert( "mango", [] {
      return Vok::MapNode< Corvo::String, std::uint32_t >{ "mango", 1 };
   } );
   EXPECT_TRUE( names.contains( std::string_view( "mangoes" ).substr( 0, 5 ) ) );
   EXPECT_TRUE( names.contains( std::string( "mango" ) ) );
   EXPECT_TRUE( names.contains( Corvo::String( "mango" ) ) );
   EXPECT_FALSE( names.contains( "mang" ) );
   EXPECT_FALSE( names.contains( "" ) );
}

TEST( HashMap2018Test, ArgumentsMayLieInsideTheMap )
{
   Names names;
   const auto insert = [ &names ]( std::string_view name, const std::uint32_t & value ) {
      return names
            .findOrInsert( name,
                  [ & ] {
                     return Vok::MapNode< Corvo::String, std::uint32_t >{ name, value };
                  } )
            .first;
   };
   insert( "0", 4711 );
   for ( std::uint32_t i = 1; i < 500; ++i ) {
      const auto * const before = names.find( std::to_string( i - 1 ) );
      ASSERT_NE( before, nullptr );
      EXPECT_EQ( insert( std::to_string( i ), before->value )->value, 4711u );
   }
   // The key of a member as the key to look for, too.
   for ( std::uint32_t i = 0; i < 500; ++i ) {
      const auto * const node = names.find( std::to_string( i ) );
      ASSERT_NE( node, nullptr );
      EXPECT_EQ( insert( node->key, 0 ), node );
      const auto taken = names.take( node->key );
      ASSERT_TRUE( taken.has_value() );
      EXPECT_EQ( taken->key, std::to_string( i ) );
   }
   EXPECT_TRUE( names.empty() );
}

TEST( HashMap2018Test, TheMakerMayMoveTheQueryAway )
{
   Names names;
   for ( std::uint32_t i = 0; i < 100; ++i ) {
      Corvo::String name( std::to_string( i ) );
      names.findOrInsert( name, [ & ] {
         return Vok::MapNode< Corvo::String, std::uint32_t >{ std::move( name ), i };
      } );
   }
   for ( std::uint32_t i = 0; i < 100; ++i ) {
      EXPECT_TRUE( names.contains( std::to_string( i ) ) );
   }
}

TEST( HashMap2018Test, ClearGivesTheMemoryBack )
{
   Numbers numbers;
   EXPECT_EQ( numbers.capacity(), 0u );
   numbers.reserve( 100 );
   EXPECT_GE( numbers.capacity(), 100u );
   numbers.clear();
   EXPECT_EQ( numbers.capacity(), 0u );
}

TEST( HashMap2018Test, ACopyHasTheSameRoomButNoDesert )
{
   Numbers numbers;
   numbers.reserve( 1000 );
   for ( std::uint32_t i = 0; i < 600; ++i ) {
      numbers.findOrInsert( i, [ i ] {
         return Vok::MapNode< std::uint32_t, Corvo::String >{ i, "x" };
      } );
   }
   EXPECT_GE( Numbers( numbers ).capacity(), 1000u );
   for ( std::uint32_t i = 10; i < 600; ++i ) {
      numbers.take( i );
   }
   EXPECT_LT( Numbers( numbers ).capacity(), 50u );
}

TEST( HashMap2018Test, ASetHoldsEveryKeyOnce )
{
   Vok::HSet< Corvo::String, 5 > set;
   EXPECT_TRUE( set.insert( "mango" ) );
   EXPECT_FALSE( set.insert( "mango" ) );
   EXPECT_TRUE( set.contains( std::string_view( "mango" ) ) );
   for ( std::uint32_t i = 0; i < 100; ++i ) {
      // The argument lies in the set, and the set grows.
      const decltype( set )::Cursor cursor( set );
      EXPECT_FALSE( set.insert( ( *cursor ).key ) );
      EXPECT_TRUE( set.insert( std::to_string( i ) ) );
   }
   EXPECT_EQ( set.size(), 101u );
   EXPECT_TRUE( set.erase( "mango" ) );
   EXPECT_FALSE( set.erase( "mango" ) );
   EXPECT_EQ( set.size(), 100u );
}

TEST( HashMap2018Test, ATableKeepsItsSeedWhenItGrows )
{
   Vok::Detail::HashTable< Vok::SetNode< std::uint32_t > > table;
   table.reserve( 1 );
   const Vok::Detail::HashSeed seed = Vok::Detail::TableInspector::seedOf( table );
   table.reserve( 1000 );
   EXPECT_EQ( Vok::Detail::TableInspector::seedOf( table ).a, seed.a );
   EXPECT_EQ( Vok::Detail::TableInspector::seedOf( table ).b, seed.b );
}

TEST( HashMap2018Test, ASearchEndsWhereNodesWentPastEveryGroup )
{
   // Two groups of thirteen slots: one key of each home has its place in the other's.
   Vok::HSet< Placed > keys;
   for ( std::uint32_t number = 0; number != 14; ++number ) {
      keys.insert( { 0, number } );
   }
   for ( std::uint32_t number = 0; number != 8; ++number ) {
      EXPECT_TRUE( keys.erase( { 0, number } ) );
   }
   for ( std::uint32_t number = 0; number != 13; ++number ) {
      keys.insert( { 1, number } );
   }
   ASSERT_EQ( keys.capacity(), 22u );
   for ( const std::uint32_t home : { 0u, 1u } ) {
      EXPECT_EQ( keys.find( { home, 100 } ), nullptr );
      EXPECT_FALSE( keys.erase( { home, 100 } ) );
      EXPECT_TRUE( keys.erase( { home, home == 0 ? 13u : 12u } ) );
   }
   EXPECT_EQ( keys.size(), 17u );
}

TEST( HashMap2018Test, AValueUnderAnotherKeyEndsTheProcess )
{
   Inside::Node node = Inside::make( 1, 1 );
   EXPECT_DEATH( node.valueIs( { "another", 1 } ),
         "assertion \"fwkKey\\(\\) == KeyFunktor\\(\\)\\( _value \\)\" failed" );
   Child::Node child = Child::make( 1, 1 );
   EXPECT_DEATH( child.childIs( std::make_shared< Member >( Member{ "another", 1 } ) ),
         "assertion \"fwkKey\\(\\) == KeyFunktor\\(\\)\\( _value \\)\" failed" );
   const Member before = node.valueIs( { node.value.name, 2 } );
   EXPECT_EQ( before.value, 1u );
   EXPECT_EQ( node.value.value, 2u );
}

// The destructor of a value may look at the map that it leaves.
struct Watcher {
   struct Check {
      const Vok::HashMap2018< Vok::MapNode< std::uint32_t, Watcher >, std::uint32_t, Watcher > *
            map;
      std::size_t seen = 0;
   };
   Check * check = nullptr;
   explicit Watcher( Check * c ) : check( c ) {}
   Watcher( Watcher && other ) noexcept : check( std::exchange( other.check, nullptr ) ) {}
   ~Watcher();
};
using Watched = Vok::HashMap2018< Vok::MapNode< std::uint32_t, Watcher >, std::uint32_t, Watcher >;
Watcher::~Watcher()
{
   if ( check != nullptr ) {
      check->seen += check->map->size();
   }
}

TEST( HashMap2018Test, ValuesThatAreDestroyedFindAnEmptyMap )
{
   Watched map;
   Watcher::Check check{ &map };
   for ( std::uint32_t i = 0; i < 20; ++i ) {
      map.findOrInsert( i, [ & ] {
         return Vok::MapNode< std::uint32_t, Watcher >{ i, Watcher( &check ) };
      } );
   }
   map.clear();
   EXPECT_EQ( check.seen, 0u );
}

} // namespace
