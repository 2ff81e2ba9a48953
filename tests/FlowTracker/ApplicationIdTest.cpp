// The table of applications: every rule of the framework on the smallest module.
#include "FlowTracker/ApplicationId.h"
#include "tests/support/Recorder.h"

#include "Vok/Vok.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using FlowTracking::Application;
using FlowTracking::ApplicationId;
using FlowTracking::ApplicationIdMap;
using TestSupport::Heard;
using TestSupport::Recorder;

Application web( std::uint32_t id = 7 )
{
   return Application( ApplicationId( id ), "HTTP", "Web", "Acceptable" );
}

TEST( ApplicationIdTest, defaults )
{
   EXPECT_EQ( ApplicationId().value(), 0U );
   EXPECT_EQ( ApplicationId::invalid(), 0U );
   EXPECT_EQ( ApplicationId( 0 ).value(), 0U );
   const Application none;
   EXPECT_EQ( none.appId(), ApplicationId() );
   EXPECT_TRUE( none.appName().empty() && none.category().empty() && none.subCategory().empty() );
}

TEST( ApplicationIdTest, equalityNeedsAllFourFields )
{
   EXPECT_EQ( web(), web() );
   EXPECT_NE( web(), web( 8 ) );
   for ( int field = 0; field != 3; ++field ) {
      Application other = web();
      field == 0 ? other.appNameIs( "x" ) : field == 1 ? other.categoryIs( "x" )
                                                       : other.subCategoryIs( "x" );
      EXPECT_NE( web(), other );
      EXPECT_NE( std::hash< Application >()( web() ), std::hash< Application >()( other ) );
   }
}

TEST( ApplicationIdTest, factoryMakesAnEmptyNamedMap )
{
   const auto map = FlowTracking::applicationIdMapFactory( "apps" );
   EXPECT_EQ( map->name(), "apps" );
   EXPECT_EQ( map->nameString(), "apps" );
   EXPECT_EQ( map->refCount(), 1U );
   EXPECT_EQ( map->parent(), nullptr );
   EXPECT_FALSE( map->publisher().hasNotifiee() );
   EXPECT_TRUE( map->application().empty() );
   EXPECT_EQ( ApplicationIdMap::ApplicationIdMapIs( "b" )->name(), "b" );
   EXPECT_EQ( map->typeData().name(), "FlowTracking::ApplicationIdMap" );
}

TEST( ApplicationIdTest, equalValueIsSilentAndAnotherIsHeardOnce )
{
   const auto map = FlowTracking::applicationIdMapFactory( "apps" );
   Recorder recorder( *map );
   map->applicationIs( ApplicationId( 7 ), web() );
   EXPECT_EQ( recorder.take(), Heard{ "258[7]" } );
   map->applicationIs( ApplicationId( 7 ), web() );
   EXPECT_EQ( recorder.take(), Heard{} );
   Application other = web();
   other.subCategoryIs( "Safe" );
   map->applicationIs( ApplicationId( 7 ), other );
   EXPECT_EQ( recorder.take(),
         Heard{ "258[7] was "
                "FlowTracking::Application[appId=7,appName=HTTP,category=Web,subCategory="
                "Acceptable]" } );
}

TEST( ApplicationIdTest, theKeyIsNotReadOutOfTheValue )
{
   const auto map = FlowTracking::applicationIdMapFactory( "apps" );
   map->applicationIs( ApplicationId( 5 ), web( 7 ) );
   EXPECT_EQ( map->application( ApplicationId( 5 ) ), web( 7 ) );
   EXPECT_EQ( map->application( ApplicationId( 7 ) ), Application() );
}

TEST( ApplicationIdTest, deletingAnAbsentKeyIsSilentAndGivesTheDefault )
{
   const auto map = FlowTracking::applicationIdMapFactory( "apps" );
   Recorder recorder( *map );
   EXPECT_EQ( map->applicationDel( ApplicationId( 9 ) ), Application() );
   EXPECT_EQ( recorder.take(), Heard{} );
   map->applicationIs( ApplicationId( 9 ), web() );
   EXPECT_EQ( map->applicationDel( ApplicationId( 9 ) ), web() );
   EXPECT_EQ( recorder.take().size(), 2U );
}

