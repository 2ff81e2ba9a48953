// Checks that the engines keep the invariants that their headers state.
#pragma once

#include "Vok/HashMap2018.h"
#include "Vok/OrderedMap.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

namespace Vok::Detail {

/// The engines' friend.
struct TableInspector {
   /// I1 to I4 of HashMap2018.h.
   template< class Node, class Lanes >
   static void expectSound( const HashTable< Node, Lanes > & map )
   {
      TableHeader * const table = map.table_;
      if ( table == nullptr ) {
         return;
      }
      std::size_t nodes = 0;
      std::size_t lastHome = 0;
      std::size_t runStart = 0; // where the occupied slots before this one begin
      for ( std::size_t slot = 0; slot < table->slots; ++slot ) {
         const SlotMark mark = table->marks()[ slot ];
         if ( mark == 0 ) {
            runStart = slot + 1;
            continue;
         }
         ++nodes;
         const std::uint64_t hash = map.hashOf( map.nodes()[ slot ].fwkKey() );
         const std::size_t home = map.homeOf( hash );
         ASSERT_LE( home, slot );
         ASSERT_GE( home, lastHome ) << "homes out of order";
         ASSERT_GE( home, runStart ) << "an empty slot between a node and its home";
         ASSERT_EQ( mark, slotMark( slot - home, hash ) );
         lastHome = home;
      }
      ASSERT_EQ( nodes, table->size );
      ASSERT_LE( table->size, table->room );
      ASSERT_LE( table->room, table->slots );
      ASSERT_LE( table->homes, table->slots );
      for ( std::size_t i = 0; i < marksBehind; ++i ) {
         ASSERT_EQ( table->marks()[ table->slots + i ], 0 );
      }
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
