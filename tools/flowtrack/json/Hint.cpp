// Distances between words: letters added, taken, changed or swapped.
#include "tools/flowtrack/json/Hint.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace FlowtrackJson {

namespace {

char lower( char c )
{
   return static_cast< char >( std::tolower( static_cast< unsigned char >( c ) ) );
}

/// Capital letters are as small ones.
std::size_t distance( std::string_view a, std::string_view b )
{
   // Three rows of the table of distances between the beginnings of both.
   std::vector< std::size_t > before( b.size() + 1 );
   std::vector< std::size_t > last( b.size() + 1 );
   std::vector< std::size_t > row( b.size() + 1 );
   for ( std::size_t j = 0; j <= b.size(); ++j ) {
      row[ j ] = j;
   }
   for ( std::size_t i = 1; i <= a.size(); ++i ) {
      before.swap( last );
      last.swap( row );
      row[ 0 ] = i;
      for ( std::size_t j = 1; j <= b.size(); ++j ) {
         const bool same = lower( a[ i - 1 ] ) == lower( b[ j - 1 ] );
         row[ j ] = std::min(
               { last[ j ] + 1, row[ j - 1 ] + 1, last[ j - 1 ] + ( same ? 0 : 1 ) } );
         if ( i > 1 && j > 1 && lower( a[ i - 1 ] ) == lower( b[ j - 2 ] ) &&
               lower( a[ i - 2 ] ) == lower( b[ j - 1 ] ) ) {
            row[ j ] = std::min( row[ j ], before[ j - 2 ] + 1 );
         }
      }
   }
   return row[ b.size() ];
}

} // namespace

std::string nearest( std::string_view given, const std::vector< std::string > & known )
{
   std::string best;
   std::size_t least = std::max< std::size_t >( 1, given.size() / 3 ) + 1;
   for ( const std::string & word : known ) {
      const auto [ shorter, longer ] = std::minmax( { given.size(), word.size() } );
      if ( longer - shorter >= least ) {
         continue; // no nearer than that, and what is given may be of any length
      }
      if ( const std::size_t apart = distance( given, word ); apart < least ) {
         least = apart;
         best = word;
      }
   }
   return best;
}

std::string didYouMean( std::string_view given, const std::vector< std::string > & known )
{
   const std::string best = nearest( given, known );
   return best.empty() ? best : "did you mean " + best + "?";
}

} // namespace FlowtrackJson
