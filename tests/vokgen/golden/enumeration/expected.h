// Made by vokgen from Sample.vok. Do not edit.
//
// An enumeration with a gap, and one whose codes need 32 bits.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Enumerations -------------------------------------------------------------------------------

/// What a flow is painted in.
enum class Colour : std::uint8_t {
   red = 0, ///< the default
   blue = 7, ///< after a gap
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

/// Information elements by number.
enum class Element : std::uint32_t {
   none = 0, ///< nothing
   /// the largest number that there is, described at such length that it stands on a line of
   /// its own
   enterprise = 4294967295,
};
using enum Element;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Element ) noexcept;
constexpr std::string_view vokEnumName( Element ) noexcept
{
   return "Test::Element";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Element e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Element * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Element e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline Element ElementInstance( unsigned code )
{
   return Vok::Enumeration::ofCode< Element >( code );
}
inline Element ElementInstance( std::string_view name )
{
   return Vok::Enumeration::ofName< Element >( name );
}

} // namespace Test

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
