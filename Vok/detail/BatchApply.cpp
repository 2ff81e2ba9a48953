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

BatchApply::BatchApply( BatchReader & reader, const BatchFrame & frame, ReadTypes types )
      : reader_( reader ),
        frame_( frame ),
        types_( std::move( types ) ),
        sameStream_( reader.last_ != 0 && reader.stream_ == frame.stream )
{
}

void BatchApply::prepare()
{
   if ( frame_.whole ) {
      checkRoot( readBlock( frame_.content ) );
      auto root = std::make_unique< Intro >();
      root->entity = reader_.root_;
      root->state = Intro::State::ready;
      root->birth = frame_.number;
      introduce( std::move( *root ) );
   }
   scan();
   resolveAll();
   for ( const Record & record : records_ ) {
      apply( record );
   }
   for ( const auto & intro : intros_ ) {
      if ( intro->entity && !intro->recorded ) {
         apply( { intro->number, intro->type, true, In( nullptr, 0 ) } ); // all at its defaults
      }
   }
   makeSlots();
}

// The replica's root was made by the client: its constant arguments have to be the writer's, its
// name may be another.
void BatchApply::checkRoot( In in )
{
   const Entity & root = *reader_.root_;
   for ( const ReadArgument & argument : types_.front()->arguments ) {
      const AttributeRow & row = *argument.own;
      if ( argument.reference ) {
         in.getVarint();
         continue;
      }
      OwnedValue value( *row.value );
      row.value->decode( in, value.data() );
      if ( !row.identity && !row.settable &&
            !row.value->equal( value.data(), storageOf( root, row ) ) ) {
         throw Exception( "the replica's root has another " + std::string( row.name ) +
               " than the writer's: " + std::string( row.value->text( storageOf( root, row ) ).view() ) +
               " and " + std::string( row.value->text( value.data() ).view() ) );
      }
   }
}

// ---- Who is introduced ------------------------------------------------------------------------

void BatchApply::introduce( Intro intro )
{
   auto owned = std::make_unique< Intro >( std::move( intro ) );
   Intro * const added = owned.get();
   intros_.push_back( std::move( owned ) );
   const auto [ node, inserted ] = introByNumber_.findOrInsert(
         added->number, [ & ] { return MapNode< std::uint64_t, Intro * >{ added->number, added }; } );
   if ( !inserted ) {
      throw Exception( "a batch introduces an entity twice" );
   }
}

BatchApply::Intro * BatchApply::introOf( std::uint64_t number )
{
   const auto * const found = introByNumber_.find( number );
   return found ? found->value : nullptr;
}

void BatchApply::scan()
{
   In in = frame_.content;
   while ( in.remaining() != 0 ) {
      const RecordHead head = readRecordHead( in, types_ );
      Record record{ head.number, head.typeNumber, head.whole(), In( nullptr, 0 ) };
      if ( head.kind == Batch::RecordKind::outside ) {
         if ( const Intro * const placed = introOf( head.number ); !placed ) {
            Intro intro;
            intro.number = head.number;
            intro.birth = head.birth;
            intro.outside = true;
            intro.type = head.typeNumber;
            intro.arguments = head.arguments;
            introduce( std::move( intro ) );
         }
      }
      if ( record.whole ) {
         Intro * const intro = introOf( head.number );
         if ( !intro || intro->recorded || intro->type != head.typeNumber ) {
            throw Exception( "a batch describes an entity that it did not introduce just so" );
         }
         intro->recorded = true;
      } else if ( const auto * const slot = reader_.slots_.find( head.number );
                  !slot || slot->value->type != head.typeNumber ) {
         throw Exception( "a batch changes an entity that the reader was not told of" );
      } else if ( head.kind == Batch::RecordKind::left ) {
         left_.push_back( slot->value.get() );
      }
      const In start = in;
      eachAttribute( in, *types_[ head.typeNumber ], []( const ReadRow &, In ) {} );
      record.attributes = In( start.position(), start.remaining() - in.remaining() );
      introduceChildren( record );
      records_.push_back( record );
   }
}

void BatchApply::introduceChildren( const Record & record )
{
   In in = record.attributes;
   eachAttribute( in, *types_[ record.type ], [ & ]( const ReadRow & row, In payload ) {
      if ( !row.hasChildren() ) {
         return;
      }
      readMode( payload );
      while ( payload.remaining() != 0 ) {
         if ( readOp( payload ) == MemberOp::del ) {
            if ( row.kind == AttributeKind::child ) {
               continue;
            }
            if ( !row.own ) {
               return;
            }
            OwnedValue key( *row.own->key );
            row.own->key->decode( payload, key.data() );
            continue;
         }
         const ChildHead head = readChildHead( payload );
         Intro intro;
         intro.number = head.number;
         intro.birth = head.birth;
         intro.parent = record.number;
         intro.type = row.memberType - 1;
         intro.row = row.own;
         intro.arguments = head.arguments;
         Intro * const before = introOf( head.number );
         if ( before && before->outside && before->type == intro.type ) {
            before->outside = false; // it was referred to before its place was told
            before->parent = intro.parent;
            before->row = intro.row;
         } else {
            introduce( std::move( intro ) );
         }
      }
   } );
}

