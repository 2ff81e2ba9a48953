// Wrapping of comments, and constraints in words.
#include "vokgen/emit/Documentation.h"

#include "vokgen/Utf8.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/FinishedCode.h"
#include "vokgen/emit/Literal.h"

#include <vector>

namespace VokGen {

using Model::Attribute;
using Model::CheckTime;

namespace {

/// Comments of declarations stand no deeper than among the enumerators of a class's enumeration.
constexpr std::size_t deepest = 6;

/// A comment that is filled word by word.
class CommentLines {
 public:
   CommentLines( std::string_view mark, std::size_t width )
         : mark_( mark ),
           room_( width - mark.size() - 2 )
   {
   }

   void word( std::string_view word )
   {
      while ( characterCount( word ) > room_ ) {
         const std::size_t part = firstCharacters( word, room_ );
         add( word.substr( 0, part ) );
         word.remove_prefix( part );
      }
      add( word );
   }

   void paragraph()
   {
      endLine();
      if ( !text_.empty() ) {
         text_.append( mark_ ).push_back( '\n' );
      }
   }

   std::string finish()
   {
      endLine();
      return std::move( text_ );
   }

 private:
   static std::size_t firstCharacters( std::string_view text, std::size_t count )
   {
      std::size_t at = count;
      while ( at < text.size() && characterCount( text.substr( 0, at + 1 ) ) <= count ) {
         ++at;
      }
      return at;
   }

   void add( std::string_view word )
   {
      if ( !line_.empty() && characterCount( line_ ) + 1 + characterCount( word ) > room_ ) {
         endLine();
      }
      line_.append( line_.empty() ? "" : " " ).append( word );
   }

   /// A backslash at its end, or the trigraph of one, would join the next line to the comment.
   void endLine()
   {
      if ( line_.empty() ) {
         return;
      }
      const bool joins = line_.ends_with( '\\' ) || line_.ends_with( "?\?/" );
      text_.append( mark_ ).append( " " ).append( line_ ).append( joins ? ".\n" : "\n" );
      line_.clear();
   }

   std::string_view mark_;
   std::size_t room_; // one column is kept for the full stop of endLine()
   std::string line_;
   std::string text_;
};

bool endsSentence( std::string_view text )
{
   return text.empty() || text.ends_with( '.' ) || text.ends_with( '!' ) || text.ends_with( '?' ) ||
         text.ends_with( ':' );
}

/// Calls `word` for each word, and `gap` for each empty line between two of them.
template< class Word, class Gap > void eachWord( std::string_view text, Word word, Gap gap )
{
   std::size_t lineBreaks = 0;
   bool first = true;
   for ( std::size_t at = 0; at < text.size(); ) {
      if ( text[ at ] == ' ' || text[ at ] == '\n' ) {
         lineBreaks += text[ at++ ] == '\n' ? 1U : 0U;
         continue;
      }
      const std::size_t end = std::min( text.find_first_of( " \n", at ), text.size() );
      if ( lineBreaks > 1 && !first ) {
         gap();
      }
      word( text.substr( at, end - at ) );
      first = false;
      lineBreaks = 0;
      at = end;
   }
}

/// commentText takes line breaks away; here they end paragraphs.
std::string commentParagraphs( std::string_view text )
{
   std::string out;
   while ( true ) {
      const std::size_t end = text.find( '\n' );
      out.append( commentText( text.substr( 0, end ) ) );
      if ( end == std::string_view::npos ) {
         return out;
      }
      out.push_back( '\n' );
      text.remove_prefix( end + 1 );
   }
}

std::string commentOf( CommentLines lines, std::initializer_list< std::string_view > texts )
{
   std::string all;
   for ( const std::string_view text : texts ) {
      if ( !text.empty() ) {
         all.append( endsSentence( all ) ? "" : "." ).append( all.empty() ? "" : " " );
         all.append( commentParagraphs( text ) );
      }
   }
   eachWord(
         all, [ & ]( std::string_view word ) { lines.word( word ); },
         [ & ] { lines.paragraph(); } );
   return lines.finish();
}

bool isNameCharacter( char c )
{
   return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) ||
         c == '_';
}

/// The text without a prefix that a reader of the type takes for granted, wherever a name begins
/// with it.
std::string without( const std::string & prefix, std::string text )
{
   std::size_t at = 0;
   while ( ( at = text.find( prefix, at ) ) != std::string::npos ) {
      const bool begins =
            at == 0 || ( !isNameCharacter( text[ at - 1 ] ) && text[ at - 1 ] != ':' );
      if ( begins ) {
         text.erase( at, prefix.size() );
      } else {
         at += prefix.size();
      }
   }
   return text;
}

/// "10", "top (10)", "8 (Level::top - 2)"
std::string boundInWords( const Model::Expression & bound, const Model::RecordType & owner )
{
   std::string number = std::to_string( numberOf( bound.value ) );
   std::string text = without( owner.fullName + "::", bound.text );
   text = without( owner.nameSpace + "::", std::move( text ) );
   if ( text == number ) {
      return number;
   }
   return text.front() == '(' ? number + " " + text : text + " (" + number + ")";
}

} // namespace

