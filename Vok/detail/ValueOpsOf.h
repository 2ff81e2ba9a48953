// The row of operations of each value type, for code that knows types only at run time. Part of
// Vok/ValueType.h.
#pragma once

#include "Vok/ValueType.h"
#include "Vok/detail/AnyValue.h"
#include "Vok/detail/Relocate.h"
#include "Vok/detail/ValueOps.h"

namespace Vok::Detail {

/// The bytes that every V takes in a log; 0 where they differ from value to value.
template< class V > constexpr std::uint32_t fixedLogSize()
{
   if constexpr ( std::same_as< V, bool > || Number< V > ) {
      return sizeof( V );
   } else if constexpr ( std::is_enum_v< V > ) {
      return sizeof( std::uint32_t );
   } else if constexpr ( std::same_as< V, double > || std::same_as< V, Seconds > ||
         std::same_as< V, Corvo::Duration > ) {
      return sizeof( double );
   } else if constexpr ( Generated< V > && !HandLog< V > ) {
      return std::apply(
            []( const auto &... field ) -> std::uint32_t {
               const std::uint32_t sizes[] = {
                  fixedLogSize< typename std::remove_cvref_t< decltype( field ) >::Type >()...
               };
               std::uint32_t sum = 0;
               for ( const std::uint32_t size : sizes ) {
                  if ( size == 0 ) {
                     return 0;
                  }
                  sum += size;
               }
               return sum;
            },
            ValueAccess::fields< V >() );
   } else {
      return 0;
   }
}

template< class V > struct ValueOpsOf {
   using Type = ValueType< V >;

   static const V & at( const void * v ) { return *static_cast< const V * >( v ); }
   static V & at( void * v ) { return *static_cast< V * >( v ); }

   static void construct( void * raw ) { new ( raw ) V(); }
   static void copy( void * raw, const void * from ) { new ( raw ) V( at( from ) ); }
   static void destroy( void * v ) noexcept { at( v ).~V(); }
   static void swap( void * a, void * b ) noexcept { std::swap( at( a ), at( b ) ); }
   static constexpr bool equal( const void * a, const void * b )
   {
      return Type::equal( at( a ), at( b ) );
   }
   static bool less( const void * a, const void * b ) { return at( a ) < at( b ); }
   static std::size_t hash( const void * v ) { return std::hash< V >()( at( v ) ); }
   static void print( TextOut & out, const void * v ) { Type::print( out, at( v ) ); }
   static void read( CharRange & range, void * into )
   {
      V v{};
      Type::read( range, v );
      at( into ) = std::move( v );
   }
   static void encode( NboAttrLog::Out & out, const void * v ) { Type::encode( out, at( v ) ); }
   static void decode( NboAttrLog::In & in, void * into ) { Type::decode( in, at( into ) ); }
   static void check( NboAttrLog::In & in ) { checkLog< V >( in ); }

   static constexpr ValueOps make()
   {
      ValueOps ops{ &typeid( V ), Type::name, sizeof( V ), alignof( V ), construct, copy, destroy,
         swap, equal, nullptr, nullptr, print, nullptr, encode, decode, check,
         fixedLogSize< V >(), relocatable< V > };
      if constexpr ( requires( const V & v ) { { v < v } -> std::convertible_to< bool >; } ) {
         ops.less = less;
      }
      if constexpr ( requires( const V & v ) { std::hash< V >()( v ); } ) {
         ops.hash = hash;
      }
      if constexpr ( Type::textable ) {
         ops.read = read;
      }
      return ops;
   }
};

/// A pointer to an entity can be named, and nothing else.
template< class T > struct ValueOpsOf< Corvo::Ptr< T > > {
   static void print( TextOut & out, const void * v )
   {
      ValueType< Corvo::Ptr< T > >::print( out, *static_cast< const Corvo::Ptr< T > * >( v ) );
   }
   static constexpr ValueOps make()
   {
      ValueOps ops{};
      ops.type = &typeid( Corvo::Ptr< T > );
      ops.print = print;
      return ops;
   }
};

/// The operations of V.
template< class V > inline constexpr ValueOps valueOps = ValueOpsOf< V >::make();

template< class V > AnyValue any( const V & v ) noexcept
{
   return { &valueOps< V >, &v };
}

} // namespace Vok::Detail
