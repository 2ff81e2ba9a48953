// Made by vokgen from Sample.vok. Do not edit.
//
// References to entities that are owned elsewhere.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Tree;
class Numbered;
class Root;

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A number.
class VOK_EXPORT Id {
 public:
   constexpr Id() noexcept = default;
   /// From its value.
   constexpr explicit Id( std::uint32_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Id( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Id( Log * log )
   {
      vokDecode( *log );
   }

   /// the number
   constexpr std::uint32_t value() const noexcept { return value_; }
   void valueIs( std::uint32_t v ) noexcept { value_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Id & other ) const;
   friend constexpr bool operator==( const Id & a, const Id & b ) { return a.isEq( b ); }
   /// Field by field, in declared order.
   friend constexpr bool operator<( const Id & a, const Id & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Id & v ) { return Vok::ValueType< Id >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Id";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Id::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 0;
};

constexpr bool Id::isEq( const Id & other ) const
{
   return Vok::equalFields( *this, other );
}
constexpr bool operator<( const Id & a, const Id & b )
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

/// Known by name.
class VOK_EXPORT Tree : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Tree >;

   /// A new Tree with this name, without a parent.
   static Corvo::Ptr< Tree > TreeIs( const Corvo::String & name );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Tree( const Corvo::String & name );
   ~Tree() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
};

/// The same as Tree::TreeIs().
inline Corvo::Ptr< Tree > treeFactory( const Corvo::String & name )
{
   return Tree::TreeIs( name );
}

/// Known by number.
class VOK_EXPORT Numbered : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Numbered >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId idAttrId = 258;

   /// A new Numbered with this id, without a parent.
   static Corvo::Ptr< Numbered > NumberedIs( const Id & id );

   /// Known by number.
   const Id & id() const noexcept;

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Numbered( const Id & id );
   ~Numbered() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Id & id );

   Id id_;
};

/// The same as Numbered::NumberedIs().
inline Corvo::Ptr< Numbered > numberedFactory( const Id & id )
{
   return Numbered::NumberedIs( id );
}

/// References.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Keys and nodes of the collections: for the framework.
   struct TreesKeyFunktor {
      const Corvo::String & operator()( const Tree & v ) const noexcept;
   };
   using HN_Trees = Vok::ChildNode< const Tree, TreesKeyFunktor, 0x325455d2 >;
   struct NumbersKeyFunktor {
      const Id & operator()( const Numbered & v ) const noexcept;
   };
   using VokNumbers = Vok::ChildNode< const Numbered, NumbersKeyFunktor, 0 >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId treesAttrId = 258;
   static constexpr Vok::AttrId numbersAttrId = 259;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// by name. Key: name() of what is referred to.
   Vok::HashView< HN_Trees > trees() const noexcept;
   Corvo::Ptr< const Tree > trees( std::string_view key ) const;
   /// Throws Corvo::NullPointerException for an empty pointer.
   void treesIs( const Corvo::Ptr< const Tree > & v );
   Corvo::Ptr< const Tree > treesDel( std::string_view key );
   void treesDelAll();

   /// in order. Key: id() of what is referred to.
   Vok::OrderedView< VokNumbers > numbers() const noexcept;
   Corvo::Ptr< const Numbered > numbers( const Id & key ) const;
   /// Throws Corvo::NullPointerException for an empty pointer.
   void numbersIs( const Corvo::Ptr< const Numbered > & v );
   Corvo::Ptr< const Numbered > numbersDel( const Id & key );
   void numbersDelAll();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Vok::HashMap2018< HN_Trees, Corvo::String, Corvo::Ptr< const Tree > > trees_;
   Vok::OrderedMap< VokNumbers, Id, Corvo::Ptr< const Numbered > > numbers_;
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline const Id & Numbered::id() const noexcept { return id_; }

inline const Corvo::String & Root::TreesKeyFunktor::operator()( const Tree & v ) const noexcept
{
   return v.name();
}
inline Vok::HashView< Root::HN_Trees > Root::trees() const noexcept
{
   return Vok::HashView< HN_Trees >( trees_ );
}
inline Corvo::Ptr< const Tree > Root::trees( std::string_view key ) const
{
   return Vok::Collection::pointer( trees_, key );
}

inline const Id & Root::NumbersKeyFunktor::operator()( const Numbered & v ) const noexcept
{
   return v.id();
}
inline Vok::OrderedView< Root::VokNumbers > Root::numbers() const noexcept
{
   return Vok::OrderedView< VokNumbers >( numbers_ );
}
inline Corvo::Ptr< const Numbered > Root::numbers( const Id & key ) const
{
   return Vok::Collection::pointer( numbers_, key );
}

} // namespace Test

template<> struct std::hash< Test::Id > : Vok::ValueHash< Test::Id > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
