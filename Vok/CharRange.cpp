// Reading the tokens of a text.
#include "Vok/CharRange.h"

#include "Vok/TextOut.h"
#include "Vok/detail/Characters.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace Vok {

namespace {

// How many bytes a quoted text takes up to its closing quote, or to the end where there is none.
std::size_t untilQuote( std::string_view text ) noexcept
{
   std::size_t at = 0;
   while ( at < text.size() && text[ at ] != '"' ) {
      at += text[ at ] == '\\' ? 2U : 1U;
   }
   return std::min( at, text.size() );
}

// The value of a lower-case hexadecimal digit; 16 for any other character.
unsigned hexDigit( char c ) noexcept
{
   if ( c >= '0' && c <= '9' ) {
      return static_cast< unsigned >( c - '0' );
   }
   return c >= 'a' && c <= 'f' ? static_cast< unsigned >( c - 'a' ) + 10 : 16;
}

} // namespace

void CharRange::skipSpace() noexcept
{
   at_ += Detail::countOf( rest(), Detail::spaceCharacter );
}

void CharRange::needBehindSpace( char c )
{
   skipSpace();
   if ( !accept( c ) ) {
      fail( std::string( "\"" ) + c + "\"" );
   }
}

void CharRange::needPre( std::string_view typeName )
{
   if ( !rest().starts_with( typeName ) ) {
      fail( std::string( typeName ) );
   }
   if ( ++depth_ > deepest ) {
      fail( "values nested at most 64 deep" );
   }
   at_ += typeName.size();
   need( '[' );
}

void CharRange::needPost()
{
   need( ']' );
   --depth_;
}

void CharRange::needName( std::string_view name )
{
   const std::string_view text = rest();
   if ( text.size() > name.size() && text[ name.size() ] == '=' && text.starts_with( name ) ) {
      at_ += name.size() + 1; // most texts have no space there
      return;
   }
   skipSpace();
   const std::size_t before = at_;
   if ( word() != name ) {
      at_ = before;
      fail( std::string( name ) + "=" );
   }
   need( '=' );
}

std::string_view CharRange::word() noexcept
{
   const std::string_view read =
         rest().substr( 0, Detail::countOf( rest(), Detail::wordCharacter ) );
   at_ += read.size();
   return read;
}

std::uint64_t CharRange::number( std::uint64_t most )
{
   const char * const begin = text_.data() + at_;
   const char * const end = text_.data() + text_.size();
   std::uint64_t v = 0;
   const auto [ stop, error ] = std::from_chars( begin, end, v );
   const bool leadingZero = begin != end && *begin == '0' && stop - begin > 1;
   if ( error != std::errc() || leadingZero || v > most ) {
      fail( "a number from 0 to " + std::to_string( most ) );
   }
   at_ += static_cast< std::size_t >( stop - begin );
   return v;
}

double CharRange::doubleNumber()
{
   const char * const begin = text_.data() + at_;
   const char * const end = text_.data() + text_.size();
   double v = 0;
   const auto [ stop, error ] = std::from_chars( begin, end, v );
   const std::string_view read( begin, static_cast< std::size_t >( stop - begin ) );
   if ( error == std::errc() ) {
      TextOut canonical;
      canonical.putDouble( v );
      if ( canonical.view() == read ) {
         at_ += read.size();
         return v;
      }
      fail( "the number as " + std::string( canonical.view() ) );
   }
   fail( "a number" );
}

bool CharRange::truth()
{
   const std::size_t before = at_;
   const std::string_view read = word();
   if ( read != "true" && read != "false" ) {
      at_ = before;
      fail( "true or false" );
   }
   return read == "true";
}

Corvo::String CharRange::string()
{
   if ( at( '"' ) ) {
      return quoted();
   }
   const std::string_view read =
         rest().substr( 0, Detail::countOf( rest(), Detail::bareCharacter ) );
   if ( read.empty() ) {
      fail( "a text" );
   }
   at_ += read.size();
   return Corvo::String( read );
}

Corvo::String CharRange::quoted()
{
   const std::string_view text = rest().substr( 1 );
   const std::size_t plain = Detail::countOf( text, Detail::plainCharacter );
   const std::string_view content = text.substr( 0, plain );
   if ( plain == text.size() || text[ plain ] != '"' || Detail::isBareWord( content ) ) {
      return quotedWithEscapes();
   }
   at_ += plain + 2;
   return Corvo::String( content );
}

Corvo::String CharRange::quotedWithEscapes()
{
   const std::size_t start = at_++;
   std::string content;
   content.reserve( untilQuote( rest() ) );
   while ( !accept( '"' ) ) {
      if ( const std::size_t plain = Detail::plainInQuotes( text_, at_ ) ) {
         content.append( text_.substr( at_, plain ) );
         at_ += plain;
      } else {
         content += escaped();
      }
   }
   needCanonical( content, start );
   return Corvo::String( content );
}

char CharRange::escaped()
{
   if ( !accept( '\\' ) || empty() ) {
      fail( empty() ? "a closing quote" : "a character that needs no escape" );
   }
   const char c = text_[ at_++ ];
   if ( c == 'x' && rest().size() >= 2 && hexDigit( text_[ at_ ] ) < 16 &&
         hexDigit( text_[ at_ + 1 ] ) < 16 ) {
      const unsigned byte = hexDigit( text_[ at_ ] ) * 16 + hexDigit( text_[ at_ + 1 ] );
      at_ += 2;
      return static_cast< char >( byte );
   }
   if ( c == 'n' || c == 't' ) {
      return c == 'n' ? '\n' : '\t';
   }
   if ( c != '"' && c != '\\' ) {
      --at_;
      fail( "\\\" \\\\ \\n \\t or \\xHH" );
   }
   return c;
}

// A value has one text: what could stand bare, or with fewer escapes, has to.
void CharRange::needCanonical( std::string_view content, std::size_t start )
{
   std::string_view read = text_.substr( start, at_ - start );
   bool canonical = !Detail::isBareWord( content );
   if ( canonical ) {
      Detail::putQuoted( content, [ & ]( std::string_view part ) {
         canonical = canonical && read.starts_with( part );
         read.remove_prefix( std::min( part.size(), read.size() ) );
      } );
   }
   if ( !canonical ) {
      constexpr std::size_t shown = 64;
      TextOut form;
      form.putString( content.substr( 0, shown ) );
      at_ = start;
      fail( content.size() <= shown ? "the text as " + std::string( form.view() )
                                    : "the text with the fewest escapes" );
   }
}

void CharRange::needEnd() const
{
   if ( !empty() ) {
      fail( "the end of the text" );
   }
}

void CharRange::fail( std::string_view expected ) const
{
   constexpr std::size_t shown = 24;
   std::string message = "at offset " + std::to_string( at_ ) + ": expected ";
   message.append( expected ).append( ", found " );
   if ( empty() ) {
      message.append( "the end" );
   } else {
      TextOut found;
      found.putString( rest().substr( 0, std::min( shown, rest().size() ) ) );
      message.append( found.view() );
   }
   throw Corvo::ParseException( message, at_ );
}

void CharRange::rethrow( std::string_view name, const Corvo::RangeException & e )
{
   throw Corvo::DeserializationException( name, e.what() );
}

} // namespace Vok
