// Change streams of whole trees: Vok::EntityVokNboAttrLogSa writes the changes of a tree as
// batches, Vok::EntityVokNboAttrLogReader applies them to a replica.
//
//    Vok::EntityVokNboAttrLogSa writer( root );
//    writer.write( out );                             // the whole tree
//    root->enabledIs( true );
//    writer.write( out );                             // one attribute
//
//    Vok::EntityVokNboAttrLogReader reader( replica ); // of the same type
//    Vok::NboAttrLog::In in( out.data(), out.size() );
//    reader.read( in );
//    reader.read( in );                               // now both have the same treeDigest
//
// The format is in docs/log.md.
#pragma once

#include "Vok/Export.h"
#include "Vok/NboAttrLog.h"
#include "Vok/Ptr.h"
#include "Vok/String.h"

#include <functional>
#include <memory>
#include <vector>

namespace Vok {

class Entity;

namespace Detail {
class BatchReader;
class BatchWriter;
} // namespace Detail

/// Writes the changes of an entity and everything below it.
///
/// It notes which attributes and keys changed, each once, and a batch carries their values at the
/// time of writing: memory and bytes follow what differs, however often it changed. It keeps a
/// reference to the root and to nothing else. Used from the thread that uses the tree.
class VOK_EXPORT EntityVokNboAttrLogSa {
 public:
   /// Follows `root` from now on. Throws std::bad_alloc.
   explicit EntityVokNboAttrLogSa( const Corvo::Ptr< Entity > & root );
   EntityVokNboAttrLogSa( const EntityVokNboAttrLogSa & ) = delete;
   EntityVokNboAttrLogSa & operator=( const EntityVokNboAttrLogSa & ) = delete;
   ~EntityVokNboAttrLogSa();

   /// Whether `write` would append anything. True at first: the whole tree is pending.
   bool hasChanges() const noexcept;

   /// Appends one batch with all that changed since the last one; nothing where nothing is
   /// pending. One that throws (std::bad_alloc, or a text too long for a log) leaves `out` as it
   /// was; the next batch is then the whole tree. Costs what changed, a whole tree what the tree
   /// has.
   void write( NboAttrLog::Out & out );

   /// The next batch is the whole tree again, for a new reader.
   void resync() noexcept;

   /// `f` is called when the writer goes from nothing pending to something, from inside the
   /// mutator. It only takes note: it neither writes nor changes entities, and does not throw.
   void onPending( std::function< void() > f );

 private:
   std::unique_ptr< Detail::BatchWriter > writer_;
};

/// Applies batches to a replica: a tree whose root has the type and the constructor arguments of
/// the writer's root; its name may differ.
///
/// After each batch the replica equals the writer's tree at the time of the write. Notifiees of
/// the replica hear exactly the differences, once each, when the whole batch is in place;
/// entities that did not change keep their identity. Used from the thread that uses the replica.
class VOK_EXPORT EntityVokNboAttrLogReader {
 public:
   explicit EntityVokNboAttrLogReader( const Corvo::Ptr< Entity > & root );
   EntityVokNboAttrLogReader( const EntityVokNboAttrLogReader & ) = delete;
   EntityVokNboAttrLogReader & operator=( const EntityVokNboAttrLogReader & ) = delete;
   ~EntityVokNboAttrLogReader();

   /// Applies one batch, all of it or, throwing, none: NboAttrLog::Exception for bytes that are
   /// no batch, for one that does not follow the last one read, and for values that the replica
   /// refuses; std::bad_alloc. An exception from a notifiee comes out after the whole batch is
   /// applied.
   void read( NboAttrLog::In & in );

   /// What the last batch carried that this side does not know, a text each.
   std::vector< Corvo::String > passedOver() const;

 private:
   std::unique_ptr< Detail::BatchReader > reader_;
};

} // namespace Vok
