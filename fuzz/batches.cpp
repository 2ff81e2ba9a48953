// Batches on a live replica; Forge.h says what an input is.
#include "fuzz/Forge.h"
#include "tests/support/SpareSlabs.h"

#include "Vok/Vok.h"
#include "Vok/detail/BatchCheck.h"
#include "Vok/detail/StreamType.h"

#include <memory>
#include <optional>
#include <utility>

namespace {

using Fuzz::Batch;
using Fuzz::hold;
using Fuzz::PieceFlags;
using Vok::Detail::ReadTypes;
using Vok::NboAttrLog::In;
using Vok::NboAttrLog::Out;

constexpr Fuzz::Budget checkSteps{ 100000, 200 };
constexpr Fuzz::Budget readSteps{ 500000, 500 };
constexpr unsigned mostPieces = 4;

Vok::Digest digestOf( const Corvo::Ptr< Test::Root > & root )
{
   return Vok::treeDigest( *root );
}

/// Hears of every change below a root and of what its references lead to, and may delete children
/// of that root when it is told.
class Listener : public Corvo::Notifiee {
 public:
   explicit Listener( const Corvo::Ptr< Test::Root > & root ) : root_( root ) {}

   void onChange( const Corvo::Change & change ) override
   {
      ++heard_;
      change.keyText();
      change.oldValueText();
      if ( deletes_ ) {
         deletes_ = false;
         root_->treeDelAll();
         root_->bindingsDelAll();
      }
   }

   /// Begins to listen to what there is now.
   void start( bool deletes )
   {
      heard_ = 0;
      deletes_ = deletes;
      attach( *root_ );
   }

   std::size_t heard() const { return heard_; }

 private:
   // Without a limit of depth: references of the test module lead to trees without references.
   void attach( const Vok::Entity & entity )
   {
      using Vok::AttributeKind;
      entity.publisher().notifieeIs( this );
      for ( const Vok::AttributeData & attribute : entity.typeData().attributes() ) {
         const AttributeKind kind = attribute.kind();
         if ( kind == AttributeKind::children || kind == AttributeKind::references ) {
            for ( const Corvo::String & key : attribute.keys( entity ) ) {
               attach( *attribute.child( entity, key.view() ) );
            }
         } else if ( kind == AttributeKind::child && attribute.child( entity, {} ) ) {
            attach( *attribute.child( entity, {} ) );
         } else if ( attribute.row().reference ) {
            if ( const auto * const to = Vok::Detail::referred( entity, attribute.row() ) ) {
               attach( *to );
            }
         }
      }
   }

   Corvo::Ptr< Test::Root > root_;
   std::size_t heard_ = 0;
   bool deletes_ = false;
};

/// A replica of the base tree with a stream of its own, which a second replica follows.
class Chain {
 public:
   Chain()
   {
      In in( Fuzz::baseBatch() );
      reader_.read( in );
      writer_.write( written_ );
   }

   /// Whether it may be another than a replica that has read the base batch.
   bool changed() const { return changed_; }

   /// Whether the batch was taken. One that was not must have left no trace; after one that was,
   /// the second replica must be as the first.
   bool read( const Batch & batch, bool deletesMeanwhile )
   {
      const Vok::Digest before = digestOf( root_ );
      listener_.start( deletesMeanwhile );
      In in( batch );
      const bool taken = readInto( reader_, in );
      if ( taken ) {
         hold( listener_.heard() != 0 || digestOf( root_ ) == before, "what changes is told" );
         follow();
      } else {
         hold( digestOf( root_ ) == before, "a refused batch leaves the replica as it was" );
         hold( listener_.heard() == 0, "a refused batch tells nobody" );
         hold( in.remaining() == batch.size(), "a refused batch is not passed over" );
         hold( !writer_.hasChanges(), "a refused batch changes nothing" );
      }
      return taken;
   }

   /// The replica's user deletes children.
   void deleteSome()
   {
      root_->treeDelAll();
      root_->slotsDelAll();
      root_->groupsDel( 1 );
      root_->singleDel();
      follow();
   }

   /// A new replica is the same, and the tree's own whole batch changes nothing.
   void holdWhole()
   {
      Vok::EntityVokNboAttrLogSa writer( root_ );
      Out out;
      writer.write( out );
      const auto fresh = Test::Root::RootIs( "fresh" );
      In in( out.bytes() );
      Vok::EntityVokNboAttrLogReader( fresh ).read( in );
      const Vok::Digest before = digestOf( root_ );
      hold( digestOf( fresh ) == before, "a fresh replica is the same" );
      listener_.start( false );
      In again( out.bytes() );
      reader_.read( again );
      hold( digestOf( root_ ) == before, "what a tree is already changes nothing" );
      hold( listener_.heard() == 0, "what a tree is already is not told" );
   }

 private:
   static bool readInto( Vok::EntityVokNboAttrLogReader & reader, In & in )
   {
      const std::size_t size = in.remaining();
      const Fuzz::Cost cost;
      bool taken = false;
      try {
         reader.read( in );
         taken = true;
      } catch ( const Vok::NboAttrLog::Exception & ) {
      }
      cost.holdSteps( readSteps, size );
      return taken;
   }