TEST( ApplicationIdTest, deletingAllIsHeardOncePerMember )
{
   const auto map = FlowTracking::applicationIdMapFactory( "apps" );
   for ( std::uint32_t i = 0; i != 100; ++i ) {
      map->applicationIs( ApplicationId( i ), web( i ) );
   }
   Recorder recorder( *map );
   map->applicationDelAll();
   EXPECT_EQ( recorder.take().size(), 100U );
   EXPECT_TRUE( map->application().empty() );

   map->applicationIs( ApplicationId( 1 ), web() );
   map->publisher().notifieeDel( &recorder );
   recorder.take();
   map->applicationDelAll();
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_TRUE( map->application().empty() );
}

TEST( ApplicationIdTest, textRoundTrip )
{
   const std::string text =
         "FlowTracking::Application[appId=7,appName=HTTP,category=Web,subCategory=Acceptable]";
   EXPECT_EQ( Corvo::valueToStrep( web() ), text );
   EXPECT_EQ( Corvo::strepToValue< Application >( text ), web() );
   EXPECT_EQ( Corvo::valueToStrep( ApplicationId( 7 ) ), "7" );
   EXPECT_THROW( Corvo::strepToValue< Application >( "[appId=7]" ), Corvo::ParseException );
   EXPECT_THROW( Corvo::strepToValue< Application >( text + " " ), Corvo::ParseException );
}

TEST( ApplicationIdTest, logIsTheFieldsInNetworkByteOrder )
{
   Vok::NboAttrLog::Out out;
   out << Application( ApplicationId( 0x01020304 ), "ab", "", "c" );
   const unsigned char expected[] = { 1, 2, 3, 4, 0, 0, 0, 2, 'a', 'b', 0, 0, 0, 0, 0, 0, 0, 1,
      'c' };
   ASSERT_EQ( out.size(), sizeof expected );
   EXPECT_EQ( std::memcmp( out.data(), expected, sizeof expected ), 0 );
   EXPECT_EQ( attrLogSize( web() ), 16U + 4 + 3 + 10 );
   Vok::NboAttrLog::In in( out.data(), out.size() );
   EXPECT_EQ( Application( &in ).subCategory(), "c" );
   EXPECT_EQ( in.remaining(), 0U );
}

TEST( ApplicationIdTest, everyPrefixOfALogIsRefused )
{
   Vok::NboAttrLog::Out out;
   out << web();
   for ( std::size_t size = 0; size != out.size(); ++size ) {
      Vok::NboAttrLog::In in( out.data(), size );
      EXPECT_THROW( Application{ &in }, Vok::NboAttrLog::Exception ) << size;
   }
}

TEST( ApplicationIdTest, flowOutTracksChangedKeys )
{
   const auto map = FlowTracking::applicationIdMapFactory( "apps" );
   ApplicationIdMap::FlowOut flowOut( map );
   EXPECT_EQ( map->refCount(), 1U );
   EXPECT_FALSE( flowOut.hasDirtyCollKeys() );
   map->applicationIs( ApplicationId( 1 ), web() );
   EXPECT_TRUE( flowOut.hasDirtyCollKeys() );
}

TEST( ApplicationIdTest, moduleIsRegisteredWithItsTypes )
{
   bool found = false;
   for ( const auto & module : Corvo::ModuleInspectData::modules() ) {
      if ( module.name() == "ApplicationId" ) {
         found = true;
         EXPECT_NE( module.fingerprint(), 0U );
         ASSERT_EQ( module.types().size(), 3U );
         EXPECT_EQ( module.types()[ 0 ].name(), "FlowTracking::ApplicationId" );
         EXPECT_EQ( module.types()[ 1 ].name(), "FlowTracking::Application" );
         EXPECT_EQ( module.types()[ 2 ].name(), "FlowTracking::ApplicationIdMap" );
      }
   }
   EXPECT_TRUE( found );
   EXPECT_NE( Corvo::ModuleInspectData::findType( "FlowTracking::Application" ), nullptr );
   EXPECT_EQ( Corvo::ModuleInspectData::findType( "FlowTracking::Nothing" ), nullptr );
}

TEST( ApplicationIdTest, entitiesAreCountedByType )
{
   const std::size_t before = Vok::AllocTracker::liveCount( "FlowTracking::ApplicationIdMap" );
   {
      const auto map = FlowTracking::applicationIdMapFactory( "apps" );
      EXPECT_EQ( Vok::AllocTracker::liveCount( "FlowTracking::ApplicationIdMap" ), before + 1 );
   }
   EXPECT_EQ( Vok::AllocTracker::liveCount( "FlowTracking::ApplicationIdMap" ), before );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "no such type" ), 0U );
}

} // namespace
