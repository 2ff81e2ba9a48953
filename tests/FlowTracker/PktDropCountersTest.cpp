// Counters of dropped packets: the request, the response and the reasons.
#include "tests/support/EnumTable.h"
#include "tests/support/NumberTable.h"
#include "tests/support/Recorder.h"
#include "tests/support/ValueForms.h"
#include "tests/support/ValueTable.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using namespace FlowTracking;
using TestSupport::AttributeRow;
using TestSupport::expectForms;
using TestSupport::Heard;
using TestSupport::plain;
using TestSupport::Recorder;
using Response = PktDropCounterUpdateResponse;

constexpr std::uint64_t most = std::numeric_limits< std::uint64_t >::max();
constexpr const char * head = "FlowTracking::PktDropCounterUpdateResponse[";

// ---- Reasons ------------------------------------------------------------------------------------

TEST( PktDropReasonDeathTest, areAsTheTableSays )
{
   TestSupport::expectEnumeration( { "FlowTracking::PktDropReason",
         TestSupport::enumOps< PktDropReason, PktDropReasonInstance, PktDropReasonInstance >(), 8,
         { { 0, "kernelDrops" }, { 1, "ftFullDrops" } } } );
}

TEST( PktDropReasonTest, aNumberOrATextThatIsNoneIsRefused )
{
   EXPECT_EQ( PktDropReasonInstance( 0U ), kernelDrops );
   EXPECT_EQ( PktDropReasonInstance( "ftFullDrops" ), ftFullDrops );
   EXPECT_EQ( PktDropReasonInstance( Corvo::String( "kernelDrops" ) ), kernelDrops );
   EXPECT_THROW( PktDropReasonInstance( 2U ), Corvo::EnumRangeException );
   EXPECT_THROW( PktDropReasonInstance( 256U ), Corvo::EnumRangeException );
   for ( const char * text : { "", "kernelDrop", "KernelDrops", "kernelDrops ", "0" } ) {
      EXPECT_THROW( PktDropReasonInstance( text ), Corvo::EnumRangeException ) << text;
   }
}

TEST( PktDropReasonTest, isReadOutOfALongerText )
{
   Vok::CharRange range( "ftFullDrops,kernelDrops" );
   PktDropReason reason = kernelDrops;
   sequenceToValue( range, &reason );
   EXPECT_EQ( reason, ftFullDrops );
   EXPECT_EQ( range.offset(), 11U );
   Vok::CharRange unknown( "kernelDropsToo" );
   EXPECT_THROW( sequenceToValue( unknown, &reason ), Corvo::EnumRangeException );
   EXPECT_EQ( unknown.offset(), 0U );
   EXPECT_EQ( reason, ftFullDrops );
}

// ---- Responses ----------------------------------------------------------------------------------

TEST( PktDropResponseTest, isAsItsTableSays )
{
   const std::vector< AttributeRow > fields = {
      { 2, "pktDropReason", plain( "FlowTracking::PktDropReason" ), "kernelDrops", "ftFullDrops" },
      { 3, "pktDrops", plain( "u64" ), "0", "18446744073709551615" },
      { 4, "pkts", plain( "u64" ), "0", "18446744073709551615" },
      { 5, "writerSeqNo", plain( "u8" ), "0", "255" },
   };
   TestSupport::expectValue( { "FlowTracking::PktDropCounterUpdateResponse", fields, false } );
}

TEST( PktDropResponseTest, isBuiltFromItsFieldsInOrder )
{
   const Response response( ftFullDrops, 5, 100, 7 );
   EXPECT_EQ( response.pktDropReason(), ftFullDrops );
   EXPECT_EQ( response.pktDrops(), 5U );
   EXPECT_EQ( response.pkts(), 100U );
   EXPECT_EQ( response.writerSeqNo(), 7U );
   EXPECT_EQ( Response(), Response( kernelDrops, 0, 0, 0 ) );
}

TEST( PktDropResponseTest, isEqualWhereAllFourFieldsAre )
{
   const Response response( kernelDrops, 5, 100, 7 );
   EXPECT_TRUE( response.isEq( response ) );
   EXPECT_EQ( response, Response( kernelDrops, 5, 100, 7 ) );
   EXPECT_NE( response, Response( ftFullDrops, 5, 100, 7 ) );
   EXPECT_NE( response, Response( kernelDrops, 6, 100, 7 ) );
   EXPECT_NE( response, Response( kernelDrops, 5, 101, 7 ) );
   EXPECT_NE( response, Response( kernelDrops, 5, 100, 8 ) );
}

