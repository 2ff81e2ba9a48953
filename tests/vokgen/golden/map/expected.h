// Made by vokgen from Sample.vok. Do not edit.
//
// Maps with external keys and with keys that are fields.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Root;

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A value.
class VOK_EXPORT Pair {
 public:
   Pair() = default;
   /// From its fields, in declared order.
   Pair( std::uint32_t id, Corvo::String text );
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Pair( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Pair( Log * log )
   {
      vokDecode( *log );
   }

   /// its key
   std::uint32_t id() const noexcept { return id_; }
   void idIs( std::uint32_t v ) noexcept { id_ = v; }
   /// a text
   const Corvo::String & text() const noexcept { return text_; }
   void textIs( const Corvo::String & v ) { text_ = v; }

   /// Whether all fields are equal.
   bool isEq( const Pair & other ) const;
   friend bool operator==( const Pair & a, const Pair & b ) { return a.isEq( b ); }
   /// Field by field, in declared order.
   friend bool operator<( const Pair & a, const Pair & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Pair & v ) { return Vok::ValueType< Pair >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Pair";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "id", &Pair::id_ },
            Vok::Field{ "text", &Pair::text_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t id_ = 0;
   Corvo::String text_;
};

inline bool Pair::isEq( const Pair & other ) const
{
   return Vok::equalFields( *this, other );
}
inline bool operator<( const Pair & a, const Pair & b )
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

/// Maps.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Keys and nodes of the collections: for the framework.
   using HN_Names = Vok::MapNode< std::uint32_t, Corvo::String, 0x0115e60f >;
   using HN_ByName = Vok::MapNode< Corvo::String, Pair, 0x405fdd2f >;
   struct PairsKeyFunktor {
      std::uint32_t operator()( const Pair & v ) const noexcept;
   };
   using HN_Pairs = Vok::KeyedNode< Pair, PairsKeyFunktor, 0x7bcb53e6 >;
   struct TextsKeyFunktor {
      const Corvo::String & operator()( const Pair & v ) const noexcept;
   };
   using HN_Texts = Vok::KeyedNode< Pair, TextsKeyFunktor, 0x58bdb7b7 >;
   struct SortedKeyFunktor {
      std::uint32_t operator()( const Pair & v ) const noexcept;
   };
   using VokSorted = Vok::KeyedNode< Pair, SortedKeyFunktor, 0 >;
   using VokSteps = Vok::MapNode< Pair, bool, 0 >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId namesAttrId = 258;
   static constexpr Vok::AttrId byNameAttrId = 259;
   static constexpr Vok::AttrId pairsAttrId = 260;
   static constexpr Vok::AttrId textsAttrId = 261;
   static constexpr Vok::AttrId sortedAttrId = 262;
   static constexpr Vok::AttrId stepsAttrId = 263;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// external key
   Vok::HashView< HN_Names > names() const noexcept;
   const Corvo::String & names( std::uint32_t key ) const;
   void namesIs( std::uint32_t key, const Corvo::String & value );
   Corvo::String namesDel( std::uint32_t key );
   void namesDelAll();

   /// external text key
   Vok::HashView< HN_ByName > byName() const noexcept;
   const Pair & byName( std::string_view key ) const;
   /// Another name of byName( key ).
   const Pair & byNameGet( std::string_view key ) const;
   void byNameIs( const Corvo::String & key, const Pair & value );
   template< Corvo::TextBesideString Text >
   void byNameIs( const Text & key, const Pair & value ) { vokByNameIs( key, value ); }
   Pair byNameDel( std::string_view key );
   void byNameDelAll();

   /// the key is a field. Key: id() of the value.
   Vok::HashView< HN_Pairs > pairs() const noexcept;
   const Pair & pairs( std::uint32_t key ) const;
   void pairsIs( const Pair & value );
   Pair pairsDel( std::uint32_t key );
   void pairsDelAll();

   /// the key is a text. Key: text() of the value.
   Vok::HashView< HN_Texts > texts() const noexcept;
   const Pair & texts( std::string_view key ) const;
   /// The value under a key, or no value.
   Vok::Optional< Pair > textsGet( std::string_view key ) const;
   void textsIs( const Pair & value );
   Pair textsDel( std::string_view key );
   void textsDelAll();

   /// in order of the key. Key: id() of the value.
   Vok::OrderedView< VokSorted > sorted() const noexcept;
   const Pair & sorted( std::uint32_t key ) const;
   void sortedIs( const Pair & value );
   Pair sortedDel( std::uint32_t key );
   void sortedDelAll();

   /// in order of an external key
   Vok::OrderedView< VokSteps > steps() const noexcept;
   bool steps( const Pair & key ) const;
   void stepsIs( const Pair & key, bool value );
   bool stepsDel( const Pair & key );
   void stepsDelAll();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
   void vokByNameIs( std::string_view key, const Pair & value );

   Vok::HashMap2018< HN_Names, std::uint32_t, Corvo::String > names_;
   Vok::HashMap2018< HN_ByName, Corvo::String, Pair > byName_;
   Vok::HashMap2018< HN_Pairs, std::uint32_t, Pair > pairs_;
   Vok::HashMap2018< HN_Texts, Corvo::String, Pair > texts_;
   Vok::OrderedMap< VokSorted, std::uint32_t, Pair > sorted_;
   Vok::OrderedMap< VokSteps, Pair, bool > steps_;
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline Vok::HashView< Root::HN_Names > Root::names() const noexcept
{
   return Vok::HashView< HN_Names >( names_ );
}
inline const Corvo::String & Root::names( std::uint32_t key ) const
{
   return Vok::Collection::value( names_, key );
}

inline Vok::HashView< Root::HN_ByName > Root::byName() const noexcept
{
   return Vok::HashView< HN_ByName >( byName_ );
}
inline const Pair & Root::byName( std::string_view key ) const
{
   return Vok::Collection::value( byName_, key );
}
inline const Pair & Root::byNameGet( std::string_view key ) const
{
   return Vok::Collection::value( byName_, key );
}

inline std::uint32_t Root::PairsKeyFunktor::operator()( const Pair & v ) const noexcept
{
   return v.id();
}
inline Vok::HashView< Root::HN_Pairs > Root::pairs() const noexcept
{
   return Vok::HashView< HN_Pairs >( pairs_ );
}
inline const Pair & Root::pairs( std::uint32_t key ) const
{
   return Vok::Collection::value( pairs_, key );
}

inline const Corvo::String & Root::TextsKeyFunktor::operator()( const Pair & v ) const noexcept
{
   return v.text();
}
inline Vok::HashView< Root::HN_Texts > Root::texts() const noexcept
{
   return Vok::HashView< HN_Texts >( texts_ );
}
inline const Pair & Root::texts( std::string_view key ) const
{
   return Vok::Collection::value( texts_, key );
}
inline Vok::Optional< Pair > Root::textsGet( std::string_view key ) const
{
   return Vok::Collection::optional( texts_, key );
}

inline std::uint32_t Root::SortedKeyFunktor::operator()( const Pair & v ) const noexcept
{
   return v.id();
}
inline Vok::OrderedView< Root::VokSorted > Root::sorted() const noexcept
{
   return Vok::OrderedView< VokSorted >( sorted_ );
}
inline const Pair & Root::sorted( std::uint32_t key ) const
{
   return Vok::Collection::value( sorted_, key );
}

inline Vok::OrderedView< Root::VokSteps > Root::steps() const noexcept
{
   return Vok::OrderedView< VokSteps >( steps_ );
}
inline bool Root::steps( const Pair & key ) const { return Vok::Collection::value( steps_, key ); }

} // namespace Test

template<> struct std::hash< Test::Pair > : Vok::ValueHash< Test::Pair > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
