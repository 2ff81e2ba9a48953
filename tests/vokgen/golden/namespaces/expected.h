// Made by vokgen from Sample.vok. Do not edit.
//
// Types of several namespaces, among them one that waits for another.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Hw {

class Status;

} // namespace Hw

namespace Sw {

class Status;

// ---- Enumerations -------------------------------------------------------------------------------

/// Why.
enum class Reason : std::uint8_t {
   unknown = 0, ///< nobody knows
};
using enum Reason;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Reason ) noexcept;
constexpr std::string_view vokEnumName( Reason ) noexcept
{
   return "Sw::Reason";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Reason e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Reason * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Reason e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline Reason ReasonInstance( unsigned code ) { return Vok::Enumeration::ofCode< Reason >( code ); }
inline Reason ReasonInstance( std::string_view name )
{
   return Vok::Enumeration::ofName< Reason >( name );
}

} // namespace Sw

namespace Hw::Deep {

/// Why, deep down.
enum class Reason : std::uint8_t {
   unknown = 0, ///< nobody knows
};
using enum Reason;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Reason ) noexcept;
constexpr std::string_view vokEnumName( Reason ) noexcept
{
   return "Hw::Deep::Reason";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Reason e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Reason * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Reason e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline Reason ReasonInstance( unsigned code ) { return Vok::Enumeration::ofCode< Reason >( code ); }
inline Reason ReasonInstance( std::string_view name )
{
   return Vok::Enumeration::ofName< Reason >( name );
}

} // namespace Hw::Deep

namespace Sw {

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// How much.
class VOK_EXPORT Level {
 public:
   constexpr Level() noexcept = default;
   /// From its value.
   constexpr explicit Level( std::uint8_t value ) noexcept
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

   /// in steps
   constexpr std::uint8_t value() const noexcept { return value_; }
   void valueIs( std::uint8_t v ) noexcept { value_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Level & other ) const;
   friend constexpr bool operator==( const Level & a, const Level & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Level & v )
   {
      return Vok::ValueType< Level >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Sw::Level";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Level::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint8_t value_ = 0;
};

constexpr bool Level::isEq( const Level & other ) const
{
   return Vok::equalFields( *this, other );
}

} // namespace Sw

namespace Hw::Deep {

/// Both reasons.
class VOK_EXPORT Pair {
 public:
   constexpr Pair() noexcept = default;
   /// From its fields, in declared order.
   constexpr Pair( Reason mine, Sw::Reason other ) noexcept
         : mine_( mine ),
           other_( other )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Pair( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Pair( Log * log )
   {
      vokDecode( *log );
   }

   /// of this namespace
   constexpr Reason mine() const noexcept { return mine_; }
   void mineIs( Reason v ) noexcept { mine_ = v; }
   /// of another
   constexpr Sw::Reason other() const noexcept { return other_; }
   void otherIs( Sw::Reason v ) noexcept { other_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Pair & other ) const;
   friend constexpr bool operator==( const Pair & a, const Pair & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Pair & v ) { return Vok::ValueType< Pair >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Hw::Deep::Pair";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "mine", &Pair::mine_ },
            Vok::Field{ "other", &Pair::other_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   Reason mine_ = Reason::unknown;
   Sw::Reason other_ = Sw::Reason::unknown;
};

constexpr bool Pair::isEq( const Pair & other ) const
{
   return Vok::equalFields( *this, other );
}

} // namespace Hw::Deep

namespace Hw {

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

/// Refers to a type of the next namespace.
class VOK_EXPORT Status : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Status >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId reasonAttrId = 258;
   static constexpr Vok::AttrId levelAttrId = 259;

   /// A new Status with this name, without a parent.
   static Corvo::Ptr< Status > StatusIs( const Corvo::String & name );

   /// why
   Sw::Reason reason() const noexcept;
   void reasonIs( Sw::Reason v );

   /// how much
   const Sw::Level & level() const noexcept;
   void levelIs( const Sw::Level & v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Status( const Corvo::String & name );
   ~Status() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Sw::Reason reason_ = Sw::Reason::unknown;
   Sw::Level level_;
};

/// The same as Status::StatusIs().
inline Corvo::Ptr< Status > statusFactory( const Corvo::String & name )
{
   return Status::StatusIs( name );
}

} // namespace Hw

namespace Sw {

/// Of the same name.
class VOK_EXPORT Status : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Status >;

   /// A new Status with this name, without a parent.
   static Corvo::Ptr< Status > StatusIs( const Corvo::String & name );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Status( const Corvo::String & name );
   ~Status() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
};

/// The same as Status::StatusIs().
inline Corvo::Ptr< Status > statusFactory( const Corvo::String & name )
{
   return Status::StatusIs( name );
}

} // namespace Sw

namespace Hw {

// ---- Inline members -----------------------------------------------------------------------------

inline Sw::Reason Status::reason() const noexcept { return reason_; }
inline void Status::reasonIs( Sw::Reason v )
{
   Vok::Attribute::plainIs( *this, reasonAttrId, reason_, v );
}

inline const Sw::Level & Status::level() const noexcept { return level_; }
inline void Status::levelIs( const Sw::Level & v )
{
   Vok::Attribute::plainIs( *this, levelAttrId, level_, v );
}

} // namespace Hw

template<> struct std::hash< Sw::Level > : Vok::ValueHash< Sw::Level > {
};
template<> struct std::hash< Hw::Deep::Pair > : Vok::ValueHash< Hw::Deep::Pair > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
