// Checks a value type of one number against its row.
#include "tests/support/NumberTable.h"

#include "tests/support/ValueTable.h"

#include <gtest/gtest.h>

#include <set>

namespace TestSupport {

std::string hexOf( const Vok::NboAttrLog::Out & log )
{
   constexpr std::string_view digits = "0123456789abcdef";
   std::string hex;
   for ( const std::byte byte : log.bytes() ) {
      hex += digits[ std::to_integer< unsigned >( byte >> 4 ) ];
      hex += digits[ std::to_integer< unsigned >( byte & std::byte( 15 ) ) ];
   }
   return hex;
}

std::vector< std::byte > bytesOf( std::string_view hex )
{
   std::vector< std::byte > bytes;
   for ( std::size_t i = 0; i + 1 < hex.size(); i += 2 ) {
      bytes.push_back( static_cast< std::byte >(
            std::stoul( std::string( hex.substr( i, 2 ) ), nullptr, 16 ) ) );
   }
   return bytes;
}

namespace {

/// The hexadecimal form of a number in network byte order.
std::string wordHex( std::uint64_t number, unsigned bits )
{
   Vok::NboAttrLog::Out out;
   for ( unsigned shift = bits; shift != 0; shift -= 8 ) {
      out.put( static_cast< std::uint8_t >( number >> ( shift - 8 ) ) );
   }
   return hexOf( out );
}

std::uint64_t mostOf( unsigned bits )
{
   return ~std::uint64_t( 0 ) >> ( 64 - bits );
}

template< class E, class Call > void expectMessage( std::string_view message, Call call )
{
   try {
      call();
      ADD_FAILURE() << "nothing was thrown";
   } catch ( const E & e ) {
      EXPECT_EQ( std::string( e.what() ), message );
   }
}

/// One number in every way into the type.
class Number {
 public:
   Number( const NumberRow & row, std::uint64_t number )
         : row_( row ),
           ops_( row.ops ),
           number_( number ),
           text_( std::to_string( number ) ),
           hex_( wordHex( number, row.bits ) ),
           type_( *Corvo::ModuleInspectData::findType( row.type ) )
   {
   }

   void expectTaken()
   {
      EXPECT_EQ( ops_.built( number_ ), number_ );
      EXPECT_EQ( ops_.text( number_ ), text_ );
      EXPECT_EQ( ops_.parsed( text_ ), number_ );
      EXPECT_EQ( ops_.log( number_ ), hex_ );
      EXPECT_EQ( ops_.decoded( hex_ ), number_ );
      std::uint64_t kept = 0;
      ops_.set( row_.preset.number, number_, kept );
      EXPECT_EQ( kept, number_ );
      ops_.set( number_, number_, kept );
      EXPECT_EQ( kept, number_ );
      Vok::Value value = type_.make();
      type_.fieldSet( value.data(), "value", text_ );
      EXPECT_EQ( type_.fieldGet( value.data(), "value" ), text_ );
      const bool same = number_ == row_.preset.number;
      EXPECT_EQ( ops_.equal( number_, row_.preset.number ), same );
      EXPECT_EQ( ops_.sameHash( number_, row_.preset.number ), same );
   }

   void expectRefused()
   {
      expectMessage< Corvo::RangeException >( row_.message, [ & ] { ops_.built( number_ ); } );
      expectMessage< Corvo::RangeException >( row_.message, [ & ] { ops_.parsed( text_ ); } );
      expectMessage< Corvo::RangeException >( row_.message, [ & ] { ops_.decoded( hex_ ); } );
      std::uint64_t kept = 0;
      expectMessage< Corvo::RangeException >( row_.message,
            [ & ] { ops_.set( row_.preset.number, number_, kept ); } );
      EXPECT_EQ( kept, row_.preset.number );
      Vok::Value value = type_.make();
      expectMessage< Corvo::RangeException >( row_.message,
            [ & ] { type_.fieldSet( value.data(), "value", text_ ); } );
      EXPECT_EQ( type_.fieldGet( value.data(), "value" ), std::to_string( row_.preset.number ) );
   }

   /// A number beyond the width: only a text can hold it.
   void expectUnreadable() { EXPECT_THROW( ops_.parsed( text_ ), Corvo::ParseException ); }

 private:
   const NumberRow & row_;
   const NumberOps & ops_;
   std::uint64_t number_;
   std::string text_;
   std::string hex_;
   const Vok::TypeData & type_;
};

/// The table of the type's fields and constants that a row stands for.
void expectRecords( const NumberRow & row )
{
   const auto width = []( unsigned bits ) { return "u" + std::to_string( bits ); };
   std::vector< std::string > texts( 8 );
   std::vector< AttributeRow > rows;
   texts[ 0 ] = width( row.bits );
   texts[ 1 ] = std::to_string( row.preset.number );
   rows.push_back( { 2, "value", plain( texts[ 0 ] ), texts[ 1 ] } );
   if ( row.checked != Checked::unbounded ) {
      rows[ 0 ].bounds = within( row.lower.number, row.upper.number, "" );
   }
   std::size_t used = 2;
   for ( const Named & named : { row.lower, row.upper, row.preset } ) {
      if ( !named.name.empty() ) {
         const std::string & type = texts[ used++ ] =
               width( named.bits == 0 ? row.bits : named.bits );
         const std::string & text = texts[ used++ ] = std::to_string( named.number );
         const auto id = static_cast< Vok::AttrId >( 2 + rows.size() );
         rows.push_back( { id, named.name, constant( type ), text } );
      }
   }
   expectValue( { row.type, rows } );
}

} // namespace

void expectNumber( const NumberRow & row )
{
   SCOPED_TRACE( row.type );
   EXPECT_EQ( row.ops.bits, row.bits );
   EXPECT_EQ( row.ops.ordered, row.ordered );
   EXPECT_EQ( row.ops.preset(), row.preset.number );
   expectRecords( row );

   const std::uint64_t most = mostOf( row.bits );
   std::set< std::uint64_t > numbers = { 0, row.lower.number, row.lower.number + 1,
      row.preset.number, row.upper.number - 1, row.upper.number, row.upper.number + 1, most,
      most + 1 };
   if ( row.lower.number != 0 ) {
      numbers.insert( row.lower.number - 1 );
   }
   for ( const std::uint64_t number : numbers ) {
      SCOPED_TRACE( number );
      const bool inside = number >= row.lower.number && number <= row.upper.number;
      if ( number > most ) {
         Number( row, number ).expectUnreadable();
      } else if ( inside || row.checked != Checked::always ) {
         Number( row, number ).expectTaken();
      } else {
         Number( row, number ).expectRefused();
      }
   }
}

} // namespace TestSupport