template< class V >
concept Hashable = requires( const V & v )
{
   std::hash< V >()( v );
};

TEST( PktDropResponseTest, isNotHashable )
{
   static_assert( !Hashable< Response > && Hashable< ExporterInactiveReason > );
   const Response response;
   const Vok::TypeData & type =
         *Corvo::ModuleInspectData::findType( "FlowTracking::PktDropCounterUpdateResponse" );
   EXPECT_THROW( type.hash( &response ), Corvo::NotHashableException );
}

TEST( PktDropResponseTest, textAndLog )
{
   expectForms( Response( ftFullDrops, 0x0102030405060708, most, 255 ),
         std::string( head ) +
               "pktDropReason=ftFullDrops,pktDrops=72623859790382856,"
               "pkts=18446744073709551615,writerSeqNo=255]",
         "00000001"
         "0102030405060708"
         "ffffffffffffffff"
         "ff" );
   expectForms( Response(),
         std::string( head ) + "pktDropReason=kernelDrops,pktDrops=0,pkts=0,writerSeqNo=0]",
         "00000000"
         "0000000000000000"
         "0000000000000000"
         "00" );
}

/// What reading a text says of the field that fails: its name and the whole message.
std::pair< std::string, std::string > failureOf( const std::string & fields )
{
   try {
      Corvo::strepToValue< Response >( head + fields );
   } catch ( const Corvo::DeserializationException & e ) {
      return { std::string( e.attribute() ), e.what() };
   }
   return {};
}

TEST( PktDropResponseTest, aReasonThatIsNoneIsNamed )
{
   for ( const std::string reason : { "none", "2", "ftFullDropsx" } ) {
      const auto [ attribute, message ] =
            failureOf( "pktDropReason=" + reason + ",pktDrops=1,pkts=2,writerSeqNo=3]" );
      EXPECT_EQ( attribute, "pktDropReason" );
      EXPECT_EQ( message,
            "attribute pktDropReason: FlowTracking::PktDropReason has no enumerator named " +
                  reason );
   }
}

TEST( PktDropResponseTest, aTextWithoutItsNameItsFieldsOrTheirOrderIsRefused )
{
   const std::string fields = "pktDropReason=kernelDrops,pktDrops=1,pkts=2,writerSeqNo=3";
   EXPECT_NO_THROW( Corvo::strepToValue< Response >( head + fields + "]" ) );
   const std::string texts[] = {
      "[" + fields + "]",
      "FlowTracking::PktDropCounterUpdateRequest[" + fields + "]",
      head + fields,
      head + fields + ",more=4]",
      head + fields + "] ",
      std::string( head ) + "pktDrops=1,pkts=2,writerSeqNo=3]",
      std::string( head ) + "pktDropReason=kernelDrops,pktDrops=1,pkts=2]",
      std::string( head ) + "pktDrops=1,pktDropReason=kernelDrops,pkts=2,writerSeqNo=3]",
      std::string( head ) + "pktDropReason=kernelDrops,pkts=2,pktDrops=1,writerSeqNo=3]",
      "",
   };
   for ( const std::string & text : texts ) {
      EXPECT_THROW( Corvo::strepToValue< Response >( text ), Corvo::ParseException ) << text;
   }
}

TEST( PktDropResponseTest, aNumberBeyondItsWidthIsRefusedFromAText )
{
   const char * const texts[] = {
      "pktDropReason=kernelDrops,pktDrops=18446744073709551616,pkts=2,writerSeqNo=3]",
      "pktDropReason=kernelDrops,pktDrops=1,pkts=-1,writerSeqNo=3]",
      "pktDropReason=kernelDrops,pktDrops=1,pkts=2,writerSeqNo=256]",
   };
   for ( const std::string text : texts ) {
      EXPECT_THROW( Corvo::strepToValue< Response >( head + text ), Corvo::ParseException )
            << text;
   }
}

Response fromLog( const std::string & hex )
{
   const std::vector< std::byte > bytes = TestSupport::bytesOf( hex );
   Vok::NboAttrLog::In in( bytes.data(), bytes.size() );
   Response response( &in );
   EXPECT_EQ( in.remaining(), 0U );
   return response;
}

TEST( PktDropResponseTest, theReasonOfALogIsNarrowedAndThenMustBeOne )
{
   const std::string rest = "0000000000000001"
                            "0000000000000002"
                            "03";
   EXPECT_EQ( fromLog( "00000001" + rest ), Response( ftFullDrops, 1, 2, 3 ) );
   EXPECT_EQ( fromLog( "00000101" + rest ), Response( ftFullDrops, 1, 2, 3 ) );
   for ( const std::string code : { "00000002", "000000ff" } ) {
      EXPECT_THROW( fromLog( code + rest ), Vok::NboAttrLog::Exception ) << code;
   }
}

