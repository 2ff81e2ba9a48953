// What change streams need of maps and sets.
#pragma once

#include "Vok/detail/NodeLog.h"
#include "Vok/detail/SmallSet.h"
#include "Vok/detail/StreamOps.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Vok::Detail {

/// What an empty collection becomes that nobody listens to: the members themselves, with no notes
/// of what was there.
template< class Map, bool owned > class StagedFill final : public Staged {
 public:
   explicit StagedFill( Map & map ) : map_( map ) {}

   Map & members() noexcept { return members_; }

   void commit() noexcept override
   {
      map_.swap( members_ );
      if constexpr ( owned ) {
         // A batch may say twice what the collection becomes.
         members_.eachNode(
               []( const auto & node ) { EntityAccess::leave( *node.child ); } );
         map_.eachNode(
               [ this ]( const auto & node ) { EntityAccess::enter( *node.child, *owner ); } );
      }
   }

   void notify( const Tell & ) override {}

 private:
   Map & map_;
   Map members_;
};

template< class Map > class StagedMap final : public Staged {
   using Log = NodeLog< Map >;
   using Node = typename Map::Node;
   using Key = typename Map::Key;

 public:
   explicit StagedMap( Map & map ) : map_( map ) {}

   bool prepare( NboAttrLog::In & in, bool whole )
   {
      SmallSet< Key > seen;
      std::size_t insertions = 0;
      if constexpr ( Log::fixedSize() != 0 ) {
         const std::size_t count = in.remaining() / ( Log::fixedSize() + ( whole ? 0 : 1 ) );
         if ( count > 1 ) {
            seen.reserve( count );
            changes_.reserve( whole ? 0 : count );
         }
      }
      while ( in.remaining() != 0 ) {
         if ( !whole && readOp( in ) == MemberOp::del ) {
            Key key = Log::readKey( in );
            once( seen, key );
            if ( map_.find( key ) ) {
               changes_.push_back( { std::move( key ), std::nullopt, false } );
            }
            continue;
         }
         Node next = Log::read( in );
         once( seen, next.fwkKey() );
         const Node * const now = map_.find( next.fwkKey() );
         insertions += now ? 0U : 1U;
         if ( !now || !Log::same( *now, next ) ) {
            changes_.push_back( { Key( next.fwkKey() ), std::move( next ), !now } );
         }
      }
      if ( whole && seen.size() - insertions != map_.size() ) {
         map_.eachNode( [ & ]( const Node & node ) {
            if ( !seen.contains( node.fwkKey() ) ) {
               changes_.push_back( { Key( node.fwkKey() ), std::nullopt, false } );
            }
         } );
      }
      map_.reserve( map_.size() + insertions );
      return !changes_.empty();
   }

   void commit() noexcept override
   {
      // Deletions leave their nodes, replacements the nodes before; insertions nothing.
      for ( Change & change : changes_ ) {
         if ( !change.node ) {
            if ( auto taken = map_.take( change.key ) ) {
               change.node.emplace( std::move( *taken ) );
            }
         } else if ( change.inserted ) {
            map_.findOrInsert( change.key, [ & ] { return Node( std::move( *change.node ) ); } );
            change.node.reset();
         } else {
            std::swap( *map_.find( change.key ), *change.node );
         }
      }
   }

   void notify( const Tell & tell ) override
   {
      for ( const Change & change : changes_ ) {
         tell( any( change.key ), change.node ? Log::oldValue( *change.node ) : AnyValue() );
      }
   }

 private:
   struct Change {
      Key key;
      std::optional< Node > node;
      bool inserted;
   };

   static void once( SmallSet< Key > & seen, const Key & key )
   {
      if ( !seen.insert( key ) ) {
         memberTwice();
      }
   }

   Map & map_;
   std::vector< Change > changes_;
};

template< class Map > struct MapStreamOps {
   using Log = NodeLog< Map >;

   static std::unique_ptr< DirtyKeys > dirtyKeys()
   {
      return std::make_unique< DirtyKeysOf< typename Map::Key > >();
   }
   static void write( const void * collection, NboAttrLog::Out & out )
   {
      const Map & map = *static_cast< const Map * >( collection );
      out.reserve( map.size() * Log::fixedSize() );
      map.eachNode( [ &out ]( const auto & node ) { Log::write( out, node ); } );
   }
   static void writeChanged(
         const void * collection, const DirtyKeys & keys, NboAttrLog::Out & out )
   {
      using Key = typename Map::Key;
      const Map & map = *static_cast< const Map * >( collection );
      static_cast< const DirtyKeysOf< Key > & >( keys ).eachKey( [ & ]( const Key & key ) {
         const auto * const node = map.find( key );
         putOp( out, node ? MemberOp::put : MemberOp::del );
         if ( node ) {
            Log::write( out, *node );
         } else {
            ValueType< Key >::encode( out, key );
         }
      } );
   }
   static void check( NboAttrLog::In & in, bool whole )
   {
      while ( in.remaining() != 0 ) {
         const bool deleted = !whole && readOp( in ) == MemberOp::del;
         if ( deleted || !Log::keyed ) {
            checkLog< typename Map::Key >( in );
         }
         if constexpr ( !Log::isSet ) {
            if ( !deleted ) {
               checkLog< typename NodeValue< typename Map::Node >::Type >( in );
            }
         }
      }
   }
   static void load( void * collection, NboAttrLog::In & in )
   {
      Map & map = *static_cast< Map * >( collection );
      if constexpr ( requires { map.capacity(); } ) {
         std::size_t count = 0;
         for ( NboAttrLog::In ahead = in; ahead.remaining() != 0; ++count ) {
            Log::skip( ahead );
         }
         map.reserve( map.size() + count );
      }
      while ( in.remaining() != 0 ) {
         auto node = Log::read( in );
         if ( !map.findOrInsert( node.fwkKey(), [ & ] { return std::move( node ); } ).second ) {
            memberTwice();
         }
      }
   }
   static std::unique_ptr< Staged > stage(
         void * collection, NboAttrLog::In & in, StageMode mode )
   {
      Map & map = *static_cast< Map * >( collection );
      if ( mode.whole && !mode.heard && map.empty() ) {
         auto filled = std::make_unique< StagedFill< Map, false > >( map );
         load( &filled->members(), in );
         return filled->members().empty() ? nullptr : std::move( filled );
      }
      auto staged = std::make_unique< StagedMap< Map > >( map );
      const bool differs = staged->prepare( in, mode.whole );
      return differs ? std::move( staged ) : nullptr;
   }
};

template< class Map > inline constexpr StreamOps mapStreamOps = {
   .dirtyKeys = MapStreamOps< Map >::dirtyKeys,
   .write = MapStreamOps< Map >::write,
   .writeChanged = MapStreamOps< Map >::writeChanged,
   .check = MapStreamOps< Map >::check,
   .load = MapStreamOps< Map >::load,
   .stage = MapStreamOps< Map >::stage,
};

template< class Set > inline constexpr StreamOps setStreamOps = mapStreamOps< Set >;

} // namespace Vok::Detail
