// The engine of HashMap2018 and HSet, and its lookup. HashMap2018.h draws the picture and states
// the invariants; the code only has to match it. Insertion, removal and growth stand in
// HashTableChange.h, iteration in HashTableCursor.h.
#pragma once

#include "Vok/detail/CacheLines.h"
#include "Vok/detail/Marks.h"
#include "Vok/detail/Relocate.h"
#include "Vok/detail/TableBlock.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <type_traits>
#include <utility>

// Where a program defines VOK_COUNT_STEPS, every look at a group of slots, every comparison of keys
// and every node that is moved counts one step.
#ifdef VOK_COUNT_STEPS
namespace Vok::Detail {
inline std::uint64_t tableSteps = 0;
}
#define VOK_STEPS( count ) ( ::Vok::Detail::tableSteps += ( count ) )
#else
#define VOK_STEPS( count ) static_cast< void >( 0 )
#endif

namespace Vok::Detail {

// Node is as MapNodes.h describes it; Marks is a form that Marks.h has.
template< class Node, class Marks = DefaultMarks > class HashTable {
 public:
   using Key = typename Node::Key;
   using Query = KeyQuery< Key >;
   class Cursor;

   static_assert(
         std::is_nothrow_move_constructible_v< Node > && std::is_nothrow_destructible_v< Node > );

   HashTable() noexcept = default;
   HashTable( const HashTable & other ) { copy( other ); }
   HashTable( HashTable && other ) noexcept : table_( std::exchange( other.table_, nullptr ) ) {}
   HashTable & operator=( const HashTable & other )
   {
      if ( this != &other ) {
         HashTable( other ).swap( *this );
      }
      return *this;
   }
   HashTable & operator=( HashTable && other ) noexcept
   {
      HashTable( std::move( other ) ).swap( *this );
      return *this;
   }
   ~HashTable() { clear(); }

   void swap( HashTable & other ) noexcept { std::swap( table_, other.table_ ); }

   std::size_t size() const noexcept { return table_ != nullptr ? table_->size : 0; }
   std::size_t capacity() const noexcept { return table_ != nullptr ? table_->room : 0; }

   Node * find( Query query ) const noexcept
   {
      if ( table_ == nullptr ) {
         return nullptr;
      }
      const std::uint64_t hash = hashOf( query );
      const std::size_t home = homeOf( *table_, hash );
      for ( auto hits = marksAt( *table_, home ).like( hash ); hits.any(); hits.dropFirst() ) {
         VOK_STEPS( 1 );
         Node * const node = nodeAt( *table_, home, hits.first() );
         if ( node->fwkKey() == query ) [[likely]] {
            return node;
         }
      }
      if ( passed( home, hash ) ) [[unlikely]] {
         return searchOn( query, hash ).node;
      }
      return nullptr;
   }

   template< class Make > std::pair< Node *, bool > findOrInsert( Query query, Make && make )
   {
      if ( table_ == nullptr ) {
         return { insertGrowing( make ), true };
      }
      const std::uint64_t hash = hashOf( query );
      const std::size_t home = homeOf( *table_, hash );
      fetch( home );
      const std::size_t slot = slotOf( *table_, home, query, hash );
      if ( slot != none ) {
         return { nodeAt( *table_, home, slot ), false };
      }
      if ( passed( home, hash ) ) [[unlikely]] {
         if ( Node * const node = searchOn( query, hash ).node ) {
            return { node, false };
         }
      }
      // From here on the query may be gone: it may lie in what `make` moves into the node.
      if ( table_->size == table_->room ) [[unlikely]] {
         return { insertGrowing( make ), true };
      }
      const auto empty = marksAt( *table_, home ).empty();
      if ( !empty.any() ) [[unlikely]] {
         return { insertBehind( hash, make ), true };
      }
      Node * const node = nodeAt( *table_, home, empty.first() );
      ::new ( static_cast< void * >( node ) ) Node( make() );
      occupy( home, empty.first(), hash );
      return { node, true };
   }

   [[gnu::always_inline]] std::optional< Node > take( Query query ) noexcept
   {
      std::optional< Node > taken;
      if ( table_ == nullptr ) {
         return taken;
      }
      const std::uint64_t hash = hashOf( query );
      const std::size_t home = homeOf( *table_, hash );
      fetch( home );
      if ( const std::size_t slot = slotOf( *table_, home, query, hash ); slot != none ) {
         Node * const node = nodeAt( *table_, home, slot );
         taken.emplace( std::move( *node ) );
         remove( node, home, slot );
      } else if ( passed( home, hash ) ) [[unlikely]] {
         if ( const Place place = searchOn( query, hash ); place.node != nullptr ) {
            taken.emplace( std::move( *place.node ) );
            remove( place.node, place.group(), place.slot() );
            wentPast( hash, place.group() );
         }
      }
      return taken;
   }

   template< class F > void eachNode( F & f ) const
   {
      if ( table_ != nullptr && table_->size != 0 ) {
         eachNode( *table_, [ &f ]( const Node * node ) { f( *node ); } );
      }
   }

   void clear() noexcept
   {
      // What a node's destructor does to this map, it does to an empty one.
      if ( TableHeader * const table = std::exchange( table_, nullptr ) ) {
         endCursors( *table );
         destroy( table );
      }
   }

   void reserve( std::size_t size )
   {
      if ( table_ == nullptr ) {
         if ( size > 0 ) {
            table_ = makeTable( tableShape( size ), tableSeed( Node::hashConstant ) );
         }
      } else if ( size > table_->room ) {
         rebuild( tableShape( size ) );
      }
   }

 private:
   friend struct TableInspector; // the tests' eye on the invariants

   // Where a node stands, or where it has to go; `node` is null where there is none. Two words,
   // which are returned in registers.
   struct Place {
      Node * node;
      std::size_t number; // of the slot

      std::size_t group() const noexcept { return number / slotsCounted; }
      std::size_t slot() const noexcept { return number % slotsCounted; }
   };

   static TableHeader * makeTable( const TableShape & shape, HashSeed seed )
   {
      return newTable( shape, seed, sizeof( Node ), alignof( Node ) );
   }

   static std::uint64_t hashOf( Query query, HashSeed seed ) noexcept
   {
      return KeyHash< Key >::hash( query, seed );
   }
   std::uint64_t hashOf( Query query ) const noexcept { return hashOf( query, table_->seed ); }

   static Marks marksAt( const TableHeader & table, std::size_t group ) noexcept
   {
      VOK_STEPS( 1 );
      return Marks( table.groups()[ group ] );
   }
   static Node * nodeAt( const TableHeader & table, std::size_t group, std::size_t slot ) noexcept
   {
      return static_cast< Node * >( table.nodes ) + group * MarkGroup::slots + slot;
   }

   static std::size_t homeOf( const TableHeader & table, std::uint64_t hash ) noexcept
   {
      return static_cast< std::size_t >( hash ) & table.last;
   }

   // Calls `f( node )` for every node, in the order of the groups.
   template< class F > static void eachNode( const TableHeader & table, F f )
   {
      for ( std::size_t group = 0; group <= table.last; ++group ) {
         eachNodeOf( table, group, f );
      }
   }
   template< class F > static void eachNodeOf( const TableHeader & table, std::size_t group, F & f )
   {
      for ( auto set = marksAt( table, group ).empty().others(); set.any(); set.dropFirst() ) {
         f( nodeAt( table, group, set.first() ) );
      }
   }

   // Has the keys fetched that the nodes of a group lead to; a small table's are at hand. Inlined
   // always, as fetchLines is.
   [[gnu::always_inline]] static void fetchKeys(
         const TableHeader & table, std::size_t group ) noexcept
   {
      constexpr bool inEntity = requires( const Node & node ) { node.child; };
      constexpr bool isText = requires( const Node & node ) { node.fwkKey().data(); };
      constexpr std::size_t small = 256;
      if constexpr ( inEntity || isText ) {
         if ( table.last < small || group > table.last ) {
            return;
         }
         for ( auto set = marksAt( table, group ).empty().others(); set.any(); set.dropFirst() ) {
            const Node & node = *nodeAt( table, group, set.first() );
            if constexpr ( inEntity ) {
               fetchLines( &*node.child, lineBytes );
            } else {
               fetchLines( node.fwkKey().data(), lineBytes );
            }
         }
      }
   }

   bool passed( std::size_t group, std::uint64_t hash ) const noexcept
   {
      return table_->groups()[ group ].passed( hash );
   }

   // The first nodes of a group are fetched while its marks are still on their way: one of them is
   // likely to be read or written.
   void fetch( std::size_t group ) const noexcept
   {
      constexpr std::size_t bytes =
            std::min( MarkGroup::slots * sizeof( Node ) / 2, 4 * lineBytes );
      fetchLines( nodeAt( *table_, group, 0 ), bytes );
   }

   // The groups in which a node may stand, in this order: the home, the next, the second after
   // that ... each once.
   class Groups {
    public:
      Groups( const TableHeader & table, std::uint64_t hash ) noexcept
            : last_( table.last ),
              at_( homeOf( table, hash ) )
      {
      }
      std::size_t operator*() const noexcept { return at_; }
      // Goes on; says whether there is one more.
      bool next() noexcept
      {
         ++step_;
         at_ = ( at_ + step_ ) & last_;
         return step_ <= last_;
      }

    private:
      std::size_t last_;
      std::size_t at_;
      std::size_t step_ = 0;
   };

   // The slot of a key in a group.
   [[gnu::always_inline]] static std::size_t slotOf( const TableHeader & table, std::size_t group,
         Query query, std::uint64_t hash ) noexcept
   {
      for ( auto hits = marksAt( table, group ).like( hash ); hits.any(); hits.dropFirst() ) {
         VOK_STEPS( 1 );
         if ( nodeAt( table, group, hits.first() )->fwkKey() == query ) [[likely]] {
            return hits.first();
         }
      }
      return none;
   }

   // The search behind the home: it goes on as long as nodes of this hash may have gone past.
   [[gnu::noinline]] Place searchOn( Query query, std::uint64_t hash ) const noexcept
   {
      for ( Groups groups( *table_, hash ); groups.next(); ) {
         const std::size_t slot = slotOf( *table_, *groups, query, hash );
         if ( slot != none ) {
            return { nodeAt( *table_, *groups, slot ), slotNumber( *groups, slot ) };
         }
         if ( !passed( *groups, hash ) ) {
            break;
         }
      }
      return { nullptr, 0 };
   }

   // Where a node goes whose key is not in the table, which has room for it, if its home is full.
   [[gnu::noinline]] Place placeBehind( std::uint64_t hash ) const noexcept
   {
      for ( Groups groups( *table_, hash );; ) {
         groups.next();
         if ( const auto empty = marksAt( *table_, *groups ).empty(); empty.any() ) {
            const std::size_t slot = empty.first();
            return { nodeAt( *table_, *groups, slot ), slotNumber( *groups, slot ) };
         }
      }
   }

   // HashTableChange.h
   template< class Make > Node * insertGrowing( Make & make );
   template< class Make > Node * insertBehind( std::uint64_t hash, Make & make );
   Node * insertNew( Node & node ) noexcept;
   Place newPlace( std::uint64_t hash ) noexcept;
   void occupy( std::size_t group, std::size_t slot, std::uint64_t hash ) noexcept;
   void remove( Node * node, std::size_t group, std::size_t slot ) noexcept;
   void goesPast( std::uint64_t hash, std::size_t group ) noexcept;
   void wentPast( std::uint64_t hash, std::size_t group ) noexcept;
   void rebuild( const TableShape & shape );
   void copy( const HashTable & other );
   static void destroy( TableHeader * table ) noexcept;

   static constexpr std::size_t none = MarkGroup::slots;

   TableHeader * table_ = nullptr;
};

} // namespace Vok::Detail

#include "Vok/detail/HashTableChange.h"
#include "Vok/detail/HashTableCursor.h"
