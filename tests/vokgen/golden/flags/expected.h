// Made by vokgen from Sample.vok. Do not edit.
//
// Bit sets.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// Bits of one word.
class VOK_EXPORT Flags {
 public:
   constexpr Flags() noexcept = default;
   /// From its value.
   constexpr explicit Flags( std::uint16_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Flags( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Flags( Log * log )
   {
      vokDecode( *log );
   }

   /// the whole word
   constexpr std::uint16_t value() const noexcept { return value_; }
   void valueIs( std::uint16_t v ) noexcept { value_ = v; }
   /// the lowest bit
   constexpr bool first() const noexcept { return Vok::bit( value_, 0 ); }
   void firstIs( bool v ) noexcept { Vok::bitIs( value_, 0, v ); }
   /// set by default
   constexpr bool second() const noexcept { return Vok::bit( value_, 1 ); }
   void secondIs( bool v ) noexcept { Vok::bitIs( value_, 1, v ); }
   /// The mask of first.
   static constexpr std::uint16_t maskFirst() noexcept { return 1; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Flags & other ) const;
   friend constexpr bool operator==( const Flags & a, const Flags & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Flags & v )
   {
      return Vok::ValueType< Flags >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Flags";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Flags::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t value_ = 2;
};

constexpr bool Flags::isEq( const Flags & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Cannot be changed.
class VOK_EXPORT Fixed {
 public:
   constexpr Fixed() noexcept = default;
   /// From its value.
   constexpr explicit Fixed( std::uint8_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Fixed( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Fixed( Log * log )
   {
      vokDecode( *log );
   }

   /// the whole word
   constexpr std::uint8_t value() const noexcept { return value_; }
   /// the highest bit
   constexpr bool top() const noexcept { return Vok::bit( value_, 7 ); }

   /// Whether all fields are equal.
   constexpr bool isEq( const Fixed & other ) const;
   friend constexpr bool operator==( const Fixed & a, const Fixed & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Fixed & v )
   {
      return Vok::ValueType< Fixed >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Fixed";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Fixed::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint8_t value_ = 0;
};

constexpr bool Fixed::isEq( const Fixed & other ) const
{
   return Vok::equalFields( *this, other );
}

} // namespace Test

template<> struct std::hash< Test::Flags > : Vok::ValueHash< Test::Flags > {
};
template<> struct std::hash< Test::Fixed > : Vok::ValueHash< Test::Fixed > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