   // The second replica is made when there is something to follow: most batches are refused.
   void follow()
   {
      changed_ = true;
      writer_.write( written_ );
      for ( In in( written_.bytes() ); in.remaining() != 0; ) {
         secondReader_.read( in );
      }
      written_.clear();
      hold( digestOf( second_ ) == digestOf( root_ ), "the second replica follows" );
   }

   bool changed_ = false;
   Corvo::Ptr< Test::Root > root_ = Test::Root::RootIs( "replica" );
   Vok::EntityVokNboAttrLogReader reader_{ root_ };
   Listener listener_{ root_ };
   Vok::EntityVokNboAttrLogSa writer_{ root_ };
   Out written_;
   Corvo::Ptr< Test::Root > second_ = Test::Root::RootIs( "second" );
   Vok::EntityVokNboAttrLogReader secondReader_{ second_ };
};

// The passes that only check, and what they cost; the types that the stream has described then, or
// nothing where the batch is refused.
std::optional< ReadTypes > checked( const Batch & content, bool whole, const ReadTypes & known )
{
   static const Vok::TypeData * const rootType =
         Corvo::ModuleInspectData::findType( "Test::Root" );
   Vok::Detail::BatchFrame frame;
   frame.whole = whole;
   frame.content = In( content );
   const Fuzz::Cost cost;
   ReadTypes types = whole ? ReadTypes() : known;
   bool good = false;
   try {
      if ( auto described = Vok::Detail::readTypes( frame.content, types ) ) {
         types = std::move( *described );
      }
      Vok::Detail::checkRecords( frame, types, *rootType );
      good = true;
   } catch ( const Vok::NboAttrLog::Exception & ) {
   } catch ( const Corvo::RangeException & ) {
   }
   cost.holdHeap( Fuzz::hostileHeap, content.size() );
   cost.holdSteps( checkSteps, content.size() );
   return good ? std::optional( types ) : std::nullopt;
}

const Batch & baseTypes()
{
   static const Batch types = Fuzz::partsOf( Fuzz::baseBatch() ).types;
   return types;
}

ReadTypes readBaseTypes()
{
   In in( baseTypes() );
   return *Vok::Detail::readTypes( in, {} );
}

/// Where the stream of an input stands.
struct Stream {
   std::uint64_t number;
   std::uint64_t last; ///< batch
   ReadTypes types;
};

Batch joined( Fuzz::Bytes a, Fuzz::Bytes b )
{
   Batch both( a.begin(), a.end() );
   both.insert( both.end(), b.begin(), b.end() );
   return both;
}

void readPiece( Chain & chain, Stream & stream, std::uint8_t flags, Fuzz::Bytes bytes )
{
   static const Batch noTypes{ std::byte{ 0 } };
   const bool whole = ( flags & PieceFlags::whole ) != 0;
   const bool other = ( flags & PieceFlags::otherStream ) != 0;
   const bool wrong = ( flags & PieceFlags::wrongNumber ) != 0;
   const std::uint64_t number = stream.number + ( other ? 1 : 0 );
   const std::uint64_t next = stream.last + ( wrong ? 2 : 1 );
   const Fuzz::Bytes types = ( flags & PieceFlags::ownTypes ) != 0 ? Fuzz::Bytes()
         : whole                                                   ? Fuzz::Bytes( baseTypes() )
                                                                   : Fuzz::Bytes( noTypes );
   const auto after = checked( joined( types, bytes ), whole, stream.types );
   const Batch batch = Fuzz::batchOf( whole, number, next, types, bytes );
   if ( chain.read( batch, ( flags & PieceFlags::deletesMeanwhile ) != 0 ) ) {
      hold( after.has_value(), "what is taken was found good" );
      hold( whole || ( !other && !wrong ), "a batch of changes follows the last one" );
      stream = { number, next, *after };
   }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size )
{
   Fuzz::Input input( data, size );
   // What only refuses batches is as new: that is what is held of it.
   static std::unique_ptr< Chain > chain;
   if ( !chain || chain->changed() ) {
      chain = std::make_unique< Chain >();
   }
   static const ReadTypes types = [] {
      TestSupport::makeSpareSlabs(); // no input is charged for the first slab of a size
      return readBaseTypes();
   }();
   Stream stream{ Fuzz::baseStream, 1, types };
   for ( unsigned i = 0; i != mostPieces && !input.empty(); ++i ) {
      const std::uint8_t flags = input.byte();
      const unsigned high = input.byte();
      const Fuzz::Bytes bytes = input.bytes( high << 8 | input.byte() );
      if ( ( flags & PieceFlags::deletesBefore ) != 0 ) {
         chain->deleteSome();
      }
      if ( ( flags & PieceFlags::verbatim ) == 0 ) {
         readPiece( *chain, stream, flags, bytes );
      } else if ( chain->read( { bytes.begin(), bytes.end() }, false ) ) {
         break; // where its stream stands is not known here
      }
   }
   if ( chain->changed() ) {
      chain->holdWhole();
   }
   return 0;
}
