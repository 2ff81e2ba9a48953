// The keys that maps are asked for: random, no two the same, the same in every run.
#pragma once

#include "bench/MapSubjects.h"
#include "bench/Shuffle.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Bench {

/// The key of a number; different ones of different numbers.
template< class Key > Key keyOf( std::uint32_t number )
{
   if constexpr ( std::is_same_v< Key, std::uint32_t > ) {
      number *= 0x9e3779b1; // each of these steps can be undone
      number = ( number ^ number >> 15 ) * 0x85ebca6b;
      return number ^ number >> 13;
   } else {
      // Of 16 to 24 bytes, of which 16 are the word.
      static_assert( std::is_same_v< Key, std::string > );
      TestSupport::Random random( number * std::uint64_t{ 0x9e3779b97f4a7c15 } );
      Key key;
      for ( std::uint64_t word = random.word(); key.size() != 16; word >>= 4 ) {
         key += "0123456789abcdef"[ word & 15 ];
      }
      key.append( random.below( 9 ), 'x' );
      return key;
   }
}

/// What is done to a map of which members come and go.
enum class Deed {
   find,
   insert,
   erase
};

/// The members of a map of some size, and keys that are not in it. A small map is gone through in
/// several orders, or the processor would learn the one.
template< class Key > struct Keys {
   using Members = std::vector< std::pair< Key, Number > >;

   std::size_t size;
   Members members;
   std::vector< Members > orders;
   std::vector< Key > strangers;
   std::vector< std::pair< Deed, Key > > deeds;
   std::size_t effects = 0; // of the deeds on a map of all members: found, inserted, erased

   explicit Keys( std::size_t ofSize ) : size( ofSize )
   {
      TestSupport::Random random( 2018 + size );
      const auto count = static_cast< std::uint32_t >( size );
      for ( std::uint32_t number = 0; number != count; ++number ) {
         members.emplace_back( keyOf< Key >( number ), number + 1 );
      }
      for ( std::size_t calls = 0; calls < 16000; calls += size ) {
         orders.push_back( members );
         shuffle( orders.back(), random );
      }
      for ( std::uint32_t number = 0; number != count * orders.size(); ++number ) {
         strangers.push_back( keyOf< Key >( count + number ) );
      }
      makeDeeds( random );
   }

   Number sum() const { return Number{ size } * ( size + 1 ) / 2; }

   static const Keys & of( std::size_t size )
   {
      static std::map< std::size_t, Keys > made;
      return made.try_emplace( size, size ).first->second;
   }

 private:
   // Half of them lookups, among twice as many keys as the map has members.
   void makeDeeds( TestSupport::Random & random )
   {
      const auto count = static_cast< std::uint32_t >( size );
      std::vector< bool > present( 2 * size );
      std::fill_n( present.begin(), size, true );
      for ( std::size_t i = 0; i != strangers.size(); ++i ) {
         const std::uint32_t number = random.below( 2 * count );
         const std::uint32_t dice = random.below( 4 );
         const Deed deed = dice < 2 ? Deed::find : dice == 2 ? Deed::insert
                                                             : Deed::erase;
         effects += ( deed == Deed::insert ) != present[ number ] ? 1U : 0U;
         present[ number ] = deed == Deed::find ? present[ number ] : deed == Deed::insert;
         deeds.emplace_back( deed, keyOf< Key >( number ) );
      }
   }
};

} // namespace Bench
