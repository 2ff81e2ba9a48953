// What change streams need of children and references.
#pragma once

#include "Vok/AttributeChildren.h"
#include "Vok/Entity.h"
#include "Vok/detail/SmallSet.h"
#include "Vok/detail/StreamMaps.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Vok::Detail {

template< class Map, bool owned > class StagedEntities final : public Staged {
   using Node = typename Map::Node;
   using Key = typename Map::Key;
   using P = typename NodeValue< Node >::Type;
   using T = typename P::element_type;

 public:
   StagedEntities( Map & map ) : map_( map ) {}

   bool prepare( const EntityOps & ops, bool whole )
   {
      SmallSet< Key > seen;
      std::size_t insertions = 0;
      if ( whole ) {
         const std::size_t atMost = ops.atMost();
         seen.reserve( atMost );
         changes_.reserve( atMost > map_.size() ? atMost - map_.size() : 0 );
      }
      for ( EntityOp op; ops.next( op ); ) {
         P next( const_cast< T * >( static_cast< const T * >( op.member.get() ) ) );
         Key key =
               next ? Key( Node::keyOf( *next ) ) : *static_cast< const Key * >( op.key->data() );
         if ( !seen.insert( key ) ) {
            memberTwice();
         }
         const Node * const now = map_.find( key );
         if ( now ? now->child == next : !next ) {
            continue;
         }
         insertions += next ? 1U : 0U;
         changes_.push_back( { std::move( key ), std::move( next ), P() } );
      }
      if ( whole ) {
         map_.eachNode( [ & ]( const Node & node ) {
            if ( !seen.contains( node.fwkKey() ) ) {
               changes_.push_back( { Key( node.fwkKey() ), P(), P() } );
            }
         } );
      }
      map_.reserve( map_.size() + insertions );
      return !changes_.empty();
   }

   void commit() noexcept override
   {
      for ( Change & change : changes_ ) {
         if ( auto taken = map_.take( change.key ) ) {
            change.old = std::move( taken->child );
            if constexpr ( owned ) {
               EntityAccess::leave( *change.old );
            }
         }
         if ( change.next ) {
            map_.findOrInsert( change.key, [ & ] { return Node{ change.next }; } );
            if constexpr ( owned ) {
               EntityAccess::enter( *change.next, *owner );
            }
         }
      }
   }

   void notify( const Tell & tell ) override
   {
      for ( const Change & change : changes_ ) {
         const AnyValue old = change.old ? any( change.old ) : AnyValue();
         if ( owned && change.old && change.next ) {
            tell( any( change.key ), old ); // deleted, and made again
            tell( any( change.key ), {} );
         } else {
            tell( any( change.key ), old );
         }
      }
   }

 private:
   struct Change {
      Key key;
      P next;
      P old;
   };

   Map & map_;
   std::vector< Change > changes_;
};

template< class Map, bool owned > struct EntitiesStreamOps {
   using Node = typename Map::Node;
   using P = typename NodeValue< Node >::Type;
   using T = typename P::element_type;

   static void each( const void * collection, EntityVisit visit )
   {
      static_cast< const Map * >( collection )->eachNode( [ & ]( const Node & node ) {
         visit( *node.child );
      } );
   }

   static std::unique_ptr< Staged > stage(
         void * collection, const EntityOps & ops, StageMode mode )
   {
      Map & map = *static_cast< Map * >( collection );
      if ( mode.whole && !mode.heard && map.empty() ) {
         auto filled = std::make_unique< StagedFill< Map, owned > >( map );
         if constexpr ( requires( Map some ) { some.capacity(); } ) {
            filled->members().reserve( ops.atMost() );
         }
         for ( EntityOp op; ops.next( op ); ) {
            insert( filled->members(), memberOf( op ) );
         }
         return filled->members().empty() ? nullptr : std::move( filled );
      }
      auto staged = std::make_unique< StagedEntities< Map, owned > >( map );
      const bool differs = staged->prepare( ops, mode.whole );
      return differs ? std::move( staged ) : nullptr;
   }

   static void adopt( Entity & owner, void * collection, const Entity & member )
   {
      T & t = *const_cast< T * >( static_cast< const T * >( &member ) );
      insert( *static_cast< Map * >( collection ), t );
      if constexpr ( owned ) {
         EntityAccess::enter( t, owner );
      } else {
         (void)owner;
      }
   }

 private:
   static T & memberOf( const EntityOp & op ) noexcept
   {
      return *const_cast< T * >( static_cast< const T * >( op.member.get() ) );
   }
   static void insert( Map & map, T & member )
   {
      const auto make = [ & ] { return Node{ P( &member ) }; };
      if ( !map.findOrInsert( Node::keyOf( member ), make ).second ) {
         memberTwice();
      }
   }
};

template< class Map >
inline constexpr StreamOps childrenStreamOps = {
   .dirtyKeys = MapStreamOps< Map >::dirtyKeys,
   .eachEntity = EntitiesStreamOps< Map, true >::each,
   .stageEntities = EntitiesStreamOps< Map, true >::stage,
   .adopt = EntitiesStreamOps< Map, true >::adopt,
};

template< class Map >
inline constexpr StreamOps referencesStreamOps = {
   .dirtyKeys = MapStreamOps< Map >::dirtyKeys,
   .eachEntity = EntitiesStreamOps< Map, false >::each,
   .stageEntities = EntitiesStreamOps< Map, false >::stage,
   .adopt = EntitiesStreamOps< Map, false >::adopt,
};

/// A single child: what comes in the place of what is there.
template< class T > class StagedChild final : public Staged {
 public:
   StagedChild( Corvo::Ptr< T > & stored, Corvo::Ptr< T > next )
         : stored_( stored ),
           child_( std::move( next ) )
   {
   }

   void commit() noexcept override
   {
      std::swap( stored_, child_ );
      if ( child_ ) {
         EntityAccess::leave( *child_ );
      }
      if ( stored_ ) {
         EntityAccess::enter( *stored_, *owner );
      }
   }

   void notify( const Tell & tell ) override
   {
      tell( {}, child_ ? any( child_ ) : AnyValue() );
   }

 private:
   Corvo::Ptr< T > & stored_;
   Corvo::Ptr< T > child_;
};

template< class T > struct ChildStreamOps {
   static void each( const void * collection, EntityVisit visit )
   {
      if ( const auto & stored = *static_cast< const Corvo::Ptr< T > * >( collection ) ) {
         visit( *stored );
      }
   }

   static std::unique_ptr< Staged > stage(
         void * collection, const EntityOps & ops, StageMode mode )
   {
      auto & stored = *static_cast< Corvo::Ptr< T > * >( collection );
      EntityOp op;
      const bool told = ops.next( op );
      if ( !told && !mode.whole ) {
         return nullptr;
      }
      const Entity * const next = told ? op.member.get() : nullptr;
      if ( stored.get() == next ) {
         return nullptr;
      }
      return std::make_unique< StagedChild< T > >(
            stored, const_cast< T * >( static_cast< const T * >( next ) ) );
   }

   static void adopt( Entity & owner, void * collection, const Entity & member )
   {
      auto & stored = *static_cast< Corvo::Ptr< T > * >( collection );
      stored = Corvo::Ptr< T >( const_cast< T * >( static_cast< const T * >( &member ) ) );
      EntityAccess::enter( *stored, owner );
   }
};

template< class T > inline constexpr StreamOps childStreamOps = {
   .eachEntity = ChildStreamOps< T >::each,
   .stageEntities = ChildStreamOps< T >::stage,
   .adopt = ChildStreamOps< T >::adopt,
};

} // namespace Vok::Detail
