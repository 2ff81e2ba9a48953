// Codes and names of enumerations, and what is said of those that are none.
#include "Vok/EnumTable.h"

#include "Vok/Assert.h"
#include "Vok/Exceptions.h"
#include "Vok/TextOut.h"

#include <string>

namespace Vok::Detail {

namespace {

std::string lacks( const EnumTable & table, std::string_view what )
{
   std::string message( table.name );
   message.append( " has no enumerator " ).append( what );
   return message;
}

std::string quoted( std::string_view name )
{
   TextOut out;
   out.putString( name );
   return "named " + std::string( out.view() );
}

} // namespace

const char * enumName( const EnumTable & table, std::uint32_t code )
{
   const Enumerator * const e = table.byCode( code );
   if ( !e ) {
      assertionFailed( "Vok/EnumTable", __LINE__, "stringValue", "enumerator",
            lacks( table, "with code " + std::to_string( code ) ) );
   }
   return e->name.data();
}

std::uint32_t enumInstance( const EnumTable & table, std::uint64_t code )
{
   const Enumerator * const e =
         code <= UINT32_MAX ? table.byCode( static_cast< std::uint32_t >( code ) ) : nullptr;
   if ( !e ) {
      throw Corvo::EnumRangeException( lacks( table, "with code " + std::to_string( code ) ) );
   }
   return e->code;
}

std::uint32_t enumInstance( const EnumTable & table, std::string_view name )
{
   const Enumerator * const e = table.byName( name );
   if ( !e ) {
      throw Corvo::EnumRangeException( lacks( table, quoted( name ) ) );
   }
   return e->code;
}

std::uint32_t enumFromText( const EnumTable & table, CharRange & range )
{
   const std::size_t before = range.offset();
   const std::string_view name = range.word();
   if ( const Enumerator * const e = table.byName( name ) ) {
      return e->code;
   }
   range.backTo( before );
   throw Corvo::EnumRangeException( lacks( table, quoted( name ) ) );
}

std::uint32_t enumFromLog( const EnumTable & table, std::uint32_t code )
{
   if ( !table.byCode( code ) ) {
      throw NboAttrLog::Exception( lacks( table, "with code " + std::to_string( code ) ) );
   }
   return code;
}

} // namespace Vok::Detail
