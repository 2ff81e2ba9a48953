// Texts of values: the first byte of an input chooses the type, the rest is the text.
#include "fuzz/Support.h"
#include "fuzz/ValueTypes.h"
#include "tests/support/SpareSlabs.h"

#include "Vok/Vok.h"

#include <optional>
#include <string>

namespace {

using Fuzz::hold;
using Vok::Detail::OwnedValue;
using Vok::Detail::ValueOps;

// Once: the enumeration with the most names is looked through.
constexpr Fuzz::Budget textSteps{ 40000, 100 };

// Reads a value off the front of a text into an existing one; how many bytes that took, or nothing.
std::optional< std::size_t > readFront( std::string_view text, OwnedValue & into )
{
   Vok::CharRange range( text );
   const Fuzz::Cost cost;
   bool read = false;
   try {
      into.ops().read( range, into.data() );
      read = true;
   } catch ( const Corvo::ParseException & e ) {
      hold( e.offset() <= text.size(), "the offset of an error lies in the text" );
   } catch ( const Corvo::RangeException & ) {
   }
   cost.holdSteps( textSteps, text.size() );
   cost.holdHeap( Fuzz::hostileHeap, text.size() );
   return read ? std::optional( range.offset() ) : std::nullopt;
}

// The text without the white space that may stand between tokens: all that is not in quotes.
std::string withoutSpace( std::string_view text )
{
   std::string kept;
   bool quoted = false;
   for ( std::size_t i = 0; i != text.size(); ++i ) {
      const char c = text[ i ];
      if ( quoted && c == '\\' && i + 1 != text.size() ) {
         kept += c;
         kept += text[ ++i ];
         continue;
      }
      quoted = quoted != ( c == '"' );
      if ( quoted || std::string_view( " \t\n\r" ).find( c ) == std::string_view::npos ) {
         kept += c;
      }
   }
   return kept;
}

void holdRoundTrip( std::string_view text, const OwnedValue & value )
{
   const ValueOps & type = value.ops();
   const Corvo::String printed = type.text( value.data() );
   hold( printed.view() == withoutSpace( text ), "a value has one text, white space apart" );
   OwnedValue again( type );
   hold( readFront( printed.view(), again ) == printed.size(), "what is printed can be read" );
   hold( type.equal( value.data(), again.data() ), "a value survives its text" );
   hold( type.text( again.data() ) == printed, "a text survives its value" );
   hold( !type.hash || type.hash( value.data() ) == type.hash( again.data() ),
         "equal values have equal hashes" );
   hold( !type.less || !type.less( value.data(), again.data() ), "no value is before itself" );
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size )
{
   static const Fuzz::ValueTypes types = [] {
      TestSupport::makeSpareSlabs(); // no input is charged for the first slab of a size
      return Fuzz::ValueTypes( true );
   }();
   Fuzz::Input input( data, size );
   const ValueOps & type = types.of( input.byte() );
   const std::string_view text = input.text();

   OwnedValue value( type );
   const OwnedValue before( value );
   if ( const auto end = readFront( text, value ) ) {
      holdRoundTrip( text.substr( 0, *end ), value );
   } else {
      hold( type.equal( value.data(), before.data() ), "a bad text leaves a value as it was" );
   }
   return 0;
}
