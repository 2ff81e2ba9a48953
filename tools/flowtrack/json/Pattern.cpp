// Reflection does not tell the rules of texts that are read by hand: those of the platform's types
// are here.
#include "tools/flowtrack/json/Pattern.h"

#include <vector>

namespace FlowtrackJson {

namespace {

std::string digits( char from, char to )
{
   if ( from == to ) {
      return std::string( 1, from );
   }
   return std::string( "[" ) + from + "-" + to + "]";
}

std::string anyDigits( std::size_t count )
{
   return count == 0 ? "" : count == 1 ? "[0-9]"
                                       : "[0-9]{" + std::to_string( count ) + "}";
}

/// Numbers of one length, from one to the other.
void sameLength( const std::string & from, const std::string & to, const std::string & head,
      std::vector< std::string > & found )
{
   if ( from.empty() ) {
      found.push_back( head );
      return;
   }
   const std::size_t rest = from.size() - 1;
   if ( from[ 0 ] == to[ 0 ] ) {
      sameLength( from.substr( 1 ), to.substr( 1 ), head + from[ 0 ], found );
      return;
   }
   char first = from[ 0 ];
   char last = to[ 0 ];
   if ( from.substr( 1 ) != std::string( rest, '0' ) ) {
      sameLength( from.substr( 1 ), std::string( rest, '9' ), head + first, found );
      ++first;
   }
   const bool whole = to.substr( 1 ) == std::string( rest, '9' );
   if ( !whole ) {
      --last;
   }
   if ( first <= last ) {
      found.push_back( head + digits( first, last ) + anyDigits( rest ) );
   }
   if ( !whole ) {
      sameLength( std::string( rest, '0' ), to.substr( 1 ), head + to[ 0 ], found );
   }
}

std::string alternatives( const std::vector< std::string > & patterns )
{
   std::string text;
   for ( const std::string & pattern : patterns ) {
      text += ( text.empty() ? "" : "|" ) + pattern;
   }
   return patterns.size() == 1 ? text : "(" + text + ")";
}

std::string ipv4Pattern()
{
   const std::string part = decimalPattern( 0, 255 );
   return part + "(\\." + part + "){3}";
}

/// The forms of RFC 4291, section 2.2, by where the gap stands.
std::string ipv6Pattern()
{
   const std::string h = "[0-9A-Fa-f]{1,4}";
   const std::string last = "(" + h + ":" + h + "|" + ipv4Pattern() + ")";
   std::vector< std::string > forms = { "(" + h + ":){6}" + last, "::(" + h + ":){5}" + last,
      "(" + h + ")?::(" + h + ":){4}" + last };
   for ( unsigned before = 1; before != 5; ++before ) {
      std::string form = "((";
      form.append( h ).append( ":){0," ).append( std::to_string( before ) ).append( "}" );
      form.append( h ).append( ")?::" );
      if ( const unsigned behind = 4 - before; behind != 0 ) {
         form.append( "(" ).append( h ).append( ":){" ).append( std::to_string( behind ) );
         form.append( "}" );
      }
      forms.push_back( form + last );
   }
   forms.push_back( "((" + h + ":){0,5}" + h + ")?::" + h );
   forms.push_back( "((" + h + ":){0,6}" + h + ")?::" );
   return alternatives( forms );
}

} // namespace

std::string decimalPattern( std::uint64_t least, std::uint64_t most )
{
   std::vector< std::string > found;
   const std::string last = std::to_string( most );
   std::string from = std::to_string( least );
   for ( ; from.size() != last.size(); from = "1" + std::string( from.size(), '0' ) ) {
      sameLength( from, std::string( from.size(), '9' ), "", found );
   }
   sameLength( from, last, "", found );
   return alternatives( found );
}

std::string textPattern( const Shape & shape )
{
   if ( shape.typeName == "Wyre::IpAddr" ) {
      return ipv4Pattern();
   }
   if ( shape.typeName == "Wyre::Ip6Addr" ) {
      return ipv6Pattern();
   }
   if ( shape.typeName == "Wyre::IpGenAddr" ) {
      return "(" + ipv4Pattern() + "|" + ipv6Pattern() + ")?";
   }
   return "";
}

} // namespace FlowtrackJson
