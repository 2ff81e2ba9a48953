// What change streams need of a collection type: the set of changed keys that a writer keeps, and
// how a reader loads members, or stages the difference to a replica and commits it without
// failing.
#pragma once

#include "Vok/AttributeChildren.h"
#include "Vok/AttributeMap.h"
#include "Vok/Collection.h"
#include "Vok/Entity.h"
#include "Vok/HSet.h"
#include "Vok/NboAttrLog.h"
#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/Staged.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Vok::Detail {

/// The keys of a collection whose members changed since the last batch, each once. A key that was
/// not there at the last batch, and is not there now, is forgotten: however many came and went, the
/// notes are bounded by what there was and what there is.
class DirtyKeys {
 public:
   virtual ~DirtyKeys() = default;

   /// Takes note of a change under a key, a copy of which may be kept. `insertion`: where this is
   /// the first change since the last batch, there was no member then unless `present()` says that
   /// there is none now. Throws std::bad_alloc, and then nothing is noted.
   virtual void note( const void * key, bool insertion, FunctionRef< bool() > present ) = 0;
   virtual bool contains( const void * key ) const = 0;
   virtual std::size_t size() const = 0;
   virtual void each( FunctionRef< void( const void * key ) > visit ) const = 0;
};

template< class Key > class DirtyKeysOf final : public DirtyKeys {
 public:
   void note( const void * key, bool insertion, FunctionRef< bool() > present ) override
   {
      const Key & k = *static_cast< const Key * >( key );
      if ( fresh_.find( k ) ) {
         if ( !present() ) {
            fresh_.erase( k );
         }
      } else if ( !known_.find( k ) ) {
         ( insertion && present() ? fresh_ : known_ ).insert( k );
      }
   }
   bool contains( const void * key ) const override
   {
      const Key & k = *static_cast< const Key * >( key );
      return known_.find( k ) || fresh_.find( k );
   }
   std::size_t size() const override { return known_.size() + fresh_.size(); }
   void each( FunctionRef< void( const void * key ) > visit ) const override
   {
      for ( const Keys * const keys : { &known_, &fresh_ } ) {
         for ( typename Keys::Cursor cursor( *keys ); !cursor.atEnd(); cursor.next() ) {
            visit( &cursor.node()->key );
         }
      }
   }

 private:
   using Keys = HSet< Key >;

   Keys known_; // may have been there at the last batch
   Keys fresh_; // were not there
};

/// The operations of a payload on children or references, one after the other.
struct EntityOps {
   FunctionRef< bool( EntityOp & op ) > next; ///< false at the end
   FunctionRef< std::size_t() > atMost; ///< how many there are, or more
};

/// How a payload is staged.
struct StageMode {
   bool whole = false; ///< the collection becomes what the payload says; else that is done to it
   bool heard = true; ///< somebody may have to be told
};

struct StreamOps {
   std::unique_ptr< DirtyKeys > ( *dirtyKeys )();

   /// Reads a payload to its end and keeps nothing of it: throws for what could not be applied.
   /// Maps and sets only.
   void ( *check )( NboAttrLog::In & in, bool whole );

   /// Reads all members into the collection of a fresh entity. Maps and sets only.
   void ( *load )( void * collection, NboAttrLog::In & in );

   /// Stages what a payload asks for. Maps and sets only; null where nothing differs.
   std::unique_ptr< Staged > ( *stage )( void * collection, NboAttrLog::In & in, StageMode mode );

   /// Stages changes of children or references: what each key becomes. Null where nothing differs.
   std::unique_ptr< Staged > ( *stageEntities )(
         void * collection, const EntityOps & ops, StageMode mode );

   /// Puts a fresh child, or a reference, into the collection of a fresh entity.
   void ( *adopt )( Entity & owner, void * collection, const Entity & member );
};

/// Operations in the payload of a collection.
enum class MemberOp : std::uint8_t {
   del = 0,
   put = 1,
   keep = 2 ///< of a whole collection of children: one that the reader has stays
};

inline MemberOp readOp( NboAttrLog::In & in )
{
   const auto op = in.get< std::uint8_t >();
   if ( op > static_cast< std::uint8_t >( MemberOp::keep ) ) {
      throw NboAttrLog::Exception( "a batch names no such operation on a member" );
   }
   return static_cast< MemberOp >( op );
}

[[noreturn]] VOK_EXPORT void memberTwice();

// ---- Maps and sets ----------------------------------------------------------------------------

