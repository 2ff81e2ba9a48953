// Made by vokgen from Sample.vok. Do not edit.
//
// Sets.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Root;

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A port.
class VOK_EXPORT Port {
 public:
   constexpr Port() noexcept = default;
   /// From its value.
   constexpr explicit Port( std::uint16_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Port( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Port( Log * log )
   {
      vokDecode( *log );
   }

   /// its number
   constexpr std::uint16_t value() const noexcept { return value_; }
   void valueIs( std::uint16_t v ) noexcept { value_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Port & other ) const;
   friend constexpr bool operator==( const Port & a, const Port & b ) { return a.isEq( b ); }
   /// Field by field, in declared order.
   friend constexpr bool operator<( const Port & a, const Port & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Port & v ) { return Vok::ValueType< Port >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Port";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Port::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t value_ = 0;
};

constexpr bool Port::isEq( const Port & other ) const
{
   return Vok::equalFields( *this, other );
}
constexpr bool operator<( const Port & a, const Port & b )
{
   return Vok::lessFields( a, b );
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

/// Sets.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Keys and nodes of the collections: for the framework.
   using HN_Numbers = Vok::SetNode< std::uint32_t, 0x63f864a9 >;
   using HN_Words = Vok::SetNode< Corvo::String, 0x76e81f0a >;
   using VokPorts = Vok::SetNode< Port, 0 >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId numbersAttrId = 258;
   static constexpr Vok::AttrId wordsAttrId = 259;
   static constexpr Vok::AttrId portsAttrId = 260;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// of numbers
   Vok::HashView< HN_Numbers > numbers() const noexcept;
   bool numbers( std::uint32_t key ) const;
   void numbersIs( std::uint32_t key );
   void numbersDel( std::uint32_t key );
   void numbersDelAll();

   /// of texts
   Vok::HashView< HN_Words > words() const noexcept;
   bool words( std::string_view key ) const;
   void wordsIs( const Corvo::String & key );
   template< Corvo::TextBesideString Text >
   void wordsIs( const Text & key ) { vokWordsIs( key ); }
   void wordsDel( std::string_view key );
   void wordsDelAll();

   /// of values, in order
   Vok::OrderedView< VokPorts > ports() const noexcept;
   bool ports( const Port & key ) const;
   void portsIs( const Port & key );
   void portsDel( const Port & key );
   void portsDelAll();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
   void vokWordsIs( std::string_view key );

   Vok::HashMap2018< HN_Numbers, std::uint32_t, std::uint32_t > numbers_;
   Vok::HashMap2018< HN_Words, Corvo::String, Corvo::String > words_;
   Vok::OrderedMap< VokPorts, Port, Port > ports_;
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline Vok::HashView< Root::HN_Numbers > Root::numbers() const noexcept
{
   return Vok::HashView< HN_Numbers >( numbers_ );
}
inline bool Root::numbers( std::uint32_t key ) const
{
   return Vok::Collection::contains( numbers_, key );
}

inline Vok::HashView< Root::HN_Words > Root::words() const noexcept
{
   return Vok::HashView< HN_Words >( words_ );
}
inline bool Root::words( std::string_view key ) const
{
   return Vok::Collection::contains( words_, key );
}

inline Vok::OrderedView< Root::VokPorts > Root::ports() const noexcept
{
   return Vok::OrderedView< VokPorts >( ports_ );
}
inline bool Root::ports( const Port & key ) const
{
   return Vok::Collection::contains( ports_, key );
}

} // namespace Test

template<> struct std::hash< Test::Port > : Vok::ValueHash< Test::Port > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
