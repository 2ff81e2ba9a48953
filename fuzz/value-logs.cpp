// Attribute logs of values: the first byte of an input chooses the type, the rest is the log.
#include "fuzz/Support.h"
#include "fuzz/ValueTypes.h"
#include "tests/support/SpareSlabs.h"

#include "Vok/Vok.h"

#include <algorithm>
#include <optional>

namespace {

using Fuzz::hold;
using Vok::Detail::OwnedValue;
using Vok::Detail::ValueOps;
using Vok::NboAttrLog::In;
using Vok::NboAttrLog::Out;

constexpr Fuzz::Budget logSteps{ 5000, 50 };

// Reads a value off the front of a log into an existing one; what it took, or nothing.
std::optional< Fuzz::Bytes > readFront( Fuzz::Bytes log, OwnedValue & into )
{
   In in( log );
   const Fuzz::Cost cost;
   bool read = false;
   try {
      into.ops().decode( in, into.data() );
      read = true;
   } catch ( const Vok::NboAttrLog::Exception & ) {
   } catch ( const Corvo::RangeException & ) {
   }
   cost.holdSteps( logSteps, log.size() );
   cost.holdHeap( Fuzz::hostileHeap, log.size() );
   hold( in.remaining() <= log.size(), "reading ends in the log" );
   return read ? std::optional( log.first( log.size() - in.remaining() ) ) : std::nullopt;
}

void holdSame( const OwnedValue & a, const OwnedValue & b )
{
   const ValueOps & type = a.ops();
   hold( type.equal( a.data(), b.data() ), "a value survives the round trip" );
   hold( !type.hash || type.hash( a.data() ) == type.hash( b.data() ),
         "equal values have equal hashes" );
}

// Whether values of a type are written in one way and read in one way: a code of an enumeration is
// narrowed, and a double has many forms of NaN.
bool readsOneForm( std::string_view typeName )
{
   if ( typeName == "double" || typeName == "Vok::Seconds" || typeName == "Corvo::Duration" ) {
      return false;
   }
   const Vok::TypeData * const type = Corvo::ModuleInspectData::findType( typeName );
   if ( !type ) {
      return true;
   }
   const auto fields = type->attributes();
   return type->kind() != Vok::TypeKind::enumeration &&
         std::all_of( fields.begin(), fields.end(), []( const Vok::AttributeData & field ) {
            return readsOneForm( field.typeName() ) && readsOneForm( field.keyTypeName() );
         } );
}

void holdRoundTrips( Fuzz::Bytes log, const OwnedValue & value )
{
   const ValueOps & type = value.ops();
   Out out;
   type.encode( out, value.data() );
   hold( out.size() == log.size(), "a log is as long as the one it was read from" );
   hold( Fuzz::sameBytes( out.bytes(), log ) || !readsOneForm( type.name ),
         "what no writer writes is refused" );
   hold( type.fixedLogSize == 0 || type.fixedLogSize == out.size(), "a fixed size is the size" );
   OwnedValue again( type );
   hold( readFront( out.bytes(), again ).has_value(), "what is written can be read" );
   holdSame( value, again );
   Out outAgain;
   type.encode( outAgain, again.data() );
   hold( Fuzz::sameBytes( out.bytes(), outAgain.bytes() ), "a value has one log" );
   if ( type.read ) {
      const Corvo::String text = type.text( value.data() );
      Vok::CharRange range( text.view() );
      OwnedValue read( type );
      type.read( range, read.data() );
      hold( range.empty(), "a text is read whole" );
      holdSame( value, read );
   }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size )
{
   static const Fuzz::ValueTypes types = [] {
      TestSupport::makeSpareSlabs(); // no input is charged for the first slab of a size
      return Fuzz::ValueTypes( false );
   }();
   Fuzz::Input input( data, size );
   const ValueOps & type = types.of( input.byte() );

   OwnedValue value( type );
   const OwnedValue before( value );
   if ( const auto log = readFront( input.rest(), value ) ) {
      holdRoundTrips( *log, value );
   } else {
      hold( type.equal( value.data(), before.data() ), "a bad log leaves a value as it was" );
   }
   return 0;
}
