// Made by vokgen from Sample.vok. Do not edit.
//
// Single children.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Leaf;
class Bare;
class Root;

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

/// With a name.
class VOK_EXPORT Leaf : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Leaf >;

   /// A new Leaf with this name, without a parent.
   static Corvo::Ptr< Leaf > LeafIs( const Corvo::String & name );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Leaf( const Corvo::String & name );
   ~Leaf() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
};

/// The same as Leaf::LeafIs().
inline Corvo::Ptr< Leaf > leafFactory( const Corvo::String & name )
{
   return Leaf::LeafIs( name );
}

/// Without one.
class VOK_EXPORT Bare : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Bare >;

   /// A new Bare, without a parent.
   static Corvo::Ptr< Bare > BareIs();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   Bare();
   ~Bare() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate();
};

/// The same as Bare::BareIs().
inline Corvo::Ptr< Bare > bareFactory()
{
   return Bare::BareIs();
}

/// Single children.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId singleAttrId = 258;
   static constexpr Vok::AttrId onlyAttrId = 259;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// there or not. Null where there is none.
   Corvo::Ptr< Leaf > single() const noexcept;
   /// Where the child exists, another name replaces it.
   Corvo::Ptr< Leaf > singleIs( const Corvo::String & name );
   Corvo::Ptr< Leaf > singleDel();

   /// made by the constructor. Made with its owner; null where it was deleted.
   Corvo::Ptr< Bare > only() const noexcept;
   Corvo::Ptr< Bare > onlyIs();
   Corvo::Ptr< Bare > onlyDel();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Corvo::Ptr< Leaf > single_;
   Corvo::Ptr< Bare > only_;
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline Corvo::Ptr< Leaf > Root::single() const noexcept { return single_; }

inline Corvo::Ptr< Bare > Root::only() const noexcept { return only_; }

} // namespace Test

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
