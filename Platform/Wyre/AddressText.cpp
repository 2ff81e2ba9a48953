// The texts of IPv4 and IPv6 addresses. An IPv6 address may end in an IPv4 address, and so both
// stand here.
#include "Wyre/Ip6Addr.h"
#include "Wyre/IpAddr.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace Wyre {
namespace {

// ---- Reading -----------------------------------------------------------------------------------

// Gives `read` the whole text, all of which it has to consume. What it throws is thrown on with the
// text, cut off where no address is that long, and with what the text should have been.
template< class Read >
auto readWhole( const Corvo::String & text, std::string_view kind, Read read )
{
   constexpr std::size_t shown = 64;
   Vok::CharRange range( text.view() );
   try {
      const auto address = read( range );
      range.needEnd();
      return address;
   } catch ( const Corvo::ParseException & e ) {
      Vok::TextOut message;
      message.putString( text.view().substr( 0, shown ) );
      message.put( " is no " );
      message.put( kind );
      message.put( " address: " );
      message.put( std::string_view( e.what() ) );
      throw Corvo::ParseException( std::string( message.view() ), e.offset() );
   }
}

// Four decimal octets.
std::uint32_t readIp( Vok::CharRange & range )
{
   std::uint32_t address = 0;
   for ( int octet = 0; octet < 4; ++octet ) {
      if ( octet != 0 && !range.accept( '.' ) ) {
         range.fail( "\".\"" );
      }
      address = address << 8 | static_cast< std::uint32_t >( range.number( 255 ) );
   }
   return address;
}

constexpr std::size_t groupCount = 8;
using Groups = std::array< std::uint16_t, groupCount >;

// Reads an IPv6 address (RFC 4291, section 2.2): eight groups of 16 bits, the last two of which may
// be an IPv4 address, and "::" once in the place of one zero group or more.
class Ip6Reader {
 public:
   explicit Ip6Reader( Vok::CharRange & range ) : range_( range ) {}

   Groups read()
   {
      if ( range_.rest().starts_with( "::" ) ) {
         range_.accept( ':' );
         readGap();
      }
      while ( !endsInGap() ) {
         needRoom();
         readGroups();
         if ( range_.empty() ) {
            break;
         }
         needRoom();
         if ( !range_.accept( ':' ) ) {
            range_.fail( "\":\"" );
         }
         if ( range_.at( ':' ) ) {
            readGap();
         }
      }
      return spread();
   }

 private:
   bool hasGap() const { return gap_ <= groupCount; }
   bool endsInGap() const { return range_.empty() && gap_ == count_; }

   // How many groups may follow.
   std::size_t free() const { return groupCount - count_ - ( hasGap() ? 1 : 0 ); }

   void needRoom() const
   {
      if ( free() == 0 ) {
         range_.fail( "the end of the text" );
      }
   }

   // The second colon of a "::".
   void readGap()
   {
      if ( hasGap() ) {
         range_.fail( "no second \"::\"" );
      }
      range_.accept( ':' );
      gap_ = count_;
   }

   // One group, or the two of an IPv4 address, which ends the text.
   void readGroups()
   {
      const std::size_t start = range_.offset();
      const std::uint16_t group = readGroup();
      if ( free() < 2 || !range_.at( '.' ) ) {
         push( group );
         return;
      }
      range_.backTo( start );
      const std::uint32_t address = readIp( range_ );
      range_.needEnd();
      push( static_cast< std::uint16_t >( address >> 16 ) );
      push( static_cast< std::uint16_t >( address ) );
   }

   std::uint16_t readGroup()
   {
      const std::size_t start = range_.offset();
      const std::string_view digits = range_.word();
      const char * const end = digits.data() + digits.size();
      std::uint16_t group = 0;
      const auto [ stop, error ] = std::from_chars( digits.data(), end, group, 16 );
      if ( error != std::errc() || stop != end || digits.size() > 4 ) {
         range_.backTo( start );
         range_.fail( "1 to 4 hexadecimal digits" );
      }
      return group;
   }

