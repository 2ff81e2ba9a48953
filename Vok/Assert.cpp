// The last words of a process that has failed an assertion.
#include "Vok/Assert.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <unistd.h>

namespace Vok {

namespace {

// A line of bounded length on the stack: memory may be what has run out.
class Line {
 public:
   void add( std::string_view text ) noexcept
   {
      for ( const char c : text ) {
         if ( size_ == text_.size() - 1 ) {
            return;
         }
         const auto code = static_cast< unsigned char >( c );
         text_[ size_ ] = code < 0x20 || code == 0x7f ? ' ' : c;
         ++size_;
      }
   }

   void add( int number ) noexcept
   {
      std::array< char, 12 > digits{};
      const auto end = std::to_chars( digits.data(), digits.data() + digits.size(), number ).ptr;
      add( std::string_view( digits.data(), static_cast< std::size_t >( end - digits.data() ) ) );
   }

   // One write(2), so that lines of several processes do not mix.
   void writeTo( int file ) noexcept
   {
      text_[ size_ ] = '\n';
      const char * at = text_.data();
      std::size_t left = size_ + 1;
      while ( left > 0 ) {
         const ssize_t done = ::write( file, at, left );
         if ( done > 0 ) {
            at += done;
            left -= static_cast< std::size_t >( done );
         } else if ( done == 0 || errno != EINTR ) {
            return;
         }
      }
   }

 private:
   std::array< char, 4096 > text_{};
   std::size_t size_ = 0;
};

} // namespace

void assertionFailed( const char * source, int line, const char * function, const char * expression,
      std::string_view message )
{
   Line text;
   text.add( source );
   text.add( ":" );
   text.add( line );
   text.add( ": " );
   text.add( function );
   text.add( ": assertion \"" );
   text.add( expression );
   text.add( "\" failed" );
   if ( !message.empty() ) {
      text.add( ": " );
      text.add( message );
   }
   text.writeTo( STDERR_FILENO );
   std::abort();
}

} // namespace Vok
