// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Address ------------------------------------------------------------------------------------

Address::Address( Vok::CharRange & range )
{
   Vok::readByHand( range, *this );
}

void Address::vokDecode( Vok::NboAttrLog::In & log )
{
   readLog( log );
}

// ---- Range --------------------------------------------------------------------------------------

Range::Range( Vok::CharRange & range )
{
   Vok::readByHand( range, *this );
}

void Range::vokDecode( Vok::NboAttrLog::In & log )
{
   readLog( log );
}

// ---- Host ---------------------------------------------------------------------------------------

Host::Host( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Host::~Host() = default;

Corvo::Ptr< Host > Host::HostIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Host >( name );
}

void Host::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

} // namespace Test
