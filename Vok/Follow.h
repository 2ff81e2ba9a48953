// What agents do with changes: following one attribute, one member or a whole tree, acting once for
// many changes, waiting for a condition, and keeping the members of one collection like those of
// another.
//
//    Vok::Deferred derive( [ & ] { deriveFrom( *config ); } );
//    Vok::Follower rate( *config, Config::sampleRateAttrId, [ & ]( const Corvo::Change & ) {
//       derive.request();                 // however often it changes ...
//    } );
//    reader.read( batch );
//    derive.run();                        // ... the batch is acted upon once
//
//    Vok::KeyMirror trackers( *config, "flowTrackerConfig", *status, "ftStatus" );
//
// All of them are used from the thread that uses the entities. They hold no reference: what is
// followed may die first, and is then not heard of any more.
#pragma once

#include "Vok/Export.h"
#include "Vok/Ptr.h"
#include "Vok/Publisher.h"
#include "Vok/String.h"

#include <functional>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Vok {

class AttributeData;
class Entity;

/// Hears of the changes of one attribute of an entity, or of one member of a collection, from its
/// construction until its destruction, which `told` may bring about. What it throws, the mutator's
/// caller gets.
class VOK_EXPORT Follower final : public Corvo::Notifiee {
 public:
   using Told = std::function< void( const Corvo::Change & change ) >;

   Follower( const Entity & entity, AttrId attribute, Told told );

   /// Only the changes of the member under a key. A key that is a text may be given as any text.
   template< class K > Follower( const Entity & entity, AttrId attribute, const K & key, Told told )
         : Follower( entity, attribute, onlyAt( keyOf( key ), std::move( told ) ) )
   {
   }

   void onChange( const Corvo::Change & change ) override;

 private:
   template< class K > using Key = std::conditional_t<
         std::is_convertible_v< const K &, std::string_view >, Corvo::String, K >;
   template< class K > static Key< K > keyOf( const K & key ) { return Key< K >( key ); }
   template< class K > static Told onlyAt( K key, Told told )
   {
      return [ key = std::move( key ), told = std::move( told ) ]( const Corvo::Change & change ) {
         if ( const K * const changed = change.key< K >(); changed && *changed == key ) {
            told( change );
         }
      };
   }

   AttrId attribute_;
   std::shared_ptr< const Told > told_; // which lives as long as it runs
};

/// Hears of every change of an entity and of what is below it, children that come later included,
/// from its construction until its destruction, which `told` may bring about. A child that comes is
/// told as a change of its parent; what it holds by then is not. One that has left the tree is not
/// heard any more. What `told` throws, the mutator's caller gets.
class VOK_EXPORT TreeFollower final : public Corvo::Notifiee {
 public:
   /// `attribute` is the one of `change.entity` that changed.
   using Told =
         std::function< void( const Corvo::Change & change, const AttributeData & attribute ) >;

   /// Costs one walk over the tree.
   TreeFollower( const Entity & root, Told told );

   void onChange( const Corvo::Change & change ) override;

 private:
   void attach( const Entity & top );
   void detach( const Entity & top );

   std::shared_ptr< const Told > told_; // which lives as long as it runs
};

/// Something that is to be done once, however often it is asked for: changes ask, and whoever reads
/// batches runs it after each.
class VOK_EXPORT Deferred {
 public:
   explicit Deferred( std::function< void() > work ) : work_( std::move( work ) ) {}
   Deferred( const Deferred & ) = delete;
   Deferred & operator=( const Deferred & ) = delete;

   void request() noexcept { requested_ = true; }
   bool requested() const noexcept { return requested_; }

   /// Does the work if it was requested since the last time. What is requested meanwhile waits for
   /// the next call; work that throws stays requested.
   void run();

 private:
   std::function< void() > work_;
   bool requested_ = false;
};

/// Does something once, as soon as a condition holds: at its construction, or after a change of the
/// attribute that it follows. `holds` is asked after each change until then; `then` may destroy it.
class VOK_EXPORT When {
 public:
   When( const Entity & entity, AttrId attribute, std::function< bool() > holds,
         std::function< void() > then );
   When( const When & ) = delete;
   When & operator=( const When & ) = delete;

   /// Whether the condition has not held yet.
   bool waiting() const noexcept { return waiting_; }

 private:
   void ask();

   std::function< bool() > holds_;
   std::function< void() > then_;
   bool waiting_ = true;
   Follower follower_;
};

/// Keeps the members of one collection, the target, under the same keys as those of another one,
/// the source: what the source has and the target has not is made, what it has not is deleted.
/// Members that are there already stay as they are.
///
/// Both are sets, or collections of children whose only constructor argument is their key; or one
/// of each, and the source may be a map. Their keys are compared as texts. The target's entity
/// outlives the mirror. A member that cannot be made (std::bad_alloc) is missing; whoever changed
/// the source gets the exception.
class VOK_EXPORT KeyMirror {
 public:
   /// Throws std::invalid_argument where an entity has no such collection, or one that cannot be
   /// mirrored.
   KeyMirror( const Entity & source, std::string_view sourceCollection, Entity & target,
         std::string_view targetCollection );
   KeyMirror( const KeyMirror & ) = delete;
   KeyMirror & operator=( const KeyMirror & ) = delete;

 private:
   void follow( const Corvo::Change & change );
   void make( std::string_view key );

   const AttributeData & from_;
   const AttributeData & to_;
   Entity & target_;
   Follower follower_;
};

} // namespace Vok
