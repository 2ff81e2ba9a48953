// Columns, by the characters that a terminal shows.
#include "tools/flowtrack/Table.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <utility>

namespace Flowtrack {

namespace {

/// Characters of UTF-8: bytes but for continuations.
std::size_t width( const std::string & text )
{
   return static_cast< std::size_t >( std::count_if( text.begin(), text.end(),
         []( char c ) { return ( static_cast< unsigned char >( c ) & 0xc0U ) != 0x80U; } ) );
}

void printRow( std::ostream & out, const std::vector< std::string > & row,
      const std::vector< std::size_t > & widths )
{
   std::string line;
   for ( std::size_t i = 0; i != row.size(); ++i ) {
      line.append( row[ i ] ).append( widths[ i ] - width( row[ i ] ) + 2, ' ' );
   }
   line.erase( line.find_last_not_of( ' ' ) + 1 );
   out << line;
}

} // namespace

void Table::dropEmptyColumns()
{
   for ( std::size_t i = heading_.size(); i-- != 0; ) {
      const bool used = std::any_of( rows_.begin(), rows_.end(),
            [ & ]( const std::vector< std::string > & row ) { return !row[ i ].empty(); } );
      if ( !used ) {
         const auto at = static_cast< std::ptrdiff_t >( i );
         heading_.erase( heading_.begin() + at );
         for ( auto & row : rows_ ) {
            row.erase( row.begin() + at );
         }
      }
   }
}

void Table::print( std::ostream & out, bool bold ) const
{
   std::vector< std::size_t > widths;
   widths.reserve( heading_.size() );
   for ( const std::string & text : heading_ ) {
      widths.push_back( width( text ) );
   }
   for ( const auto & row : rows_ ) {
      for ( std::size_t i = 0; i != row.size(); ++i ) {
         widths[ i ] = std::max( widths[ i ], width( row[ i ] ) );
      }
   }
   out << ( bold ? "\033[1m" : "" );
   printRow( out, heading_, widths );
   out << ( bold ? "\033[0m" : "" ) << '\n';
   for ( const auto & row : rows_ ) {
      printRow( out, row, widths );
      out << '\n';
   }
}

} // namespace Flowtrack
