// Made by vokgen from Sample.vok. Do not edit.
//
// Derived attributes and functions, which are written by hand.
#pragma once

#include "Vok/Generated.h"

#include "Client/Mode.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

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

/// Functions of every kind.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId totalAttrId = 258;
   static constexpr Vok::AttrId pathAttrId = 259;
   static constexpr Vok::AttrId resetAttrId = 260;
   static constexpr Vok::AttrId mottoAttrId = 261;
   static constexpr Vok::AttrId selectAttrId = 262;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// computed
   std::uint32_t total() const;

   /// reads
   Corvo::String path( const Corvo::String & kind, std::uint8_t depth ) const;

   /// changes
   void reset();

   /// gives a text
   Corvo::String motto() const { return "read \"me\""; }

   /// cannot be called with texts
   bool select( const Client::Mode & mode ) const;

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Functions ----------------------------------------------------------------------------------

/// a free function
VOK_EXPORT Corvo::String describe( const Corvo::String & root );

} // namespace Test

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
