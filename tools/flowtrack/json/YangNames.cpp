// Names of the model in YANG, and back.
#include "tools/flowtrack/json/Yang.h"

#include <algorithm>

namespace FlowtrackJson {

namespace {

bool isUpper( char c ) { return c >= 'A' && c <= 'Z'; }
bool isLower( char c ) { return c >= 'a' && c <= 'z'; }
char lower( char c ) { return static_cast< char >( c - 'A' + 'a' ); }
char upper( char c ) { return static_cast< char >( c - 'a' + 'A' ); }

} // namespace

std::string yangName( std::string_view name )
{
   std::string yang;
   for ( const char c : name ) {
      yang += isUpper( c ) ? std::string{ '-', lower( c ) } : std::string( 1, c );
   }
   return yang;
}

std::string nameOfYang( std::string_view yang )
{
   std::string name;
   for ( std::size_t i = 0; i != yang.size(); ++i ) {
      const bool capital = yang[ i ] == '-' && i + 1 != yang.size() && isLower( yang[ i + 1 ] );
      name += capital ? upper( yang[ ++i ] ) : yang[ i ];
   }
   return name;
}

/// Types and namespaces start with a capital letter, which needs no hyphen.
std::string yangTypeName( std::string_view name )
{
   std::string yang;
   bool start = true;
   for ( std::size_t i = 0; i != name.size(); ++i ) {
      if ( name[ i ] == ':' ) {
         yang += start ? "" : ".";
         start = true;
      } else {
         yang += start && isUpper( name[ i ] ) ? std::string( 1, lower( name[ i ] ) )
                                               : yangName( name.substr( i, 1 ) );
         start = false;
      }
   }
   return yang;
}

std::string typeNameOfYang( std::string_view yang )
{
   std::string name;
   while ( !yang.empty() ) {
      const std::size_t end = std::min( yang.find( '.' ), yang.size() );
      std::string segment = nameOfYang( yang.substr( 0, end ) );
      if ( !segment.empty() && isLower( segment[ 0 ] ) ) {
         segment[ 0 ] = upper( segment[ 0 ] );
      }
      name += ( name.empty() ? "" : "::" ) + segment;
      yang.remove_prefix( std::min( end + 1, yang.size() ) );
   }
   return name;
}

} // namespace FlowtrackJson
