// Definition files: an input is the text of one.
#include "fuzz/Support.h"

#include "vokgen/Compiler.h"
#include "vokgen/emit/Emit.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

using Fuzz::hold;

constexpr Fuzz::Budget compileSteps{ 2000000, 2000 };
// A syntax tree and a model of what was read, with all names.
constexpr Fuzz::Budget compileHeap{ 256 << 10, 300 };

VokGen::Compilation compiled( const std::string & text )
{
   const Fuzz::Cost cost;
   VokGen::Compilation made = VokGen::compileText( "in.vok", text, { FUZZ_IMPORTS } );
   cost.holdSteps( compileSteps, text.size() );
   cost.holdHeap( compileHeap, text.size() );
   hold( made.module ? made.errors.empty() : made.errors.starts_with( "in.vok" ),
         "there is either a module or a reason" );
   return made;
}

bool isComment( std::string_view line )
{
   const std::size_t start = line.find_first_not_of( " \t" );
   return start != std::string_view::npos && line.substr( start ).starts_with( "//" );
}

std::string_view takeLine( std::string_view & text )
{
   const std::string_view line = text.substr( 0, text.find( '\n' ) );
   text.remove_prefix( std::min( line.size() + 1, text.size() ) );
   return line.ends_with( '\r' ) ? line.substr( 0, line.size() - 1 ) : line;
}

// A line with its blanks between tokens doubled.
std::string widened( std::string_view line )
{
   std::string wide;
   bool quoted = false;
   bool escaped = false;
   for ( std::size_t i = 0; i != line.size(); ++i ) {
      if ( !quoted && line.substr( i ).starts_with( "//" ) ) {
         return wide.append( line.substr( i ) );
      }
      quoted = quoted != ( line[ i ] == '"' && !escaped );
      escaped = quoted && line[ i ] == '\\' && !escaped;
      wide.append( line[ i ] == ' ' && !quoted ? 2 : 1, line[ i ] );
   }
   return wide;
}

// The same definitions with more white space. A comment that goes on in a further line has to stay
// in its column.
std::string spacedOut( std::string_view text )
{
   std::string spaced;
   while ( !text.empty() ) {
      const std::string_view line = takeLine( text );
      std::string_view after = text;
      const bool movable = !isComment( line ) && !isComment( takeLine( after ) );
      spaced.append( "  " );
      spaced.append( movable ? widened( line ) : std::string( line ) ).append( "\r\n" );
   }
   return spaced;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size )
{
   const std::string text( Fuzz::Input( data, size ).text() );
   const VokGen::Compilation made = compiled( text );
   if ( !made.module ) {
      hold( compiled( text ).errors == made.errors, "a text has the same errors every time" );
      return 0;
   }
   const VokGen::Compilation spaced = compiled( spacedOut( text ) );
   hold( spaced.errors.empty(), "white space makes no errors" );
   hold( spaced.module->fingerprint == made.module->fingerprint,
         "white space does not change a fingerprint" );
   const auto files = VokGen::emitModule( *made.module );
   const auto filesOfSpaced = VokGen::emitModule( *spaced.module );
   hold( !files.empty() && files.size() == filesOfSpaced.size(), "a module becomes files" );
   for ( std::size_t i = 0; i != files.size(); ++i ) {
      hold( files[ i ].text == filesOfSpaced[ i ].text, "white space does not change code" );
   }
   return 0;
}
