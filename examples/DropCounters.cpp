// Reading two files of /proc; see proc(5).
#include "DropCounters.h"

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

std::ifstream opened( const char * path )
{
   std::ifstream file( path );
   if ( !file ) {
      throw std::runtime_error( std::string( "cannot read " ) + path );
   }
   return file;
}

} // namespace

DropCounters interfaceDrops()
{
   std::ifstream file = opened( "/proc/net/dev" );
   DropCounters sum{ 0, 0 };
   for ( std::string line; std::getline( file, line ); ) {
      const std::size_t colon = line.find( ':' );
      if ( colon == std::string::npos ) {
         continue; // a heading
      }
      std::istringstream numbers( line.substr( colon + 1 ) );
      std::uint64_t bytes = 0;
      std::uint64_t packets = 0;
      std::uint64_t errors = 0;
      std::uint64_t drops = 0;
      numbers >> bytes >> packets >> errors >> drops;
      sum.packets += packets + drops;
      sum.drops += drops;
   }
   return sum;
}

DropCounters fullBufferDrops()
{
   // A line of names, then a line of numbers, for each protocol.
   std::ifstream file = opened( "/proc/net/snmp" );
   std::map< std::string, std::uint64_t > udp;
   for ( std::string names, numbers;
         std::getline( file, names ) && std::getline( file, numbers ); ) {
      std::istringstream name( names );
      std::istringstream number( numbers );
      std::string key;
      std::string text;
      name >> key;
      number >> text;
      if ( key != "Udp:" ) {
         continue;
      }
      while ( name >> key && number >> text ) {
         udp[ key ] = std::stoull( text );
      }
   }
   return { udp[ "RcvbufErrors" ], udp[ "InDatagrams" ] + udp[ "RcvbufErrors" ] };
}
