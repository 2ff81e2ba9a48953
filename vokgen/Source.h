// A definition file's text, and where in it something stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace VokGen {

/// Bytes of a file, from `begin` up to, not including, `end`.
struct Range {
   std::uint32_t begin = 0;
   std::uint32_t end = 0;

   /// The bytes from the first of this to the last of `other`.
   Range upTo( Range other ) const { return { begin, other.end }; }
};

/// A place as people count: both from 1, columns in characters (a tab is one).
struct Place {
   std::size_t line = 1;
   std::size_t column = 1;
};

/// One file, held whole. At most `sizeLimit` bytes, so that offsets fit a Range.
class SourceFile {
 public:
   static constexpr std::size_t sizeLimit = std::size_t( 16 ) << 20;

   /// `path` is how messages name the file.
   SourceFile( std::string path, std::string text );

   const std::string & path() const { return path_; }
   const std::string & text() const { return text_; }
   std::string_view text( Range range ) const;

   Place place( std::uint32_t offset ) const;
   /// Zero-based; a logarithmic search.
   std::size_t lineIndex( std::uint32_t offset ) const;
   /// The bytes of a line, without its end.
   Range lineRange( std::size_t lineIndex ) const;

 private:
   std::string path_;
   std::string text_;
   std::vector< std::uint32_t > lineStarts_;
};

/// A range of a file. A default one is a place outside any file.
struct Location {
   const SourceFile * file = nullptr;
   Range range;
};

} // namespace VokGen