   void push( std::uint16_t group ) { groups_[ count_++ ] = group; }

   // All eight groups: those behind the gap belong at the end.
   Groups spread() const
   {
      if ( !hasGap() && count_ != groupCount ) {
         range_.fail( "8 groups" );
      }
      Groups all{};
      const std::size_t before = std::min( gap_, count_ );
      std::copy_n( groups_.begin(), before, all.begin() );
      std::copy_backward( groups_.begin() + before, groups_.begin() + count_, all.end() );
      return all;
   }

   Vok::CharRange & range_;
   Groups groups_{};
   std::size_t count_ = 0;
   std::size_t gap_ = groupCount + 1; // how many groups stand before the "::"
};

// ---- Writing -----------------------------------------------------------------------------------

void putIp( Vok::TextOut & out, std::uint32_t address )
{
   for ( unsigned shift = 32; shift != 0; ) {
      shift -= 8;
      out.putNumber( address >> shift & 255U );
      if ( shift != 0 ) {
         out.put( '.' );
      }
   }
}

void putGroup( Vok::TextOut & out, std::uint16_t group )
{
   std::array< char, 4 > digits;
   char * const end = std::to_chars( digits.begin(), digits.end(), group, 16 ).ptr;
   out.put( std::string_view( digits.begin(), end ) );
}

struct Run {
   std::size_t start = 0;
   std::size_t length = 0;
};

// What "::" stands for: the longest run of zero groups, of several the first, and none of a single
// group (RFC 5952, section 4.2).
Run longestZeroRun( const Groups & groups )
{
   Run longest;
   Run run;
   for ( std::size_t i = 0; i < groupCount; ++i ) {
      run = groups[ i ] == 0 ? Run{ i - run.length, run.length + 1 } : Run();
      if ( run.length > longest.length ) {
         longest = run;
      }
   }
   return longest.length < 2 ? Run() : longest;
}

void putGroups( Vok::TextOut & out, const Groups & groups )
{
   const Run zeros = longestZeroRun( groups );
   const std::size_t behind = zeros.start + zeros.length;
   for ( std::size_t i = 0; i < groupCount; ) {
      if ( zeros.length != 0 && i == zeros.start ) {
         out.put( "::" );
         i = behind;
         continue;
      }
      if ( i != 0 && i != behind ) {
         out.put( ':' );
      }
      putGroup( out, groups[ i++ ] );
   }
}

} // namespace

// ---- Members -----------------------------------------------------------------------------------

IpAddr::IpAddr( const Corvo::String & text ) : value_( readWhole( text, "IPv4", readIp ) ) {}

Corvo::String IpAddr::stringValue() const
{
   Vok::TextOut out;
   putIp( out, value_ );
   return out.text();
}

Ip6Addr::Ip6Addr( const Corvo::String & text )
{
   const Groups groups = readWhole(
         text, "IPv6", []( Vok::CharRange & range ) { return Ip6Reader( range ).read(); } );
   for ( std::size_t i = 0; i < groupCount; ++i ) {
      std::uint64_t & half = i < groupCount / 2 ? high_ : low_;
      half = half << 16 | groups[ i ];
   }
}

Corvo::String Ip6Addr::stringValue() const
{
   Vok::TextOut out;
   const bool isMappedIp = high_ == 0 && low_ >> 32 == 0xffff;
   if ( isMappedIp ) {
      out.put( "::ffff:" );
      putIp( out, static_cast< std::uint32_t >( low_ ) );
   } else {
      Groups groups;
      for ( std::size_t i = 0; i < groupCount; ++i ) {
         const std::uint64_t half = i < groupCount / 2 ? high_ : low_;
         groups[ i ] = static_cast< std::uint16_t >( half >> ( 48 - i % 4 * 16 ) );
      }
      putGroups( out, groups );
   }
   return out.text();
}

} // namespace Wyre
