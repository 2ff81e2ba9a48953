// What the framework knows of a value type at compile time: Vok::ValueType< V >, and the base
// from which generated value types get their text, their attribute log and their hash.
#pragma once

#include "Vok/CharRange.h"
#include "Vok/EnumTable.h"
#include "Vok/NboAttrLog.h"
#include "Vok/Optional.h"
#include "Vok/Ptr.h"
#include "Vok/String.h"
#include "Vok/TextOut.h"
#include "Vok/Time.h"
#include "Vok/detail/AnyValue.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/ValueOps.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace Vok {

/// One field of a value type: its name, where it is, and how its bounds are checked when a value
/// is read (null where they are not). `Wide` is the type that the field is built from.
template< class V, class F, class Wide = F > struct Field {
   using Type = F;
   using From = Wide;

   using Checked = std::conditional_t< std::is_scalar_v< Wide >, Wide, const Wide & >;

   std::string_view name;
   F V::*member;
   void ( *check )( Checked ) = nullptr;
};

template< class V, class F > Field( std::string_view, F V::* ) -> Field< V, F >;

namespace Detail {

/// The door through which the framework reaches what generated types keep private.
struct ValueAccess {
   template< class V > static constexpr auto fields() { return V::vokFields(); }
   template< class V > static constexpr std::string_view name() { return V::vokName; }
   template< class V > static V blank() { return V(); }
};

template< class V >
concept Generated = requires
{
   V::vokName;
};

template< class V >
concept Number = std::unsigned_integral< V > && !std::same_as< V, bool >;

template< class V >
concept HandText = requires
{
   typename V::VokHandText;
};

template< class V >
concept HandLog = requires
{
   typename V::VokHandLog;
};

template< class V >
concept Untextable = requires
{
   typename V::VokUntextable;
};

template< class V > constexpr std::size_t fieldCount()
{
   return std::tuple_size_v< decltype( ValueAccess::fields< V >() ) >;
}

/// Calls f with each field of V, in declared order.
template< class V, class F > constexpr void eachField( F && f )
{
   std::apply(
         [ & ]( const auto &... field ) { ( f( field ), ... ); }, ValueAccess::fields< V >() );
}

} // namespace Detail

/// Everything about a value type that Vok needs: its name, text, log form and equality. The primary
/// template serves generated value types; specialisations below serve the rest.
template< class V > struct ValueType {
   static_assert( Detail::Generated< V >, "no value type of the framework" );

   static constexpr std::string_view name = Detail::ValueAccess::name< V >();
   static constexpr bool textable = !Detail::Untextable< V >;

   static constexpr bool equal( const V & a, const V & b ) { return a.isEq( b ); }
   static void print( TextOut & out, const V & v );
   static void read( CharRange & range, V & into ) { into = V( range ); }
   static std::size_t logSize( const V & v );
   static void encode( NboAttrLog::Out & out, const V & v );
   static void decode( NboAttrLog::In & in, V & into );
};

template<> struct ValueType< bool > {
   static constexpr std::string_view name = "bool";
   static constexpr bool textable = true;
   static constexpr bool equal( bool a, bool b ) { return a == b; }
   static void print( TextOut & out, bool v ) { out.put( v ? "true" : "false" ); }
   static void read( CharRange & range, bool & into ) { into = range.truth(); }
   static std::size_t logSize( bool ) { return 1; }
   static void encode( NboAttrLog::Out & out, bool v ) { out.putBool( v ); }
   static void decode( NboAttrLog::In & in, bool & into ) { into = in.getBool(); }
};

template< Detail::Number U > struct ValueType< U > {
   static constexpr std::string_view name =
         sizeof( U ) == 1 ? "u8" : sizeof( U ) == 2 ? "u16"
         : sizeof( U ) == 4                         ? "u32"
                                                    : "u64";
   static constexpr bool textable = true;
   static constexpr bool equal( U a, U b ) { return a == b; }
   static void print( TextOut & out, U v ) { out.putNumber( v ); }
   static void read( CharRange & range, U & into )
   {
      into = static_cast< U >( range.number( std::numeric_limits< U >::max() ) );
   }
   static std::size_t logSize( U ) { return sizeof( U ); }
   [[gnu::always_inline]] static void encode( NboAttrLog::Out & out, U v ) { out.put( v ); }
   static void decode( NboAttrLog::In & in, U & into ) { into = in.get< U >(); }
};

template<> struct ValueType< double > {
   static constexpr std::string_view name = "double";
   static constexpr bool textable = true;
   static constexpr bool equal( double a, double b ) { return Detail::sameDouble( a, b ); }
   static void print( TextOut & out, double v ) { out.putDouble( v ); }
   static void read( CharRange & range, double & into ) { into = range.doubleNumber(); }
   static std::size_t logSize( double ) { return 8; }
   static void encode( NboAttrLog::Out & out, double v )
   {
      out.putDouble( Detail::canonicalDouble( v ) );
   }
   static void decode( NboAttrLog::In & in, double & into )
   {
      into = Detail::canonicalDouble( in.getDouble() );
   }
};

