// Made by vokgen from Sample.vok. Do not edit.
//
// An enumeration that belongs to a type.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Enumerations -------------------------------------------------------------------------------

/// Hidden inside Mode by a nested one.
enum class Kind : std::uint8_t {
   outer = 0, ///< the only one
};
using enum Kind;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Kind ) noexcept;
constexpr std::string_view vokEnumName( Kind ) noexcept
{
   return "Test::Kind";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Kind e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Kind * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Kind e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline Kind KindInstance( unsigned code ) { return Vok::Enumeration::ofCode< Kind >( code ); }
inline Kind KindInstance( std::string_view name )
{
   return Vok::Enumeration::ofName< Kind >( name );
}

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// Only holds an enumeration.
class VOK_EXPORT Buffer {
 public:
   Buffer() = delete;

   /// What became of the buffer.
   enum class Status : std::uint8_t {
      disabled = 0, ///< not asked for
      enabled = 1, ///< in use
   };
   using enum Status;
   /// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
   static Status StatusInstance( unsigned code )
   {
      return Vok::Enumeration::ofCode< Status >( code );
   }
   static Status StatusInstance( std::string_view name )
   {
      return Vok::Enumeration::ofName< Status >( name );
   }

   struct VOK_HIDDEN VokTable;
};

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Buffer::Status ) noexcept;
constexpr std::string_view vokEnumName( Buffer::Status ) noexcept
{
   return "Test::Buffer::Status";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Buffer::Status e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Buffer::Status * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Buffer::Status e )
{
   return out << stringValue( e );
}

/// Uses its own Kind, another type's, and the outer one.
class VOK_EXPORT Mode {
 public:
   /// What kind.
   enum class Kind : std::uint16_t {
      unknown = 0, ///< not known
   };
   using enum Kind;
   /// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
   static Kind KindInstance( unsigned code ) { return Vok::Enumeration::ofCode< Kind >( code ); }
   static Kind KindInstance( std::string_view name )
   {
      return Vok::Enumeration::ofName< Kind >( name );
   }

   constexpr Mode() noexcept = default;
   /// From its fields, in declared order.
   constexpr Mode( Mode::Kind kind, Buffer::Status status, Test::Kind other ) noexcept
         : kind_( kind ),
           status_( status ),
           other_( other )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Mode( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Mode( Log * log )
   {
      vokDecode( *log );
   }

   /// its own
   constexpr Mode::Kind kind() const noexcept { return kind_; }
   void kindIs( Mode::Kind v ) noexcept { kind_ = v; }
   /// another type's
   constexpr Buffer::Status status() const noexcept { return status_; }
   void statusIs( Buffer::Status v ) noexcept { status_ = v; }
   /// of the namespace
   constexpr Test::Kind other() const noexcept { return other_; }
   void otherIs( Test::Kind v ) noexcept { other_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Mode & other ) const;
   friend constexpr bool operator==( const Mode & a, const Mode & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Mode & v ) { return Vok::ValueType< Mode >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Mode";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "kind", &Mode::kind_ },
            Vok::Field{ "status", &Mode::status_ },
            Vok::Field{ "other", &Mode::other_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   Mode::Kind kind_ = Mode::Kind::unknown;
   Buffer::Status status_ = Buffer::Status::disabled;
   Test::Kind other_ = Test::Kind::outer;
};

constexpr bool Mode::isEq( const Mode & other ) const
{
   return Vok::equalFields( *this, other );
}

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Mode::Kind ) noexcept;
constexpr std::string_view vokEnumName( Mode::Kind ) noexcept
{
   return "Test::Mode::Kind";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Mode::Kind e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Mode::Kind * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Mode::Kind e )
{
   return out << stringValue( e );
}

} // namespace Test

template<> struct std::hash< Test::Mode > : Vok::ValueHash< Test::Mode > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
