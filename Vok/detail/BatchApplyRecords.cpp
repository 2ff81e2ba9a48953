// Preparing a batch: bringing its records to entities.
#include "Vok/detail/BatchApply.h"

#include "Vok/Exceptions.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/StreamOps.h"
#include "Vok/detail/StreamType.h"

#include <algorithm>
#include <string>

namespace Vok::Detail {

using NboAttrLog::Exception;
using NboAttrLog::In;

namespace {

/// An optional stored in one word: the new word, after the commit the old one.
class StagedWord final : public Staged {
 public:
   StagedWord( const AttributeRow & row, void * storage, OwnedValue next )
         : row_( row ),
           storage_( storage ),
           next_( std::move( next ) ),
           old_( *row.value )
   {
      row.storage->load( storage, old_.data() );
   }

   void commit() noexcept override { row_.storage->store( storage_, next_.data() ); }
   void notify( const Tell & tell ) override { tell( {}, { row_.value, old_.data() } ); }

 private:
   const AttributeRow & row_;
   void * storage_;
   OwnedValue next_;
   OwnedValue old_;
};

OwnedValue valueOf( const ReadRow & row, In payload )
{
   OwnedValue value( *row.own->value );
   readValue( row, payload, value.data() );
   return value;
}

EntityOps noOps()
{
   static constexpr auto none = []( EntityOp & ) { return false; };
   static constexpr auto count = [] { return std::size_t{ 0 }; };
   return { none, count };
}

// How many operations a payload of children or references has.
std::size_t countMembers( const ReadRow & row, EntityMembers members )
{
   std::size_t count = 0;
   for ( ; members.more(); ++count ) {
      if ( members.op() != MemberOp::put ) {
         if ( row.kind != AttributeKind::child ) {
            row.own->key->check( members.key() );
         }
      } else if ( row.kind == AttributeKind::references ) {
         members.reference();
      } else {
         members.child();
      }
   }
   return count;
}

bool differs( const AttributeRow & row, const void * storage, const void * next )
{
   if ( !row.storage ) {
      return !row.value->equal( storage, next );
   }
   OwnedValue now( *row.value );
   row.storage->load( storage, now.data() );
   return !row.value->equal( now.data(), next );
}

} // namespace

// Reads to the end of the record's attributes.
void BatchApply::apply( const Record & record, In & attributes )
{
   const Intro * const intro = introOf( record.number );
   Entity * entity = nullptr;
   if ( intro ) {
      entity = intro->entity.get();
   } else if ( const ReplicaSlot slot = reader_.slots_.find( record.number ); inPlace( slot ) ) {
      entity = slot.entity();
   }
   if ( !entity ) {
      // Nothing to be changed; what this side does not know is said all the same.
      eachAttribute( attributes, record.type,
            [ & ]( const ReadRow & row, In ) { passOver( record.type, row ); } );
      return;
   }
   if ( &entity->typeData() != record.type.own ) {
      throw Exception( "a record is of another type than its entity" );
   }
   if ( intro && intro->fresh ) {
      applyFresh( *entity, record, attributes );
   } else {
      applyExisting( *entity, record, attributes );
   }
}

// ---- Entities that nobody can see yet ---------------------------------------------------------

// A plain one, which most attributes are, without a call but that of its decoder.
inline void BatchApply::loadAttribute( Entity & entity, const ReadRow & row, In payload )
{
   const AttributeRow & own = *row.own;
   void * const storage = storageOf( entity, own );
   if ( row.isCollection() ) {
      loadCollection( entity, row, storage, payload );
   } else if ( own.storage ) {
      const OwnedValue next = valueOf( row, payload );
      own.storage->store( storage, next.data() );
   } else {
      readValue( row, payload, storage );
   }
}

void BatchApply::applyFresh( Entity & entity, const Record & record, In & attributes )
{
   const ReadType & type = record.type;
   const bool noting = !type.otherDefaults.empty();
   if ( noting ) {
      mentioned_.assign( type.rows.size(), 0 );
   }
   if ( attributes.remaining() != 0 ) {
      eachAttribute( attributes, type, [ & ]( const ReadRow & row, In payload ) {
         if ( noting ) {
            mentioned_[ static_cast< std::size_t >( &row - type.rows.data() ) ] = 1;
         }
         if ( row.own ) {
            loadAttribute( entity, row, payload );
         } else {
            passOver( type, row );
         }
      } );
   }
   for ( const std::uint32_t index : type.otherDefaults ) {
      if ( !mentioned_[ index ] ) {
         loadDefault( entity, type.rows[ index ] );
      }
   }
}

// What the writer's entity holds by default, and one of this side perhaps does not.
void BatchApply::loadDefault( Entity & entity, const ReadRow & row )
{
   void * const storage = storageOf( entity, *row.own );
   if ( row.kind == AttributeKind::child ) {
      if ( row.own->collection->size( storage ) != 0 ) {
         // The constructor made it, the writer has it no more.
         const auto staged = row.own->collection->stream->stageEntities(
               storage, noOps(), { .whole = true } );
         staged->owner = Corvo::Ptr< Entity >( &entity );
         staged->commit();
      }
   } else if ( differs( *row.own, storage, row.initial->data() ) ) {
      OwnedValue next( *row.initial );
      StagedValue( storage, std::move( next ) ).commit();
   }
}

void BatchApply::loadCollection(
      Entity & entity, const ReadRow & row, void * storage, In & payload )
{
   if ( row.hasEntities() ) {
      EntityMembers members( payload );
      loadEntities( entity, row, storage, members );
   } else {
      readWhole( payload );
      row.own->collection->stream->load( storage, payload );
   }
}

void BatchApply::loadEntities(
      Entity & entity, const ReadRow & row, void * storage, EntityMembers & members )
{
   const CollectionOps & collection = *row.own->collection;
   if ( row.kind == AttributeKind::children ) {
      for ( EntityMembers ahead = members; ahead.more() && ahead.op() == MemberOp::put; ) {
         if ( const Entity * const child = entityOf( ahead.child().number ) ) {
            collection.stream->adopt( entity, storage, *child );
         }
         members = ahead;
      }
      if ( !members.more() ) {
         return;
      }
   }
   for ( EntityOp op; nextEntityOp( row, storage, members, op ); ) {
      const bool there = row.kind == AttributeKind::child &&
            collection.entity( storage, nullptr ) == op.member.get();
      if ( op.member && !there ) {
         collection.stream->adopt( entity, storage, *op.member );
      }
   }
}

// The next thing that a payload makes of the members, if there is one: entities that are ignored
// are left out.
bool BatchApply::nextEntityOp(
      const ReadRow & row, const void * collection, EntityMembers & members, EntityOp & next )
{
   while ( members.more() ) {
      next = {};
      const MemberOp op = members.op();
      if ( op != MemberOp::put && row.kind == AttributeKind::child ) {
         return true;
      }
      if ( op != MemberOp::put ) {
         OwnedValue key( *row.own->key );
         row.own->key->decode( members.key(), key.data() );
         if ( op == MemberOp::del ) {
            next.key = std::move( key );
            return true;
         }
         Entity * const kept = row.own->collection->entity( collection, key.data() );
         next.member = Corvo::Ptr< Entity >( kept );
      } else if ( row.kind == AttributeKind::references ) {
         next.member = targetOf( members.reference(), *row.own );
      } else {
         next.member = entityOf( members.child().number );
      }
      if ( next.member ) {
         return true;
      }
   }
   return false;
}

// ---- Entities that the replica has ------------------------------------------------------------

void BatchApply::applyExisting( Entity & entity, const Record & record, In & attributes )
{
   const ReadType & type = record.type;
   mentioned_.assign( record.whole ? type.rows.size() : 0, 0 );
   if ( attributes.remaining() != 0 ) {
      eachAttribute( attributes, type, [ & ]( const ReadRow & row, In payload ) {
         if ( record.whole ) {
            mentioned_[ static_cast< std::size_t >( &row - type.rows.data() ) ] = 1;
         }
         if ( row.own ) {
            stageAttribute( entity, row, payload );
         } else {
            passOver( type, row );
         }
      } );
   }
   for ( std::size_t i = 0; record.whole && i != type.rows.size(); ++i ) {
      if ( !mentioned_[ i ] && type.rows[ i ].own ) {
         stageInitial( entity, type.rows[ i ] );
      }
   }
}

void BatchApply::stageAttribute( Entity & entity, const ReadRow & row, In payload )
{
   const AttributeRow & own = *row.own;
   void * const storage = storageOf( entity, own );
   if ( row.hasEntities() ) {
      EntityMembers members( payload );
      const auto next = [ & ]( EntityOp & op ) {
         return nextEntityOp( row, storage, members, op );
      };
      const auto atMost = [ & ] { return countMembers( row, members ); };
      pending_.add( own.collection->stream->stageEntities( storage, { next, atMost },
                          { members.whole(), entity.publisher().hasNotifiee() } ),
            entity, own.id );
   } else if ( row.isCollection() ) {
      const bool whole = readWhole( payload );
      pending_.add( own.collection->stream->stage(
                          storage, payload, { whole, entity.publisher().hasNotifiee() } ),
            entity, own.id );
   } else {
      stageValue( entity, own, valueOf( row, payload ) );
   }
}

void BatchApply::stageValue( Entity & entity, const AttributeRow & row, OwnedValue next )
{
   void * const storage = storageOf( entity, row );
   if ( !differs( row, storage, next.data() ) ) {
      return;
   }
   if ( row.storage ) {
      pending_.make< StagedWord >( entity, row.id, row, storage, std::move( next ) );
   } else {
      pending_.make< StagedValue >( entity, row.id, storage, std::move( next ) );
   }
}

// What a whole tree does not mention is as in a fresh entity of the writer.
void BatchApply::stageInitial( Entity & entity, const ReadRow & row )
{
   const AttributeRow & own = *row.own;
   void * const storage = storageOf( entity, own );
   if ( row.hasEntities() ) {
      pending_.add(
            own.collection->stream->stageEntities( storage, noOps(), { .whole = true } ), entity,
            own.id );
   } else if ( row.isCollection() ) {
      In nothing( nullptr, 0 );
      pending_.add(
            own.collection->stream->stage( storage, nothing, { .whole = true } ), entity, own.id );
   } else if ( row.initial ) {
      stageValue( entity, own, *row.initial );
   }
}

void BatchApply::passOver( const ReadType & type, const ReadRow & row )
{
   if ( row.own ) {
      return;
   }
   std::string text( type.name.view() );
   text.append( "::" ).append( row.name.view() );
   if ( std::find( passedOver_.begin(), passedOver_.end(), text ) == passedOver_.end() ) {
      passedOver_.emplace_back( text );
   }
}

} // namespace Vok::Detail
