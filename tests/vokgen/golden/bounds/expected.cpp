// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Level --------------------------------------------------------------------------------------

Level::Level( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Level::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Rate ---------------------------------------------------------------------------------------

Rate::Rate( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Rate::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- TemplateId ---------------------------------------------------------------------------------

TemplateId::TemplateId( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void TemplateId::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Weight -------------------------------------------------------------------------------------

Weight::Weight( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Weight::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Timeout ------------------------------------------------------------------------------------

Timeout::Timeout( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Timeout::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

void Timeout::validate() const
{
   if ( value_ != 0 && ( value_ < 100 || value_ > 1000 ) ) {
      Corvo::RangeException::throwException( "value is out of bounds" );
   }
}

// ---- Size ---------------------------------------------------------------------------------------

Size::Size( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Size::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Interval -----------------------------------------------------------------------------------

Interval::Interval( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Interval::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Root ---------------------------------------------------------------------------------------

Root::Root( const Corvo::String & name )
      : Vok::Entity( name )
{
   timeout_.validate();
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

void Root::checkAgents( std::uint8_t v )
{
   if ( v < 1 || v > 8 ) {
      Corvo::RangeException::throwException(
            "Test::Root::agents < 1 or > (Test::Level::top - 2) not allowed" );
   }
}

void Root::checkPattern( const TemplateId & v )
{
   if ( v.value() < 256 || v.value() > 400 ) {
      Corvo::RangeException::throwException( "Test::Root::pattern < 256 or > 400 not allowed" );
   }
}

} // namespace Test
