// Vok::TextOut, what the text of a value is written to.
#pragma once

#include "Vok/Export.h"
#include "Vok/String.h"
#include "Vok/detail/FunctionRef.h"

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace Vok {

/// An appending buffer of characters; short texts need no allocation. Appending throws
/// std::bad_alloc.
class VOK_EXPORT TextOut {
 public:
   TextOut() noexcept = default;
   TextOut( const TextOut & ) = delete;
   TextOut & operator=( const TextOut & ) = delete;

   void put( char c ) { *grow( 1 ) = c; }
   void put( std::string_view text )
   {
      if ( !text.empty() ) {
         std::memcpy( grow( text.size() ), text.data(), text.size() );
      }
   }
   template< std::integral I > void putNumber( I number )
   {
      constexpr std::size_t most = 20;
      char * const at = grow( most );
      size_ = static_cast< std::size_t >( std::to_chars( at, at + most, number ).ptr - data_ );
   }

   /// The shortest decimal that reads back exactly; `inf`, `-inf` and `nan` for what is none.
   void putDouble( double number );

   /// A text as a token: bare where every character allows it, else quoted and escaped.
   void putString( std::string_view text );

   std::string_view view() const noexcept { return { data_, size_ }; }
   std::size_t size() const noexcept { return size_; }
   Corvo::String text() const { return Corvo::String( view() ); }

 private:
   char * grow( std::size_t extra )
   {
      if ( capacity_ - size_ < extra ) {
         enlarge( extra );
      }
      char * const at = data_ + size_;
      size_ += extra;
      return at;
   }
   void enlarge( std::size_t extra );

   char inPlace_[ 240 ];
   std::unique_ptr< char[] > large_;
   char * data_ = inPlace_;
   std::size_t size_ = 0;
   std::size_t capacity_ = sizeof inPlace_;
};

namespace Detail {

/// Whether a text may stand without quotes: not empty, and only letters, digits and `_ . / : @ %
/// + -`.
bool isBareWord( std::string_view text ) noexcept;

/// How many bytes from `at` on stand for themselves inside quotes: 1 for a printable ASCII
/// character other than `"`, `\` and `'`, 2 to 4 for a well-formed UTF-8 sequence that is no
/// control character, else 0.
std::size_t plainInQuotes( std::string_view text, std::size_t at ) noexcept;

/// Writes a text in quotes, with as few escapes as it needs, part by part.
void putQuoted( std::string_view text, FunctionRef< void( std::string_view part ) > put );

} // namespace Detail
} // namespace Vok
