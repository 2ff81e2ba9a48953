// The notes of a FlowOut.
#include "Vok/detail/DirtyState.h"

#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/StreamOps.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Vok::Detail {

DirtyState::DirtyState( const TypeData & type )
      : type_( &type ),
        named_( !type.attributes().empty() && type.attributes().front().id() < firstId )
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

const AttributeRow & DirtyState::row( std::size_t index ) const noexcept
{
   return type_->row().attributes.first[ index ].row();
}

void DirtyState::note( const Corvo::Change & change )
{
   const std::size_t index = indexOf( change.attrId );
   note( change, index, row( index ) );
}

void DirtyState::note( const Corvo::Change & change, std::size_t index, const AttributeRow & row )
{
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
   const void * const key = change.keyAddress();
   const auto present = [ & ] {
      return row.collection->find( storageOf( change.entity, row ), key ) != nullptr;
   };
   // Changes of one member may be told in another order than they were stored in, when notifiees
   // make some: then nothing is known of what was before.
   const bool insertion =
         !change.hasOldValue() && trusting_ && change.entity.publisher().inOrder();
   bool any = true;
   if ( DirtyKeys * const keys = keysOf( index ) ) [[likely]] {
      any = keys->note( key, insertion, present );
   } else {
      std::unique_ptr< DirtyKeys > made = row.collection->stream->dirtyKeys();
      made->index = static_cast< std::uint32_t >( index );
      made->expected = std::exchange( keysBefore_, 0 );
      any = made->note( key, insertion, present );
      made->next = std::move( keys_ );
      keys_ = std::move( made );
   }
   const std::uint64_t bit = std::uint64_t{ 1 } << index % 64;
   std::uint64_t & word = words()[ index / 64 ];
   word = any ? word | bit : word & ~bit;
}

bool DirtyState::anyOfMany() const noexcept
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
   if ( wide_ ) {
      std::fill( words(), words() + wordCount(), 0 );
   } else {
      bits_.one = 0;
   }
   if ( keys_ ) {
      forgetKeys();
   }
   trusting_ = !publisher.busy();
}

// A collection that changes in one batch mostly does in the next one, as much.
void DirtyState::forgetKeys() noexcept
{
   std::size_t count = 0;
   for ( const DirtyKeys * keys = keys_.get(); keys; keys = keys->next.get() ) {
      count += keys->size();
   }
   constexpr std::size_t most = std::numeric_limits< std::uint32_t >::max();
   keysBefore_ = static_cast< std::uint32_t >( std::min( count, most ) );
   keys_.reset();
}

} // namespace Vok::Detail
