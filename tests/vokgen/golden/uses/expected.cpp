// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Picture ------------------------------------------------------------------------------------

Picture::Picture( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Picture::~Picture() = default;

Corvo::Ptr< Picture > Picture::PictureIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Picture >( name );
}

void Picture::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

void Picture::checkSize( const Shape::Size & v )
{
   if ( v.value() < 1 || v.value() > 9 ) {
      Corvo::RangeException::throwException(
            "Test::Picture::size < Shape::Size::least or > Shape::Size::most not allowed" );
   }
}

Corvo::Ptr< Shape::Square > Picture::shapesIs( const Corvo::String & name )
{
   return Vok::Attribute::childIs( *this, shapesAttrId, shapes_, name, name );
}

Corvo::Ptr< Shape::Square > Picture::shapesDel( std::string_view key )
{
   return Vok::Attribute::childDel( *this, shapesAttrId, shapes_, key );
}

void Picture::shapesDelAll()
{
   Vok::Attribute::childDelAll( *this, shapesAttrId, shapes_ );
}

} // namespace Test
