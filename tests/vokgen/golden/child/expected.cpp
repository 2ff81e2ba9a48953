// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Leaf ---------------------------------------------------------------------------------------

Leaf::Leaf( const Corvo::String & name )
      : Vok::Entity( name )
{
}

Leaf::~Leaf() = default;

Corvo::Ptr< Leaf > Leaf::LeafIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< Leaf >( name );
}

void Leaf::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

// ---- Bare ---------------------------------------------------------------------------------------

Bare::Bare()
      : Vok::Entity()
{
}

Bare::~Bare() = default;

Corvo::Ptr< Bare > Bare::BareIs()
{
   return Vok::Detail::EntityAccess::make< Bare >();
}

void Bare::vokReinstantiate()
{
}

// ---- Root ---------------------------------------------------------------------------------------

Root::Root( const Corvo::String & name )
      : Vok::Entity( name )
{
   onlyIs();
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

Corvo::Ptr< Leaf > Root::singleIs( const Corvo::String & name )
{
   return Vok::Attribute::singleIs( *this, singleAttrId, single_, name );
}

Corvo::Ptr< Leaf > Root::singleDel()
{
   return Vok::Attribute::singleDel( *this, singleAttrId, single_ );
}

Corvo::Ptr< Bare > Root::onlyIs()
{
   return Vok::Attribute::singleIs( *this, onlyAttrId, only_ );
}

Corvo::Ptr< Bare > Root::onlyDel()
{
   return Vok::Attribute::singleDel( *this, onlyAttrId, only_ );
}

} // namespace Test
