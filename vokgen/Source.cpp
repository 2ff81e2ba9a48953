#include "vokgen/Source.h"

#include "vokgen/Utf8.h"

#include <algorithm>

namespace VokGen {

SourceFile::SourceFile( std::string path, std::string text )
      : path_( std::move( path ) ),
        text_( std::move( text ) ),
        lineStarts_{ 0 }
{
   for ( std::size_t i = 0; i < text_.size(); ++i ) {
      if ( text_[ i ] == '\n' ) {
         lineStarts_.push_back( static_cast< std::uint32_t >( i + 1 ) );
      }
   }
}

std::string_view SourceFile::text( Range range ) const
{
   return std::string_view( text_ ).substr( range.begin, range.end - range.begin );
}

std::size_t SourceFile::lineIndex( std::uint32_t offset ) const
{
   const auto after = std::upper_bound( lineStarts_.begin(), lineStarts_.end(), offset );
   return static_cast< std::size_t >( after - lineStarts_.begin() ) - 1;
}

Range SourceFile::lineRange( std::size_t lineIndex ) const
{
   const std::uint32_t begin = lineStarts_[ lineIndex ];
   const bool last = lineIndex + 1 == lineStarts_.size();
   auto end =
         last ? static_cast< std::uint32_t >( text_.size() ) : lineStarts_[ lineIndex + 1 ] - 1;
   if ( end > begin && text_[ end - 1 ] == '\r' ) {
      --end;
   }
   return { begin, end };
}

Place SourceFile::place( std::uint32_t offset ) const
{
   const std::size_t line = lineIndex( offset );
   const std::uint32_t begin = lineStarts_[ line ];
   return { line + 1, characterCount( text( { begin, offset } ) ) + 1 };
}

} // namespace VokGen
