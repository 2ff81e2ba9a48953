// A tree and its replica, and which attributes of trees were ever away from their defaults: for
// tests that whole trees of any type replicate.
#pragma once

#include "tests/support/EntityTable.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

using EntityPtr = Corvo::Ptr< Vok::Entity >;

/// A tree and its replica.
class ReplicatedTree {
 public:
   /// Both are as their table makes them.
   explicit ReplicatedTree( const EntityTable & table );

   /// What is pending goes to the reader; then both trees have to be the same.
   void follow();

   /// The whole tree goes to the reader once more, and to a reader that never had a batch.
   void resync();

   EntityPtr root;
   EntityPtr replica;
   Vok::EntityVokNboAttrLogSa writer{ root };
   Vok::EntityVokNboAttrLogReader reader{ replica };

 private:
   EntityPtr late_;
};

/// A child of an entity, by the name of its collection and its key as text.
EntityPtr childOf( const EntityPtr & parent, std::string_view attribute,
      std::string_view key = "" );

/// The attributes that were away from what they are in a fresh entity, in any tree that was added.
class Away {
 public:
   void add( const Vok::Entity & root );

   /// The attributes of these types that could be away and never were, as one text. A plain
   /// attribute whose row has no other value cannot.
   std::string missing( const std::vector< EntityTable > & tables ) const;

   /// Whether references of an attribute, which is named with its type, led into a tree and out of
   /// one.
   bool referredTo( const std::string & attribute ) const;

 private:
   void addReferences( const Vok::Entity & entity, const Vok::AttributeData & attribute );

   std::set< std::string > names_; ///< such as `FlowTracking::FlowGroup::flowDomain`
   std::set< std::string > inward_; ///< attributes that referred to an entity of their tree
   std::set< std::string > outward_; ///< and to another
};

/// Every attribute of a tree that can be away from its default replicates, survives a resync and
/// reaches a late reader. `change` takes them away from it; the tables are those of the types that
/// have any.
void expectWholeTreeFollows( const EntityTable & table, const std::vector< EntityTable > & types,
      const std::function< void( const EntityPtr & root ) > & change );

/// How random trees are changed: so many trees, each so many times by up to so many changes.
struct RandomRuns {
   std::uint64_t trees;
   unsigned batches;
   std::uint32_t changes;
};

/// Random trees of a type and their replicas stay the same, batch by batch, now and then with a
/// whole tree in place of the changes. What the replicas had away is added to `away`.
void expectRandomTreesFollow( const EntityTable & table, const RandomRuns & runs, Away & away );

} // namespace TestSupport
