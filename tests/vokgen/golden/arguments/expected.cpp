// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Label --------------------------------------------------------------------------------------

Label::Label( Corvo::String stringValue )
      : stringValue_( std::move( stringValue ) )
{
}

Label::Label( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Label::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Number -------------------------------------------------------------------------------------

Number::Number( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Number::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Nothing ------------------------------------------------------------------------------------

Nothing::Nothing()
      : Vok::Entity()
{
}

Nothing::~Nothing() = default;

Corvo::Ptr< Nothing > Nothing::NothingIs()
{
   return Vok::Detail::EntityAccess::make< Nothing >();
}

void Nothing::vokReinstantiate()
{
}

// ---- Host ---------------------------------------------------------------------------------------

Host::Host( const Corvo::String & hostname )
      : Vok::Entity( hostname )
{
}

Host::~Host() = default;

Corvo::Ptr< Host > Host::HostIs( const Corvo::String & hostname )
{
   return Vok::Detail::EntityAccess::make< Host >( hostname );
}

void Host::vokReinstantiate( const Corvo::String & hostname )
{
   Vok::Attribute::sameArgument( *this, hostnameAttrId, "hostname", this->hostname(), hostname );
}

// ---- Slot ---------------------------------------------------------------------------------------

Slot::Slot( const Label & label, std::uint16_t weight )
      : Vok::Entity( label.stringValue() ),
        label_( label ),
        weight_( weight )
{
}

Slot::~Slot() = default;

Corvo::Ptr< Slot > Slot::SlotIs( const Label & label, std::uint16_t weight )
{
   return Vok::Detail::EntityAccess::make< Slot >( label, weight );
}

void Slot::vokReinstantiate( const Label & label, std::uint16_t weight )
{
   Vok::Attribute::sameArgument( *this, labelAttrId, "label", this->label(), label );
   weightIs( weight );
}

// ---- Line ---------------------------------------------------------------------------------------

Line::Line( const Number & number )
      : Vok::Entity( number.stringValue() ),
        number_( number )
{
}

Line::~Line() = default;

Corvo::Ptr< Line > Line::LineIs( const Number & number )
{
   return Vok::Detail::EntityAccess::make< Line >( number );
}

void Line::vokReinstantiate( const Number & number )
{
   Vok::Attribute::sameArgument( *this, numberAttrId, "number", this->number(), number );
}

// ---- Group --------------------------------------------------------------------------------------

Group::Group( const Corvo::String & name, std::uint32_t seqno )
      : Vok::Entity( name ),
        seqno_( seqno )
{
}

Group::~Group() = default;

Corvo::Ptr< Group > Group::GroupIs( const Corvo::String & name, std::uint32_t seqno )
{
   return Vok::Detail::EntityAccess::make< Group >( name, seqno );
}

void Group::vokReinstantiate( const Corvo::String & name, std::uint32_t seqno )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
   Vok::Attribute::sameArgument( *this, seqnoAttrId, "seqno", this->seqno(), seqno );
}

Corvo::Ptr< Group > Group::instantiate() const
{
   return GroupIs( name(), seqno() );
}

// ---- Binding ------------------------------------------------------------------------------------

Binding::Binding( Mode mode, const Corvo::Ptr< const Group > & target )
      : Vok::Entity(),
        mode_( mode ),
        target_( target )
{
}

Binding::~Binding() = default;

Corvo::Ptr< Binding > Binding::BindingIs( Mode mode, const Corvo::Ptr< const Group > & target )
{
   return Vok::Detail::EntityAccess::make< Binding >( mode, target );
}

void Binding::vokReinstantiate( Mode mode, const Corvo::Ptr< const Group > & target )
{
   Vok::Attribute::sameArgument( *this, modeAttrId, "mode", this->mode(), mode );
   Vok::Attribute::sameArgument( *this, targetAttrId, "target", this->target(), target );
}

Corvo::Ptr< Binding > Binding::instantiate() const
{
   return BindingIs( mode(), target() );
}

} // namespace Test
