// The notes of a FlowOut.
#include "Vok/detail/DirtyState.h"

#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/StreamOps.h"

#include <algorithm>

namespace Vok::Detail {

DirtyState::DirtyState( const TypeData & type ) : type_( &type )
{
   if ( const std::size_t count = wordCount(); count > 1 ) {
      rest_ = std::make_unique< Rest >();
      rest_->words = std::make_unique< std::uint64_t[] >( count );
   }
}

DirtyState::~DirtyState() = default;

std::size_t DirtyState::wordCount() const noexcept
{
   return ( type_->attributes().size() + 63 ) / 64;
}

// An entity's attributes are numbered without gaps from 258, behind its name where that is listed.
std::size_t DirtyState::indexOf( const TypeData & type, AttrId id ) noexcept
{
   const auto attributes = type.attributes();
   const std::size_t named = attributes.front().id() < 258 ? 1 : 0;
   return id < 258 ? 0 : id - 258 + named;
}

void DirtyState::note( const Corvo::Change & change )
{
   const std::size_t index = indexOf( *type_, change.attrId );
   const AttributeRow & row = type_->attributes()[ index ].row();
   if ( row.collection && row.collection->stream->dirtyKeys ) {
      noteKey( change, index, row );
   } else {
      words()[ index / 64 ] |= std::uint64_t{ 1 } << index % 64;
   }
}

DirtyKeys & DirtyState::keysOf( std::size_t index, const AttributeRow & row )
{
   if ( !rest_ ) {
      rest_ = std::make_unique< Rest >();
   }
   std::vector< KeySet > & sets = rest_->keySets;
   auto set = std::find_if(
         sets.begin(), sets.end(), [ index ]( const KeySet & s ) { return s.index == index; } );
   if ( set == sets.end() ) {
      sets.push_back( { index, row.collection->stream->dirtyKeys() } );
      set = sets.end() - 1;
   }
   return *set->keys;
}

void DirtyState::noteKey(
      const Corvo::Change & change, std::size_t index, const AttributeRow & row )
{
   DirtyKeys & keys = keysOf( index, row );
   // Changes of one member may be told in another order than they were stored in, when notifiees
   // make some: then nothing is known of what was before.
   const bool insertion =
         !change.hasOldValue() && trusting_ && change.entity.publisher().inOrder();
   const void * const key = change.keyAddress();
   keys.note( key, insertion, [ & ] {
      return row.collection->find( storageOf( change.entity, row ), key ) != nullptr;
   } );
   keysChanged_ = true;
   const std::uint64_t bit = std::uint64_t{ 1 } << index % 64;
   std::uint64_t & word = words()[ index / 64 ];
   word = keys.size() != 0 ? word | bit : word & ~bit;
}

bool DirtyState::any() const noexcept
{
   return std::any_of( words(), words() + wordCount(), []( std::uint64_t w ) { return w != 0; } );
}

const DirtyKeys * DirtyState::keys( std::size_t index ) const noexcept
{
   if ( !keysChanged_ ) {
      return nullptr;
   }
   for ( const KeySet & set : rest_->keySets ) {
      if ( set.index == index && set.keys->size() != 0 ) {
         return set.keys.get();
      }
   }
   return nullptr;
}

void DirtyState::clear( const Corvo::Publisher & publisher ) noexcept
{
   std::fill( words(), words() + wordCount(), 0 );
   if ( rest_ ) {
      rest_->keySets.clear();
   }
   keysChanged_ = false;
   trusting_ = !publisher.busy();
}

void DirtyState::writtenWhole( const Corvo::Publisher & publisher ) noexcept
{
   trusting_ = trusting_ && !publisher.busy();
}

} // namespace Vok::Detail
