// How layouts are filled in.
#include "vokgen/Printer.h"

#include <algorithm>
#include <vector>

namespace VokGen {

namespace {

std::vector< std::string_view > linesOf( std::string_view text )
{
   std::vector< std::string_view > lines;
   while ( !text.empty() ) {
      const std::size_t end = std::min( text.find( '\n' ), text.size() );
      lines.push_back( text.substr( 0, end ) );
      text.remove_prefix( std::min( end + 1, text.size() ) );
   }
   return lines;
}

std::size_t indentationOf( std::string_view line )
{
   return std::min( line.find_first_not_of( ' ' ), line.size() );
}

bool isBlank( std::string_view line )
{
   return indentationOf( line ) == line.size();
}

/// The lines of a layout without the indentation that they share.
std::vector< std::string_view > unindented( std::string_view layout )
{
   layout.remove_prefix( 1 );
   std::vector< std::string_view > lines = linesOf( layout );
   if ( !lines.empty() && isBlank( lines.back() ) && layout.back() != '\n' ) {
      lines.pop_back(); // the blanks before the closing quote
   }
   std::size_t shared = std::string_view::npos;
   for ( const std::string_view line : lines ) {
      if ( !isBlank( line ) ) {
         shared = std::min( shared, indentationOf( line ) );
      }
   }
   for ( std::string_view & line : lines ) {
      line.remove_prefix( std::min( shared, line.size() ) );
   }
   return lines;
}

/// One layout on its way to a text.
class Filling {
 public:
   explicit Filling( Variables variables ) : variables_( variables ),
                                             used_( variables.size() ) {}

   /// One line, filled in; it may become several. `indentation` goes before all but the first.
   std::string line( std::string_view layout, std::size_t indentation )
   {
      std::string out;
      while ( true ) {
         const std::size_t dollar = layout.find( '$' );
         out.append( layout.substr( 0, dollar ) );
         if ( dollar == std::string_view::npos ) {
            break;
         }
         const std::size_t end = layout.find( '$', dollar + 1 );
         if ( end == std::string_view::npos ) {
            throw InternalError( "layout with a single $: " + std::string( layout ) );
         }
         const std::string_view name = layout.substr( dollar + 1, end - dollar - 1 );
         if ( name.empty() ) {
            out.push_back( '$' );
         } else {
            appendIndented( out, value( name ), indentation );
         }
         layout.remove_prefix( end + 1 );
      }
      return out;
   }

   /// Whether a line is nothing but one variable, whose value is empty.
   bool vanishes( std::string_view line )
   {
      line.remove_prefix( indentationOf( line ) );
      const bool alone = line.size() > 2 && line.front() == '$' &&
            line.find( '$', 1 ) == line.size() - 1;
      return alone && value( line.substr( 1, line.size() - 2 ) ).empty();
   }

   void needAllUsed( std::string_view layout ) const
   {
      for ( std::size_t i = 0; i != used_.size(); ++i ) {
         if ( !used_[ i ] ) {
            throw InternalError( "variable $" + std::string( ( variables_.begin() + i )->name ) +
                  "$ is not in the layout: " + std::string( layout ) );
         }
      }
   }

 private:
   std::string_view value( std::string_view name )
   {
      for ( std::size_t i = 0; i != used_.size(); ++i ) {
         const Variable & variable = *( variables_.begin() + i );
         if ( variable.name == name ) {
            used_[ i ] = true;
            std::string_view text = variable.value;
            while ( text.ends_with( '\n' ) ) {
               text.remove_suffix( 1 );
            }
            return text;
         }
      }
      throw InternalError( "layout with the unknown variable $" + std::string( name ) + "$" );
   }

   static void appendIndented( std::string & out, std::string_view text, std::size_t indentation )
   {
      bool first = true;
      for ( const std::string_view line : linesOf( text ) ) {
         if ( !first ) {
            out.push_back( '\n' );
            out.append( line.empty() ? 0 : indentation, ' ' );
         }
         out.append( line );
         first = false;
      }
   }

   Variables variables_;
   std::vector< bool > used_;
};

/// Whether a blank line would stand beside another one, or first in a block or section of a class.
bool endsBlank( const std::string & out )
{
   return out.empty() || out.ends_with( "\n\n" ) || out.ends_with( "{\n" ) ||
         out.ends_with( ":\n" );
}

std::string filledLines( Filling & filling, std::string_view layout )
{
   std::string out;
   bool afterGap = false; // a line disappeared since the last one that was printed
   for ( const std::string_view line : unindented( layout ) ) {
      if ( isBlank( line ) ) {
         if ( !afterGap || !endsBlank( out ) ) {
            out.push_back( '\n' );
         }
         continue;
      }
      if ( filling.vanishes( line ) ) {
         afterGap = true;
         continue;
      }
      if ( afterGap && line[ indentationOf( line ) ] == '}' && out.ends_with( "\n\n" ) ) {
         out.pop_back();
      }
      out.append( filling.line( line, indentationOf( line ) ) );
      out.push_back( '\n' );
      afterGap = false;
   }
   while ( afterGap && out.ends_with( "\n\n" ) ) {
      out.pop_back();
   }
   return out;
}

} // namespace

std::string fill( Variables variables, std::string_view layout )
{
   Filling filling( variables );
   std::string out = layout.starts_with( '\n' ) ? filledLines( filling, layout )
                                                : filling.line( layout, 0 );
   filling.needAllUsed( layout );
   return out;
}

Paragraphs & Paragraphs::add( std::string_view text )
{
   if ( !text.empty() ) {
      text_.append( text_.empty() ? "" : "\n" ).append( text );
      if ( !text.ends_with( '\n' ) ) {
         text_.push_back( '\n' );
      }
   }
   return *this;
}

} // namespace VokGen
