// Vok::Optional, a value or none.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <type_traits>

namespace Vok {

/// An optional truth value in one byte: 0 false, 1 true, 255 no value. It has the interface of
/// `std::optional< bool >`, except that `*` and `value()` return by value and there is no `->`.
class OptionalBool {
 public:
   using value_type = bool;

   constexpr OptionalBool() noexcept = default;
   constexpr OptionalBool( std::nullopt_t ) noexcept {}
   constexpr OptionalBool( bool value ) noexcept : byte_( value ? 1 : 0 ) {}
   constexpr OptionalBool( const std::optional< bool > & other ) noexcept
         : byte_( other ? ( *other ? 1 : 0 ) : none )
   {
   }

   constexpr bool has_value() const noexcept { return byte_ != none; }
   constexpr explicit operator bool() const noexcept { return has_value(); }
   constexpr bool operator*() const noexcept { return byte_ == 1; }

   /// Throws std::bad_optional_access where there is no value.
   constexpr bool value() const
   {
      if ( !has_value() ) {
         throw std::bad_optional_access();
      }
      return **this;
   }
   constexpr bool value_or( bool other ) const noexcept { return has_value() ? **this : other; }

   constexpr void reset() noexcept { byte_ = none; }
   constexpr bool emplace( bool value = false ) noexcept
   {
      byte_ = value ? 1 : 0;
      return value;
   }

   friend constexpr bool operator==( OptionalBool a, OptionalBool b ) noexcept = default;
   friend constexpr bool operator==( OptionalBool a, bool b ) noexcept
   {
      return a.has_value() && *a == b;
   }
   friend constexpr bool operator==( OptionalBool a, std::nullopt_t ) noexcept
   {
      return !a.has_value();
   }

   /// No value comes before every value.
   friend constexpr std::strong_ordering operator<=>( OptionalBool a, OptionalBool b ) noexcept
   {
      return a.rank() <=> b.rank();
   }

 private:
   static constexpr std::uint8_t none = 255;

   constexpr int rank() const noexcept { return has_value() ? byte_ : -1; }

   std::uint8_t byte_ = none;
};

/// A `V` or no value. No value and any value are different; two values are equal when they are
/// equal.
template< class V >
using Optional = std::conditional_t< std::is_same_v< V, bool >, OptionalBool, std::optional< V > >;

/// How an optional is stored in one word: the value `empty` of its number stands for no value.
/// Accessors and mutators still speak `Optional< V >`. `V` is built from a number and gives it
/// with `value()`.
template< class V, auto empty > class OptionalWord {
 public:
   using Word = decltype( std::declval< const V & >().value() );

   constexpr OptionalWord() noexcept = default;
   constexpr OptionalWord( const Optional< V > & v ) : word_( v ? v->value() : none ) {}

   constexpr operator Optional< V >() const
   {
      return word_ == none ? Optional< V >() : Optional< V >( V( word_ ) );
   }

   friend constexpr bool operator==( OptionalWord a, OptionalWord b ) noexcept = default;

 private:
   static constexpr Word none = static_cast< Word >( empty );

   Word word_ = none;
};

} // namespace Vok
