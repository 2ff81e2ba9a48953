// The engine of OrderedMap: a B-tree's nodes, lookup and iteration. How it changes is in
// BTreeChange.h, its picture in OrderedMap.h.
#pragma once

#include "Vok/detail/Hash.h"
#include "Vok/detail/Relocate.h"

#include <algorithm>
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
         std::size_t count = block->size;
         for ( ; count > 1; count -= count / 2 ) {
            const std::size_t half = count / 2;
            low += half * static_cast< std::size_t >( before( items[ low + half - 1 ] ) );
         }
         low += static_cast< std::size_t >( count == 1 && before( items[ low ] ) );
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

   Spot search( Query query ) const noexcept
   {
      for ( Leaf * block = tree_->root;; ) {
         const std::size_t index = partition(
               block, [ &query ]( const Node & item ) { return item.fwkKey() < query; } );
         if ( index < block->size && !( query < block->items()[ index ].fwkKey() ) ) {
            return { block, index, true };
         }
         if ( !block->hasChildren ) {
            return { block, index, false };
         }
         block = inner( block )->children[ index ];
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

// One iteration in ascending order of keys. When the map changes, it keeps its key and finds its
// way back from that.
template< class Node > class BTree< Node >::Cursor {
 public:
   explicit Cursor( const BTree & map ) noexcept
   {
      if ( map.size() > 0 ) {
         attach( map.tree_ );
         standOn( first( tree_->root ) );
      }
   }
   Cursor( const Cursor & other ) noexcept : block_( other.block_ ),
                                             item_( other.item_ ),
                                             last_( other.last_ ),
                                             key_( other.key_ )
   {
      attach( other.tree_ );
   }
   Cursor & operator=( const Cursor & other ) noexcept
   {
      if ( this != &other ) {
         detach();
         block_ = other.block_;
         item_ = other.item_;
         last_ = other.last_;
         key_.reset();
         if ( other.key_ ) {
            key_.emplace( *other.key_ );
         }
         attach( other.tree_ );
      }
      return *this;
   }
   ~Cursor() { detach(); }

   const Node * node() const noexcept { return key_ ? found() : item_; }
   const Node & operator*() const noexcept { return item_ != nullptr ? *item_ : *found(); }
   bool atEnd() const noexcept { return tree_ == nullptr; }

   void next() noexcept
   {
      if ( item_ != last_ ) [[likely]] {
         ++item_;
      } else if ( tree_ != nullptr ) {
         goOn();
      }
   }

 private:
   friend class BTree;

   void attach( Tree * tree ) noexcept
   {
      tree_ = tree;
      if ( tree != nullptr ) {
         previous_ = nullptr;
         next_ = std::exchange( tree->cursors, this );
         if ( next_ != nullptr ) {
            next_->previous_ = this;
         }
      }
   }

   void standOn( Spot spot ) noexcept
   {
      block_ = spot.block;
      item_ = spot.block->items() + spot.index;
      last_ = spot.block->hasChildren ? item_ : spot.block->items() + spot.block->size - 1;
   }

   // What stands under the key.
   [[gnu::noinline]] const Node * found() const noexcept
   {
      BTree map;
      map.tree_ = tree_; // lent for one lookup
      const Node * const node = map.find( *key_ );
      map.tree_ = nullptr;
      return node;
   }

   // The way on from the last item of a leaf, from one that has children, or by the key.
   [[gnu::noinline]] void goOn() noexcept
   {
      const Spot spot = key_ ? firstAfter( tree_, *key_ ) : after();
      key_.reset();
      if ( spot.block != nullptr ) {
         standOn( spot );
      } else {
         detach();
      }
   }

   // The item after the last one of a leaf, or after one that has children.
   Spot after() noexcept
   {
      if ( block_->hasChildren ) {
         place_ = static_cast< std::size_t >( item_ - block_->items() ) + 1;
         return first( inner( block_ )->children[ place_ ] );
      }
      Spot spot{ block_, block_->size };
      while ( spot.block != nullptr && spot.index == spot.block->size ) {
         Inner * const parent = inner( spot.block->parent );
         if ( parent != nullptr ) {
            const bool there =
                  place_ <= parent->size && parent->children[ place_ ] == spot.block;
            spot.index = there ? place_ : indexIn( parent, spot.block );
         }
         spot.block = parent;
      }
      return spot;
   }

   // Leaves the map; from now on the cursor is at the end.
   void detach() noexcept
   {
      if ( Tree * const tree = std::exchange( tree_, nullptr ) ) {
         ( previous_ != nullptr ? previous_->next_ : tree->cursors ) = next_;
         if ( next_ != nullptr ) {
            next_->previous_ = previous_;
         }
         key_.reset();
         item_ = last_ = nullptr;
      }
   }

   // The map is about to change.
   void rememberKey() noexcept
   {
      if ( !key_ ) {
         key_.emplace( item_->fwkKey() );
         item_ = last_ = nullptr;
      }
   }

   // The item on which the cursor stands, and the last one to which it gets by going to the next in
   // memory; both are null at the end, and where the map has changed and there is a key.
   Leaf * block_ = nullptr;
   Node * item_ = nullptr;
   Node * last_ = nullptr;
   std::size_t place_ = 0; // a guess which child of its parent a leaf is, mostly right
   Tree * tree_ = nullptr; // null at the end
   std::optional< Key > key_;
   Cursor * next_ = nullptr;
   Cursor * previous_ = nullptr;
};

} // namespace Vok::Detail

#include "Vok/detail/BTreeChange.h"
