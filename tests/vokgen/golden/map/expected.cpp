// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Pair ---------------------------------------------------------------------------------------

Pair::Pair( std::uint32_t id, Corvo::String text )
      : id_( id ),
        text_( std::move( text ) )
{
}

Pair::Pair( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Pair::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Root ---------------------------------------------------------------------------------------

Root::Root( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Root::~Root() = default;

Corvo::Ptr< Root > Root::RootIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Root >( name );
}

void Root::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

void Root::namesIs( std::uint32_t key, const Corvo::String & value )
{
   Vok::Attribute::mapIs( *this, namesAttrId, names_, key, value );
}

Corvo::String Root::namesDel( std::uint32_t key )
{
   return Vok::Attribute::mapDel( *this, namesAttrId, names_, key );
}

void Root::namesDelAll()
{
   Vok::Attribute::delAll( *this, namesAttrId, names_ );
}

void Root::byNameIs( const Corvo::String & key, const Pair & value )
{
   Vok::Attribute::mapIs( *this, byNameAttrId, byName_, key, value );
}

void Root::vokByNameIs( std::string_view key, const Pair & value )
{
   Vok::Attribute::mapIs( *this, byNameAttrId, byName_, key, value );
}

Pair Root::byNameDel( std::string_view key )
{
   return Vok::Attribute::mapDel( *this, byNameAttrId, byName_, key );
}

void Root::byNameDelAll()
{
   Vok::Attribute::delAll( *this, byNameAttrId, byName_ );
}

void Root::pairsIs( const Pair & value )
{
   Vok::Attribute::keyedIs( *this, pairsAttrId, pairs_, value );
}

Pair Root::pairsDel( std::uint32_t key )
{
   return Vok::Attribute::mapDel( *this, pairsAttrId, pairs_, key );
}

void Root::pairsDelAll()
{
   Vok::Attribute::delAll( *this, pairsAttrId, pairs_ );
}

void Root::textsIs( const Pair & value )
{
   Vok::Attribute::keyedIs( *this, textsAttrId, texts_, value );
}

Pair Root::textsDel( std::string_view key )
{
   return Vok::Attribute::mapDel( *this, textsAttrId, texts_, key );
}

void Root::textsDelAll()
{
   Vok::Attribute::delAll( *this, textsAttrId, texts_ );
}

void Root::sortedIs( const Pair & value )
{
   Vok::Attribute::keyedIs( *this, sortedAttrId, sorted_, value );
}

Pair Root::sortedDel( std::uint32_t key )
{
   return Vok::Attribute::mapDel( *this, sortedAttrId, sorted_, key );
}

void Root::sortedDelAll()
{
   Vok::Attribute::delAll( *this, sortedAttrId, sorted_ );
}

void Root::stepsIs( const Pair & key, bool value )
{
   Vok::Attribute::mapIs( *this, stepsAttrId, steps_, key, value );
}

bool Root::stepsDel( const Pair & key )
{
   return Vok::Attribute::mapDel( *this, stepsAttrId, steps_, key );
}

void Root::stepsDelAll()
{
   Vok::Attribute::delAll( *this, stepsAttrId, steps_ );
}

} // namespace Test
