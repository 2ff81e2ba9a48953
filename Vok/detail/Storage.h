// From an object and a row to the storage of an attribute.
#pragma once

#include "Vok/Entity.h"
#include "Vok/detail/Tables.h"

#include <cstddef>

namespace Vok::Detail {

/// The address of an attribute's storage in the object that starts at `object`.
inline const void * storageAt( const void * object, const AttributeRow & row ) noexcept
{
   return static_cast< const std::byte * >( object ) + row.offset;
}
inline void * storageAt( void * object, const AttributeRow & row ) noexcept
{
   return static_cast< std::byte * >( object ) + row.offset;
}

/// The same in an entity: entity types derive from Vok::Entity alone, so that theirs is its
/// address.
inline const void * storageOf( const Entity & entity, const AttributeRow & row ) noexcept
{
   return storageAt( static_cast< const void * >( &entity ), row );
}
inline void * storageOf( Entity & entity, const AttributeRow & row ) noexcept
{
   return storageAt( static_cast< void * >( &entity ), row );
}

} // namespace Vok::Detail
