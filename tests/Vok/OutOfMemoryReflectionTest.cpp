// Where memory ends in what is done through reflection, texts and logs: all is as it was.
#include "tests/Vok/OutOfMemory.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Narrow;
using ::Test::Pair;
using ::Test::Recipe;
using ::Test::Root;
using TestSupport::Counter;
using TestSupport::Outcome;
using TestSupport::withEveryFailure;
using Vok::AttributeData;
using Vok::AttributeKind;

const Corvo::String text = "a text that is too long to stand in place";

Pair pair( std::uint32_t id )
{
   return Pair( id, text, ::Test::blue, ::Test::Level( 9 ), true, Vok::Seconds( 2 ) );
}

// What a root can hold, none of it its default.
Ptr< Root > donor()
{
   const Ptr< Root > root = Root::RootIs( "donor" );
   root->enabledIs( true );
   root->midIs( 7 );
   root->titleIs( text );
   root->pairIs( pair( 1 ) );
   root->maybePairIs( pair( 2 ) );
   root->maybeIs( ::Test::Level( 2 ) );
   root->namesIs( 1, text );
   root->byNameIs( text, pair( 3 ) );
   root->plainsIs( ::Test::Plain( ::Test::blue, 1, 2, 3 ) );
   root->sortedIs( pair( 4 ) );
   root->stepsIs( 5, 6 );
   root->coloursIs( ::Test::blue );
   root->wordsIs( text );
   root->marksIs( 8 );
   root->treeIs( text );
   root->numberedIs( Narrow( 300 ) );
   return root;
}

struct Call {
   std::string what;
   std::function< void( Root & ) > run;
};

// Every call that stores through the record of an attribute of Root what the donor has.
std::vector< Call > callsOf( const Root & from )
{
   std::vector< Call > calls;
   for ( const AttributeData & attribute : from.typeData().attributes() ) {
      const std::string name( attribute.name() );
      switch ( attribute.kind() ) {
      case AttributeKind::plain:
      case AttributeKind::optional:
         if ( name != "recipe" ) { // which has no text
            calls.push_back( { name, [ &attribute, value = attribute.get( from ) ]( Root & root ) {
                                 attribute.set( root, value );
                              } } );
         }
         break;
      case AttributeKind::map:
      case AttributeKind::set:
         attribute.each( from, [ & ]( std::string_view key, std::string_view value ) {
            const std::string keyText( key );
            const std::string valueText( value );
            calls.push_back( { name, [ &attribute, keyText, valueText ]( Root & root ) {
                                 attribute.memberIs( root, keyText, valueText );
                              } } );
         } );
         break;
      case AttributeKind::children:
         for ( const Corvo::String & key : attribute.keys( from ) ) {
            calls.push_back( { name, [ &attribute, key ]( Root & root ) {
                                 attribute.childIs( root, key, {} );
                              } } );
         }
         break;
      default:
         break;
      }
   }
   return calls;
}

TEST( OutOfMemoryReflectionTest, aCallStoresOrNot )
{
   const Ptr< Root > from = donor();
   const std::vector< Call > calls = callsOf( *from );
   EXPECT_GT( calls.size(), 30U );
   for ( const Call & call : calls ) {
      SCOPED_TRACE( call.what );
      withEveryFailure( [ & ]( auto attempt ) {
         const Ptr< Root > root = Root::RootIs( "root" );
         const Vok::Digest before = Vok::treeDigest( *root );
         Counter counter;
         root->publisher().notifieeIs( &counter );
         if ( attempt( [ & ] { call.run( *root ); } ) == Outcome::failed ) {
            EXPECT_EQ( Vok::treeDigest( *root ), before );
            EXPECT_EQ( counter.heard, 0U );
            call.run( *root );
         }
         EXPECT_LE( counter.heard, 1U );
      } );
      if ( testing::Test::HasFailure() ) {
         return;
      }
   }
}

TEST( OutOfMemoryReflectionTest, anEntityIsMadeOrNot )
{
   const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( "Test::Group" );
   withEveryFailure( [ & ]( auto attempt ) {
      Ptr< Vok::Entity > made;
      if ( attempt( [ & ] { made = type.instantiate( text, { "7" } ); } ) == Outcome::failed ) {
         EXPECT_FALSE( made );
         EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Group" ), 0U );
         EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Bare" ), 0U );
      } else {
         EXPECT_EQ( made->name(), text );
      }
   } );
}

TEST( OutOfMemoryReflectionTest, aValueIsReadFromATextOrAsItWas )
{
   const Corvo::String written = Corvo::valueToStrep( pair( 5 ) );
   const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( "Test::Pair" );
   withEveryFailure( [ & ]( auto attempt ) {
      Pair value;
      const auto read = [ & ] {
         Vok::CharRange range( written );
         type.strepToValue( range, &value );
      };
      EXPECT_EQ( value, attempt( read ) == Outcome::failed ? Pair() : pair( 5 ) );
   } );
   withEveryFailure( [ & ]( auto attempt ) {
      Corvo::String again;
      if ( attempt( [ & ] { again = Corvo::valueToStrep( pair( 5 ) ); } ) == Outcome::done ) {
         EXPECT_EQ( again, written );
      }
   } );
}

TEST( OutOfMemoryReflectionTest, aCollectionInAValueIsChangedOrNot )
{
   Recipe full{ Narrow( 300 ) };
   for ( std::uint32_t step = 0; step != 200; ++step ) {
      full.stepIs( step, pair( step ) );
   }
   withEveryFailure( [ & ]( auto attempt ) {
      Recipe recipe( full );
      if ( attempt( [ & ] { recipe.stepIs( 1000, pair( 1 ) ); } ) == Outcome::failed ) {
         EXPECT_EQ( recipe, full );
      } else {
         EXPECT_EQ( recipe.step().size(), 201U );
      }
   } );
   Vok::NboAttrLog::Out out;
   out << full;
   withEveryFailure( [ & ]( auto attempt ) {
      Vok::NboAttrLog::In in( out.data(), out.size() );
      Recipe recipe;
      if ( attempt( [ & ] { recipe = Recipe( &in ); } ) == Outcome::failed ) {
         EXPECT_EQ( recipe, Recipe() );
      } else {
         EXPECT_EQ( recipe, full );
      }
   } );
   withEveryFailure( [ & ]( auto attempt ) {
      Vok::NboAttrLog::Out again;
      again.put( std::uint8_t{ 1 } );
      if ( attempt( [ & ] { again << full; } ) == Outcome::done ) {
         EXPECT_EQ( again.size(), out.size() + 1 );
      }
   } );
}

} // namespace
