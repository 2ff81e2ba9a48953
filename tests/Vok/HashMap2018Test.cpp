// What every map must do, whatever its nodes and however good its hash.
#include "tests/Vok/MapSubjects.h"
#include "tests/support/Random.h"

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
using TestSupport::Random;

template< class Map >
class HashMap2018Suite : public testing::Test {
 protected:
   static std::vector< std::uint32_t > values( const Map & map )
   {
      std::vector< std::uint32_t > values;
      map.each( [ &values ]( std::uint32_t value ) { values.push_back( value ); } );
      std::sort( values.begin(), values.end() );
      return values;
   }

   static Map filled( std::uint32_t size )
   {
      Map map;
      for ( std::uint32_t i = 0; i < size; ++i ) {
         map.insert( i, i );
      }
      return map;
   }

   static std::vector< std::uint32_t > upTo( std::uint32_t size )
   {
      std::vector< std::uint32_t > numbers( size );
      for ( std::uint32_t i = 0; i < size; ++i ) {
         numbers[ i ] = i;
      }
      return numbers;
   }
};

using Maps = testing::Types< StandardMap, VokMap< Beside< std::uint32_t > >,
      VokMap< Beside< std::uint32_t >, Portable >, VokMap< Beside< Corvo::String > >, VokMap< BesideText >,
      VokMap< BesideText, Portable >, VokMap< Inside >, VokMap< Child >, VokMap< BesideWide >,
      VokMap< Beside< BadKey< Constant > > >, VokMap< Beside< BadKey< ConstantLast > >, Portable >,
      VokMap< Beside< BadKey< ConstantLast > > >, VokMap< Beside< BadKey< FewHomes > > >,
      VokMap< Beside< BadKey< SameMark > > > >;
TYPED_TEST_SUITE( HashMap2018Suite, Maps );

TYPED_TEST( HashMap2018Suite, StartsEmpty )
{
   TypeParam map;
   EXPECT_EQ( map.size(), 0u );
   EXPECT_EQ( map.find( 0 ), std::nullopt );
   EXPECT_EQ( map.take( 0 ), std::nullopt );
   EXPECT_TRUE( this->values( map ).empty() );
   map.clear();
   EXPECT_EQ( map.size(), 0u );
}

TYPED_TEST( HashMap2018Suite, FindsWhatWasInserted )
{
   TypeParam map;
   for ( std::uint32_t i = 0; i < 1000; ++i ) {
      EXPECT_TRUE( map.insert( i, i * 3 ) );
      EXPECT_EQ( map.find( i ), i * 3 );
      EXPECT_EQ( map.find( i + 1 ), std::nullopt );
   }
   EXPECT_EQ( map.size(), 1000u );
   for ( std::uint32_t i = 0; i < 1000; ++i ) {
      EXPECT_EQ( map.find( i ), i * 3 );
   }
}

TYPED_TEST( HashMap2018Suite, KeepsTheFirstOfEqualKeys )
{
   TypeParam map;
   EXPECT_TRUE( map.insert( 5, 1 ) );
   EXPECT_FALSE( map.insert( 5, 2 ) );
   EXPECT_EQ( map.find( 5 ), 1u );
   EXPECT_EQ( map.size(), 1u );
}

TYPED_TEST( HashMap2018Suite, ReplacesInPlace )
{
   TypeParam map = this->filled( 100 );
   EXPECT_TRUE( map.replace( 42, 1042 ) );
   EXPECT_FALSE( map.replace( 100, 0 ) );
   EXPECT_EQ( map.find( 42 ), 1042u );
   EXPECT_EQ( map.find( 41 ), 41u );
   EXPECT_EQ( map.size(), 100u );
}

TYPED_TEST( HashMap2018Suite, TakesOutInAnyOrder )
{
   for ( const std::uint32_t stride : { 1u, 7u, 99u } ) {
      TypeParam map = this->filled( 100 );
      for ( std::uint32_t i = 0; i < 100; ++i ) {
         const std::uint32_t number = i * stride % 100;
         EXPECT_EQ( map.take( number ), number );
         EXPECT_EQ( map.take( number ), std::nullopt );
         EXPECT_EQ( map.size(), 99 - i );
      }
      EXPECT_TRUE( this->values( map ).empty() );
   }
}

TYPED_TEST( HashMap2018Suite, IteratesOverEveryMemberOnce )
{
   for ( const std::uint32_t size : { 1u, 3u, 4u, 5u, 8u, 16u, 17u, 100u, 1000u } ) {
      EXPECT_EQ( this->values( this->filled( size ) ), this->upTo( size ) );
   }
}

