// Made by vokgen from Sample.vok. Do not edit.
//
// Values with parts that are written by hand.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Host;

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// An address.
class VOK_EXPORT Address {
 public:
   constexpr Address() noexcept = default;
   /// From its fields, in declared order.
   constexpr Address( std::uint16_t high, std::uint16_t low ) noexcept
         : high_( high ),
           low_( low )
   {
   }
   /// from its text
   explicit Address( const Corvo::String & text );
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from a text throws.
   explicit Address( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Address( Log * log )
   {
      vokDecode( *log );
   }

   /// upper half
   constexpr std::uint16_t high() const noexcept { return high_; }
   /// lower half
   constexpr std::uint16_t low() const noexcept { return low_; }
   /// its text
   Corvo::String stringValue() const;
   /// the address that stands for all
   static Address any();
   /// The attribute log, written by hand.
   std::size_t logSize() const;
   void writeLog( Vok::NboAttrLog::Out & log ) const;
   void readLog( Vok::NboAttrLog::In & log );

   /// Whether all fields are equal.
   constexpr bool isEq( const Address & other ) const;
   friend constexpr bool operator==( const Address & a, const Address & b ) { return a.isEq( b ); }
   /// Field by field, in declared order.
   friend constexpr bool operator<( const Address & a, const Address & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Address & v )
   {
      return Vok::ValueType< Address >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Address";
   using VokHandText = void;
   using VokHandLog = void;
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "high", &Address::high_ },
            Vok::Field{ "low", &Address::low_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t high_ = 0;
   std::uint16_t low_ = 0;
};

constexpr bool Address::isEq( const Address & other ) const
{
   return Vok::equalFields( *this, other );
}
constexpr bool operator<( const Address & a, const Address & b )
{
   return Vok::lessFields( a, b );
}

/// Its fields have to fit together, so that it is not made from them.
class VOK_EXPORT Range {
 public:
   constexpr Range() noexcept = default;
   /// checks that they fit
   Range( std::uint16_t first, std::uint16_t last );
   /// from its text
   explicit Range( const Corvo::String & text );
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from a text throws.
   explicit Range( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Range( Log * log )
   {
      vokDecode( *log );
   }

   /// the first number
   constexpr std::uint16_t first() const noexcept { return first_; }
   /// the last one, which is not below the first
   constexpr std::uint16_t last() const noexcept { return last_; }
   /// its text
   Corvo::String stringValue() const;
   /// The attribute log, written by hand.
   std::size_t logSize() const;
   void writeLog( Vok::NboAttrLog::Out & log ) const;
   void readLog( Vok::NboAttrLog::In & log );

   /// Whether all fields are equal.
   constexpr bool isEq( const Range & other ) const;
   friend constexpr bool operator==( const Range & a, const Range & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Range & v )
   {
      return Vok::ValueType< Range >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Range";
   using VokHandText = void;
   using VokHandLog = void;
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "first", &Range::first_ },
            Vok::Field{ "last", &Range::last_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t first_ = 0;
   std::uint16_t last_ = 0;
};

constexpr bool Range::isEq( const Range & other ) const
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

/// Holds both.
class VOK_EXPORT Host : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Host >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId addressAttrId = 258;
   static constexpr Vok::AttrId rangeAttrId = 259;

   /// A new Host with this name, without a parent.
   static Corvo::Ptr< Host > HostIs( const Corvo::String & name );

   /// its default is the text that the type states
   const Address & address() const noexcept;
   void addressIs( const Address & v );

   /// its default has no text that is known here
   const Range & range() const noexcept;
   void rangeIs( const Range & v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Host( const Corvo::String & name );
   ~Host() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Address address_;
   Range range_;
};

/// The same as Host::HostIs().
inline Corvo::Ptr< Host > hostFactory( const Corvo::String & name )
{
   return Host::HostIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline const Address & Host::address() const noexcept { return address_; }
inline void Host::addressIs( const Address & v )
{
   Vok::Attribute::plainIs( *this, addressAttrId, address_, v );
}

inline const Range & Host::range() const noexcept { return range_; }
inline void Host::rangeIs( const Range & v )
{
   Vok::Attribute::plainIs( *this, rangeAttrId, range_, v );
}

} // namespace Test

template<> struct std::hash< Test::Address > : Vok::ValueHash< Test::Address > {
};
template<> struct std::hash< Test::Range > : Vok::ValueHash< Test::Range > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