std::string comment( std::initializer_list< std::string_view > texts )
{
   return commentOf( CommentLines( "///", columnLimit - deepest ), texts );
}

std::string plainComment( std::initializer_list< std::string_view > texts )
{
   return commentOf( CommentLines( "//", columnLimit ), texts );
}

std::string trailingComment( std::string_view declaration, std::string_view text )
{
   std::string line = comment( { text } );
   const bool oneLine = line.find( '\n' ) + 1 == line.size();
   const std::size_t columns = deepest + declaration.size() + 2 + characterCount( line );
   if ( line.empty() || !oneLine || columns > columnLimit ) {
      return "";
   }
   line.pop_back();
   return " ///<" + line.substr( 3 );
}

std::string_view firstSentence( std::string_view documentation )
{
   const std::string_view paragraph = documentation.substr( 0, documentation.find( '\n' ) );
   for ( std::size_t at = 0; at + 2 < paragraph.size(); ++at ) {
      const char mark = paragraph[ at ];
      const char next = paragraph[ at + 2 ];
      const bool ends = ( mark == '.' || mark == '!' || mark == '?' ) &&
            paragraph[ at + 1 ] == ' ' && !( next >= 'a' && next <= 'z' );
      if ( ends ) {
         return paragraph.substr( 0, at + 1 );
      }
   }
   return paragraph;
}

std::string boundsInWords( const Attribute & attribute )
{
   if ( !attribute.bounds ) {
      return "";
   }
   const Model::Bounds & bounds = *attribute.bounds;
   const std::string range = boundInWords( bounds.lower, *attribute.owner ) + " to " +
         boundInWords( bounds.upper, *attribute.owner );
   return bounds.except ? std::to_string( *bounds.except ) + " or " + range : range;
}

std::string textLimitInWords( const Attribute & attribute )
{
   if ( !attribute.textLimit ) {
      return "";
   }
   return "at most " + boundInWords( attribute.textLimit->most, *attribute.owner ) + " bytes";
}

std::string refusalInWords( const Attribute & attribute, std::string_view what )
{
   if ( !hasCheck( attribute ) ) {
      return "";
   }
   const std::string rule = "Throws Corvo::RangeException unless " + std::string( what );
   return attribute.textLimit ? rule + " has " + textLimitInWords( attribute ) + "."
                              : rule + " is in " + boundsInWords( attribute ) + ".";
}

std::string validationInWords( const Attribute & attribute )
{
   return "Throws Corvo::RangeException unless " + attribute.name + " is " +
         ( attribute.bounds->except ? "" : "in " ) + boundsInWords( attribute ) + ".";
}

bool hasCheck( const Attribute & attribute )
{
   if ( attribute.textLimit ) {
      return true;
   }
   const bool timely = attribute.bounds &&
         ( attribute.bounds->time == CheckTime::always ||
               attribute.bounds->time == CheckTime::onSet );
   return timely && ( attribute.bounds->lowerCanFail || attribute.bounds->upperCanFail );
}

bool isCheckedAlways( const Attribute & field )
{
   return hasCheck( field ) && ( field.textLimit || field.bounds->time == CheckTime::always );
}

} // namespace VokGen
