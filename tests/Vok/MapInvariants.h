// Checks that the engines keep the invariants that their headers state.
#pragma once

#include "Vok/HashMap2018.h"
#include "Vok/OrderedMap.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vok::Detail {

/// The engines' friend.
struct TableInspector {
   /// I1 to I4 of HashMap2018.h.
   template< class Node, class Marks >
   static void expectSound( const HashTable< Node, Marks > & map )
   {
      using Table = HashTable< Node, Marks >;
      const TableHeader * const table = map.table_;
      if ( table == nullptr ) {
         return;
      }
      std::vector< std::array< std::size_t, 8 > > passed( table->last + 1 );
      std::size_t nodes = 0;
      for ( std::size_t group = 0; group <= table->last; ++group ) {
         const std::uint8_t * const marks = table->groups()[ group ].bytes();
         for ( std::size_t slot = 0; slot < MarkGroup::slots; ++slot ) {
            if ( marks[ slot ] == 0 ) {
               continue;
            }
            ++nodes;
            const std::uint64_t hash = map.hashOf( Table::nodeAt( *table, group, slot )->fwkKey() );
            ASSERT_EQ( marks[ slot ], MarkGroup::markOf( hash ) );
            typename Table::Groups way( *table, hash );
            while ( *way != group ) {
               ++passed[ *way ][ hash >> 56 & 7 ];
               ASSERT_TRUE( way.next() ) << "a group off its way";
            }
         }
      }
      ASSERT_EQ( nodes, table->size );
      ASSERT_LE( table->size, table->room );
      ASSERT_LE( table->room, ( table->last + 1 ) * MarkGroup::slots );
      for ( std::size_t group = 0; group <= table->last; ++group ) {
         for ( std::uint64_t value = 0; value < 8; ++value ) {
            expectCounted( table->groups()[ group ], value << 56, passed[ group ][ value ] );
         }
      }
   }

   /// Whether a group counts so many nodes that went past it; those beyond 7 are not told apart.
   static void expectCounted( MarkGroup group, std::uint64_t hash, std::size_t passed )
   {
      std::size_t counted = 0;
      for ( ; group.passed( hash ) && counted < 7; ++counted ) {
         group.wentPast( hash );
      }
      ASSERT_TRUE( counted == passed || counted == 7 ) << counted << " of " << passed;
   }

   /// Of a table that has a block.
   template< class Node, class Marks >
   static HashSeed seedOf( const HashTable< Node, Marks > & map )
   {
      return map.table_->seed;
   }

   /// I1 to I4 of OrderedMap.h.
   template< class Node > static void expectSound( const BTree< Node > & map )
   {
      if ( map.tree_ == nullptr ) {
         return;
      }
      ASSERT_EQ( map.tree_->root->parent, nullptr );
      Walk< BTree< Node > > walk;
      walk.block( map.tree_->root, 0 );
      ASSERT_EQ( walk.items, map.tree_->size );
      ASSERT_EQ( walk.leaves, map.tree_->leaves.used );
      ASSERT_EQ( walk.inners, map.tree_->inners.used );
   }

 private:
   template< class Tree > struct Walk {
      std::size_t items = 0;
      std::size_t leaves = 0;
      std::size_t inners = 0;
      std::size_t leafDepth = 0;
      const typename Tree::Key * last = nullptr;

      void item( const typename Tree::Key & key )
      {
         ASSERT_TRUE( last == nullptr || *last < key ) << "keys out of order";
         last = &key;
         ++items;
      }

      void block( typename Tree::Leaf * at, std::size_t depth )
      {
         ASSERT_LE( at->size, Tree::most );
         ASSERT_GE( at->size, depth > 0 ? Tree::least : at->hasChildren ? 1
                                                                        : 0 );
         if ( !at->hasChildren ) {
            ASSERT_TRUE( leaves == 0 || depth == leafDepth ) << "leaves at several heights";
            leafDepth = depth;
            ++leaves;
            for ( std::size_t i = 0; i < at->size; ++i ) {
               item( at->items()[ i ].fwkKey() );
            }
            return;
         }
         ++inners;
         for ( std::size_t i = 0; i <= at->size; ++i ) {
            typename Tree::Leaf * const child = Tree::inner( at )->children[ i ];
            ASSERT_NE( child, nullptr );
            ASSERT_EQ( child->parent, at );
            block( child, depth + 1 );
            if ( i < at->size ) {
               item( at->items()[ i ].fwkKey() );
            }
         }
         for ( std::size_t i = at->size + std::size_t{ 1 }; i <= Tree::most; ++i ) {
            ASSERT_EQ( Tree::inner( at )->children[ i ], nullptr );
         }
      }
   };
};

} // namespace Vok::Detail