TYPED_TEST( HashMap2018Suite, ClearsAndServesAgain )
{
   TypeParam map = this->filled( 100 );
   map.clear();
   EXPECT_EQ( map.size(), 0u );
   EXPECT_EQ( map.find( 5 ), std::nullopt );
   EXPECT_TRUE( map.insert( 5, 6 ) );
   EXPECT_EQ( map.find( 5 ), 6u );
}

TYPED_TEST( HashMap2018Suite, CopiesAreApart )
{
   TypeParam map = this->filled( 100 );
   TypeParam copy( map );
   map.take( 3 );
   map.replace( 4, 1000 );
   copy.insert( 100, 100 );
   EXPECT_EQ( this->values( copy ), this->upTo( 101 ) );
   EXPECT_EQ( map.size(), 99u );
   copy = map;
   EXPECT_EQ( this->values( copy ), this->values( map ) );
   const TypeParam & itself = copy;
   copy = itself;
   EXPECT_EQ( this->values( copy ), this->values( map ) );
   const TypeParam empty;
   copy = empty;
   EXPECT_EQ( copy.size(), 0u );
}

TYPED_TEST( HashMap2018Suite, MovesAndSwaps )
{
   TypeParam map = this->filled( 100 );
   TypeParam moved( std::move( map ) );
   EXPECT_EQ( this->values( moved ), this->upTo( 100 ) );
   map = TypeParam();
   EXPECT_EQ( map.size(), 0u );
   map.swap( moved );
   EXPECT_EQ( moved.size(), 0u );
   EXPECT_EQ( this->values( map ), this->upTo( 100 ) );
   moved = std::move( map );
   EXPECT_EQ( this->values( moved ), this->upTo( 100 ) );
}

TYPED_TEST( HashMap2018Suite, ReservingKeepsTheMembers )
{
   TypeParam map;
   map.reserve( 0 );
   map.reserve( 10 );
   map.insert( 1, 1 );
   map.reserve( 5000 );
   map.insert( 0, 0 );
   map.reserve( 3 );
   EXPECT_EQ( this->values( map ), this->upTo( 2 ) );
}

TYPED_TEST( HashMap2018Suite, FollowsAModel )
{
   Random random( 2018 );
   TypeParam map;
   std::map< std::uint32_t, std::uint32_t > model;
   for ( const std::uint32_t range : { 6u, 20u, 150u, 1200u } ) {
      for ( std::uint32_t step = 0; step < 6000; ++step ) {
         const std::uint32_t number = random.below( range );
         const auto known = model.find( number );
         const auto expected =
               known != model.end() ? std::optional( known->second ) : std::nullopt;
         switch ( random.below( 4 ) ) {
         case 0:
         case 1:
            EXPECT_EQ( map.insert( number, step ), model.emplace( number, step ).second );
            break;
         case 2:
            EXPECT_EQ( map.take( number ), expected );
            model.erase( number );
            break;
         default:
            EXPECT_EQ( map.find( number ), expected );
         }
         ASSERT_EQ( map.size(), model.size() );
      }
      std::vector< std::uint32_t > expected;
      for ( const auto & [ number, value ] : model ) {
         EXPECT_EQ( map.find( number ), value );
         expected.push_back( value );
      }
      std::sort( expected.begin(), expected.end() );
      EXPECT_EQ( this->values( map ), expected );
   }
}

// What the standard map does not offer.

using Numbers = Vok::HashMap2018< Vok::MapNode< std::uint32_t, Corvo::String >, std::uint32_t,
      Corvo::String >;
using Names = Vok::HashMap2018< Vok::MapNode< Corvo::String, std::uint32_t >, Corvo::String,
      std::uint32_t >;

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
   names.findOrInsert( "mango", [] { return Vok::MapNode< Corvo::String, std::uint32_t >{ "mango", 1 }; } );
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
      return names.findOrInsert( name, [ & ] {
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
      numbers.findOrInsert( i, [ i ] { return Vok::MapNode< std::uint32_t, Corvo::String >{ i, "x" }; } );
   }
   EXPECT_GE( Numbers( numbers ).capacity(), 1000u );
   for ( std::uint32_t i = 10; i < 600; ++i ) {
      numbers.take( i );
   }
   EXPECT_LT( Numbers( numbers ).capacity(), 50u );
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
      const Vok::HashMap2018< Vok::MapNode< std::uint32_t, Watcher >, std::uint32_t, Watcher > * map;
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
      map.findOrInsert( i, [ & ] { return Vok::MapNode< std::uint32_t, Watcher >{ i, Watcher( &check ) }; } );
   }
   map.clear();
   EXPECT_EQ( check.seen, 0u );
}

} // namespace
