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

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace Vok {

class Entity;

namespace Detail {
struct BatchPlace;
class BatchReader;
class BatchWriter;
} // namespace Detail

/// How far a reader has come: the stream that it follows, and the last batch of it that it has.
/// Both are 0 where it has none.
struct StreamPosition {
   std::uint64_t stream = 0;
   std::uint64_t batch = 0;

   friend bool operator==( const StreamPosition &, const StreamPosition & ) = default;
};

/// Writes the changes of an entity and everything below it, for one reader or for many.
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

   /// The next batch is the whole tree again, for all readers.
   void resync() noexcept;

   /// Appends a batch with the whole tree for one more reader, which goes on with the batches that
   /// the others get. Throws std::logic_error while `hasChanges()`: what is pending is written for
   /// all first. One that throws leaves `out` as it was.
   void writeWhole( NboAttrLog::Out & out );

   /// Its stream, which has a random number, and the last batch that was written.
   StreamPosition position() const noexcept;

   /// `f` is called when the writer goes from nothing pending to something, from inside the
   /// mutator. It only takes note: it neither writes nor changes entities, and does not throw.
   void onPending( std::function< void() > f );

 private:
   friend class StreamPlace;

   std::unique_ptr< Detail::BatchWriter > writer_;
};

/// Where one of many readers stopped. The others get every batch; what this one misses is noted
/// for it, each attribute and key once, and told in one batch when it goes on:
///
///    writer.write( out );                     // for all readers
///    Vok::StreamPlace place( writer );        // one stops
///    ...                                      // batches for the others
///    place.catchUp( out );                    // for the one: what differs from where it stopped
///
/// However long a reader stops, and however many do, the notes are together no more than what the
/// tree has and what changed: of members that are gone, no more than there are members. Each costs
/// some hundred bytes, and nothing while no reader has stopped.
class VOK_EXPORT StreamPlace {
 public:
   /// At the last batch that was written. Throws std::bad_alloc.
   explicit StreamPlace( EntityVokNboAttrLogSa & writer );
   StreamPlace( const StreamPlace & ) = delete;
   StreamPlace & operator=( const StreamPlace & ) = delete;
   ~StreamPlace();

   /// What was appended.
   enum class Told : std::uint8_t {
      nothing, ///< the reader has the last batch
      changes,
      wholeTree ///< a batch failed meanwhile, or an entity has its place in another one
   };

   /// Appends a batch that brings the reader to the last one that was written, and moves the place
   /// there. Costs what differs. Throws std::logic_error while the writer has changes to be
   /// written, or where it is gone; one that throws leaves `out` and the place as they were.
   Told catchUp( NboAttrLog::Out & out );

   /// The same for a reader that stopped later than this one, and for any other one: whoever is
   /// older than the place, or follows another stream, gets the whole tree. The place stays.
   Told catchUp( const StreamPosition & reader, NboAttrLog::Out & out ) const;

   /// The reader has come to `batch`, which it was told by other means; silent where that is no
   /// later one than it has, or was not written yet. What only it needed is forgotten.
   void moveTo( std::uint64_t batch ) noexcept;

   StreamPosition position() const noexcept;

 private:
   std::unique_ptr< Detail::BatchPlace > place_;
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

   /// How far it has come.
   StreamPosition position() const noexcept;

   /// What the last batch carried that this side does not know, a text each.
   std::vector< Corvo::String > passedOver() const;

 private:
   std::unique_ptr< Detail::BatchReader > reader_;
};

} // namespace Vok
