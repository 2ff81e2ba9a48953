// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Port ---------------------------------------------------------------------------------------

Port::Port( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Port::vokDecode( Vok::NboAttrLog::In & log )
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

void Root::numbersIs( std::uint32_t key )
{
   Vok::Attribute::setIs( *this, numbersAttrId, numbers_, key );
}

void Root::numbersDel( std::uint32_t key )
{
   Vok::Attribute::setDel( *this, numbersAttrId, numbers_, key );
}

void Root::numbersDelAll()
{
   Vok::Attribute::delAll( *this, numbersAttrId, numbers_ );
}

void Root::wordsIs( const Corvo::String & key )
{
   Vok::Attribute::setIs( *this, wordsAttrId, words_, key );
}

void Root::vokWordsIs( std::string_view key )
{
   Vok::Attribute::setIs( *this, wordsAttrId, words_, key );
}

void Root::wordsDel( std::string_view key )
{
   Vok::Attribute::setDel( *this, wordsAttrId, words_, key );
}

void Root::wordsDelAll()
{
   Vok::Attribute::delAll( *this, wordsAttrId, words_ );
}

void Root::portsIs( const Port & key )
{
   Vok::Attribute::setIs( *this, portsAttrId, ports_, key );
}

void Root::portsDel( const Port & key )
{
   Vok::Attribute::setDel( *this, portsAttrId, ports_, key );
}

void Root::portsDelAll()
{
   Vok::Attribute::delAll( *this, portsAttrId, ports_ );
}

} // namespace Test
