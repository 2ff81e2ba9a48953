// Errors that templates of the framework raise.
#include "Vok/Assert.h"
#include "Vok/AttributeMap.h"
#include "Vok/Exceptions.h"
#include "Vok/NboAttrLog.h"
#include "Vok/TypeData.h"
#include "Vok/ValueType.h"
#include "Vok/detail/StreamOps.h"

#include <string>

namespace Vok {

void noStringConstructor( const char * type )
{
   const std::string message =
         "No String constructor for " + std::string( type ) + " - has collection";
   assertionFailed( "Vok/ValueType", __LINE__, "noStringConstructor", "false", message );
}

void throwMutatorNullPointer( const Entity & entity, AttrId id, std::string_view attribute )
{
   if ( attribute.empty() ) {
      for ( const AttributeData & a : entity.typeData().attributes() ) {
         if ( a.id() == id ) {
            attribute = a.name();
         }
      }
   }
   std::string message( entity.typeData().name() );
   message.append( "::" ).append( attribute ).append( " (attribute " );
   message.append( std::to_string( id ) ).append( ") takes no empty pointer" );
   throw Corvo::NullPointerException( message );
}

void Detail::memberTwice()
{
   throw NboAttrLog::Exception( "a collection in a batch holds a key twice" );
}

} // namespace Vok
