// Made by vokgen from Sample.vok. Do not edit.
//
// Texts that try to leave their place: * / // \.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Enumerations -------------------------------------------------------------------------------

/// # Not a heading | not a cell `code <b>` ``no code`` `no | code` <b>not bold</b> * /
enum class Code : std::uint8_t {
   zero = 0, ///< ends with a backslash \.
   one = 1, ///< ends with a trigraph ??/.
   two = 2, ///< / * opens no comment, // nor does this
};
using enum Code;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Code ) noexcept;
constexpr std::string_view vokEnumName( Code ) noexcept
{
   return "Test::Code";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Code e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Code * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Code e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline Code CodeInstance( unsigned code ) { return Vok::Enumeration::ofCode< Code >( code ); }
inline Code CodeInstance( std::string_view name )
{
   return Vok::Enumeration::ofName< Code >( name );
}

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// - Not a list; *not* _emphasis_, [not](a link) &amp;
class VOK_EXPORT Texts {
 public:
   Texts() = delete;

   /// "quotes" and \ backslashes
   static Corvo::String quotes() { return Corvo::String( "a \"b\" \\ c" ); }
   /// control characters, NUL among them
   static Corvo::String controls()
   {
      return Corvo::String( std::string_view( "\n\t\000\001\177", 5 ) );
   }
   /// escapes followed by digits
   static Corvo::String digits()
   {
      return Corvo::String( std::string_view( "\037123\000abc", 8 ) );
   }
   /// question marks
   static Corvo::String trigraph() { return Corvo::String( "what?\?/ ?\?\?" ); }
   /// bytes that are not ASCII
   static Corvo::String foreign() { return Corvo::String( "\303\244 \377" ); }
   /// $name$ is no variable
   static Corvo::String dollar() { return Corvo::String( "$name$ $" ); }
   /// 1. long
   static Corvo::String many()
   {
      return Corvo::String(
            "a text that is so long that its literal does not fit on one line, "
            "and is split at a blank into several" );
   }

   struct VOK_HIDDEN VokTable;
};

} // namespace Test

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
