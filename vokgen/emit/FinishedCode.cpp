// Where long lines of generated code are broken.
#include "vokgen/emit/FinishedCode.h"

#include "vokgen/Printer.h"
#include "vokgen/Utf8.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace VokGen {

namespace {

constexpr std::size_t nowhere = std::string_view::npos;

/// A bracket of a line that no other bracket of the line holds, and the commas right inside it.
struct Bracket {
   std::size_t open = 0;
   std::size_t close = nowhere;
   std::vector< std::size_t > commas;
};

/// What matters for breaking one line.
struct Anatomy {
   std::vector< Bracket > brackets;
   std::vector< std::size_t > commas; ///< Outside of all brackets, as in the second part of a line.
   std::size_t assignment = nowhere; ///< Of a " = " before the first bracket.
   std::size_t comment = nowhere;
};

/// Reads code character by character, past string literals and comments.
class Reader {
 public:
   explicit Reader( std::string_view line ) : line_( line ) {}

   /// Goes to the next character that is code; false at the end of the line.
   bool next()
   {
      ++at_;
      while ( at_ < line_.size() && ( line_[ at_ ] == '"' || line_[ at_ ] == '\'' ) ) {
         skipLiteral();
      }
      if ( line_.substr( std::min( at_, line_.size() ) ).starts_with( "//" ) ) {
         comment_ = at_;
         at_ = line_.size();
      }
      return at_ < line_.size();
   }

   std::size_t at() const { return at_; }
   std::size_t comment() const { return comment_; }
   char here() const { return line_[ at_ ]; }
   bool after( std::string_view text ) const { return line_.substr( 0, at_ ).ends_with( text ); }
   bool before( std::string_view text ) const { return line_.substr( at_ ).starts_with( text ); }

   /// Whether an angle bracket of a template opens here: it follows its name without a blank.
   bool opensAngle() const
   {
      return here() == '<' && !after( " " ) && !after( "operator" ) && !after( "<" ) &&
            !before( "<>" );
   }
   bool closesAngle() const { return here() == '>' && after( " " ); }

 private:
   void skipLiteral()
   {
      const char quote = line_[ at_++ ];
      while ( at_ < line_.size() && line_[ at_ ] != quote ) {
         at_ += line_[ at_ ] == '\\' ? 2U : 1U;
      }
      ++at_;
   }

   std::string_view line_;
   std::size_t at_ = nowhere; // so that the first step leads to 0
   std::size_t comment_ = nowhere;
};

bool opens( char c )
{
   return c == '(' || c == '[' || c == '{';
}

bool closes( char c )
{
   return c == ')' || c == ']' || c == '}';
}

char partner( char opening )
{
   return opening == '(' ? ')' : opening == '[' ? ']'
         : opening == '{'                       ? '}'
                                                : '>';
}

Anatomy dissect( std::string_view line )
{
   Anatomy found;
   std::string open;
   Reader reader( line );
   while ( reader.next() ) {
      const char c = reader.here();
      if ( opens( c ) || reader.opensAngle() ) {
         if ( open.empty() ) {
            found.brackets.push_back( { reader.at(), nowhere, {} } );
         }
         open.push_back( c );
      } else if ( !open.empty() && ( c == '>' ? reader.closesAngle() : closes( c ) ) &&
            c == partner( open.back() ) ) {
         open.pop_back();
         if ( open.empty() ) {
            found.brackets.back().close = reader.at();
         }
      } else if ( c == ',' && open.size() < 2 ) {
         ( open.empty() ? found.commas : found.brackets.back().commas ).push_back( reader.at() );
      } else if ( reader.before( "= " ) && reader.after( " " ) && found.brackets.empty() ) {
         found.assignment = reader.at();
      }
   }
   found.comment = reader.comment();
   return found;
}

/// Behind the last of these commas that the line's first part can end with; `otherwise` where none
/// can.
std::size_t behindComma( std::string_view line, const std::vector< std::size_t > & commas,
      std::size_t otherwise )
{
   std::size_t place = otherwise;
   for ( const std::size_t comma : commas ) {
      if ( comma < columnLimit && comma + 2 < line.size() ) {
         place = comma + 2;
      }
   }
   return place;
}

/// Where a function's name begins in the head of a function that returns something, which may stand
/// on a line of its own; `nowhere` in what is no such head.
std::size_t functionName( std::string_view line, const Anatomy & anatomy )
{
   const auto isHead = []( std::string_view start ) {
      return start != "return" && start != "if" && start != "throw" && start != "using";
   };
   const std::size_t begin = line.find_first_not_of( ' ' );
   std::size_t name = nowhere;
   for ( const Bracket & bracket : anatomy.brackets ) {
      if ( line[ bracket.open ] == '(' ) {
         name = line.rfind( ' ', bracket.open ) + 1;
      }
   }
   const bool head = name != nowhere && name > begin && anatomy.assignment == nowhere &&
         isHead( line.substr( begin, line.find( ' ', begin ) - begin ) );
   return head && std::isalpha( static_cast< unsigned char >( line[ name ] ) ) ? name : nowhere;
}

/// Where the second part of a line that is too long begins, and how far it goes in.
struct Place {
   std::size_t at = nowhere;
   std::size_t indentation = 0;
};

/// The place where a line is broken; `nowhere` where there is none. `indentation` is that of the
/// second part of a statement.
Place breakPlace( std::string_view line, std::size_t indentation )
{
   const Anatomy anatomy = dissect( line );
   const std::size_t own = line.find_first_not_of( ' ' );
   const auto restFits = [ & ]( std::size_t from, std::size_t in ) {
      return in + characterCount( line.substr( from ) ) <= columnLimit;
   };
   if ( anatomy.comment != nowhere ) {
      return {};
   }
   if ( anatomy.assignment != nowhere && restFits( anatomy.assignment + 2, indentation ) ) {
      return { anatomy.assignment + 2, indentation };
   }
   if ( !anatomy.commas.empty() && anatomy.commas.front() + 2 < line.size() ) {
      return { behindComma( line, anatomy.commas, anatomy.commas.front() + 2 ), indentation };
   }
   const Bracket * last = nullptr;
   for ( const Bracket & bracket : anatomy.brackets ) {
      const bool empty = bracket.close == bracket.open + 1;
      if ( !empty && bracket.open + 2 <= columnLimit ) {
         last = &bracket;
      }
   }
   const std::size_t name = functionName( line, anatomy );
   const bool parameters = last && line[ last->open ] == '(';
   if ( parameters && restFits( last->open + 2, indentation ) ) {
      return { last->open + 2, indentation };
   }
   if ( name != nowhere && ( !parameters || name > columnLimit || restFits( name, own ) ) ) {
      return { name, own };
   }
   if ( !last ) {
      return {};
   }
   const std::size_t inside = last->open + 2;
   if ( restFits( inside, indentation ) ) {
      return { inside, indentation };
   }
   // Inside a bracket without a comma nothing more can be divided.
   return last->commas.empty() ? Place()
                               : Place{ behindComma( line, last->commas, inside ), indentation };
}

class Finisher {
 public:
   explicit Finisher( std::string_view file ) : file_( file ) {}

