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

// ---- Tree ---------------------------------------------------------------------------------------

Tree::Tree( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Tree::~Tree() = default;

Corvo::Ptr< Tree > Tree::TreeIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Tree >( name );
}

void Tree::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

Corvo::Ptr< Tree > Tree::kidsIs( const Corvo::String & name )
{
   return Vok::Attribute::childIs( *this, kidsAttrId, kids_, name, name );
}

Corvo::Ptr< Tree > Tree::kidsDel( std::string_view key )
{
   return Vok::Attribute::childDel( *this, kidsAttrId, kids_, key );
}

void Tree::kidsDelAll()
{
   Vok::Attribute::childDelAll( *this, kidsAttrId, kids_ );
}

// ---- Group --------------------------------------------------------------------------------------

Group::Group( const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight )
      : Vok::Entity( name ),
        seqno_( seqno ),
        weight_( weight )
{
}

Group::~Group() = default;

Corvo::Ptr< Group > Group::GroupIs(
      const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight )
{
   return Vok::Detail::EntityAccess::make< Group >( name, seqno, weight );
}

void Group::vokReinstantiate(
      const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
   Vok::Attribute::sameArgument( *this, seqnoAttrId, "seqno", this->seqno(), seqno );
   weightIs( weight );
}

// ---- Slot ---------------------------------------------------------------------------------------

Slot::Slot( const Label & label )
      : Vok::Entity( label.stringValue() ),
        label_( label )
{
}

Slot::~Slot() = default;

Corvo::Ptr< Slot > Slot::SlotIs( const Label & label )
{
   return Vok::Detail::EntityAccess::make< Slot >( label );
}

void Slot::vokReinstantiate( const Label & label )
{
   Vok::Attribute::sameArgument( *this, labelAttrId, "label", this->label(), label );
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

Corvo::Ptr< Group > Root::groupsIs(
      const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight )
{
   return Vok::Attribute::childIs( *this, groupsAttrId, groups_, seqno, name, seqno, weight );
}

Corvo::Ptr< Group > Root::groupsDel( std::uint32_t key )
{
   return Vok::Attribute::childDel( *this, groupsAttrId, groups_, key );
}

void Root::groupsDelAll()
{
   Vok::Attribute::childDelAll( *this, groupsAttrId, groups_ );
}

Corvo::Ptr< Group > Root::namedIs(
      const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight )
{
   return Vok::Attribute::childIs( *this, namedAttrId, named_, name, name, seqno, weight );
}

Corvo::Ptr< Group > Root::namedDel( std::string_view key )
{
   return Vok::Attribute::childDel( *this, namedAttrId, named_, key );
}

void Root::namedDelAll()
{
   Vok::Attribute::childDelAll( *this, namedAttrId, named_ );
}

Corvo::Ptr< Slot > Root::slotsIs( const Label & label )
{
   return Vok::Attribute::childIs( *this, slotsAttrId, slots_, label, label );
}

Corvo::Ptr< Slot > Root::slotsDel( const Label & key )
{
   return Vok::Attribute::childDel( *this, slotsAttrId, slots_, key );
}

void Root::slotsDelAll()
{
   Vok::Attribute::childDelAll( *this, slotsAttrId, slots_ );
}

} // namespace Test
