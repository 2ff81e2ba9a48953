// Preparing a batch: which entities it introduces, and which of them the replica has.
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

BatchApply::BatchApply( BatchReader & reader, const BatchFrame & frame,
      std::optional< ReadTypes > described, const Introduced & introduced )
      : reader_( reader ),
        frame_( frame ),
        described_( std::move( described ) ),
        types_( described_ ? *described_ : reader.types_ ),
        sameStream_( reader.last_ != 0 && reader.stream_ == frame.stream ),
        introByNumber_( introduced ),
        newSlots_( reader.shapeChanges_ ),
        line_( &memory_ ),
        left_( &memory_ ),
        pending_( memory_ )
{
   intros_.reserve( introduced.count );
}

void BatchApply::prepare()
{
   if ( frame_.whole ) {
      checkRoot( readBlock( frame_.content ) );
      Intro & root = introduce( 0, 0 );
      root.entity = reader_.root_;
      root.state = Intro::State::ready;
      root.birth = frame_.number;
   }
   scan();
   resolveAll();
   applyAll();
   makeSlots();
}

void BatchApply::applyAll()
{
   In in = frame_.content;
   for ( RecordHeads heads( types_ ); in.remaining() != 0; ) {
      const RecordHead head = heads.next( in );
      apply( { head.number, *head.type, head.whole() }, in );
   }
   for ( const Intro & intro : intros_ ) {
      if ( intro.entity && !intro.recorded ) {
         In none( nullptr, 0 );
         apply( { intro.number, *intro.type, true }, none ); // all at its defaults
      }
   }
}

// The replica's root was made by the client: its constant arguments have to be the writer's, its
// name may be another.
void BatchApply::checkRoot( In in )
{
   const Entity & root = *reader_.root_;
   eachArgument( in, *types_.front(), [ & ]( const ReadArgument & argument, In & at ) {
      const AttributeRow & row = *argument.own;
      if ( argument.reference ) {
         at.getVarint();
         return;
      }
      if ( argument.isName ) {
         return;
      }
      OwnedValue value( *row.value );
      row.value->decode( at, value.data() );
      if ( !row.identity && !row.settable &&
            !row.value->equal( value.data(), storageOf( root, row ) ) ) {
         throw Exception( "the replica's root has another " + std::string( row.name ) +
               " than the writer's: " +
               std::string( row.value->text( storageOf( root, row ) ).view() ) + " and " +
               std::string( row.value->text( value.data() ).view() ) );
      }
   } );
}

// ---- Who is introduced ------------------------------------------------------------------------

BatchApply::Intro & BatchApply::introduce( std::uint64_t number, std::uint32_t typeNumber )
{
   Intro & intro = intros_.emplace_back();
   intro.number = number;
   intro.type = types_[ typeNumber ].get();
   intro.typeNumber = typeNumber;
   if ( !introByNumber_.insert( number, static_cast< std::uint32_t >( intros_.size() ) ) ) {
      throw Exception( "a batch introduces an entity twice" );
   }
   return intro;
}

void BatchApply::scan()
{
   In in = frame_.content;
   for ( RecordHeads heads( types_ ); in.remaining() != 0; ) {
      const RecordHead head = heads.next( in );
      const Record record{ head.number, *head.type, head.whole() };
      if ( head.kind == Batch::RecordKind::outside ) {
         if ( const Intro * const placed = introOf( head.number ); !placed ) {
            Intro & intro = introduce( head.number, head.typeNumber );
            intro.birth = head.birth;
            intro.outside = true;
            intro.arguments = head.arguments;
         }
      }
      if ( record.whole ) {
         Intro * const intro = introOf( head.number );
         if ( !intro || intro->recorded || intro->typeNumber != head.typeNumber ) {
            throw Exception( "a batch describes an entity that it did not introduce just so" );
         }
         intro->recorded = true;
      } else if ( const ReplicaSlot slot = reader_.slots_.find( head.number );
                  !slot || slot.place().type != head.typeNumber ) {
         throw Exception( "a batch changes an entity that the reader was not told of" );
      } else if ( head.kind == Batch::RecordKind::left ) {
         slot.reserveOutside();
         left_.push_back( slot );
      }
      if ( record.type.hasEntities ) {
         introduceChildren( record, in );
      } else {
         eachAttribute( in, record.type, []( const ReadRow &, In ) {} );
      }
   }
}

