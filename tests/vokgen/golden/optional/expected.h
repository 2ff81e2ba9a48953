// Made by vokgen from Sample.vok. Do not edit.
//
// Optional attributes, however they are stored.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Root;

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A number.
class VOK_EXPORT Size {
 public:
   constexpr Size() noexcept = default;
   /// From its value.
   constexpr explicit Size( std::uint16_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Size( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Size( Log * log )
   {
      vokDecode( *log );
   }

   /// bytes
   constexpr std::uint16_t value() const noexcept { return value_; }
   void valueIs( std::uint16_t v ) noexcept { value_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Size & other ) const;
   friend constexpr bool operator==( const Size & a, const Size & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Size & v ) { return Vok::ValueType< Size >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Size";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Size::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t value_ = 1024;
};

constexpr bool Size::isEq( const Size & other ) const
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

/// Optionals.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId maybeAttrId = 258;
   static constexpr Vok::AttrId maybeIntAttrId = 259;
   static constexpr Vok::AttrId maybeBitAttrId = 260;
   static constexpr Vok::AttrId maybeWordAttrId = 261;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// a value
   Vok::Optional< Size > maybe() const;
   void maybeIs( const Vok::Optional< Size > & v );

   /// a number
   Vok::Optional< std::uint32_t > maybeInt() const;
   void maybeIntIs( const Vok::Optional< std::uint32_t > & v );

   /// one byte
   Vok::Optional< bool > maybeBit() const;
   void maybeBitIs( const Vok::Optional< bool > & v );

   /// one word. 0 is stored, and given, as no value.
   Vok::Optional< Size > maybeWord() const;
   void maybeWordIs( const Vok::Optional< Size > & v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Vok::Optional< Size > maybe_;
   Vok::Optional< std::uint32_t > maybeInt_;
   Vok::Optional< bool > maybeBit_;
   Vok::OptionalWord< Size, 0 > maybeWord_;
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline Vok::Optional< Size > Root::maybe() const { return maybe_; }
inline void Root::maybeIs( const Vok::Optional< Size > & v )
{
   Vok::Attribute::plainIs( *this, maybeAttrId, maybe_, v );
}

inline Vok::Optional< std::uint32_t > Root::maybeInt() const { return maybeInt_; }
inline void Root::maybeIntIs( const Vok::Optional< std::uint32_t > & v )
{
   Vok::Attribute::plainIs( *this, maybeIntAttrId, maybeInt_, v );
}

inline Vok::Optional< bool > Root::maybeBit() const { return maybeBit_; }
inline void Root::maybeBitIs( const Vok::Optional< bool > & v )
{
   Vok::Attribute::plainIs( *this, maybeBitAttrId, maybeBit_, v );
}

inline Vok::Optional< Size > Root::maybeWord() const { return maybeWord_; }
inline void Root::maybeWordIs( const Vok::Optional< Size > & v )
{
   Vok::Attribute::plainIs( *this, maybeWordAttrId, maybeWord_, v );
}

} // namespace Test

template<> struct std::hash< Test::Size > : Vok::ValueHash< Test::Size > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
