// One iteration over a B-tree that may change meanwhile. Part of BTree.h.
#pragma once

#include "Vok/detail/BTree.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace Vok::Detail {

// It goes in ascending order of keys. When the map changes, it keeps its key and finds its way back
// from that.
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
