// The form of log lines.
#include "tools/flowtrackd/Log.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <unistd.h>

namespace Flowtrackd {

namespace {

using Vok::Store::Event;

std::string now()
{
   const auto time = std::chrono::system_clock::now();
   const auto milliseconds =
         std::chrono::duration_cast< std::chrono::milliseconds >( time.time_since_epoch() ).count();
   const std::time_t seconds = std::chrono::system_clock::to_time_t( time );
   std::tm parts{};
   gmtime_r( &seconds, &parts );
   char text[ 40 ];
   const std::size_t size = std::strftime( text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts );
   std::snprintf( text + size, sizeof text - size, ".%03dZ",
         static_cast< int >( milliseconds % 1000 ) );
   return text;
}

bool standsByItself( std::string_view value )
{
   return !value.empty() && std::all_of( value.begin(), value.end(), []( char c ) {
      return c > ' ' && c < 0x7f && c != '"' && c != '=' && c != '\\';
   } );
}

Level levelOf( Event::Kind kind )
{
   switch ( kind ) {
   case Event::Kind::notKept:
   case Event::Kind::setAside:
      return Level::error;
   case Event::Kind::refused:
   case Event::Kind::wholeTree:
   case Event::Kind::passedOver:
      return Level::warning;
   default:
      return Level::info;
   }
}

std::string_view nameOf( Level level )
{
   return level == Level::error ? "error" : level == Level::warning ? "warning"
                                                                    : "info";
}

} // namespace

void appendField( std::string & line, std::string_view name, std::string_view value )
{
   line.append( " " ).append( name ).append( "=" );
   if ( standsByItself( value ) ) {
      line.append( value );
      return;
   }
   line += '"';
   for ( const char c : value ) {
      const auto code = static_cast< unsigned char >( c );
      if ( c == '"' || c == '\\' ) {
         line.append( { '\\', c } );
      } else if ( code < ' ' || code == 0x7f ) {
         constexpr std::string_view digits = "0123456789abcdef";
         line.append( "\\x" ).append( { digits[ code >> 4U ], digits[ code & 15U ] } );
      } else {
         line += c;
      }
   }
   line += '"';
}

Log::Log() : journal_( std::getenv( "JOURNAL_STREAM" ) != nullptr ) {}

void Log::line( Level level, std::string_view event, Fields fields ) const
{
   std::string text = journal_ ? "<" + std::to_string( static_cast< int >( level ) ) + ">"
                               : "time=" + now() + " ";
   text.append( "level=" ).append( nameOf( level ) );
   appendField( text, "event", event );
   for ( const auto & [ name, value ] : fields ) {
      if ( !value.empty() ) {
         appendField( text, name, value );
      }
   }
   text += '\n';
   // In one piece, so that lines of several processes do not mix; one that nobody takes is lost.
   static_cast< void >( !::write( STDERR_FILENO, text.data(), text.size() ) );
}

void Log::happened( const Event & event )
{
   line( levelOf( event.kind ), name( event.kind ),
         { { "path", event.path }, { "program", event.program }, { "peer", event.peer },
               { "text", event.text } } );
}

} // namespace Flowtrackd
