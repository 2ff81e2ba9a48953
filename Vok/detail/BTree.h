// The engine of OrderedMap: a B-tree, and lookup in it. How it changes is in BTreeChange.h, how it
// is iterated in BTreeCursor.h, its picture in OrderedMap.h.
#pragma once

#include "Vok/detail/CacheLines.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/Relocate.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <type_traits>
#include <utility>

namespace Vok::Detail {

template< class Node >
concept hasKeyInside = requires( const Node & node )
{
   node.key;
};

template< class Key, class Query >
concept comparesThreeWays = requires( const Key & key, Query query )
{
   key <=> query;
};

// Node is as MapNodes.h describes it; its keys are ordered by `<`.
template< class Node > class BTree {
 public:
   using Key = typename Node::Key;
   using Query = KeyQuery< Key >;
   class Cursor;

   static_assert(
         std::is_nothrow_move_constructible_v< Node > && std::is_nothrow_destructible_v< Node > );
   static_assert( std::is_nothrow_copy_constructible_v< Key >,
         "an iteration keeps a copy of its key when the map changes" );

   BTree() noexcept = default;
   BTree( const BTree & other )
   {
      BTree fresh;
      fresh.copy( other );
      swap( fresh );
   }
   BTree( BTree && other ) noexcept : tree_( std::exchange( other.tree_, nullptr ) ) {}
   BTree & operator=( const BTree & other )
   {
      if ( this != &other ) {
         BTree( other ).swap( *this );
      }
      return *this;
   }
   BTree & operator=( BTree && other ) noexcept
   {
      BTree( std::move( other ) ).swap( *this );
      return *this;
   }
   ~BTree() { clear(); }

   void swap( BTree & other ) noexcept { std::swap( tree_, other.tree_ ); }

   std::size_t size() const noexcept { return tree_ != nullptr ? tree_->size : 0; }

   Node * find( Query query ) const noexcept
   {
      const Spot spot = tree_ != nullptr ? search( query ) : Spot{};
      return spot.found ? spot.block->items() + spot.index : nullptr;
   }

   template< class Make > std::pair< Node *, bool > findOrInsert( Query query, Make && make )
   {
      Spot spot = tree_ != nullptr ? search( query ) : Spot{};
      if ( spot.found ) {
         return { spot.block->items() + spot.index, false };
      }
      Node node = std::forward< Make >( make )();
      if ( tree_ == nullptr ) {
         reserve( 1 );
         spot.block = tree_->root;
      }
      provideFor( spot.block );
      rememberKeys();
      return { insertAt( spot.block, spot.index, node ), true };
   }

   std::optional< Node > take( Query query ) noexcept
   {
      std::optional< Node > taken;
      const Spot spot = tree_ != nullptr ? search( query ) : Spot{};
      if ( spot.found ) {
         rememberKeys();
         taken.emplace( std::move( spot.block->items()[ spot.index ] ) );
         removeAt( spot.block, spot.index );
      }
      return taken;
   }

   template< class F > void eachNode( F & f ) const
   {
      if ( size() != 0 ) {
         eachNodeBelow( tree_->root, f );
      }
   }

   void clear() noexcept;
   void reserve( std::size_t size );

 private:
   friend struct TableInspector; // the tests' eye on the invariants

   // How many items a block holds: about half a kilobyte of them. Every block but the root has at
   // least half as many.
   static constexpr std::size_t most = std::clamp< std::size_t >( 480 / sizeof( Node ), 4, 64 );
   static constexpr std::size_t least = most / 2;

   struct Inner;

   // A block without children; also the front of one with children.
   struct Leaf {
      Leaf * parent = nullptr; // has children; in a list of spare blocks: the next one
      std::uint32_t size = 0;
      bool hasChildren = false;
      alignas( Node ) std::byte memory[ most * sizeof( Node ) ];

      Node * items() noexcept { return reinterpret_cast< Node * >( memory ); }
   };

   // The items of child i are before item i, those of child i + 1 after it.
   struct Inner : Leaf {
      Inner() noexcept { this->hasChildren = true; }
      Leaf * children[ most + 1 ] = {};
   };

   static Inner * inner( Leaf * block ) noexcept { return static_cast< Inner * >( block ); }

   template< class F > static void eachNodeBelow( Leaf * block, F & f )
   {
      for ( std::size_t i = 0; i != block->size; ++i ) {
         if ( block->hasChildren ) {
            eachNodeBelow( inner( block )->children[ i ], f );
         }
         f( std::as_const( block->items()[ i ] ) );
      }
      if ( block->hasChildren ) {
         eachNodeBelow( inner( block )->children[ block->size ], f );
      }
   }

   // Blocks of one kind for later use.
   template< class Block > struct Spares {
      Leaf * first = nullptr;
      std::size_t count = 0;
      std::size_t used = 0; // blocks of this kind in the tree

      // Makes sure that there are so many. Throws std::bad_alloc.
      void provide( std::size_t wanted )
      {
         while ( count < wanted ) {
            put( new Block );
         }
      }
      Block * take() noexcept
      {
         Leaf * const block = first;
         first = block->parent;
         block->parent = nullptr;
         --count;
         ++used;
         return static_cast< Block * >( block );
      }
      void give( Block * block ) noexcept
      {
         --used;
         put( block );
      }
      void put( Block * block ) noexcept
      {
         block->size = 0;
         block->parent = first;
         first = block;
         ++count;
      }
      void clear() noexcept
      {
         while ( first != nullptr ) {
            delete static_cast< Block * >( std::exchange( first, first->parent ) );
         }
      }
   };

   struct Tree {
      Leaf * root = nullptr;
      std::size_t size = 0;
      Cursor * cursors = nullptr;
      Spares< Leaf > leaves;
      Spares< Inner > inners;
   };

   // Where an item is, or where in a leaf it would be.
   struct Spot {
      Leaf * block = nullptr;
      std::size_t index = 0;
      bool found = false;
   };

   // A key that is a number in the item itself is compared sooner than a branch is found to have
   // been guessed wrong, as every other one is. Where a comparison reads further memory, the guess
   // is what fetches it ahead.
   static constexpr bool comparedAtOnce = hasKeyInside< Node > &&
         std::is_trivially_copyable_v< Key > && sizeof( Key ) <= sizeof( std::uint64_t );

   // The index of the first item of a block for which `before` is false.
   template< class Before > static std::size_t partition( Leaf * block, Before before ) noexcept
   {
      Node * const items = block->items();
      std::size_t low = 0;
      if constexpr ( comparedAtOnce ) {
         // Three comparisons at a time, which wait for nothing but the three before them.
         const auto isBefore = [ & ]( std::size_t i ) {
            return static_cast< std::size_t >( before( items[ i ] ) );
         };
         std::size_t count = block->size;
         while ( count > 3 ) {
            const std::size_t part = count / 4;
            low += part *
                  ( isBefore( low + part - 1 ) + isBefore( low + 2 * part - 1 ) +
                        isBefore( low + 3 * part - 1 ) );
            count -= 3 * part;
         }
         std::size_t more = 0;
         for ( std::size_t i = 0; i != count; ++i ) {
            more += isBefore( low + i );
         }
         low += more;
      } else {
         for ( std::size_t count = block->size; count > 0; ) {
            const std::size_t half = count / 2;
            if ( before( items[ low + half ] ) ) {
               low += half + 1;
               count -= half + 1;
            } else {
               count = half;
            }
         }
      }
      return low;
   }

   // Where the key stands in a block, or the first item after it.
   static Spot searchIn( Leaf * block, Query query ) noexcept
   {
      if constexpr ( !comparedAtOnce && comparesThreeWays< Key, Query > ) {
         // One comparison tells before, here or after.
         Node * const items = block->items();
         std::size_t low = 0;
         for ( std::size_t high = block->size; low < high; ) {
            const std::size_t middle = ( low + high ) / 2;
            const auto order = items[ middle ].fwkKey() <=> query;
            if ( order == 0 ) {
               return { block, middle, true };
            }
            if ( order < 0 ) {
               low = middle + 1;
            } else {
               high = middle;
            }
         }
         return { block, low, false };
      } else {
         const std::size_t index = partition(
               block, [ &query ]( const Node & item ) { return item.fwkKey() < query; } );
         return { block, index,
            index < block->size && !( query < block->items()[ index ].fwkKey() ) };
      }
   }

   Spot search( Query query ) const noexcept
   {
      for ( Leaf * block = tree_->root;; ) {
         const Spot spot = searchIn( block, query );
         if ( spot.found || !block->hasChildren ) {
            return spot;
         }
         block = inner( block )->children[ spot.index ];
         if constexpr ( comparedAtOnce ) {
            fetchLines( block, sizeof( Leaf ) ); // else it would wait for one after the other
         }
      }
   }

   // The first item whose key is after `key`; without a block where there is none.
   static Spot firstAfter( Tree * tree, const Key & key ) noexcept
   {
      Spot spot;
      for ( Leaf * block = tree->root; block != nullptr; ) {
         const std::size_t index = partition(
               block, [ &key ]( const Node & item ) { return !( key < item.fwkKey() ); } );
         if ( index < block->size ) {
            spot = { block, index, true };
         }
         block = block->hasChildren ? inner( block )->children[ index ] : nullptr;
      }
      return spot;
   }

   static Spot first( Leaf * block ) noexcept
   {
      while ( block->hasChildren ) {
         block = inner( block )->children[ 0 ];
      }
      return { block, 0, block->size > 0 };
   }

   static std::size_t indexIn( Inner * parent, const Leaf * child ) noexcept
   {
      return static_cast< std::size_t >(
            std::find( parent->children, parent->children + parent->size, child ) -
            parent->children );
   }

   void rememberKeys() const noexcept
   {
      for ( Cursor * cursor = tree_->cursors; cursor != nullptr; cursor = cursor->next_ ) {
         cursor->rememberKey();
      }
   }

   void copy( const BTree & other );
   static void copyBlock( Tree * tree, Leaf ** to, Inner * parent, Leaf * from );
   static void destroyItems( Leaf * block ) noexcept;
   void provideFor( Leaf * leaf );
   Leaf * newLike( const Leaf * block ) noexcept;
   void giveBack( Leaf * block ) noexcept;
   Node * insertAt( Leaf * block, std::size_t index, Node & node ) noexcept;
   static Node * open( Leaf * block, std::size_t index, Leaf * child ) noexcept;
   static void close( Leaf * block, std::size_t index ) noexcept;
   static void moveItems( Leaf * from, std::size_t index, Leaf * to ) noexcept;
   void removeAt( Leaf * block, std::size_t index ) noexcept;
   void rebalance( Leaf * block ) noexcept;
   static void borrowFromLeft( Inner * parent, std::size_t index ) noexcept;
   static void borrowFromRight( Inner * parent, std::size_t index ) noexcept;
   void merge( Inner * parent, std::size_t index ) noexcept;

   Tree * tree_ = nullptr;
};

} // namespace Vok::Detail

#include "Vok/detail/BTreeChange.h"
#include "Vok/detail/BTreeCursor.h"
