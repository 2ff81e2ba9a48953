// The text, the attribute log and the hash of generated value types, field by field, and what their
// constructors call. Part of Vok/ValueType.h.
#pragma once

#include "Vok/ValueType.h"
#include "Vok/detail/Hash.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Vok {

namespace Detail {

/// Reads all fields of a composite by name, or the bare one of a value of one field, then checks
/// bounds.
template< class V > void readFields( CharRange & range, V & into );

/// Reads all fields from a log, in declared order, then checks bounds.
template< class V > void decodeFields( NboAttrLog::In & in, V & into );

/// Reads a value from a log, all but its collections, which stay empty and are only checked.
template< class V > void skimLog( NboAttrLog::In & in, V & into );

template< class V, class F > void readField( CharRange & range, V & into, const F & field )
{
   using From = typename F::From;
   using Type = typename F::Type;
   if constexpr ( std::same_as< From, Type > ) {
      ValueType< Type >::read( range, into.*field.member );
   } else {
      From wide{};
      ValueType< From >::read( range, wide );
      field.check( wide );
      into.*field.member = static_cast< Type >( wide );
   }
}

/// Gives CharRange a field of a value to read into.
template< class V, class F > struct FieldTarget {
   V & value;
   const F & field;
};

template< class V > void checkFields( const V & v )
{
   eachField< V >( [ &v ]( const auto & field ) {
      if ( field.check ) {
         field.check( v.*field.member );
      }
   } );
}

} // namespace Detail

template< class V > void readText( CharRange & range, V & into )
{
   ValueType< V >::read( range, into );
}

template< class V, class F > void readText( CharRange & range, Detail::FieldTarget< V, F > & into )
{
   Detail::readField( range, into.value, into.field );
}

template< class V > void Detail::readFields( CharRange & range, V & into )
{
   constexpr std::size_t count = fieldCount< V >();
   std::size_t index = 0;
   eachField< V >( [ & ]( const auto & field ) {
      FieldTarget< V, std::remove_cvref_t< decltype( field ) > > target{ into, field };
      if constexpr ( count == 1 ) {
         range.deserializeAttr( field.name, target );
      } else {
         if ( index == 0 ) {
            range.needPre( ValueAccess::name< V >() );
            range.desAttrPre( field.name, target );
         } else if ( index + 1 == count ) {
            range.desAttrPost( field.name, target );
         } else {
            range.desAttrIntra( field.name, target );
         }
         ++index;
      }
   } );
   checkFields( into );
}

template< class V > void Detail::decodeFields( NboAttrLog::In & in, V & into )
{
   eachField< V >( [ & ]( const auto & field ) {
      using Type = typename std::remove_cvref_t< decltype( field ) >::Type;
      ValueType< Type >::decode( in, into.*field.member );
   } );
   checkFields( into );
}

template< class V > void Detail::checkLog( NboAttrLog::In & in )
{
   if constexpr ( std::same_as< V, Corvo::String > ) {
      in.getText();
   } else if constexpr ( requires { ValueType< V >::check( in ); } ) {
      ValueType< V >::check( in );
   } else if constexpr ( Generated< V > && !HandLog< V > ) {
      eachField< V >( [ & ]( const auto & field ) {
         using Type = typename std::remove_cvref_t< decltype( field ) >::Type;
         if ( field.check ) {
            Type value{};
            ValueType< Type >::decode( in, value );
            field.check( value );
         } else {
            checkLog< Type >( in );
         }
      } );
   } else {
      V value = ValueAccess::blank< V >();
      ValueType< V >::decode( in, value );
   }
}

template< class V > void Detail::skimLog( NboAttrLog::In & in, V & into )
{
   if constexpr ( requires { ValueType< V >::check( in ); } ) {
      ValueType< V >::check( in );
   } else if constexpr ( Generated< V > && !HandLog< V > ) {
      eachField< V >( [ & ]( const auto & field ) { skimLog( in, into.*field.member ); } );
      checkFields( into );
   } else {
      ValueType< V >::decode( in, into );
   }
}

template< class V > void ValueType< V >::print( TextOut & out, const V & v )
{
   if constexpr ( Detail::HandText< V > ) {
      out.putString( v.stringValue().view() );
   } else {
      constexpr bool bare = Detail::fieldCount< V >() == 1;
      if constexpr ( !bare ) {
         out.put( name );
      }
      char before = '[';
      Detail::eachField< V >( [ & ]( const auto & field ) {
         using Type = typename std::remove_cvref_t< decltype( field ) >::Type;
         if constexpr ( !bare ) {
            out.put( std::exchange( before, ',' ) );
            out.put( field.name );
            out.put( '=' );
         }
         ValueType< Type >::print( out, v.*field.member );
      } );
      if constexpr ( !bare ) {
         out.put( ']' );
      }
   }
}

template< class V > std::size_t ValueType< V >::logSize( const V & v )
{
   if constexpr ( Detail::HandLog< V > ) {
      return v.logSize();
   } else {
      std::size_t size = 0;
      Detail::eachField< V >( [ & ]( const auto & field ) {
         using Type = typename std::remove_cvref_t< decltype( field ) >::Type;
         size += ValueType< Type >::logSize( v.*field.member );
      } );
      return size;
   }
}

