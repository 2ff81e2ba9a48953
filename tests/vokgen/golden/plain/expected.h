// Made by vokgen from Sample.vok. Do not edit.
//
// Plain attributes of every type, and counters.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Root;

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

/// A number.
class VOK_EXPORT Level {
 public:
   constexpr Level() noexcept = default;
   /// From its value.
   constexpr explicit Level( std::uint32_t value ) noexcept
         : value_( value )
   {
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
   void valueIs( std::uint32_t v ) noexcept { value_ = v; }

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

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Level::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 5;
};

constexpr bool Level::isEq( const Level & other ) const
{
   return Vok::equalFields( *this, other );
}

// ---- Entities -----------------------------------------------------------------------------------

// Entities are made by their factories and held through Corvo::Ptr. Of an attribute x, x() reads
// it and xIs( v ) stores it and tells the notifiees of the entity; where v equals what is stored
// it does nothing. Texts and values are given by reference, which holds until that attribute, of a
// map that member, changes; an optional is given as a copy.
//
// Of a collection, x() is a live view of it, valid as long as the entity, and the collection may
// be changed while it is iterated. x( key ) is the member: of a map the type's default where there
// is none, of a set whether it holds the key, of children and references the pointer or null.
// xDel( key ) deletes a member and returns it, of a set nothing; deleting what is not there is
// silent. xDelAll() deletes all and gives the memory back. Of children, xIs() makes the child or
// returns the one that exists under that key.

/// One attribute of each type.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId enabledAttrId = 258;
   static constexpr Vok::AttrId countAttrId = 259;
   static constexpr Vok::AttrId bigAttrId = 260;
   static constexpr Vok::AttrId ratioAttrId = 261;
   static constexpr Vok::AttrId titleAttrId = 262;
   static constexpr Vok::AttrId colourAttrId = 263;
   static constexpr Vok::AttrId levelAttrId = 264;
   static constexpr Vok::AttrId startAttrId = 265;
   static constexpr Vok::AttrId endAttrId = 266;
   static constexpr Vok::AttrId bareAttrId = 267;
   static constexpr Vok::AttrId firstAttrId = 268;
   static constexpr Vok::AttrId spanAttrId = 269;
   static constexpr Vok::AttrId mostAttrId = 270;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// a truth value
   bool enabled() const noexcept;
   void enabledIs( bool v );

   /// a counter
   std::uint32_t count() const noexcept;
   void countIs( std::uint32_t v );
   /// Adds, modulo the width, and returns the new value.
   std::uint32_t countInc( std::uint32_t delta );

   /// 64 bits
   std::uint64_t big() const noexcept;
   void bigIs( std::uint64_t v );

   /// double precision
   double ratio() const noexcept;
   void ratioIs( double v );

   /// a text
   const Corvo::String & title() const noexcept;
   void titleIs( const Corvo::String & v );

   /// an enumeration
   Colour colour() const noexcept;
   void colourIs( Colour v );

   /// a default that overrides the type's own
   const Level & level() const noexcept;
   void levelIs( const Level & v );

   /// a clock time
   const Vok::Seconds & start() const noexcept;
   void startIs( const Vok::Seconds & v );

   /// a duration
   const Corvo::Duration & end() const noexcept;
   void endIs( const Corvo::Duration & v );

   /// nothing stated
   double bare() const noexcept;
   void bareIs( double v );

   /// nothing stated
   const Vok::Seconds & first() const noexcept;
   void firstIs( const Vok::Seconds & v );

   /// nothing stated
   const Corvo::Duration & span() const noexcept;
   void spanIs( const Corvo::Duration & v );

   /// a constant takes an id
   static constexpr std::uint32_t most() noexcept { return 7; }

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   bool enabled_ = false;
   std::uint32_t count_ = 0;
   std::uint64_t big_ = 18446744073709551615U;
   double ratio_ = std::numeric_limits< double >::infinity();
   Corvo::String title_ = Corvo::String( "no title" );
   Colour colour_ = Colour::green;
   Level level_ = Level( 3 );
   Vok::Seconds start_ = Vok::Seconds( 0.0 );
   Corvo::Duration end_ = Corvo::Duration::infinity();
   double bare_ = 0.0;
   Vok::Seconds first_ = Vok::Seconds( 0.0 );
   Corvo::Duration span_ = Corvo::Duration( 0.0 );
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline bool Root::enabled() const noexcept { return enabled_; }
inline void Root::enabledIs( bool v )
{
   Vok::Attribute::plainIs( *this, enabledAttrId, enabled_, v );
}

inline std::uint32_t Root::count() const noexcept { return count_; }
inline void Root::countIs( std::uint32_t v )
{
   Vok::Attribute::plainIs( *this, countAttrId, count_, v );
}
inline std::uint32_t Root::countInc( std::uint32_t delta )
{
   return Vok::Attribute::increment( *this, countAttrId, count_, delta );
}

inline std::uint64_t Root::big() const noexcept { return big_; }
inline void Root::bigIs( std::uint64_t v ) { Vok::Attribute::plainIs( *this, bigAttrId, big_, v ); }

inline double Root::ratio() const noexcept { return ratio_; }
inline void Root::ratioIs( double v ) { Vok::Attribute::plainIs( *this, ratioAttrId, ratio_, v ); }

inline const Corvo::String & Root::title() const noexcept { return title_; }
inline void Root::titleIs( const Corvo::String & v )
{
   Vok::Attribute::plainIs( *this, titleAttrId, title_, v );
}

inline Colour Root::colour() const noexcept { return colour_; }
inline void Root::colourIs( Colour v )
{
   Vok::Attribute::plainIs( *this, colourAttrId, colour_, v );
}

inline const Level & Root::level() const noexcept { return level_; }
inline void Root::levelIs( const Level & v )
{
   Vok::Attribute::plainIs( *this, levelAttrId, level_, v );
}

inline const Vok::Seconds & Root::start() const noexcept { return start_; }
inline void Root::startIs( const Vok::Seconds & v )
{
   Vok::Attribute::plainIs( *this, startAttrId, start_, v );
}

inline const Corvo::Duration & Root::end() const noexcept { return end_; }
inline void Root::endIs( const Corvo::Duration & v )
{
   Vok::Attribute::plainIs( *this, endAttrId, end_, v );
}

inline double Root::bare() const noexcept { return bare_; }
inline void Root::bareIs( double v ) { Vok::Attribute::plainIs( *this, bareAttrId, bare_, v ); }

inline const Vok::Seconds & Root::first() const noexcept { return first_; }
inline void Root::firstIs( const Vok::Seconds & v )
{
   Vok::Attribute::plainIs( *this, firstAttrId, first_, v );
}

inline const Corvo::Duration & Root::span() const noexcept { return span_; }
inline void Root::spanIs( const Corvo::Duration & v )
{
   Vok::Attribute::plainIs( *this, spanAttrId, span_, v );
}

} // namespace Test

template<> struct std::hash< Test::Level > : Vok::ValueHash< Test::Level > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
