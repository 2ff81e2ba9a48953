// The functions of the test module that are written by hand.
#include "tests/model/Everything.h"

#include <string>

namespace Test {

std::uint32_t Limits::twice( std::uint32_t n )
{
   return 2 * n;
}

double Level::half() const
{
   return value() / 2.0;
}

Corvo::String Lazy::stringValue() const
{
   return value() == 0 ? Corvo::String( "off" )
                       : Corvo::String( std::to_string( value() ) + " ms" );
}

// The text of an address is its halves with a dash between.
Address::Address( const Corvo::String & text )
{
   Vok::CharRange range( text.view() );
   high_ = static_cast< std::uint16_t >( range.number( 65535 ) );
   range.need( '-' );
   low_ = static_cast< std::uint16_t >( range.number( 65535 ) );
   range.needEnd();
}

Corvo::String Address::stringValue() const
{
   return Corvo::String( std::to_string( high_ ) + "-" + std::to_string( low_ ) );
}

// In a log the lower half stands first, which the generated form would not do.
std::size_t Address::logSize() const
{
   return 4;
}

void Address::writeLog( Vok::NboAttrLog::Out & log ) const
{
   log.put( low_ );
   log.put( high_ );
}

void Address::readLog( Vok::NboAttrLog::In & log )
{
   low_ = log.get< std::uint16_t >();
   high_ = log.get< std::uint16_t >();
}

Span::Span( std::uint16_t first, std::uint16_t last ) : first_( first ),
                                                        last_( last )
{
   if ( last < first ) {
      Corvo::RangeException::throwException( "Test::Span::last < Test::Span::first not allowed" );
   }
}

Span Span::whole()
{
   return Span( 0, 65535 );
}

// Written as an address is, whose halves are in any order.
Span::Span( const Corvo::String & text )
{
   const Address address( text );
   *this = Span( address.high(), address.low() );
}

Corvo::String Span::stringValue() const
{
   return Corvo::String( std::to_string( first_ ) + "-" + std::to_string( last_ ) );
}

std::size_t Span::logSize() const
{
   return 4;
}

void Span::writeLog( Vok::NboAttrLog::Out & log ) const
{
   log.put( first_ );
   log.put( last_ );
}

void Span::readLog( Vok::NboAttrLog::In & log )
{
   const auto first = log.get< std::uint16_t >();
   *this = Span( first, log.get< std::uint16_t >() );
}

bool Slot::heavy() const
{
   return weight() > 100;
}

std::uint32_t Root::total() const
{
   return mid() + count();
}

Corvo::String Root::path( const Corvo::String & kind ) const
{
   return Corvo::String( "test/" + std::string( kind.view() ) );
}

void Root::paint( bool reset, bool first, bool second )
{
   Flags next = reset ? Flags() : flags();
   if ( first ) {
      next.firstIs( true );
   } else if ( second ) {
      next.secondIs( true );
   }
   flagsIs( next );
}

void Special::fill()
{
   coloursIs( Colour::red );
   coloursIs( Colour::green );
}

Corvo::String describe( Colour c )
{
   return c == Colour::red ? Corvo::String( "warm" ) : Corvo::String( "cold" );
}

} // namespace Test
