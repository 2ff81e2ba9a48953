#include "vokgen/Diagnostics.h"

#include "vokgen/Utf8.h"

#include <algorithm>
#include <cstdio>

namespace VokGen {
namespace {

constexpr std::size_t tabWidth = 8;
constexpr std::size_t excerptWidth = 160;

bool isControl( char c )
{
   const auto byte = static_cast< unsigned char >( c );
   return byte < 0x20U || byte == 0x7FU;
}

std::string printable( std::string_view text )
{
   std::string result;
   for ( const char c : text ) {
      if ( isControl( c ) ) {
         char escape[ 8 ];
         std::snprintf( escape, sizeof escape, "\\x%02X", static_cast< unsigned >( c ) & 0xFFU );
         result += escape;
      } else {
         result += c;
      }
   }
   return result;
}

/// A source line with tabs expanded, and the columns (from 0) at which a range of it lies.
struct Excerpt {
   std::string line;
   std::size_t begin = 0;
   std::size_t end = 0;
};

/// Where to begin a line so that what is shown of it holds the range.
std::uint32_t excerptStart( const SourceFile & file, Range line, Range range )
{
   if ( range.begin - line.begin <= excerptWidth / 2 ) {
      return line.begin;
   }
   std::uint32_t from = range.begin - static_cast< std::uint32_t >( excerptWidth / 2 );
   while ( from < range.begin && characterCount( file.text( { from, from + 1 } ) ) == 0 ) {
      ++from;
   }
   return from;
}

/// Expands tabs and replaces what a terminal should not see. Only the part of a long line that is
/// near the range is shown.
Excerpt excerptOf( const SourceFile & file, Range range )
{
   const Range line = file.lineRange( file.lineIndex( range.begin ) );
   const std::uint32_t rangeEnd = std::min( std::max( range.end, range.begin + 1 ), line.end );
   Excerpt result;
   std::size_t column = 0;
   for ( std::uint32_t i = excerptStart( file, line, range );
         i < line.end && column < excerptWidth; ) {
      const std::string_view rest = file.text( { i, line.end } );
      const std::size_t length = std::max< std::size_t >( utf8Length( rest ), 1 );
      const std::string_view character = rest.substr( 0, length );
      if ( i == range.begin ) {
         result.begin = column;
      }
      if ( character == "\t" ) {
         const std::size_t blanks = tabWidth - column % tabWidth;
         result.line.append( blanks, ' ' );
         column += blanks;
      } else {
         const bool shown = utf8Length( rest ) != 0 && isPlain( character );
         result.line += shown ? character : "?";
         ++column;
      }
      i += static_cast< std::uint32_t >( length );
      if ( i <= rangeEnd ) {
         result.end = column;
      }
   }
   if ( range.begin >= line.end ) {
      result.begin = column;
   }
   result.end = std::max( result.end, result.begin + 1 );
   result.line.erase( result.line.find_last_not_of( ' ' ) + 1 );
   return result;
}

void print( std::string & out, const Location & where, const char * kind, const std::string & text )
{
   if ( !where.file ) {
      out += std::string( "vokgen: " ) + kind + ": " + text + "\n";
      return;
   }
   const Place place = where.file->place( where.range.begin );
   out += where.file->path() + ":" + std::to_string( place.line ) + ":" +
         std::to_string( place.column ) + ": " + kind + ": " + text + "\n";
   const Excerpt excerpt = excerptOf( *where.file, where.range );
   out += excerpt.line + "\n" + std::string( excerpt.begin, ' ' ) + "^" +
         std::string( excerpt.end - excerpt.begin - 1, '~' ) + "\n";
}

} // namespace

std::string fillMessage( std::string_view text, const std::vector< std::string > & arguments )
{
   std::string result;
   for ( std::size_t i = 0; i < text.size(); ++i ) {
      const bool placeholder = text[ i ] == '{' && i + 2 < text.size() && text[ i + 2 ] == '}' &&
            text[ i + 1 ] >= '0' && text[ i + 1 ] <= '9';
      if ( !placeholder ) {
         result += text[ i ];
         continue;
      }
      result += printable( arguments.at( static_cast< std::size_t >( text[ i + 1 ] - '0' ) ) );
      i += 2;
   }
   return result;
}

std::size_t Diagnostics::orderOf( const SourceFile * file )
{
   const auto found = std::find( files_.begin(), files_.end(), file );
   if ( found == files_.end() ) {
      files_.push_back( file );
      return files_.size() - 1;
   }
   return static_cast< std::size_t >( found - files_.begin() );
}

void Diagnostics::error( Location where, Message message,
      const std::vector< std::string > & arguments )
{
   if ( errors_.size() == errorLimit ) {
      ++dropped_;
      return;
   }
   Error error;
   error.entry = { where, fillMessage( messageText( message ), arguments ) };
   error.fileOrder = orderOf( where.file );
   errors_.push_back( std::move( error ) );
}

void Diagnostics::note( Location where, Message message,
      const std::vector< std::string > & arguments )
{
   if ( dropped_ == 0 && !errors_.empty() ) {
      errors_.back().notes.push_back( { where, fillMessage( messageText( message ), arguments ) } );
   }
}

std::string Diagnostics::text( const SourceFile * first ) const
{
   std::vector< const Error * > sorted;
   for ( const Error & error : errors_ ) {
      sorted.push_back( &error );
   }
   const auto before = [ first ]( const Error * a, const Error * b ) {
      const bool aFirst = a->entry.where.file == first;
      const bool bFirst = b->entry.where.file == first;
      if ( aFirst != bFirst ) {
         return aFirst;
      }
      if ( a->fileOrder != b->fileOrder ) {
         return a->fileOrder < b->fileOrder;
      }
      return a->entry.where.range.begin < b->entry.where.range.begin;
   };
   std::stable_sort( sorted.begin(), sorted.end(), before );

   std::string out;
   for ( const Error * error : sorted ) {
      print( out, error->entry.where, "error", error->entry.text );
      for ( const Entry & note : error->notes ) {
         print( out, note.where, "note", note.text );
      }
   }
   if ( dropped_ != 0 ) {
      out += fillMessage( messageText( Message::moreErrors ), { std::to_string( dropped_ ) } ) +
            "\n";
   }
   return out;
}

} // namespace VokGen
