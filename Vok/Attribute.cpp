// Telling of changes, and the errors of instantiating a child anew.
#include "Vok/Attribute.h"

#include "Vok/Exceptions.h"
#include "Vok/TypeData.h"

#include <string>

namespace Vok {

namespace {

[[noreturn]] void refuse( const Entity & entity, AttrId id, std::string_view argument,
      std::string_view oldText, std::string_view newText )
{
   std::string message( entity.typeData().name() );
   message.append( " \"" ).append( entity.name().view() ).append( "\" exists with another " );
   message.append( argument ).append( " (attribute " ).append( std::to_string( id ) );
   message.append( "): old \"" ).append( oldText ).append( "\", new \"" ).append( newText );
   message.append( "\"" );
   throw Corvo::ReinstantiationException( message );
}

std::string_view nameOf( const Entity * entity ) noexcept
{
   return entity ? entity->name().view() : std::string_view();
}

} // namespace

void throwMutatorReinstantiating( const Entity & entity, AttrId id, std::string_view argument,
      std::string_view oldText, std::string_view newText )
{
   refuse( entity, id, argument, oldText, newText );
}

void throwMutatorReinstantiating( const Entity & entity, AttrId id, std::string_view argument,
      const Entity * oldEntity, const Entity * newEntity )
{
   refuse( entity, id, argument, nameOf( oldEntity ), nameOf( newEntity ) );
}

void Impl::throwMutatorReinstVal( const Entity & entity, AttrId id, std::string_view argument,
      const Corvo::String & oldText, const Corvo::String & newText )
{
   refuse( entity, id, argument, oldText.view(), newText.view() );
}

} // namespace Vok