   void add( std::string_view line )
   {
      ++number_;
      const std::size_t indentation = std::min( line.find_first_not_of( ' ' ), line.size() );
      checkBrackets( line );
      print( line, indentation + continuationIndent );
   }

   std::string finish()
   {
      if ( !open_.empty() ) {
         fail( "the file ends inside a bracket that was opened in line " +
               std::to_string( open_.back().line ) );
      }
      return std::move( text_ );
   }

 private:
   struct Open {
      char bracket;
      std::size_t line;
   };

   void checkBrackets( std::string_view line )
   {
      Reader reader( line );
      while ( reader.next() ) {
         const char c = reader.here();
         if ( opens( c ) ) {
            open_.push_back( { c, number_ } );
         } else if ( closes( c ) ) {
            if ( open_.empty() || partner( open_.back().bracket ) != c ) {
               fail( "a bracket is closed that is not open" );
            }
            open_.pop_back();
         }
      }
   }

   /// Prints a line, or its parts; `indentation` is that of all but the first.
   void print( std::string_view line, std::size_t indentation )
   {
      std::string rest( line );
      while ( characterCount( rest ) > columnLimit ) {
         const Place place = breakPlace( rest, indentation );
         if ( place.at == nowhere || place.at <= rest.find_first_not_of( ' ' ) ) {
            checkNamesAlone( rest );
            break;
         }
         std::string part = rest.substr( 0, place.at );
         part.erase( part.find_last_not_of( ' ' ) + 1 );
         text_.append( part ).push_back( '\n' );
         rest = std::string( place.indentation, ' ' ) + rest.substr( place.at );
      }
      text_.append( rest ).push_back( '\n' );
   }

   /// Names are the definition's, everything else that makes a line too long is a mistake of ours.
   void checkNamesAlone( const std::string & line ) const
   {
      if ( line.find( '"' ) != std::string::npos || line.find( "//" ) != std::string::npos ) {
         fail( "a line that cannot be broken is " + std::to_string( characterCount( line ) ) +
               " columns wide: " + line );
      }
   }

   [[noreturn]] void fail( const std::string & what ) const
   {
      throw InternalError( std::string( file_ ) + ":" + std::to_string( number_ ) + ": " + what );
   }

   std::string_view file_;
   std::size_t number_ = 0;
   std::vector< Open > open_;
   std::string text_;
};

} // namespace

std::string finishedCode( std::string_view file, std::string_view text )
{
   Finisher finisher( file );
   while ( !text.empty() ) {
      const std::size_t end = std::min( text.find( '\n' ), text.size() );
      finisher.add( text.substr( 0, end ) );
      text.remove_prefix( std::min( end + 1, text.size() ) );
   }
   return finisher.finish();
}

} // namespace VokGen