// ---- What the replica has ---------------------------------------------------------------------

// The entity under a number: as the batch introduces it, or as the replica has it in its place.
Corvo::Ptr< Entity > BatchApply::entityOf( std::uint64_t number )
{
   if ( const Intro * const intro = introOf( number ) ) {
      return intro->entity;
   }
   if ( frame_.whole ) {
      return nullptr;
   }
   const auto * const found = reader_.slots_.find( number );
   return found && inPlace( *found->value ) ? found->value->link.entity : nullptr;
}

// What a reference leads to: the entity, wherever it stands; null where it is gone. Throws for a
// number that the stream never introduced.
Corvo::Ptr< Entity > BatchApply::targetOf( std::uint64_t number, const AttributeRow & row )
{
   Corvo::Ptr< Entity > target;
   if ( const Intro * const intro = introOf( number ) ) {
      target = intro->entity;
   } else if ( const auto * const found = frame_.whole ? nullptr : reader_.slots_.find( number ) ) {
      target = found->value->link.entity;
   } else {
      throw Exception( "a reference of a batch, " + std::string( row.name ) + ", leads nowhere" );
   }
   if ( target && target->typeData().name() != row.typeName ) {
      throw Exception( "a reference of a batch, " + std::string( row.name ) + ", leads to no " +
            std::string( row.typeName ) );
   }
   return target;
}

// Whether a slot's entity still stands where the stream put it: the replica's own users may have
// deleted it, or something above it. What was found once holds until something leaves its parent.
bool BatchApply::inPlace( ReplicaSlot & slot )
{
   std::vector< ReplicaSlot * > line;
   bool there = true;
   for ( ReplicaSlot * at = &slot; at->verified != reader_.shapeChanges_; ) {
      if ( !at->link.entity ) {
         there = false;
         break;
      }
      line.push_back( at );
      if ( at->outside || at->link.entity == reader_.root_.get() ) {
         break;
      }
      const auto * const above = reader_.slots_.find( at->parent );
      if ( !above || at->link.entity->parent() != above->value->link.entity ||
            !at->link.entity->parent() ) {
         there = false;
         break;
      }
      at = above->value.get();
   }
   if ( there ) {
      for ( ReplicaSlot * const found : line ) {
         found->verified = reader_.shapeChanges_;
      }
   }
   return there;
}

// An entity that the same stream introduced before, and that the replica still has.
Corvo::Ptr< Entity > BatchApply::known( const Intro & intro )
{
   const auto * const found = sameStream_ ? reader_.slots_.find( intro.number ) : nullptr;
   if ( !found ) {
      return nullptr;
   }
   const ReplicaSlot & slot = *found->value;
   Entity * const entity = slot.link.entity;
   if ( slot.birth != intro.birth || !entity || &entity->typeData() != types_[ intro.type ]->own ) {
      return nullptr;
   }
   const bool placed = intro.outside || !entity->parent() ||
         entity->parent() == entityOf( intro.parent ).get();
   return placed ? entity : nullptr;
}

// What stands in the introduced entity's place already, if it could be it.
Corvo::Ptr< Entity > BatchApply::alike( const Intro & intro, const Arguments & arguments )
{
   if ( intro.outside ) {
      return nullptr;
   }
   const Intro * const parent = introOf( intro.parent );
   const Corvo::Ptr< Entity > owner = entityOf( intro.parent );
   const bool constructed = parent && parent->fresh;
   if ( !constructed && ( !frame_.whole || sameStream_ ) ) {
      return nullptr; // another number, another birth: the writer made it anew
   }
   const void * const collection = storageOf( *owner, *intro.row );
   const void * key = nullptr;
   const auto rows = types_[ intro.type ]->own->constructorArguments();
   for ( std::size_t i = 0; i != rows.size(); ++i ) {
      const bool named = rows[ i ].id() == 154 && intro.row->keyField == "name";
      if ( named || rows[ i ].name() == intro.row->keyField ) {
         key = arguments.addresses[ i ];
      }
   }
   const Corvo::Ptr< Entity > there = intro.row->collection->entity( collection, key );
   return there && sameArguments( *there, *types_[ intro.type ]->own, arguments ) ? there : nullptr;
}

bool BatchApply::sameArguments(
      const Entity & entity, const TypeData & type, const Arguments & arguments )
{
   const auto rows = type.constructorArguments();
   for ( std::size_t i = 0; i != rows.size(); ++i ) {
      const AttributeRow & row = rows[ i ].row();
      if ( row.settable ) {
         continue;
      }
      const void * const storage = row.identity && !row.fromName
            ? static_cast< const void * >( &entity.name() )
            : storageOf( entity, row );
      const bool same = row.reference ? referred( entity, row ) == arguments.addresses[ i ]
                                      : row.value->equal( storage, arguments.addresses[ i ] );
      if ( !same ) {
         return false;
      }
   }
   return true;
}

// ---- Resolving --------------------------------------------------------------------------------

