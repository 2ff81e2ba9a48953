// Texts by hand: printed with std::to_chars, read with std::from_chars.
#include "bench/TextPeers.h"

#include <array>
#include <charconv>
#include <iterator>
#include <utility>

namespace Bench {
namespace {

constexpr std::pair< PlainKind, std::string_view > kinds[] = {
   { PlainKind::none, "kindNone" },
   { PlainKind::web, "kindWeb" },
   { PlainKind::streaming, "kindStreaming" },
   { PlainKind::voice, "kindVoice" },
};

constexpr std::array< bool, 256 > bareBytes = [] {
   std::array< bool, 256 > bare{};
   for ( const char c : std::string_view( "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                          "0123456789_./:@%+-" ) ) {
      bare[ static_cast< unsigned char >( c ) ] = true;
   }
   return bare;
}();
bool isBare( char c ) { return bareBytes[ static_cast< unsigned char >( c ) ]; }

// ---- Printing ---------------------------------------------------------------------------------

template< class Number > void put( std::string & out, Number number )
{
   char digits[ 32 ];
   out.append( digits, std::to_chars( digits, std::end( digits ), number ).ptr );
}

void putText( std::string & out, std::string_view text )
{
   if ( Bench::isBare( text ) ) {
      out += text;
      return;
   }
   out += '"';
   for ( const char c : text ) {
      switch ( c ) {
      case '"':
      case '\\':
         out += '\\';
         out += c;
         break;
      case '\n':
         out += "\\n";
         break;
      case '\t':
         out += "\\t";
         break;
      default:
         if ( c >= ' ' && c <= '~' && c != '\'' ) {
            out += c;
         } else {
            const auto byte = static_cast< unsigned char >( c );
            out += "\\x";
            out += "0123456789abcdef"[ byte >> 4 ];
            out += "0123456789abcdef"[ byte & 15 ];
         }
      }
   }
   out += '"';
}

// ---- Reading ----------------------------------------------------------------------------------

// What is left to read.
class Reader {
 public:
   explicit Reader( std::string_view text ) : at_( text.data() ),
                                              end_( at_ + text.size() ) {}

   bool done() const { return at_ == end_; }
   bool take( std::string_view literal )
   {
      if ( !std::string_view( at_, end_ ).starts_with( literal ) ) {
         return false;
      }
      at_ += literal.size();
      return true;
   }
   template< class Number > bool takeNumber( Number & number )
   {
      const char * const begin = at_;
      const auto [ behind, error ] = std::from_chars( at_, end_, number );
      at_ = behind;
      return error == std::errc() && ( *begin != '0' || behind == begin + 1 );
   }
   bool takeTruth( bool & truth )
   {
      truth = take( "true" );
      return truth || take( "false" );
   }
   bool takeKind( PlainKind & kind )
   {
      const std::string_view word = takeBare();
      for ( const auto & [ code, name ] : kinds ) {
         if ( word == name ) {
            kind = code;
            return true;
         }
      }
      return false;
   }
   bool takeText( std::string & text )
   {
      if ( !take( "\"" ) ) {
         text = takeBare();
         return !text.empty();
      }
      text.clear();
      while ( !done() && *at_ != '"' ) {
         if ( *at_ != '\\' ) {
            text += *at_++;
         } else if ( !takeEscape( text ) ) {
            return false;
         }
      }
      return take( "\"" ) && !Bench::isBare( text );
   }

 private:
   std::string_view takeBare()
   {
      const char * const begin = at_;
      while ( at_ != end_ && isBare( *at_ ) ) {
         ++at_;
      }
      return { begin, at_ };
   }
   bool takeEscape( std::string & text )
   {
      if ( end_ - at_ < 2 ) {
         return false;
      }
      const char c = at_[ 1 ];
      at_ += 2;
      switch ( c ) {
      case '"':
      case '\\':
         text += c;
         return true;
      case 'n':
         text += '\n';
         return true;
      case 't':
         text += '\t';
         return true;
      case 'x':
         break;
      default:
         return false;
      }
      unsigned char byte = 0;
      if ( end_ - at_ < 2 || std::from_chars( at_, at_ + 2, byte, 16 ).ptr != at_ + 2 ) {
         return false;
      }
      at_ += 2;
      text += static_cast< char >( byte );
      return true;
   }

   const char * at_;
   const char * end_;
};

} // namespace

std::string_view nameOf( PlainKind kind )
{
   for ( const auto & [ code, name ] : kinds ) {
      if ( code == kind ) {
         return name;
      }
   }
   return {};
}

bool isBare( std::string_view text )
{
   for ( const char c : text ) {
      if ( !isBare( c ) ) {
         return false;
      }
   }
   return !text.empty();
}

std::string ByHand::print( std::uint32_t value )
{
   std::string out;
   put( out, value );
   return out;
}

std::string ByHand::print( double value )
{
   std::string out;
   put( out, value );
   return out;
}

std::string ByHand::print( PlainKind value ) { return std::string( nameOf( value ) ); }

std::string ByHand::print( const PlainRate & value )
{
   std::string out = "Bench::Rate[packets=";
   put( out, value.packets );
   out += ",bytes=";
   put( out, value.bytes );
   out += ",kind=";
   out += nameOf( value.kind );
   out += ",exact=";
   out += value.exact ? "true]" : "false]";
   return out;
}

std::string ByHand::print( const PlainService & value )
{
   std::string out = "Bench::Service[id=";
   put( out, value.id );
   out += ",name=";
   putText( out, value.name );
   out += ",category=";
   putText( out, value.category );
   out += ",kind=";
   out += nameOf( value.kind );
   out += ']';
   return out;
}

bool ByHand::parse( std::string_view text, std::uint32_t & value )
{
   Reader reader( text );
   return !text.empty() && reader.takeNumber( value ) && reader.done();
}

bool ByHand::parse( std::string_view text, double & value )
{
   const char * const end = text.data() + text.size();
   char shortest[ 32 ];
   if ( std::from_chars( text.data(), end, value ).ptr != end ) {
      return false;
   }
   const char * const behind = std::to_chars( shortest, std::end( shortest ), value ).ptr;
   return text == std::string_view( shortest, behind );
}

bool ByHand::parse( std::string_view text, PlainKind & value )
{
   Reader reader( text );
   return reader.takeKind( value ) && reader.done();
}

bool ByHand::parse( std::string_view text, PlainRate & value )
{
   Reader reader( text );
   return reader.take( "Bench::Rate[packets=" ) && reader.takeNumber( value.packets ) &&
         reader.take( ",bytes=" ) && reader.takeNumber( value.bytes ) && reader.take( ",kind=" ) &&
         reader.takeKind( value.kind ) && reader.take( ",exact=" ) &&
         reader.takeTruth( value.exact ) && reader.take( "]" ) && reader.done();
}

bool ByHand::parse( std::string_view text, PlainService & value )
{
   Reader reader( text );
   return reader.take( "Bench::Service[id=" ) && reader.takeNumber( value.id ) &&
         reader.take( ",name=" ) && reader.takeText( value.name ) && reader.take( ",category=" ) &&
         reader.takeText( value.category ) && reader.take( ",kind=" ) &&
         reader.takeKind( value.kind ) && reader.take( "]" ) && reader.done();
}

} // namespace Bench
