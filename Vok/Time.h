// The two time values of the framework: Vok::Seconds, a clock time, and Corvo::Duration.
#pragma once

#include "Vok/Export.h"

#include <concepts>
#include <cstddef>
#include <functional>
#include <limits>

namespace Vok {

class CharRange;

namespace NboAttrLog {
class In;
class Out;
} // namespace NboAttrLog

namespace Detail {

/// A double from its text or from a log, as it stands behind both types.
VOK_EXPORT double timeFrom( CharRange & range );
VOK_EXPORT double timeFrom( NboAttrLog::In & log );

/// Equality of doubles as the framework means it: what prints the same is the same, so that every
/// NaN equals every other and a change to an equal value stays silent.
constexpr bool sameDouble( double a, double b ) noexcept { return a == b || ( a != a && b != b ); }

/// One representation per value: 0.0 for both zeros, one NaN for all.
constexpr double canonicalDouble( double v ) noexcept
{
   return v == 0.0 ? 0.0 : v == v ? v
                                  : std::numeric_limits< double >::quiet_NaN();
}

} // namespace Detail

/// A clock time in seconds, double precision, as requests carry it. Zero by default.
class Seconds {
 public:
   constexpr Seconds() noexcept = default;
   constexpr explicit Seconds( double seconds ) noexcept
         : value_( Detail::canonicalDouble( seconds ) )
   {
   }

   /// From its text, a double; throws Corvo::ParseException where that does not match.
   explicit Seconds( CharRange & range ) : Seconds( Detail::timeFrom( range ) ) {}

   /// From the eight bytes of an attribute log; throws NboAttrLog::Exception where it is cut
   /// short.
   template< std::same_as< NboAttrLog::In > Log > explicit Seconds( Log * log )
         : Seconds( Detail::timeFrom( *log ) )
   {
   }

   constexpr double value() const noexcept { return value_; }

   constexpr bool isEq( const Seconds & other ) const noexcept
   {
      return Detail::sameDouble( value_, other.value_ );
   }
   friend constexpr bool operator==( const Seconds & a, const Seconds & b ) noexcept
   {
      return a.isEq( b );
   }
   friend constexpr bool operator<( const Seconds & a, const Seconds & b ) noexcept
   {
      return a.value_ < b.value_;
   }

   /// The bytes that it takes in an attribute log.
   friend constexpr std::size_t attrLogSize( const Seconds & ) noexcept { return sizeof( double ); }

 private:
   double value_ = 0;
};

} // namespace Vok

namespace Corvo {

/// A span of time in seconds, double precision; positive infinity is a legal value. Zero by
/// default.
class Duration {
 public:
   constexpr Duration() noexcept = default;
   constexpr explicit Duration( double seconds ) noexcept
         : seconds_( Vok::Detail::canonicalDouble( seconds ) )
   {
   }

   /// From its text, a double; throws Corvo::ParseException where that does not match.
   explicit Duration( Vok::CharRange & range ) : Duration( Vok::Detail::timeFrom( range ) ) {}

   /// From the eight bytes of an attribute log; throws Vok::NboAttrLog::Exception where it is cut
   /// short.
   template< std::same_as< Vok::NboAttrLog::In > Log > explicit Duration( Log * log )
         : Duration( Vok::Detail::timeFrom( *log ) )
   {
   }

   static constexpr Duration infinity() noexcept
   {
      return Duration( std::numeric_limits< double >::infinity() );
   }

   constexpr double seconds() const noexcept { return seconds_; }

   constexpr bool isEq( const Duration & other ) const noexcept
   {
      return Vok::Detail::sameDouble( seconds_, other.seconds_ );
   }
   friend constexpr bool operator==( const Duration & a, const Duration & b ) noexcept
   {
      return a.isEq( b );
   }
   friend constexpr bool operator<( const Duration & a, const Duration & b ) noexcept
   {
      return a.seconds_ < b.seconds_;
   }

   /// The bytes that it takes in an attribute log.
   friend constexpr std::size_t attrLogSize( const Duration & ) noexcept
   {
      return sizeof( double );
   }

 private:
   double seconds_ = 0;
};

} // namespace Corvo

namespace Vok::NboAttrLog {

/// A time onto a log: its eight bytes of IEEE 754.
VOK_EXPORT Out & operator<<( Out & out, const Seconds & v );
VOK_EXPORT Out & operator<<( Out & out, const Corvo::Duration & v );

} // namespace Vok::NboAttrLog

template<> struct std::hash< Vok::Seconds > {
   std::size_t operator()( const Vok::Seconds & v ) const noexcept
   {
      return std::hash< double >()( v.value() != v.value() ? 0.25 : v.value() );
   }
};

template<> struct std::hash< Corvo::Duration > {
   std::size_t operator()( const Corvo::Duration & v ) const noexcept
   {
      return std::hash< double >()( v.seconds() != v.seconds() ? 0.25 : v.seconds() );
   }
};
