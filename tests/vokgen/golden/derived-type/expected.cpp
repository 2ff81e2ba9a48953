// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Config -------------------------------------------------------------------------------------

Config::Config( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Config::~Config() = default;

Corvo::Ptr< Config > Config::ConfigIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Config >( name );
}

void Config::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

void Config::checkAgents( std::uint8_t v )
{
   if ( v < 1 || v > 8 ) {
      Corvo::RangeException::throwException( "Test::Config::agents < 1 or > 8 not allowed" );
   }
}

void Config::tagsIs( std::uint32_t key )
{
   Vok::Attribute::setIs( *this, tagsAttrId, tags_, key );
}

void Config::tagsDel( std::uint32_t key )
{
   Vok::Attribute::setDel( *this, tagsAttrId, tags_, key );
}

void Config::tagsDelAll()
{
   Vok::Attribute::delAll( *this, tagsAttrId, tags_ );
}

// ---- MirrorConfig -------------------------------------------------------------------------------

MirrorConfig::MirrorConfig( const Corvo::String & name )
      : Config( name )
{
   checkAgents( agents() );
}

MirrorConfig::~MirrorConfig() = default;

Corvo::Ptr< MirrorConfig > MirrorConfig::MirrorConfigIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< MirrorConfig >( name );
}

} // namespace Test
