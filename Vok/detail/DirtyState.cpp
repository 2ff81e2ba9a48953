// The notes of a FlowOut.
#include "Vok/detail/DirtyState.h"

#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/StreamOps.h"

#include <algorithm>
#include <utility>

namespace Vok::Detail {

DirtyState::DirtyState( const TypeData & type ) : type_( &type )
{
   if ( const std::size_t count = wordCount(); count > 1 ) {
      bits_.many = new std::uint64_t[ count ]();
      wide_ = true;
   }
}

DirtyState::~DirtyState()
{
   if ( wide_ ) {
      delete[] bits_.many;
   }
}

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

DirtyKeys * DirtyState::keysOf( std::size_t index ) const noexcept
{
   DirtyKeys * keys = keys_.get();
   while ( keys && keys->index != index ) {
      keys = keys->next.get();
   }
   return keys;
}

void DirtyState::noteKey(
      const Corvo::Change & change, std::size_t index, const AttributeRow & row )
{
   DirtyKeys * keys = keysOf( index );
   std::unique_ptr< DirtyKeys > made;
   if ( !keys ) {
      made = row.collection->stream->dirtyKeys();
      made->index = index;
      keys = made.get();
   }
   // Changes of one member may be told in another order than they were stored in, when notifiees
   // make some: then nothing is known of what was before.
   const bool insertion =
         !change.hasOldValue() && trusting_ && change.entity.publisher().inOrder();
   const void * const key = change.keyAddress();
   keys->note( key, insertion, [ & ] {
      return row.collection->find( storageOf( change.entity, row ), key ) != nullptr;
   } );
   if ( made ) {
      made->next = std::move( keys_ );
      keys_ = std::move( made );
   }
   const std::uint64_t bit = std::uint64_t{ 1 } << index % 64;
   std::uint64_t & word = words()[ index / 64 ];
   word = keys->size() != 0 ? word | bit : word & ~bit;
}

bool DirtyState::any() const noexcept
{
   return std::any_of( words(), words() + wordCount(), []( std::uint64_t w ) { return w != 0; } );
}

const DirtyKeys * DirtyState::keys( std::size_t index ) const noexcept
{
   const DirtyKeys * const keys = keysOf( index );
   return keys && keys->size() != 0 ? keys : nullptr;
}

void DirtyState::clear( const Corvo::Publisher & publisher ) noexcept
{
   std::fill( words(), words() + wordCount(), 0 );
   keys_.reset();
   trusting_ = !publisher.busy();
}

void DirtyState::writtenWhole( const Corvo::Publisher & publisher ) noexcept
{
   trusting_ = trusting_ && !publisher.busy();
}

} // namespace Vok::Detail