TEST( PktDropResponseTest, everyPrefixOfALogIsRefused )
{
   Vok::NboAttrLog::Out out;
   out << Response( ftFullDrops, 5, 100, 7 );
   ASSERT_EQ( out.size(), 21U );
   for ( std::size_t size = 0; size != out.size(); ++size ) {
      Vok::NboAttrLog::In in( out.data(), size );
      EXPECT_THROW( Response{ &in }, Vok::NboAttrLog::Exception ) << size;
   }
}

// ---- Requests -----------------------------------------------------------------------------------

TEST( PktDropRequestTest, aFreshRequestIsNumberZero )
{
   const auto request = pktDropCounterUpdateRequestFactory( "drops" );
   EXPECT_EQ( request->name(), "drops" );
   EXPECT_EQ( request->nameString(), "drops" );
   EXPECT_EQ( request->readerSeqNo(), 0U );
   EXPECT_EQ( PktDropCounterUpdateRequest::PktDropCounterUpdateRequestIs( "b" )->name(), "b" );
}

TEST( PktDropRequestTest, raisingAddsAndGivesTheNewNumber )
{
   const auto request = pktDropCounterUpdateRequestFactory( "drops" );
   Recorder recorder( *request );
   EXPECT_EQ( request->readerSeqNoInc( 1 ), 1U );
   EXPECT_EQ( request->readerSeqNoInc( 41 ), 42U );
   EXPECT_EQ( request->readerSeqNo(), 42U );
   EXPECT_EQ( recorder.take(), ( Heard{ "258 was 0", "258 was 1" } ) );
}

TEST( PktDropRequestTest, behind255ComesZeroAndIsHeard )
{
   const auto request = pktDropCounterUpdateRequestFactory( "drops" );
   request->readerSeqNoIs( 255 );
   Recorder recorder( *request );
   EXPECT_EQ( request->readerSeqNoInc( 1 ), 0U );
   EXPECT_EQ( recorder.take(), Heard{ "258 was 255" } );
   EXPECT_EQ( request->readerSeqNoInc( 255 ), 255U );
   EXPECT_EQ( request->readerSeqNoInc( 255 ), 254U );
   EXPECT_EQ( recorder.take(), ( Heard{ "258 was 0", "258 was 255" } ) );
}

TEST( PktDropRequestTest, everyNumberIsReachedInTurn )
{
   const auto request = pktDropCounterUpdateRequestFactory( "drops" );
   for ( unsigned n = 1; n != 1000; ++n ) {
      ASSERT_EQ( request->readerSeqNoInc( 1 ), n % 256 );
   }
}

TEST( PktDropRequestTest, raisingByNothingAndSettingTheSameAreSilent )
{
   const auto request = pktDropCounterUpdateRequestFactory( "drops" );
   request->readerSeqNoIs( 7 );
   Recorder recorder( *request );
   EXPECT_EQ( request->readerSeqNoInc( 0 ), 7U );
   request->readerSeqNoIs( 7 );
   EXPECT_EQ( recorder.take(), Heard{} );
   request->readerSeqNoIs( 8 );
   EXPECT_EQ( recorder.take(), Heard{ "258 was 7" } );
}

TEST( PktDropRequestTest, aResponseIsFreshWhenItsNumberIsThatOfTheRequest )
{
   const auto request = pktDropCounterUpdateRequestFactory( "drops" );
   const auto status = statusFactory( "sampled" );
   Recorder owner( *request );
   owner.then = [ & ]( const Corvo::Change & ) {
      for ( const PktDropReason reason : { kernelDrops, ftFullDrops } ) {
         status->pktDropRespIs( Response( reason, 3, 50, request->readerSeqNo() ) );
      }
   };
   request->readerSeqNoIs( 254 );
   for ( unsigned round = 0; round != 3; ++round ) {
      const std::uint8_t asked = request->readerSeqNoInc( 1 );
      EXPECT_EQ( status->pktDropResp( kernelDrops ).writerSeqNo(), asked );
      EXPECT_EQ( status->pktDropResp( ftFullDrops ).writerSeqNo(), asked );
   }
   EXPECT_EQ( request->readerSeqNo(), 1U );
   owner.then = nullptr;
   EXPECT_NE( status->pktDropResp( kernelDrops ).writerSeqNo(), request->readerSeqNoInc( 1 ) );
}

} // namespace
