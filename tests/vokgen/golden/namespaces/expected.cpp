// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Sw {

// ---- Level --------------------------------------------------------------------------------------

Level::Level( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Level::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

} // namespace Sw

namespace Hw {

// ---- Status -------------------------------------------------------------------------------------

Status::Status( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Status::~Status() = default;

Corvo::Ptr< Status > Status::StatusIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Status >( name );
}

void Status::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

} // namespace Hw

namespace Sw {

// ---- Status -------------------------------------------------------------------------------------

Status::Status( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Status::~Status() = default;

Corvo::Ptr< Status > Status::StatusIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Status >( name );
}

void Status::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

} // namespace Sw

namespace Hw::Deep {

// ---- Pair ---------------------------------------------------------------------------------------

Pair::Pair( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Pair::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

} // namespace Hw::Deep