void BatchApply::resolveAll()
{
   std::vector< Intro * > stack;
   for ( const auto & intro : intros_ ) {
      stack.push_back( intro.get() );
      while ( !stack.empty() ) {
         Intro & top = *stack.back();
         if ( top.state == Intro::State::ready ) {
            stack.pop_back();
         } else if ( !waitsForOthers( top, stack ) ) {
            resolve( top );
            top.state = Intro::State::ready;
            stack.pop_back();
         }
      }
   }
}

// Puts what an entity needs first on the stack: its parent, and what its arguments refer to.
bool BatchApply::waitsForOthers( Intro & intro, std::vector< Intro * > & stack )
{
   const std::size_t before = stack.size();
   const bool again = intro.state == Intro::State::waiting;
   const auto need = [ & ]( std::uint64_t number ) {
      Intro * const other = introOf( number );
      if ( other && other->state != Intro::State::ready ) {
         if ( again || other->state == Intro::State::waiting ) {
            throw Exception( "entities of a batch need each other to be made" );
         }
         stack.push_back( other );
      }
   };
   if ( !intro.outside ) {
      need( intro.parent );
   }
   In in = intro.arguments;
   for ( const ReadArgument & argument : types_[ intro.type ]->arguments ) {
      if ( argument.reference ) {
         if ( const std::uint64_t number = in.getVarint() ) {
            need( number - 1 );
         }
      } else {
         OwnedValue value( *argument.own->value );
         argument.own->value->decode( in, value.data() );
      }
   }
   intro.state = Intro::State::waiting;
   return stack.size() != before;
}

BatchApply::Arguments BatchApply::readArguments( const Intro & intro )
{
   Arguments arguments;
   const ReadType & type = *types_[ intro.type ];
   arguments.values.reserve( type.arguments.size() );
   In in = intro.arguments;
   for ( const ReadArgument & argument : type.arguments ) {
      if ( !argument.reference ) {
         OwnedValue & value = arguments.values.emplace_back( *argument.own->value );
         argument.own->value->decode( in, value.data() );
         arguments.addresses.push_back( value.data() );
         continue;
      }
      const std::uint64_t number = in.getVarint();
      Corvo::Ptr< Entity > target = number == 0 ? nullptr : targetOf( number - 1, *argument.own );
      arguments.complete = arguments.complete && ( number == 0 || target );
      arguments.addresses.push_back( target.get() );
      arguments.targets.push_back( std::move( target ) );
   }
   return arguments;
}

void BatchApply::resolve( Intro & intro )
{
   const ReadType & type = *types_[ intro.type ];
   if ( !type.own || ( !intro.outside && ( !intro.row || !entityOf( intro.parent ) ) ) ) {
      return; // this side does not know it, or its users deleted what it belongs to
   }
   const Arguments arguments = readArguments( intro );
   if ( !arguments.complete ) {
      return; // the replica's users deleted what it refers to
   }
   intro.entity = known( intro );
   if ( !intro.entity ) {
      intro.entity = alike( intro, arguments );
      const Intro * const parent = introOf( intro.parent );
      intro.fresh = intro.entity && parent && parent->fresh; // made by its parent's constructor
   }
   if ( !intro.entity ) {
      intro.entity = type.own->row().make->make( arguments.addresses.data() );
      intro.fresh = true;
   }
}

// ---- Slots ------------------------------------------------------------------------------------

void BatchApply::makeSlots()
{
   newSlots_.reserve( intros_.size() );
   for ( const auto & intro : intros_ ) {
      auto slot = std::make_unique< ReplicaSlot >();
      slot->type = intro->type;
      slot->birth = intro->birth;
      slot->parent = intro->parent;
      slot->outside = intro->outside;
      slot->link.shapeChanges = &reader_.shapeChanges_;
      if ( intro->entity ) {
         slot->link.link( *intro->entity );
      }
      newSlots_.push_back( std::move( slot ) );
   }
   ReplicaSlots & slots = frame_.whole ? wholeSlots_ : reader_.slots_;
   slots.reserve( slots.size() + newSlots_.size() );
}

void BatchApply::commit() noexcept
{
   pending_.commit();
   for ( ReplicaSlot * const slot : left_ ) {
      slot->outside = true;
   }
   if ( frame_.whole ) {
      reader_.slots_.swap( wholeSlots_ );
   }
   for ( std::size_t i = 0; i != newSlots_.size(); ++i ) {
      const auto [ node, inserted ] = reader_.slots_.findOrInsert( intros_[ i ]->number, [ & ] {
         return MapNode< std::uint64_t, std::unique_ptr< ReplicaSlot > >{
            intros_[ i ]->number, nullptr
         };
      } );
      node->value = std::move( newSlots_[ i ] );
   }
   wholeSlots_.clear();
   ++reader_.shapeChanges_;
   reader_.stream_ = frame_.stream;
   reader_.last_ = frame_.number;
   reader_.types_.swap( types_ );
   reader_.passedOver_.swap( passedOver_ );
   intros_.clear(); // what was found and not needed any more goes before anybody is told
}

} // namespace Vok::Detail