// Reads to the end of the record's attributes.
void BatchApply::introduceChildren( const Record & record, In & in )
{
   eachAttribute( in, record.type, [ & ]( const ReadRow & row, In payload ) {
      if ( row.kind == AttributeKind::references && row.own ) {
         noteReferences( record.number, *row.own, payload );
      }
      if ( !row.hasChildren() ) {
         return;
      }
      for ( EntityMembers members( payload ); members.more(); ) {
         if ( members.op() != MemberOp::put ) {
            if ( row.kind == AttributeKind::child ) {
               continue;
            }
            if ( !row.own ) {
               return;
            }
            OwnedValue key( *row.own->key );
            row.own->key->decode( members.key(), key.data() );
            continue;
         }
         const ChildHead head = members.child();
         const std::uint32_t memberType = row.memberType - 1;
         Intro * intro = introOf( head.number );
         if ( intro && intro->outside && intro->typeNumber == memberType ) {
            intro->outside = false; // it was referred to before its place was told
         } else {
            intro = &introduce( head.number, memberType );
            intro->birth = head.birth;
            intro->arguments = head.arguments;
         }
         intro->parent = record.number;
         intro->row = row.own;
         if ( otherStream() && intro->type->refers ) {
            noteArguments( *intro );
         }
      }
   } );
}

// Where a whole tree refers to what it introduces outside: the replica may refer to the like of it
// at the same place.
void BatchApply::noteReferences( std::uint64_t referrer, const AttributeRow & row, In payload )
{
   if ( !otherStream() ) {
      return;
   }
   EntityMembers members( payload );
   while ( members.more() && members.op() == MemberOp::put ) {
      noteReference( members.reference(), { referrer, &row } );
   }
}

void BatchApply::noteArguments( const Intro & intro )
{
   eachReference( intro, [ & ]( std::uint64_t number, const AttributeRow & row ) {
      noteReference( number, { intro.number, &row } );
   } );
}

void BatchApply::noteReference( std::uint64_t number, Referrer referrer )
{
   referrers_.findOrInsert(
         number, [ & ] { return MapNode< std::uint64_t, Referrer >{ number, referrer }; } );
}

// ---- Slots ------------------------------------------------------------------------------------

void BatchApply::makeSlots()
{
   for ( const Intro & intro : intros_ ) {
      newSlots_.insert( intro.number,
            { intro.birth, intro.parent, intro.typeNumber, intro.outside }, intro.entity.get() );
   }
   if ( !frame_.whole ) {
      reader_.slots_.reserve( newSlots_ );
   }
}

void BatchApply::commit() noexcept
{
   pending_.commit();
   for ( const ReplicaSlot slot : left_ ) {
      slot.becomeOutside();
   }
   if ( frame_.whole ) {
      reader_.slots_.swap( newSlots_ );
      newSlots_.clear();
   } else {
      reader_.slots_.takeAll( newSlots_ );
   }
   if ( frame_.whole || !intros_.empty() || !left_.empty() ) {
      ++reader_.shapeChanges_; // what leaves its parent counts by itself
   }
   reader_.stream_ = frame_.stream;
   reader_.last_ = frame_.number;
   if ( described_ ) {
      reader_.types_.swap( *described_ );
   }
   reader_.passedOver_.swap( passedOver_ );
   intros_.clear(); // what was found and not needed any more goes before anybody is told
}

} // namespace Vok::Detail
