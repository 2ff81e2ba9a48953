// How a B-tree changes: splitting, borrowing, merging, copying, destruction. Part of BTree.h.
#pragma once

#include "Vok/detail/BTree.h"

#include <limits>

namespace Vok::Detail {

template< class Node > void BTree< Node >::clear() noexcept
{
   // What a node's destructor does to this map, it does to an empty one.
   if ( Tree * const tree = std::exchange( tree_, nullptr ) ) {
      while ( tree->cursors != nullptr ) {
         tree->cursors->detach();
      }
      if ( tree->root != nullptr ) {
         destroyItems( tree->root );
      }
      tree->leaves.clear();
      tree->inners.clear();
      delete tree;
   }
}

// Recursion is as deep as the tree is high.
template< class Node > void BTree< Node >::destroyItems( Leaf * block ) noexcept
{
   std::destroy_n( block->items(), block->size );
   if ( !block->hasChildren ) {
      delete block;
      return;
   }
   for ( Leaf * const child : inner( block )->children ) {
      if ( child != nullptr ) {
         destroyItems( child );
      }
   }
   delete inner( block );
}

// A tree of `size` items has at most so many blocks: each but the root has `least` items, and each
// with children one child more.
template< class Node > void BTree< Node >::reserve( std::size_t size )
{
   if ( size == 0 ) {
      return;
   }
   if ( size > std::numeric_limits< std::ptrdiff_t >::max() / sizeof( Leaf ) ) {
      throw std::bad_array_new_length();
   }
   if ( tree_ == nullptr ) {
      auto tree = std::make_unique< Tree >();
      tree->leaves.provide( 1 );
      tree->root = tree->leaves.take();
      tree_ = tree.release();
   }
   const std::size_t leaves = std::max< std::size_t >( ( size + 1 ) / ( least + 1 ), 1 );
   std::size_t inners = 0;
   for ( std::size_t level = leaves; level > 1; ) {
      level = std::max< std::size_t >( level / ( least + 1 ), 1 );
      inners += level;
   }
   tree_->leaves.provide( leaves - std::min( leaves, tree_->leaves.used ) );
   tree_->inners.provide( inners - std::min( inners, tree_->inners.used ) );
}

template< class Node > void BTree< Node >::copy( const BTree & other )
{
   if ( other.size() > 0 ) {
      tree_ = new Tree;
      copyBlock( tree_, &tree_->root, nullptr, other.tree_->root );
   }
}

// Every block stands in the new tree from its beginning on, so that where a copy throws, what there
// is already is destroyed with the tree.
template< class Node >
void BTree< Node >::copyBlock( Tree * tree, Leaf ** to, Inner * parent, Leaf * from )
{
   if ( from->hasChildren ) {
      tree->inners.provide( 1 );
      *to = tree->inners.take();
   } else {
      tree->leaves.provide( 1 );
      *to = tree->leaves.take();
   }
   Leaf * const block = *to;
   block->parent = parent;
   for ( ; block->size < from->size; ++block->size, ++tree->size ) {
      std::construct_at( block->items() + block->size,
            static_cast< const Node & >( from->items()[ block->size ] ) );
   }
   if ( from->hasChildren ) {
      for ( std::size_t i = 0; i <= from->size; ++i ) {
         copyBlock(
               tree, &inner( block )->children[ i ], inner( block ), inner( from )->children[ i ] );
      }
   }
}

// Provides the blocks that an insertion into a leaf takes: one for each full block from the leaf
// upward, and a new root where all are full.
template< class Node > void BTree< Node >::provideFor( Leaf * leaf )
{
   if ( leaf->size < most ) {
      return;
   }
   std::size_t inners = 0;
   const Leaf * above = leaf->parent;
   for ( ; above != nullptr && above->size == most; above = above->parent ) {
      ++inners;
   }
   tree_->leaves.provide( 1 );
   tree_->inners.provide( inners + ( above == nullptr ? 1 : 0 ) );
}

template< class Node >
typename BTree< Node >::Leaf * BTree< Node >::newLike( const Leaf * block ) noexcept
{
   return block->hasChildren ? tree_->inners.take() : tree_->leaves.take();
}

template< class Node > void BTree< Node >::giveBack( Leaf * block ) noexcept
{
   if ( block->hasChildren ) {
      tree_->inners.give( inner( block ) );
   } else {
      tree_->leaves.give( block );
   }
}

// Makes an unused place for an item in a block that is not full, and puts `child` behind it.
template< class Node >
Node * BTree< Node >::open( Leaf * block, std::size_t index, Leaf * child ) noexcept
{
   Node * const place = block->items() + index;
   relocateMany( place + 1, place, block->size - index );
   if ( block->hasChildren ) {
      Leaf ** const children = inner( block )->children;
      std::copy_backward(
            children + index + 1, children + block->size + 1, children + block->size + 2 );
      children[ index + 1 ] = child;
      child->parent = inner( block );
   }
   ++block->size;
   return place;
}

// Closes the unused place of an item, and takes the child behind it out.
template< class Node > void BTree< Node >::close( Leaf * block, std::size_t index ) noexcept
{
   Node * const place = block->items() + index;
   --block->size;
   relocateMany( place, place + 1, block->size - index );
   if ( block->hasChildren ) {
      Leaf ** const children = inner( block )->children;
      std::copy( children + index + 2, children + block->size + 2, children + index + 1 );
      children[ block->size + 1 ] = nullptr;
   }
}

// Moves the items of a block from `index` on behind those of another one, with the children that
// stand before and behind them.
template< class Node >
void BTree< Node >::moveItems( Leaf * from, std::size_t index, Leaf * to ) noexcept
{
   const std::size_t count = from->size - index;
   relocateMany( to->items() + to->size, from->items() + index, count );
   if ( from->hasChildren ) {
      for ( std::size_t i = 0; i <= count; ++i ) {
         Leaf * const child = std::exchange( inner( from )->children[ index + i ], nullptr );
         inner( to )->children[ to->size + i ] = child;
         child->parent = inner( to );
      }
   }
   to->size += static_cast< std::uint32_t >( count );
   from->size -= static_cast< std::uint32_t >( count );
}

// Puts a node into a leaf. A full block is split: its lower half stays, its upper half goes to a
// new block, and the item between them rises to the parent. The blocks for it have been provided.
template< class Node >
Node * BTree< Node >::insertAt( Leaf * block, std::size_t index, Node & node ) noexcept
{
   ++tree_->size;
   alignas( Node ) std::byte memory[ 2 ][ sizeof( Node ) ];
   Node * rising =
         std::construct_at( reinterpret_cast< Node * >( memory[ 0 ] ), std::move( node ) );
   Node * spare = reinterpret_cast< Node * >( memory[ 1 ] );
   Node * inserted = nullptr; // once the new node has its place
   Leaf * child = nullptr;
   while ( block->size == most ) {
      Leaf * const upper = newLike( block );
      if ( index == least ) {
         // The rising item stays between the halves; its child is the first of the upper one.
         moveItems( block, least, upper );
         if ( block->hasChildren ) {
            inner( block )->children[ least ] = inner( upper )->children[ 0 ];
            inner( block )->children[ least ]->parent = inner( block );
            inner( upper )->children[ 0 ] = child;
            child->parent = inner( upper );
         }
      } else {
         const bool intoLower = index < least;
         const std::size_t middle = intoLower ? least - 1 : least;
         moveItems( block, middle + 1, upper );
         relocate( spare, block->items() + middle );
         --block->size;
         Leaf * const half = intoLower ? block : upper;
         Node * const place = open( half, intoLower ? index : index - least - 1, child );
         relocate( place, rising );
         inserted = inserted != nullptr ? inserted : place;
         std::swap( rising, spare );
      }
      child = upper;
      if ( block->parent == nullptr ) {
         Inner * const root = tree_->inners.take();
         root->children[ 0 ] = block;
         block->parent = root;
         tree_->root = root;
      }
      index = indexIn( inner( block->parent ), block );
      block = block->parent;
   }
   Node * const place = open( block, index, child );
   relocate( place, rising );
   return inserted != nullptr ? inserted : place;
}

// Removes an item that has been moved from. In an inner block the item before it takes its place,
// which is the last of a leaf.
template< class Node > void BTree< Node >::removeAt( Leaf * block, std::size_t index ) noexcept
{
   --tree_->size;
   Node * const item = block->items() + index;
   std::destroy_at( item );
   Leaf * leaf = block;
   if ( block->hasChildren ) {
      leaf = inner( block )->children[ index ];
      while ( leaf->hasChildren ) {
         leaf = inner( leaf )->children[ leaf->size ];
      }
      index = leaf->size - 1;
      relocate( item, leaf->items() + index );
   }
   close( leaf, index );
   rebalance( leaf );
}

// Fills a block that has become too small from its neighbours, or unites it with one of them; then
// the parent may be too small.
template< class Node > void BTree< Node >::rebalance( Leaf * block ) noexcept
{
   while ( block->size < least && block->parent != nullptr ) {
      Inner * const parent = inner( block->parent );
      const std::size_t index = indexIn( parent, block );
      if ( index > 0 && parent->children[ index - 1 ]->size > least ) {
         borrowFromLeft( parent, index );
         return;
      }
      if ( index < parent->size && parent->children[ index + 1 ]->size > least ) {
         borrowFromRight( parent, index );
         return;
      }
      merge( parent, index > 0 ? index - 1 : 0 );
      block = parent;
   }
   if ( block->size == 0 && block->hasChildren ) {
      tree_->root = std::exchange( inner( block )->children[ 0 ], nullptr );
      tree_->root->parent = nullptr;
      giveBack( block );
   }
}

// The last item of the left neighbour rises, and the one between them comes down.
template< class Node >
void BTree< Node >::borrowFromLeft( Inner * parent, std::size_t index ) noexcept
{
   Leaf * const left = parent->children[ index - 1 ];
   Leaf * const block = parent->children[ index ];
   Node * const between = parent->items() + index - 1;
   Leaf * child = nullptr;
   if ( block->hasChildren ) {
      // The last child of the left one becomes the first here.
      child = std::exchange( inner( block )->children[ 0 ], inner( left )->children[ left->size ] );
      inner( block )->children[ 0 ]->parent = inner( block );
   }
   relocate( open( block, 0, child ), between );
   relocate( between, left->items() + left->size - 1 );
   close( left, left->size - 1 );
}

// The first item of the right neighbour rises, and the one between them comes down.
template< class Node >
void BTree< Node >::borrowFromRight( Inner * parent, std::size_t index ) noexcept
{
   Leaf * const block = parent->children[ index ];
   Leaf * const right = parent->children[ index + 1 ];
   Node * const between = parent->items() + index;
   Leaf * child = nullptr;
   if ( block->hasChildren ) {
      // The first child of the right one becomes the last here; closing takes out the second.
      child = std::exchange( inner( right )->children[ 0 ], inner( right )->children[ 1 ] );
   }
   relocate( open( block, block->size, child ), between );
   relocate( between, right->items() );
   close( right, 0 );
}

// Unites the children before and behind an item of their parent, with that item between them.
template< class Node > void BTree< Node >::merge( Inner * parent, std::size_t index ) noexcept
{
   Leaf * const left = parent->children[ index ];
   Leaf * const right = parent->children[ index + 1 ];
   relocate( left->items() + left->size, parent->items() + index );
   ++left->size;
   moveItems( right, 0, left );
   close( parent, index );
   giveBack( right );
}

} // namespace Vok::Detail
