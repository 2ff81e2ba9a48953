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

// ---- Numbered -----------------------------------------------------------------------------------

Numbered::Numbered( const Id & id )
      : Vok::Entity(),
        id_( id )
{
}

Numbered::~Numbered() = default;

Corvo::Ptr< Numbered > Numbered::NumberedIs( const Id & id )
{
   return Vok::Detail::EntityAccess::make< Numbered >( id );
}

void Numbered::vokReinstantiate( const Id & id )
{
   Vok::Attribute::sameArgument( *this, idAttrId, "id", this->id(), id );
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

void Root::treesIs( const Corvo::Ptr< const Tree > & v )
{
   Vok::Attribute::referenceIs( *this, treesAttrId, "trees", trees_, v );
}

Corvo::Ptr< const Tree > Root::treesDel( std::string_view key )
{
   return Vok::Attribute::referenceDel( *this, treesAttrId, trees_, key );
}

void Root::treesDelAll()
{
   Vok::Attribute::delAll( *this, treesAttrId, trees_ );
}

void Root::numbersIs( const Corvo::Ptr< const Numbered > & v )
{
   Vok::Attribute::referenceIs( *this, numbersAttrId, "numbers", numbers_, v );
}

Corvo::Ptr< const Numbered > Root::numbersDel( const Id & key )
{
   return Vok::Attribute::referenceDel( *this, numbersAttrId, numbers_, key );
}

void Root::numbersDelAll()
{
   Vok::Attribute::delAll( *this, numbersAttrId, numbers_ );
}

} // namespace Test
