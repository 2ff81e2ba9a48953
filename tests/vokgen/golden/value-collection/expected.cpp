// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Id -----------------------------------------------------------------------------------------

Id::Id( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Id::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Field --------------------------------------------------------------------------------------

Field::Field( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Field::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Template -----------------------------------------------------------------------------------

Template::Template( Id id )
      : id_( id )
{
}

Template::Template( Vok::CharRange & )
{
   Vok::noStringConstructor( "Template" );
}

void Template::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

void Template::fieldIs( std::uint32_t key, const Field & value )
{
   Vok::Collection::mapIs( field_, key, value );
}

Field Template::fieldDel( std::uint32_t key )
{
   return Vok::Collection::mapDel( field_, key );
}

void Template::fieldDelAll()
{
   Vok::Collection::delAll( field_ );
}

// ---- Shelf --------------------------------------------------------------------------------------

Shelf::Shelf( Vok::CharRange & )
{
   Vok::noStringConstructor( "Shelf" );
}

void Shelf::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

void Shelf::boxIs( const Corvo::String & key, std::uint32_t value )
{
   Vok::Collection::mapIs( box_, key, value );
}

void Shelf::vokBoxIs( std::string_view key, std::uint32_t value )
{
   Vok::Collection::mapIs( box_, key, value );
}

std::uint32_t Shelf::boxDel( std::string_view key )
{
   return Vok::Collection::mapDel( box_, key );
}

void Shelf::boxDelAll()
{
   Vok::Collection::delAll( box_ );
}

void Shelf::tagsIs( std::uint16_t key )
{
   Vok::Collection::setIs( tags_, key );
}

void Shelf::tagsDel( std::uint16_t key )
{
   Vok::Collection::setDel( tags_, key );
}

void Shelf::tagsDelAll()
{
   Vok::Collection::delAll( tags_ );
}

void Shelf::partsIs( const Field & value )
{
   Vok::Collection::keyedIs( parts_, value );
}

Field Shelf::partsDel( std::uint32_t key )
{
   return Vok::Collection::mapDel( parts_, key );
}

void Shelf::partsDelAll()
{
   Vok::Collection::delAll( parts_ );
}

} // namespace Test