template<> struct ValueType< Corvo::String > {
   static constexpr std::string_view name = "Corvo::String";
   static constexpr bool textable = true;
   static bool equal( const Corvo::String & a, const Corvo::String & b ) { return a == b; }
   static void print( TextOut & out, const Corvo::String & v ) { out.putString( v.view() ); }
   static void read( CharRange & range, Corvo::String & into ) { into = range.string(); }
   static std::size_t logSize( const Corvo::String & v ) { return 4 + v.size(); }
   static void encode( NboAttrLog::Out & out, const Corvo::String & v )
   {
      out.putString( v.view() );
   }
   static void decode( NboAttrLog::In & in, Corvo::String & into ) { into = in.getString(); }
};

namespace Detail {

/// Seconds and Duration: a double under another name.
template< class T, double ( T::*get )() const noexcept > struct TimeType {
   static constexpr bool textable = true;
   static constexpr bool equal( const T & a, const T & b ) { return a.isEq( b ); }
   static void print( TextOut & out, const T & v ) { out.putDouble( ( v.*get )() ); }
   static void read( CharRange & range, T & into ) { into = T( range.doubleNumber() ); }
   static std::size_t logSize( const T & ) { return 8; }
   static void encode( NboAttrLog::Out & out, const T & v ) { out.putDouble( ( v.*get )() ); }
   static void decode( NboAttrLog::In & in, T & into ) { into = T( in.getDouble() ); }
};

} // namespace Detail

template<> struct ValueType< Seconds > : Detail::TimeType< Seconds, &Seconds::value > {
   static constexpr std::string_view name = "Vok::Seconds";
};

template<> struct ValueType< Corvo::Duration >
      : Detail::TimeType< Corvo::Duration, &Corvo::Duration::seconds > {
   static constexpr std::string_view name = "Corvo::Duration";
};

/// Enumerations travel as 32 bits and are written by name.
template< class E >
   requires std::is_enum_v< E >
struct ValueType< E > {
   static constexpr std::string_view name = vokEnumName( E() );
   static constexpr bool textable = true;
   static constexpr bool equal( E a, E b ) { return a == b; }
   static void print( TextOut & out, E v ) { out.put( std::string_view( stringValue( v ) ) ); }
   static void read( CharRange & range, E & into ) { sequenceToValue( range, &into ); }
   static std::size_t logSize( E ) { return 4; }
   [[gnu::always_inline]] static void encode( NboAttrLog::Out & out, E v )
   {
      out.put( static_cast< std::uint32_t >( v ) );
   }
   static void decode( NboAttrLog::In & in, E & into )
   {
      into = Detail::enumFromLog< E >( in.get< std::uint32_t >() );
   }
};

namespace Detail {

/// Reads past a value in a log and throws what decoding it would. Of a collection, nothing is kept
/// meanwhile but two keys and a member.
template< class V > void checkLog( NboAttrLog::In & in );

} // namespace Detail

/// No value is the empty text, and a presence byte 0 in a log.
template< class O >
   requires std::same_as< O, std::optional< typename O::value_type > > ||
         std::same_as< O, OptionalBool >
struct ValueType< O > {
   using Inner = ValueType< typename O::value_type >;
   static constexpr std::string_view name = Inner::name;
   static constexpr bool textable = Inner::textable;
   static constexpr bool equal( const O & a, const O & b )
   {
      return a.has_value() == b.has_value() && ( !a || Inner::equal( *a, *b ) );
   }
   static void print( TextOut & out, const O & v )
   {
      if ( v ) {
         Inner::print( out, *v );
      }
   }
   static void read( CharRange & range, O & into )
   {
      if ( range.empty() || range.at( ',' ) || range.at( ']' ) ) {
         into.reset();
         return;
      }
      typename O::value_type v{};
      Inner::read( range, v );
      into = std::move( v );
   }
   static std::size_t logSize( const O & v ) { return v ? 1 + Inner::logSize( *v ) : 1; }
   static void encode( NboAttrLog::Out & out, const O & v )
   {
      out.putBool( v.has_value() );
      if ( v ) {
         Inner::encode( out, *v );
      }
   }
   static void decode( NboAttrLog::In & in, O & into )
   {
      if ( !in.getBool() ) {
         into.reset();
         return;
      }
      typename O::value_type v{};
      Inner::decode( in, v );
      into = std::move( v );
   }
   static void check( NboAttrLog::In & in )
   {
      if ( in.getBool() ) {
         Detail::checkLog< typename O::value_type >( in );
      }
   }
};

/// A child or a referred entity, as the old value of a change: its text is its bare name.
template< class T > struct ValueType< Corvo::Ptr< T > > {
   static constexpr bool textable = false;
   static void print( TextOut & out, const Corvo::Ptr< T > & v )
   {
      if ( v ) {
         out.put( v->name().view() );
      }
   }
};

} // namespace Vok

#include "Vok/detail/GeneratedValue.h" // IWYU pragma: export
#include "Vok/detail/ValueOpsOf.h" // IWYU pragma: export
