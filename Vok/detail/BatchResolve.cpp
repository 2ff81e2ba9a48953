// Preparing a batch: the entities that it introduces, found in the replica or made.
#include "Vok/detail/BatchApply.h"

#include "Vok/Exceptions.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/StreamOps.h"
#include "Vok/detail/StreamType.h"

#include <string>

namespace Vok::Detail {

using NboAttrLog::Exception;
using NboAttrLog::In;

// ---- What the replica has ---------------------------------------------------------------------

// The entity under a number: as the batch introduces it, or as the replica has it in its place.
Entity * BatchApply::entityOf( std::uint64_t number )
{
   if ( const Intro * const intro = introOf( number ) ) {
      return intro->entity.get();
   }
   if ( frame_.whole ) {
      return nullptr;
   }
   const ReplicaSlot slot = reader_.slots_.find( number );
   return slot && inPlace( slot ) ? slot.entity() : nullptr;
}

Entity * BatchApply::parentOf( const Intro & intro )
{
   return intro.above ? intro.above->entity.get() : entityOf( intro.parent );
}

// What a reference leads to: the entity, wherever it stands; null where it is gone. Throws for a
// number that the stream never introduced.
Corvo::Ptr< Entity > BatchApply::targetOf( std::uint64_t number, const AttributeRow & row )
{
   Corvo::Ptr< Entity > target;
   if ( const Intro * const intro = introOf( number ) ) {
      target = intro->entity;
   } else if ( const auto slot = frame_.whole ? ReplicaSlot() : reader_.slots_.find( number ) ) {
      target = slot.entity();
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
bool BatchApply::inPlace( ReplicaSlot slot )
{
   line_.clear();
   bool there = true;
   for ( ReplicaSlot at = slot; !at.verified(); ) {
      const Entity * const entity = at.entity();
      if ( !entity ) {
         there = false;
         break;
      }
      line_.push_back( at );
      if ( at.place().outside || entity == reader_.root_.get() ) {
         break;
      }
      const ReplicaSlot above = reader_.slots_.find( at.place().parent );
      if ( !above || !entity->parent() || entity->parent() != above.entity() ) {
         there = false;
         break;
      }
      at = above;
   }
   if ( there ) {
      for ( const ReplicaSlot found : line_ ) {
         found.verify();
      }
   }
   return there;
}

// An entity that the same stream introduced before, and that the replica still has. That its
// constant arguments are these goes without saying, unless the stream lies.
Corvo::Ptr< Entity > BatchApply::known(
      const Intro & intro, const Entity * owner, const Arguments & arguments )
{
   const ReplicaSlot slot = reader_.slots_.find( intro.number );
   Entity * const entity = slot && slot.place().birth == intro.birth ? slot.entity() : nullptr;
   if ( !entity || &entity->typeData() != intro.type->own ) {
      return nullptr;
   }
   const bool placed = intro.outside || !entity->parent() || entity->parent() == owner;
   return placed && sameArguments( *entity, *intro.type->own, arguments ) ? entity : nullptr;
}

// What a collection of the replica holds under the key that these arguments give.
Corvo::Ptr< Entity > BatchApply::member( const Entity & owner, const AttributeRow & row,
      const TypeData & type, const Arguments & arguments )
{
   const void * key = nullptr;
   const auto rows = type.constructorArguments();
   for ( std::size_t i = 0; i != rows.size(); ++i ) {
      const bool named = rows[ i ].id() == 154 && row.keyField == "name";
      if ( named || rows[ i ].name() == row.keyField ) {
         key = arguments.addresses[ i ];
      }
   }
   return row.collection->entity( storageOf( owner, row ), key );
}

// Whether something may stand in the introduced entity's place already. Mostly nothing does.
bool BatchApply::mayStand( const Intro & intro, const Entity * owner )
{
   if ( intro.outside ) {
      return otherStream();
   }
   const bool constructed = intro.above && intro.above->fresh;
   if ( !constructed && !otherStream() ) {
      return false; // another number, another birth: the writer made it anew
   }
   const void * const there = storageOf( *owner, *intro.row );
   return !neverFilled( there ) && intro.row->collection->size( there ) != 0;
}

// What stands there, if it could be the introduced entity.
Corvo::Ptr< Entity > BatchApply::alike(
      const Intro & intro, const Entity * owner, const Arguments & arguments )
{
   if ( intro.outside ) {
      return referredThere( intro, arguments );
   }
   const TypeData & type = *intro.type->own;
   const Corvo::Ptr< Entity > found = member( *owner, *intro.row, type, arguments );
   return found && sameArguments( *found, type, arguments ) ? found : nullptr;
}

// The entity outside that the replica refers to where another writer's tree refers to the
// introduced one, if it could be it.
Corvo::Ptr< Entity > BatchApply::referredThere( const Intro & intro, const Arguments & arguments )
{
   const auto * const found = referrers_.find( intro.number );
   if ( !found ) {
      return nullptr;
   }
   const auto & [ number, row ] = found->value;
   const TypeData & type = *intro.type->own;
   Corvo::Ptr< Entity > there;
   if ( row->collection ) {
      const Entity * const owner = entityOf( number );
      if ( owner && row->typeName == type.name() ) {
         there = member( *owner, *row, type, arguments );
      }
   } else {
      const Intro & referrer = *introOf( number );
      const Entity * const owner = referrer.row ? parentOf( referrer ) : nullptr;
      const TypeData & referrerType = *referrer.type->own;
      Corvo::Ptr< Entity > standing;
      if ( owner ) {
         Arguments ofReferrer;
         readArguments( referrer, ofReferrer );
         standing = member( *owner, *referrer.row, referrerType, ofReferrer );
      }
      if ( standing ) {
         there = const_cast< Entity * >( referred( *standing, *row ) );
      }
   }
   const bool outside = there && !there->parent() && there != reader_.root_;
   const bool same =
         outside && &there->typeData() == &type && sameArguments( *there, type, arguments );
   return same && claimed_.insert( there.get() ) ? there : nullptr;
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
   for ( Intro & intro : intros_ ) {
      if ( intro.state == Intro::State::pending && canBeMade( intro ) ) [[likely]] {
         resolve( intro );
         intro.state = Intro::State::ready;
         continue;
      }
      stack.push_back( &intro );
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
   arguments_.clear();
}

// Whether nothing that an entity needs has yet to be made: parents mostly come before their
// children.
bool BatchApply::canBeMade( Intro & intro )
{
   intro.above = intro.outside ? nullptr : introOf( intro.parent );
   return ( !intro.above || intro.above->state == Intro::State::ready ) &&
         !intro.type->refers;
}

// Calls f( number, row ) for what each argument of an introduced entity refers to.
void BatchApply::eachReference( const Intro & intro,
      FunctionRef< void( std::uint64_t number, const AttributeRow & row ) > f )
{
   In in = intro.arguments;
   eachArgument( in, *intro.type, [ & ]( const ReadArgument & argument, In & at ) {
      if ( argument.reference ) {
         if ( const std::uint64_t number = at.getVarint() ) {
            f( number - 1, *argument.own );
         }
      } else if ( !argument.isName ) {
         argument.own->value->check( at );
      }
   } );
}

// Puts what an entity needs first on the stack: its parent, and what its arguments refer to.
bool BatchApply::waitsForOthers( Intro & intro, std::vector< Intro * > & stack )
{
   const std::size_t before = stack.size();
   const bool again = intro.state == Intro::State::waiting;
   const auto need = [ & ]( Intro * other ) {
      if ( other && other->state != Intro::State::ready ) {
         if ( again || other->state == Intro::State::waiting ) {
            throw Exception( "entities of a batch need each other to be made" );
         }
         stack.push_back( other );
      }
   };
   if ( !intro.outside ) {
      Intro * const above = introOf( intro.parent );
      intro.above = above;
      need( above );
   }
   if ( intro.type->refers ) {
      eachReference( intro, [ & ]( std::uint64_t number, const AttributeRow & ) {
         need( introOf( number ) );
      } );
   }
   intro.state = Intro::State::waiting;
   return stack.size() != before;
}

void BatchApply::readArguments( const Intro & intro, Arguments & arguments )
{
   const ReadType & type = *intro.type;
   arguments.values.reserve( type.arguments.size() );
   arguments.addresses.resize( type.arguments.size() );
   In in = intro.arguments;
   eachArgument( in, type, [ & ]( const ReadArgument & argument, In & at ) {
      const void *& address =
            arguments.addresses[ static_cast< std::size_t >( &argument - type.arguments.data() ) ];
      if ( !argument.reference ) {
         OwnedValue & value = arguments.values.emplace_back( *argument.own->value );
         if ( argument.isName ) {
            *static_cast< Corvo::String * >( value.data() ) = Corvo::String( readRest( at ) );
         } else {
            argument.own->value->decode( at, value.data() );
         }
         address = value.data();
         return;
      }
      const std::uint64_t number = at.getVarint();
      Corvo::Ptr< Entity > target = number == 0 ? nullptr : targetOf( number - 1, *argument.own );
      arguments.complete = arguments.complete && ( number == 0 || target );
      address = target.get();
      arguments.targets.push_back( std::move( target ) );
   } );
}

void BatchApply::resolve( Intro & intro )
{
   const ReadType & type = *intro.type;
   const Entity * const owner = intro.outside || !intro.row ? nullptr : parentOf( intro );
   if ( !type.own || ( !intro.outside && !owner ) ) {
      return; // this side does not know it, or its users deleted what it belongs to
   }
   arguments_.clear();
   readArguments( intro, arguments_ );
   if ( !arguments_.complete ) {
      return; // the replica's users deleted what it refers to
   }
   if ( sameStream_ ) {
      intro.entity = known( intro, owner, arguments_ );
   }
   if ( !intro.entity && mayStand( intro, owner ) ) {
      intro.entity = alike( intro, owner, arguments_ );
      // Made by its parent's constructor.
      intro.fresh = intro.entity && intro.above && intro.above->fresh;
   }
   if ( !intro.entity ) {
      intro.entity = type.own->row().make->make( arguments_.addresses.data() );
      intro.fresh = true;
   }
}

} // namespace Vok::Detail
