// The functions in reflection tables: thunks from addresses and texts to typed calls.
#pragma once

#include "Vok/CharRange.h"
#include "Vok/Entity.h"
#include "Vok/Exceptions.h"
#include "Vok/Optional.h"
#include "Vok/Ptr.h"
#include "Vok/String.h"
#include "Vok/TypeData.h"
#include "Vok/ValueType.h"
#include "Vok/detail/Tables.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Vok::Detail {

template< class F > struct CheckArgument;
template< class A > struct CheckArgument< void ( * )( A ) > {
   using Type = std::remove_cvref_t< A >;
};

/// A check of bounds, with the address of the value.
template< auto check > void checked( const void * value )
{
   using A = typename CheckArgument< decltype( check ) >::Type;
   check( *static_cast< const A * >( value ) );
}

/// The operations of a field that is built from a wider number: its text is read as that, and
/// checked before it is narrowed.
template< auto check, class V >
inline constexpr ValueOps narrowedOps = [] {
   ValueOps ops = valueOps< V >;
   ops.read = []( CharRange & range, void * into ) {
      typename CheckArgument< decltype( check ) >::Type wide{};
      ValueType< decltype( wide ) >::read( range, wide );
      check( wide );
      *static_cast< V * >( into ) = static_cast< V >( wide );
   };
   return ops;
}();

/// The check of the fields of a value type V whose constructors are all written by hand: no field
/// is set alone.
template< class V > [[noreturn]] void noField( const void * )
{
   throw Corvo::ConstructorArgsException(
         std::string( ValueAccess::name< V >() ) + " is not made from its fields" );
}

/// An optional stored in one word.
template< class V, auto empty >
inline constexpr StorageOps wordStorage = {
   []( const void * storage, void * into ) {
      *static_cast< Optional< V > * >( into ) =
            *static_cast< const OptionalWord< V, empty > * >( storage );
   },
   []( void * storage, const void * from ) {
      *static_cast< OptionalWord< V, empty > * >( storage ) =
            *static_cast< const Optional< V > * >( from );
   },
};

/// A value whose bare text is the name of an entity.
template< class V > void fromName( std::string_view name, void * into )
{
   *static_cast< V * >( into ) = V( Corvo::String( name ) );
}

template< class V > V argumentFromText( std::string_view text )
{
   CharRange range( text );
   V v{};
   ValueType< V >::read( range, v );
   range.needEnd();
   return v;
}

[[noreturn]] VOK_EXPORT void wrongArgumentCount( std::size_t given, std::size_t wanted );

template< class T, class R, class... Args, std::size_t... i >
Corvo::String callWith( T & object, auto member, std::span< const Corvo::String > args,
      std::index_sequence< i... > )
{
   if ( args.size() != sizeof...( Args ) ) {
      wrongArgumentCount( args.size(), sizeof...( Args ) );
   }
   if constexpr ( std::is_void_v< R > ) {
      ( object.*member )( argumentFromText< std::remove_cvref_t< Args > >( args[ i ].view() )... );
      return {};
   } else {
      TextOut out;
      ValueType< std::remove_cvref_t< R > >::print( out,
            ( object.*member )(
                  argumentFromText< std::remove_cvref_t< Args > >( args[ i ].view() )... ) );
      return out.text();
   }
}

template< class F > struct MemberCall;
template< class T, class R, class... Args > struct MemberCall< R ( T::* )( Args... ) > {
   static Corvo::String call( Entity & e, auto member, std::span< const Corvo::String > args )
   {
      return callWith< T, R, Args... >(
            static_cast< T & >( e ), member, args, std::index_sequence_for< Args... >() );
   }
};
template< class T, class R, class... Args >
struct MemberCall< R ( T::* )( Args... ) const > : MemberCall< R ( T::* )( Args... ) > {
};

/// Calls a member function with arguments given as texts; its result as text.
template< auto member >
Corvo::String callMember( Entity & e, std::span< const Corvo::String > args )
{
   return MemberCall< decltype( member ) >::call( e, member, args );
}

// ---- Making entities --------------------------------------------------------------------------

template< class A > struct ErasedArgument {
   static const A & at( const void * arg ) { return *static_cast< const A * >( arg ); }
};
template< class T > struct ErasedArgument< Corvo::Ptr< const T > > {
   static Corvo::Ptr< const T > at( const void * arg )
   {
      return static_cast< const T * >( static_cast< const Entity * >( arg ) );
   }
};

template< class T, class... Args > struct MakeEntity {
   static Corvo::Ptr< Entity > make( const void * const * args )
   {
      return make( args, std::index_sequence_for< Args... >() );
   }
   static void reinstantiate( Entity & entity, const void * const * args )
   {
      reinstantiate( static_cast< T & >( entity ), args, std::index_sequence_for< Args... >() );
   }

 private:
   template< std::size_t... i >
   static Corvo::Ptr< Entity > make( const void * const * args, std::index_sequence< i... > )
   {
      (void)args;
      return EntityAccess::make< T >( ErasedArgument< Args >::at( args[ i ] )... );
   }
   template< std::size_t... i >
   static void reinstantiate( T & entity, const void * const * args, std::index_sequence< i... > )
   {
      (void)args;
      EntityAccess::reinstantiate( entity, ErasedArgument< Args >::at( args[ i ] )... );
   }
};

/// How a T is made from its constructor arguments.
template< class T, class... Args >
inline constexpr EntityMaker makeEntity = { MakeEntity< T, Args... >::make,
   MakeEntity< T, Args... >::reinstantiate };

} // namespace Vok::Detail
