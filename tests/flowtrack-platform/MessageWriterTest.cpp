// Messages hold what was written, within their bounds, and number it.
#include "IpfixDecoder.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>

namespace {

using FlowTest::IpfixDecoder;
using namespace FlowtrackPlatform;

Template twoNumbers( std::uint16_t id )
{
   return { id, 0, { { Ipfix::octetDeltaCount, 8 }, { Ipfix::sourceTransportPort, 2 } } };
}

Bytes twoNumbersOf( std::uint64_t octets, unsigned port )
{
   Bytes record;
   appendNumber( record, octets, 8 );
   appendNumber( record, port, 2 );
   return record;
}

class MessageWriterTest : public testing::Test {
 protected:
   MessageWriter writer( std::size_t most )
   {
      return MessageWriter( 7, most, [ this ]( std::span< const std::uint8_t > message ) {
         raw.emplace_back( message.begin(), message.end() );
         decoder.take( message );
      } );
   }

   IpfixDecoder decoder;
   std::vector< Bytes > raw;
};

// The bytes, as RFC 7011 has them in sections 3.1 to 3.4.
TEST_F( MessageWriterTest, aMessageIsMadeOfTheseBytes )
{
   MessageWriter out = writer( 1400 );
   out.timeIs( 0x5f5e1000 );
   EXPECT_TRUE( out.add( twoNumbers( 256 ) ) );
   EXPECT_TRUE( out.record( 256, twoNumbersOf( 0x0102030405060708, 443 ) ) );
   EXPECT_TRUE( raw.empty() );
   out.flush();
   const Bytes expected = {
      0, 10, 0, 46, 0x5f, 0x5e, 0x10, 0, 0, 0, 0, 0, 0, 0, 0, 7, // header
      0, 2, 0, 16, 1, 0, 0, 2, 0, 1, 0, 8, 0, 7, 0, 2, // template
      1, 0, 0, 14, 1, 2, 3, 4, 5, 6, 7, 8, 1, 0xbb // record
   };
   ASSERT_EQ( raw.size(), 1 );
   EXPECT_EQ( raw[ 0 ], expected );
}

TEST_F( MessageWriterTest, anOptionsTemplateSaysHowManyFieldsAreScopes )
{
   MessageWriter out = writer( 1400 );
   Template names{ 300, 1, {} };
   names.fields.push_back( { Ipfix::observationDomainId, 4 } );
   names.fields.push_back( { Ipfix::observationDomainName, TemplateField::variable } );
   out.add( names );
   Bytes record;
   appendNumber( record, 7, 4 );
   appendText( record, "tracker" );
   out.record( 300, record );
   out.flush();
   ASSERT_EQ( decoder.options.size(), 1 );
   EXPECT_EQ( decoder.options[ 0 ].number( Ipfix::observationDomainId ), 7 );
   const Bytes name = decoder.options[ 0 ].fields.at( Ipfix::observationDomainName );
   EXPECT_EQ( std::string( name.begin(), name.end() ), "tracker" );
   EXPECT_EQ( decoder.templates.at( 300 ).scopes, 1 );
}

TEST_F( MessageWriterTest, longTextsHaveALongLength )
{
   for ( const std::size_t size : { 0U, 1U, 254U, 255U, 256U, 1000U } ) {
      MessageWriter out = writer( 1400 );
      out.add( { 300, 1, { { Ipfix::interfaceName, TemplateField::variable } } } );
      Bytes record;
      appendText( record, std::string( size, 'x' ) );
      EXPECT_TRUE( out.record( 300, record ) );
      decoder = IpfixDecoder();
      out.flush();
      ASSERT_EQ( decoder.options.size(), 1 );
      EXPECT_EQ( decoder.options[ 0 ].fields.at( Ipfix::interfaceName ).size(), size );
   }
}

TEST_F( MessageWriterTest, whatFitsInNoMessageIsRefused )
{
   MessageWriter out = writer( 16 + 4 + 10 );
   EXPECT_FALSE( out.add( twoNumbers( 256 ) ) );
   EXPECT_TRUE( out.record( 256, twoNumbersOf( 1, 2 ) ) );
   EXPECT_FALSE( out.record( 256, Bytes( 11 ) ) );
   EXPECT_EQ( out.records(), 1 );
}

TEST_F( MessageWriterTest, noMessageIsLongerAndNothingIsLost )
{
   for ( std::uint64_t seed = 1; seed <= 100; ++seed ) {
      SCOPED_TRACE( "seed " + std::to_string( seed ) );
      TestSupport::Random random( seed );
      decoder = IpfixDecoder();
      const std::size_t most = 60 + random.below( 400 );
      MessageWriter out = writer( most );
      out.add( twoNumbers( 256 ) );
      out.add( twoNumbers( 257 ) );
      const unsigned count = random.below( 300 );
      for ( unsigned i = 0; i != count; ++i ) {
         out.record( static_cast< std::uint16_t >( 256 + random.below( 2 ) ),
               twoNumbersOf( i, i % 65536 ) );
         if ( random.oneIn( 20 ) ) {
            out.flush();
         }
      }
      out.flush();
      ASSERT_EQ( decoder.flows.size(), count );
      for ( unsigned i = 0; i != count; ++i ) {
         EXPECT_EQ( decoder.flows[ i ].number( Ipfix::octetDeltaCount ), i );
      }
      for ( const auto & message : decoder.messages ) {
         EXPECT_LE( message.bytes, most );
      }
      EXPECT_EQ( out.messages(), decoder.messages.size() );
   }
}

} // namespace
