// The hash map and the ordered one: what is there, what is not, what comes and goes.
#include "bench/Check.h"
#include "bench/Shuffle.h"
#include "bench/counts/Situations.h"

#include "Vok/HashMap2018.h"
#include "Vok/OrderedMap.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace Bench {
namespace {

constexpr std::uint32_t members = 5000;

std::string textFrom( TestSupport::Random & random )
{
   return "a key of some length " + std::to_string( random.word() );
}

template< class Key > Key keyFrom( TestSupport::Random & random )
{
   if constexpr ( std::is_same_v< Key, Corvo::String > ) {
      return Key( textFrom( random ) );
   } else {
      return static_cast< Key >( random.word() );
   }
}

template< class Map, class Node, class Key >
void addMap( Situations & all, const std::string & name )
{
   struct Prepared {
      std::vector< Key > keys;
      std::vector< Key > strangers;
      Map full;
      Map changing;
   };
   const auto prepared = std::make_shared< Prepared >();
   TestSupport::Random random( members );
   for ( std::uint32_t i = 0; i != members; ++i ) {
      prepared->keys.push_back( keyFrom< Key >( random ) );
      prepared->strangers.push_back( keyFrom< Key >( random ) );
   }
   const auto insertAll = [ prepared ]( Map & map ) {
      for ( const Key & key : prepared->keys ) {
         map.findOrInsert( key, [ & ] { return Node{ key, std::uint32_t{ 1 } }; } );
      }
   };
   insertAll( prepared->full );
   shuffle( prepared->keys, random );
   const auto add = [ & ]( const char * what, auto run ) {
      all.push_back( { name + "/" + what, members, [ prepared, run ] { run( *prepared ); } } );
   };
   add( "hit", []( Prepared & p ) {
      std::uint32_t found = 0;
      for ( const Key & key : p.keys ) {
         found += p.full.find( key )->value;
      }
      require( found == members, "keys that are there" );
   } );
   add( "miss", []( Prepared & p ) {
      for ( const Key & key : p.strangers ) {
         require( p.full.find( key ) == nullptr, "keys that are not" );
      }
   } );
   add( "insert-and-erase", [ insertAll ]( Prepared & p ) {
      insertAll( p.changing );
      require( p.changing.size() == members, "keys that came" );
      for ( const Key & key : p.keys ) {
         p.changing.take( key );
      }
      require( p.changing.empty(), "keys that went" );
   } );
   add( "iterate", []( Prepared & p ) {
      std::uint32_t seen = 0;
      for ( typename Map::Cursor cursor( p.full ); !cursor.atEnd(); cursor.next() ) {
         seen += cursor.node()->value;
      }
      require( seen == members, "all members" );
   } );
}

template< class Key > using Node = Vok::MapNode< Key, std::uint32_t >;
template< class Key > using Hashed = Vok::HashMap2018< Node< Key >, Key, std::uint32_t >;
template< class Key > using Ordered = Vok::OrderedMap< Node< Key >, Key, std::uint32_t >;

} // namespace

void addMaps( Situations & situations )
{
   addMap< Hashed< std::uint32_t >, Node< std::uint32_t >, std::uint32_t >(
         situations, "map/u32" );
   addMap< Hashed< Corvo::String >, Node< Corvo::String >, Corvo::String >(
         situations, "map/text" );
   addMap< Ordered< std::uint32_t >, Node< std::uint32_t >, std::uint32_t >(
         situations, "ordered/u32" );
}

} // namespace Bench
