// Keys and values that count what is done to them, and that fail on demand.
#pragma once

#include "Vok/detail/Hash.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace TestSupport {

/// What happened to the objects of one counting type.
struct Counts {
   std::size_t copies = 0;
   std::size_t moves = 0;
   std::size_t hashes = 0;
   std::size_t equalities = 0;
   std::size_t orderings = 0;
};

struct CopyFailure : std::runtime_error {
   CopyFailure() : std::runtime_error( "the copy was told to fail" ) {}
};

/// A number that counts its copies, moves, hashes and comparisons, knows how many of its kind are
/// alive, and ends the test when it is used after it was destroyed. `Tag` makes types whose counts
/// are apart.
template< class Tag > class Counting {
 public:
   inline static Counts counts;
   inline static std::ptrdiff_t live = 0;
   /// How many copies still succeed; negative: all.
   inline static std::ptrdiff_t copiesLeft = -1;

   static void reset()
   {
      counts = {};
      copiesLeft = -1;
   }

   Counting( std::uint32_t number = 0 ) : number_( number ) { ++live; }
   Counting( const Counting & other ) : number_( other.number() )
   {
      if ( copiesLeft == 0 ) {
         throw CopyFailure();
      }
      --copiesLeft;
      ++counts.copies;
      ++live;
   }
   Counting( Counting && other ) noexcept : number_( std::exchange( other.number_, movedFrom ) )
   {
      ++counts.moves;
      ++live;
   }
   Counting & operator=( const Counting & other )
   {
      Counting copy( other );
      std::swap( number_, copy.number_ );
      return *this;
   }
   Counting & operator=( Counting && other ) noexcept
   {
      ++counts.moves;
      number_ = std::exchange( other.number_, movedFrom );
      return *this;
   }
   ~Counting()
   {
      --live;
      alive_ = 0;
   }

   std::uint32_t number() const
   {
      if ( alive_ != aliveMark ) {
         throw std::logic_error( "an object was used after its end" );
      }
      return number_;
   }

   friend bool operator==( const Counting & a, const Counting & b )
   {
      ++counts.equalities;
      return a.number() == b.number();
   }
   friend std::strong_ordering operator<=>( const Counting & a, const Counting & b )
   {
      ++counts.orderings;
      return a.number() <=> b.number();
   }

 private:
   static constexpr std::uint32_t aliveMark = 0xa11feeed;
   static constexpr std::uint32_t movedFrom = 0xffffffff;

   std::uint32_t number_;
   volatile std::uint32_t alive_ = aliveMark;
};

} // namespace TestSupport

template< class Tag > struct Vok::Detail::KeyHash< TestSupport::Counting< Tag > > {
   static std::uint64_t hash( const TestSupport::Counting< Tag > & key, HashSeed seed )
   {
      ++TestSupport::Counting< Tag >::counts.hashes;
      return hashWord( key.number(), seed );
   }
};
