// Made by vokgen from Sample.vok. Do not edit.
//
// Constants of every kind, and static functions.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Enumerations -------------------------------------------------------------------------------

/// A colour.
enum class Colour : std::uint8_t {
   red = 0, ///< red
   green = 1, ///< green
};
using enum Colour;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Colour ) noexcept;
constexpr std::string_view vokEnumName( Colour ) noexcept
{
   return "Test::Colour";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Colour e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Colour * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Colour e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline Colour ColourInstance( unsigned code ) { return Vok::Enumeration::ofCode< Colour >( code ); }
inline Colour ColourInstance( std::string_view name )
{
   return Vok::Enumeration::ofName< Colour >( name );
}

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A bounded number.
class VOK_EXPORT Level {
 public:
   constexpr Level() noexcept = default;
   /// Throws Corvo::RangeException unless value is in 1 to 10.
   constexpr explicit Level( std::uint32_t value )
         : value_( value )
   {
      checkValue( value );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Level( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Level( Log * log )
   {
      vokDecode( *log );
   }

   /// steps
   constexpr std::uint32_t value() const noexcept { return value_; }
   /// Throws Corvo::RangeException unless v is in 1 to 10. It keeps its value then.
   void valueIs( std::uint32_t v )
   {
      if ( v != value_ ) {
         checkValue( v );
         value_ = v;
      }
   }

   /// Whether all fields are equal.
   constexpr bool isEq( const Level & other ) const;
   friend constexpr bool operator==( const Level & a, const Level & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Level & v )
   {
      return Vok::ValueType< Level >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Level";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkValue( std::uint32_t v )
   {
      if ( v < 1 || v > 10 ) {
         Corvo::RangeException::throwException( "Test::Level::value < 1 or > 10 not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< Level, std::uint32_t >{ "value", &Level::value_, &Level::checkValue } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 1;
};

constexpr bool Level::isEq( const Level & other ) const
{
   return Vok::equalFields( *this, other );
}

/// What holds everywhere.
class VOK_EXPORT Limits {
 public:
   Limits() = delete;

   /// the largest number
   static constexpr std::uint32_t most() noexcept { return 4294967295U; }
   /// computed
   static constexpr std::uint16_t next() noexcept { return 256; }
   /// a number
   static constexpr std::uint16_t low() noexcept { return 255; }
   /// a truth value
   static constexpr bool truth() noexcept { return true; }
   /// a double without a fraction
   static constexpr double ratio() noexcept { return 2.0; }
   /// a text
   static Corvo::String name() { return Corvo::String( "Ethernet" ); }
   /// the empty text
   static Corvo::String nothing() { return Corvo::String(); }
   /// an enumerator
   static constexpr Colour colour() noexcept { return Colour::green; }
   /// a value
   static constexpr Level level() { return Level( 7 ); }
   /// a duration
   static constexpr Corvo::Duration forever() { return Corvo::Duration::infinity(); }
   /// a time
   static constexpr Vok::Seconds epoch() { return Vok::Seconds( 1.5 ); }
   /// written by hand
   static std::uint32_t twice( std::uint32_t n );
   /// gives nothing
   static void report( const Level & level, const Corvo::String & name );

   struct VOK_HIDDEN VokTable;
};

} // namespace Test

template<> struct std::hash< Test::Level > : Vok::ValueHash< Test::Level > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
