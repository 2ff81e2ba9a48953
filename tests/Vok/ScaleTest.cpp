// Very large and very small things: children by the million, texts of 64 MiB, and nothing at all.
#include "tests/Vok/Streams.h"
#include "tests/support/Recorder.h"
#include "tests/support/Sanitizers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using Corvo::Ptr;
using Corvo::strepToValue;
using Corvo::valueToStrep;
using ::Test::Tree;
using TestSupport::Bytes;
using TestSupport::Counter;
using TestSupport::expectEqual;
using TestSupport::Replica;
using TestSupport::Source;

// Sanitizers take an order of magnitude more of all.
constexpr bool sanitized =
      TestSupport::underAddressSanitizer || TestSupport::underThreadSanitizer;
constexpr std::uint32_t million = sanitized ? 100'000 : 1'000'000;
constexpr std::size_t longest = ( sanitized ? std::size_t{ 4 } : std::size_t{ 64 } ) << 20;

TEST( ScaleTest, childrenByTheMillion )
{
   const std::size_t before = Vok::AllocTracker::liveCount( "Test::Tree" );
   Source source;
   for ( std::uint32_t i = 0; i != million; ++i ) {
      source.root->treeIs( std::to_string( i ) )->depthIs( i );
   }
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), before + million );
   Replica replica;
   replica.read( source.batch() );
   EXPECT_EQ( replica.root->tree().size(), million );
   EXPECT_EQ( Vok::treeDigest( *source.root ), Vok::treeDigest( *replica.root ) );

   for ( std::uint32_t i = 0; i < million; i += 2 ) {
      source.root->treeDel( std::to_string( i ) );
   }
   Counter counter( *replica.root );
   replica.read( source.batch() );
   EXPECT_EQ( counter.heard, million / 2 );
   EXPECT_EQ( replica.root->tree( "1" )->depth(), 1U );
   EXPECT_EQ( replica.root->tree( "0" ), nullptr );

   source.root->treeDelAll();
   replica.read( source.batch() );
   EXPECT_EQ( counter.heard, million );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), before );
}

TEST( ScaleTest, membersByTheMillion )
{
   Source source;
   for ( std::uint32_t i = 0; i != million; ++i ) {
      source.root->stepsIs( i, i );
      source.root->wordsIs( std::to_string( i ) );
   }
   Replica replica;
   replica.read( source.batch() );
   EXPECT_EQ( Vok::treeDigest( *source.root ), Vok::treeDigest( *replica.root ) );
   source.root->stepsDelAll();
   source.root->wordsDelAll();
   replica.read( source.batch() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

TEST( ScaleTest, aTextOf64MiB )
{
   std::string bytes( longest, 'x' );
   for ( std::size_t i = 0; i < bytes.size(); i += 1000 ) {
      bytes[ i ] = static_cast< char >( i / 1000 );
   }
   const Corvo::String text( bytes );
   const Corvo::String form = valueToStrep( text );
   EXPECT_TRUE( strepToValue< Corvo::String >( form ) == text );

   Source source;
   source.root->titleIs( text );
   source.root->namesIs( 1, text );
   source.root->wordsIs( text );
   source.root->treeIs( text );
   Replica replica;
   replica.read( source.batch() );
   EXPECT_TRUE( replica.root->title() == text );
   EXPECT_TRUE( replica.root->words( text ) );
   EXPECT_EQ( Vok::treeDigest( *source.root ), Vok::treeDigest( *replica.root ) );
   EXPECT_EQ( Vok::entityAt( *replica.root, Vok::pathOf( *replica.root->tree( text ) ) ),
         replica.root->tree( text ).get() );
   source.root->treeDel( text );
   replica.read( source.batch() );
   EXPECT_TRUE( replica.root->tree().empty() );
}

// ---- Nothing ----------------------------------------------------------------------------------

TEST( EmptyTest, namesAndKeysMayBeEmpty )
{
   Source source;
   source.root = ::Test::Root::RootIs( "" );
   Vok::EntityVokNboAttrLogSa writer( source.root );
   EXPECT_EQ( source.root->name(), "" );
   source.root->titleIs( "" );
   source.root->namesIs( 0, "" );
   source.root->byNameIs( "", ::Test::Pair() );
   source.root->wordsIs( "" );
   source.root->singleIs( "" );
   const Ptr< Tree > child = source.root->treeIs( "" )->kidsIs( "" );
   source.root->leafRefsIs( child );
   EXPECT_EQ( Vok::pathOf( *child ), R"(/tree[""]/kids[""])" );
   EXPECT_EQ( Vok::entityAt( *source.root, R"(/tree[""]/kids[""])" ), child.get() );

   Vok::NboAttrLog::Out out;
   writer.write( out );
   Replica replica;
   replica.read( out.bytes() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   EXPECT_TRUE( replica.root->words( "" ) );
   EXPECT_TRUE( replica.root->tree( "" )->kids( "" ) );
   EXPECT_TRUE( replica.root->single() );
}

TEST( EmptyTest, anEmptyTextIsNoValueButAString )
{
   EXPECT_EQ( valueToStrep( Corvo::String() ), R"("")" );
   EXPECT_EQ( strepToValue< Corvo::String >( R"("")" ), "" );
   EXPECT_THROW( strepToValue< Corvo::String >( "" ), Corvo::ParseException );
   EXPECT_THROW( strepToValue< std::uint32_t >( "" ), Corvo::ParseException );
   EXPECT_THROW( strepToValue< bool >( "" ), Corvo::ParseException );
   EXPECT_THROW( strepToValue< double >( "" ), Corvo::ParseException );
   EXPECT_THROW( strepToValue< ::Test::Colour >( "" ), Corvo::EnumRangeException );
   EXPECT_THROW( strepToValue< ::Test::Pair >( "" ), Corvo::ParseException );
   EXPECT_FALSE( strepToValue< Vok::Optional< std::uint32_t > >( "" ).has_value() );
}

TEST( EmptyTest, anEmptyLogHoldsNothing )
{
   Vok::NboAttrLog::In in( nullptr, 0 );
   EXPECT_EQ( in.remaining(), 0U );
   EXPECT_THROW( ::Test::Level{ &in }, Vok::NboAttrLog::Exception );
   EXPECT_THROW( ::Test::Shelf{ &in }, Vok::NboAttrLog::Exception );
   EXPECT_TRUE( in.getBytes( 0 ).empty() );
   Replica replica;
   EXPECT_THROW( replica.reader.read( in ), Vok::NboAttrLog::Exception );
   Vok::NboAttrLog::Out out;
   out.putBytes( nullptr, 0 );
   EXPECT_EQ( out.size(), 0U );
   out << ::Test::Shelf();
   EXPECT_EQ( out.size(), 8U ); // two counts
}

TEST( EmptyTest, emptyCollectionsCanBeEmptiedIteratedAndSent )
{
   Source source;
   Counter counter( *source.root );
   source.root->namesDelAll();
   source.root->treeDelAll();
   source.root->refsDelAll();
   source.root->singleDel();
   for ( const auto & child : source.root->tree() ) {
      ADD_FAILURE() << child->name();
   }
   EXPECT_EQ( counter.heard, 0U );
   Replica replica;
   replica.read( source.batch() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   EXPECT_TRUE( source.batch().empty() );
   replica.read( Bytes() );
}

} // namespace