/// How a node of a map or set is read from a log, and what of it can differ.
template< class Map > struct NodeLog {
   using Node = typename Map::Node;
   using Key = typename Map::Key;

   static constexpr bool isSet = !requires( Node n ) { n.value; };
   static constexpr bool keyed = requires( Node n ) { n.valueIs( n.value ); };

   static Key readKey( NboAttrLog::In & in )
   {
      Key key{};
      ValueType< Key >::decode( in, key );
      return key;
   }

   static Node read( NboAttrLog::In & in )
   {
      if constexpr ( isSet ) {
         return Node{ readKey( in ) };
      } else {
         using V = typename NodeValue< Node >::Type;
         V value{};
         if constexpr ( keyed ) {
            ValueType< V >::decode( in, value );
            return Node{ std::move( value ) };
         } else {
            Key key = readKey( in );
            ValueType< V >::decode( in, value );
            return Node{ std::move( key ), std::move( value ) };
         }
      }
   }

   /// Reads past a node and returns its key; throws what `read` would.
   static Key check( NboAttrLog::In & in )
   {
      if constexpr ( isSet ) {
         return readKey( in );
      } else if constexpr ( keyed ) {
         using V = typename NodeValue< Node >::Type;
         V value = ValueAccess::blank< V >();
         skimLog( in, value );
         return Key( Node::keyOf( value ) );
      } else {
         Key key = readKey( in );
         checkLog< typename NodeValue< Node >::Type >( in );
         return key;
      }
   }

   /// Reads past a node and knows nothing of it; throws what `read` would.
   static void skip( NboAttrLog::In & in )
   {
      if constexpr ( !keyed ) {
         checkLog< Key >( in );
      }
      if constexpr ( !isSet ) {
         checkLog< typename NodeValue< Node >::Type >( in );
      }
   }

   static bool same( const Node & a, const Node & b )
   {
      if constexpr ( isSet ) {
         return true;
      } else {
         return Collection::equal( a.value, b.value );
      }
   }

   static AnyValue oldValue( const Node & node )
   {
      if constexpr ( isSet ) {
         return {};
      } else {
         return any( node.value );
      }
   }
};

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
         for ( typename Map::Cursor cursor( members_ ); !cursor.atEnd(); cursor.next() ) {
            EntityAccess::leave( *cursor.node()->child );
         }
         for ( typename Map::Cursor cursor( map_ ); !cursor.atEnd(); cursor.next() ) {
            EntityAccess::enter( *cursor.node()->child, *owner );
         }
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
      HSet< Key > seen;
      std::size_t insertions = 0;
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
         for ( typename Map::Cursor cursor( map_ ); !cursor.atEnd(); cursor.next() ) {
            if ( !seen.find( cursor.node()->fwkKey() ) ) {
               changes_.push_back( { Key( cursor.node()->fwkKey() ), std::nullopt, false } );
            }
         }
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

   static void once( HSet< Key > & seen, const Key & key )
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

template< class Map > inline constexpr StreamOps mapStreamOps = { MapStreamOps< Map >::dirtyKeys,
   MapStreamOps< Map >::check, MapStreamOps< Map >::load, MapStreamOps< Map >::stage, nullptr,
   nullptr };

template< class Set > inline constexpr StreamOps setStreamOps = mapStreamOps< Set >;

// ---- Children and references ------------------------------------------------------------------

template< class Map, bool owned > class StagedEntities final : public Staged {
   using Node = typename Map::Node;
   using Key = typename Map::Key;
   using P = typename NodeValue< Node >::Type;
   using T = typename P::element_type;

 public:
   StagedEntities( Map & map ) : map_( map ) {}

   bool prepare( const EntityOps & ops, bool whole )
   {
      HSet< Key > seen;
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
         for ( typename Map::Cursor cursor( map_ ); !cursor.atEnd(); cursor.next() ) {
            if ( !seen.find( cursor.node()->fwkKey() ) ) {
               changes_.push_back( { Key( cursor.node()->fwkKey() ), P(), P() } );
            }
         }
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
inline constexpr StreamOps childrenStreamOps = { MapStreamOps< Map >::dirtyKeys, nullptr, nullptr,
   nullptr, EntitiesStreamOps< Map, true >::stage, EntitiesStreamOps< Map, true >::adopt };

template< class Map >
inline constexpr StreamOps referencesStreamOps = { MapStreamOps< Map >::dirtyKeys, nullptr, nullptr,
   nullptr, EntitiesStreamOps< Map, false >::stage, EntitiesStreamOps< Map, false >::adopt };

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

template< class T > inline constexpr StreamOps childStreamOps = { nullptr, nullptr, nullptr,
   nullptr, ChildStreamOps< T >::stage, ChildStreamOps< T >::adopt };

} // namespace Vok::Detail
