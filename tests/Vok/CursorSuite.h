// What the iterations over every map must do while the map changes: random histories with several
// iterations at once, for the subjects of MapSubjects.h.
#pragma once

#include "tests/Vok/MapSubjects.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace MapSubjects {

// Every member carries the number of its insertion; the model knows which members
// are there, and of each iteration what it has to see and what it has seen.
template< class Map > class CursorSuite : public testing::Test {
 protected:
   using Table = typename Map::Table;

   struct Iteration {
      typename Table::Cursor cursor;
      std::set< std::uint32_t > owed; // there since the start, and not yet seen
      std::set< std::uint32_t > seen;
      std::uint32_t standsOn = 0;

      Iteration( const Table & table, const std::map< std::uint32_t, std::uint32_t > & model )
            : cursor( table )
      {
         for ( const auto & [ number, birth ] : model ) {
            owed.insert( birth );
         }
         arrive();
      }

      void arrive()
      {
         if ( cursor.atEnd() ) {
            EXPECT_TRUE( owed.empty() );
            return;
         }
         standsOn = Map::valueOf( *cursor );
         EXPECT_TRUE( seen.insert( standsOn ).second ) << "seen twice";
         owed.erase( standsOn );
      }
   };

   void add( std::uint32_t number )
   {
      ++births_;
      if ( map_.insert( number, births_ ) ) {
         EXPECT_TRUE( model_.emplace( number, births_ ).second );
      }
   }

   void remove( std::uint32_t number )
   {
      const auto at = model_.find( number );
      const auto taken = map_.take( number );
      ASSERT_EQ( taken.has_value(), at != model_.end() );
      if ( taken ) {
         for ( const auto & iteration : iterations_ ) {
            iteration->owed.erase( at->second );
         }
         model_.erase( at );
      }
   }

   void clear()
   {
      map_.clear();
      model_.clear();
      for ( const auto & iteration : iterations_ ) {
         EXPECT_TRUE( iteration->cursor.atEnd() );
         iteration->owed.clear();
      }
   }

   // Where an iteration stands on a member that is there, it says so; else it says null.
   void check( const Iteration & iteration )
   {
      const auto * const node = iteration.cursor.node();
      bool there = false;
      for ( const auto & [ number, birth ] : model_ ) {
         there = there || birth == iteration.standsOn;
      }
      if ( there && !iteration.cursor.atEnd() ) {
         ASSERT_NE( node, nullptr );
         EXPECT_EQ( Map::valueOf( *node ), iteration.standsOn );
      } else if ( node != nullptr ) {
         // Deleted, and its key inserted anew while the cursor stood on it.
         EXPECT_GT( Map::valueOf( *node ), iteration.standsOn );
      }
   }

   void step( TestSupport::Random & random, std::uint32_t range )
   {
      const std::uint32_t chosen = random.below( 32 );
      if ( chosen < 9 ) {
         add( random.below( range ) );
      } else if ( chosen < 17 ) {
         remove( random.below( range ) );
      } else if ( chosen == 17 && iterations_.size() < 4 ) {
         iterations_.push_back( std::make_unique< Iteration >( map_.table(), model_ ) );
      } else if ( !iterations_.empty() ) {
         const std::size_t index =
               random.below( static_cast< std::uint32_t >( iterations_.size() ) );
         Iteration & iteration = *iterations_[ index ];
         if ( chosen == 18 ) {
            iterations_.push_back( std::make_unique< Iteration >( iteration ) );
         } else if ( chosen == 19 && random.oneIn( 4 ) ) {
            iterations_.erase( iterations_.begin() + static_cast< std::ptrdiff_t >( index ) );
         } else if ( chosen < 23 ) {
            for ( const auto & [ number, birth ] : model_ ) {
               if ( birth == iteration.standsOn ) {
                  remove( number );
                  break;
               }
            }
         } else if ( chosen == 23 && random.oneIn( 20 ) ) {
            clear();
         } else if ( chosen == 24 && random.oneIn( 10 ) ) {
            for ( std::uint32_t i = 0; i < range / 2; ++i ) {
               add( random.below( range ) );
            }
         } else {
            iteration.cursor.next();
            iteration.arrive();
         }
      }
   }

   void run( std::uint64_t seed, std::uint32_t range, std::uint32_t steps )
   {
      TestSupport::Random random( seed );
      for ( std::uint32_t i = 0; i < steps && !this->HasFailure(); ++i ) {
         step( random, range );
         ASSERT_EQ( map_.size(), model_.size() );
         if ( i % 10 == 0 ) {
            map_.expectSound();
         }
         for ( const auto & iteration : iterations_ ) {
            check( *iteration );
         }
      }
      for ( const auto & iteration : iterations_ ) {
         while ( !iteration->cursor.atEnd() ) {
            iteration->cursor.next();
            iteration->arrive();
         }
      }
      iterations_.clear();
      clear();
   }

 private:
   Map map_;
   std::map< std::uint32_t, std::uint32_t > model_; // number to birth
   std::vector< std::unique_ptr< Iteration > > iterations_;
   std::uint32_t births_ = 0;
};

TYPED_TEST_SUITE_P( CursorSuite );

TYPED_TEST_P( CursorSuite, SeesEveryMemberThatStaysExactlyOnce )
{
   for ( std::uint64_t seed = 1; seed <= 12; ++seed ) {
      for ( const std::uint32_t range : { 3u, 12u, 40u, 400u } ) {
         this->run( seed, range, 1500 );
         ASSERT_FALSE( this->HasFailure() ) << "seed " << seed << ", range " << range;
      }
   }
}

REGISTER_TYPED_TEST_SUITE_P( CursorSuite, SeesEveryMemberThatStaysExactlyOnce );

} // namespace MapSubjects
