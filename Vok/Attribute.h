// What the mutators of plain and optional attributes do. The mutators of collections are in
// Vok/AttributeMap.h and Vok/AttributeChildren.h.
//
// Every mutator compares, checks, stores, and tells the notifiees, in this order. With nobody
// listening it costs the comparison and the store; one that throws before it has stored leaves
// the entity as it was.
#pragma once

#include "Vok/Collection.h"
#include "Vok/Entity.h"
#include "Vok/Optional.h"
#include "Vok/Publisher.h"
#include "Vok/ValueType.h"

#include <concepts>
#include <type_traits>
#include <utility>

namespace Vok {

/// Throws Corvo::ReinstantiationException: `entity` exists with another constant argument. For
/// arguments that are texts or entities; texts stand bare, entities by their names.
[[noreturn]] VOK_EXPORT void throwMutatorReinstantiating( const Entity & entity, AttrId id,
      std::string_view argument, std::string_view oldText, std::string_view newText );
[[noreturn]] VOK_EXPORT void throwMutatorReinstantiating( const Entity & entity, AttrId id,
      std::string_view argument, const Entity * oldEntity, const Entity * newEntity );

namespace Impl {

/// The same for arguments that are plain values.
[[noreturn]] VOK_EXPORT void throwMutatorReinstVal( const Entity & entity, AttrId id,
      std::string_view argument, const Corvo::String & oldText, const Corvo::String & newText );

} // namespace Impl

namespace Attribute {

/// Tells the notifiees of an entity that have to be there. Inline, because the change is built
/// where its parts are: handed through a call they would be put together in memory once more.
inline void publish( Entity & entity, AttrId id, Detail::AnyValue key, Detail::AnyValue oldValue )
{
   entity.publisher().publishChangeRecursive( Corvo::Change( entity, id, key, oldValue ) );
}

/// Stores another value and tells of it; both are known to differ. With nobody to be told there is
/// no need of the old value, unless to have it back when a copy throws.
template< class V > void replace( Entity & entity, AttrId id, V & stored, const V & value )
{
   const bool heard = entity.publisher().hasNotifiee();
   if constexpr ( std::is_nothrow_copy_assignable_v< V > ) {
      if ( !heard ) [[likely]] {
         stored = value;
         return;
      }
   }
   V old( value );
   std::swap( stored, old );
   if ( heard ) [[unlikely]] {
      publish( entity, id, {}, Detail::any( old ) );
   }
}

/// The mutator of a plain or optional attribute.
template< class V >
void plainIs( Entity & entity, AttrId id, V & stored, const std::type_identity_t< V > & value )
{
   if ( !Collection::equal( stored, value ) ) {
      replace( entity, id, stored, value );
   }
}

/// The same with bounds that `check` throws for.
template< class V, class C >
void plainIs( Entity & entity, AttrId id, V & stored, const std::type_identity_t< V > & value,
      void ( *check )( C ) )
{
   if ( !Collection::equal( stored, value ) ) {
      check( value );
      replace( entity, id, stored, value );
   }
}

/// The mutator of an optional that is stored in one word.
template< class V, auto empty >
void plainIs( Entity & entity, AttrId id, OptionalWord< V, empty > & stored,
      const Optional< V > & value )
{
   const OptionalWord< V, empty > next( value );
   if ( stored == next ) {
      return;
   }
   const Optional< V > old = std::exchange( stored, next );
   if ( entity.publisher().hasNotifiee() ) [[unlikely]] {
      publish( entity, id, {}, Detail::any( old ) );
   }
}

/// The mutator of a counter: adds modulo its width and returns the new value.
template< Detail::Number U >
U increment( Entity & entity, AttrId id, U & stored, std::type_identity_t< U > delta )
{
   const U next = static_cast< U >( stored + delta );
   if ( next != stored ) {
      replace( entity, id, stored, next );
   }
   return next;
}

/// Refuses to instantiate a child anew with another constant argument: a text, a value, an entity.
template< class V >
void sameArgument( const Entity & entity, AttrId id, std::string_view name, const V & has,
      const std::type_identity_t< V > & wanted )
{
   if constexpr ( std::same_as< V, Corvo::String > ) {
      if ( has != wanted ) {
         throwMutatorReinstantiating( entity, id, name, has.view(), wanted.view() );
      }
   } else if constexpr ( requires { has.get(); } ) {
      if ( has != wanted ) {
         throwMutatorReinstantiating( entity, id, name, has.get(), wanted.get() );
      }
   } else if ( !Collection::equal( has, wanted ) ) {
      Impl::throwMutatorReinstVal( entity, id, name, Detail::valueOps< V >.text( &has ),
            Detail::valueOps< V >.text( &wanted ) );
   }
}

} // namespace Attribute
} // namespace Vok