template< class V > void ValueType< V >::encode( NboAttrLog::Out & out, const V & v )
{
   if constexpr ( Detail::HandLog< V > ) {
      v.writeLog( out );
   } else {
      Detail::eachField< V >( [ & ]( const auto & field ) {
         using Type = typename std::remove_cvref_t< decltype( field ) >::Type;
         ValueType< Type >::encode( out, v.*field.member );
      } );
   }
}

template< class V > void ValueType< V >::decode( NboAttrLog::In & in, V & into )
{
   into = V( &in );
}

/// Field by field, in declared order; what `isEq` of a generated type says.
template< class V > constexpr bool equalFields( const V & a, const V & b )
{
   if ( &a == &b ) {
      return true;
   }
   return std::apply(
         [ & ]( const auto &... field ) {
            return ( ValueType< typename std::remove_cvref_t< decltype( field ) >::Type >::equal(
                           a.*field.member, b.*field.member ) &&
                  ... );
         },
         Detail::ValueAccess::fields< V >() );
}

/// Field by field, in declared order; what `<` of an ordered generated type says.
template< class V > constexpr bool lessFields( const V & a, const V & b )
{
   bool less = false;
   bool decided = false;
   Detail::eachField< V >( [ & ]( const auto & field ) {
      if ( !decided ) {
         less = a.*field.member < b.*field.member;
         decided = less || b.*field.member < a.*field.member;
      }
   } );
   return less;
}

/// `std::hash` over all fields; a generated type's specialisation derives from it.
template< class V > struct ValueHash {
   std::size_t operator()( const V & v ) const
   {
      std::uint64_t h = 0x9e3779b97f4a7c15ULL;
      Detail::eachField< V >( [ & ]( const auto & field ) {
         using Type = typename std::remove_cvref_t< decltype( field ) >::Type;
         h = ( h ^ std::hash< Type >()( v.*field.member ) ) * 0xd6e8feb86659fd93ULL;
         h ^= h >> 32;
      } );
      return static_cast< std::size_t >( h );
   }
};

namespace Detail {

/// The hash of a key in a collection: of all fields, under the collection's seed.
template< class V >
   requires Generated< V >
struct KeyHash< V > {
   static std::uint64_t hash( const V & v, HashSeed seed )
   {
      std::uint64_t h = 0;
      bool first = true;
      eachField< V >( [ & ]( const auto & field ) {
         using Type = typename std::remove_cvref_t< decltype( field ) >::Type;
         if ( !std::exchange( first, false ) ) {
            seed.a ^= h;
         }
         h = KeyHash< Type >::hash( v.*field.member, seed );
      } );
      return h;
   }
};

template<> struct KeyHash< Seconds > {
   static std::uint64_t hash( Seconds v, HashSeed seed )
   {
      return KeyHash< double >::hash( v.value(), seed );
   }
};

template<> struct KeyHash< Corvo::Duration > {
   static std::uint64_t hash( Corvo::Duration v, HashSeed seed )
   {
      return KeyHash< double >::hash( v.seconds(), seed );
   }
};

} // namespace Detail

// ---- What generated constructors call ---------------------------------------------------------

/// Reads all fields of a composite by name, or the bare one of a value of one field, then checks
/// bounds.
template< class V > void readFields( CharRange & range, V & into )
{
   Detail::readFields( range, into );
}

/// Reads all fields from a log, in declared order, then checks bounds.
template< class V > void decodeFields( NboAttrLog::In & in, V & into )
{
   Detail::decodeFields( in, into );
}

/// Reads a value whose text is written by hand: it is built from its text, which has to be the one
/// that it prints.
template< class V > void readByHand( CharRange & range, V & into )
{
   const std::size_t start = range.offset();
   const Corvo::String text = range.string();
   V v( text );
   if ( const Corvo::String canonical = v.stringValue(); canonical != text ) {
      range.backTo( start );
      range.fail( "the text as " + std::string( canonical.view() ) );
   }
   into = std::move( v );
}

/// Ends the process: a value that holds a collection cannot be read from text.
[[noreturn]] VOK_EXPORT void noStringConstructor( const char * type );

/// One bit of a flag word.
template< Detail::Number W > constexpr bool bit( W word, unsigned number ) noexcept
{
   return ( static_cast< std::uint64_t >( word ) >> number & 1U ) != 0;
}

template< Detail::Number W > constexpr void bitIs( W & word, unsigned number, bool v ) noexcept
{
   const W mask = static_cast< W >( W{ 1 } << number );
   word = static_cast< W >( v ? word | mask : word & static_cast< W >( ~mask ) );
}

} // namespace Vok

namespace Vok::NboAttrLog {

/// A value type onto a log: its fields in declared order.
template< class V >
requires Vok::Detail::Generated< V >
      Out & operator<<( Out & out, const V & v )
{
   ValueType< V >::encode( out, v );
   return out;
}

} // namespace Vok::NboAttrLog
