// The messages that the exceptions of the framework put together themselves.
#include "Vok/Exceptions.h"

namespace Corvo {

namespace {

std::string joined( std::string_view attribute, std::string_view fieldMessage )
{
   std::string text( "attribute " );
   text.append( attribute ).append( ": " ).append( fieldMessage );
   return text;
}

} // namespace

void RangeException::throwException( const char * message )
{
   throw RangeException( message );
}

DeserializationException::DeserializationException(
      std::string_view attribute, std::string_view fieldMessage )
      : RangeException( joined( attribute, fieldMessage ) ),
        attribute_( attribute )
{
}

DeserializationException::DeserializationException( std::string_view message )
      : RangeException( std::string( message ) )
{
}

ParseException::ParseException( const std::string & message, std::size_t offset )
      : std::runtime_error( message ),
        offset_( offset )
{
}

} // namespace Corvo
