// Made by vokgen from Sample.vok. Do not edit.
//
// A module that uses two others.
#pragma once

#include "Vok/Generated.h"

#include "Colours.h"
#include "Shapes.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Picture;

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

/// Holds what other modules define.
class VOK_EXPORT Picture : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Picture >;

   // Keys and nodes of the collections: for the framework.
   struct ShapesKeyFunktor {
      const Corvo::String & operator()( const Shape::Square & v ) const noexcept;
   };
   using HN_Shapes = Vok::ChildNode< Shape::Square, ShapesKeyFunktor, 0xaceb56bb >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId colourAttrId = 258;
   static constexpr Vok::AttrId sizeAttrId = 259;
   static constexpr Vok::AttrId shapesAttrId = 260;

   /// A new Picture with this name, without a parent.
   static Corvo::Ptr< Picture > PictureIs( const Corvo::String & name );

   /// an enumeration of another module
   Paint::Colour colour() const noexcept;
   void colourIs( Paint::Colour v );

   /// and its bounds
   const Shape::Size & size() const noexcept;
   /// Throws Corvo::RangeException unless v is in Shape::Size::least (1) to Shape::Size::most
   /// (9).
   void sizeIs( const Shape::Size & v );

   /// entities of another module. Key: name() of the child.
   Vok::HashView< HN_Shapes > shapes() const noexcept;
   Corvo::Ptr< Shape::Square > shapes( std::string_view key ) const;
   Corvo::Ptr< Shape::Square > shapesIs( const Corvo::String & name );
   Corvo::Ptr< Shape::Square > shapesDel( std::string_view key );
   void shapesDelAll();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Picture( const Corvo::String & name );
   ~Picture() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
   static void checkSize( const Shape::Size & v );

   Paint::Colour colour_ = Paint::Colour::black;
   Shape::Size size_ = Shape::Size( 3 );
   Vok::HashMap2018< HN_Shapes, Corvo::String, Corvo::Ptr< Shape::Square > > shapes_;
};

/// The same as Picture::PictureIs().
inline Corvo::Ptr< Picture > pictureFactory( const Corvo::String & name )
{
   return Picture::PictureIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline Paint::Colour Picture::colour() const noexcept { return colour_; }
inline void Picture::colourIs( Paint::Colour v )
{
   Vok::Attribute::plainIs( *this, colourAttrId, colour_, v );
}

inline const Shape::Size & Picture::size() const noexcept { return size_; }
inline void Picture::sizeIs( const Shape::Size & v )
{
   Vok::Attribute::plainIs( *this, sizeAttrId, size_, v, &Picture::checkSize );
}

inline const Corvo::String & Picture::ShapesKeyFunktor::operator()(
      const Shape::Square & v ) const noexcept
{
   return v.name();
}
inline Vok::HashView< Picture::HN_Shapes > Picture::shapes() const noexcept
{
   return Vok::HashView< HN_Shapes >( shapes_ );
}
inline Corvo::Ptr< Shape::Square > Picture::shapes( std::string_view key ) const
{
   return Vok::Collection::pointer( shapes_, key );
}

} // namespace Test

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
