// Reading and setting attributes of entities through reflection.
#include "Vok/TypeData.h"
#include "tests/model/Everything.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using TestSupport::Heard;
using Vok::AttributeData;

const AttributeData & of( std::string_view name )
{
   const AttributeData * const found = Root::vokType().attribute( name );
   if ( !found ) {
      throw std::logic_error( std::string( name ) + " is no attribute" );
   }
   return *found;
}

Corvo::String get( const Vok::Entity & entity, std::string_view name )
{
   return entity.typeData().attribute( name )->get( entity );
}

struct Example {
   const char * name;
   const char * before;
   const char * text;
};

const Example settable[] = {
   { "enabled", "false", "true" },
   { "tiny", "1", "8" },
   { "mid", "0", "65535" },
   { "count", "0", "4294967295" },
   { "ticks", "0", "255" },
   { "big", "18446744073709551615", "0" },
   { "ratio", "1.5", "-inf" },
   { "title", "none", R"("two words")" },
   { "colour", "green", "blue" },
   { "huge", "hugeTop", "hugeNone" },
   { "level", "3", "10" },
   { "lazy", "300", "0" },
   { "borrowed", "300", "65535" },
   { "pair", R"(Test::Pair[id=0,text="",colour=red,level=5,on=false,time=0])",
         "Test::Pair[id=1,text=a,colour=blue,level=1,on=true,time=1]" },
   { "flags", "0", "131" },
   { "start", "0", "1600000000.25" },
   { "end", "inf", "10" },
   { "address", "0-0", "1-2" },
   { "maybe", "", "7" },
   { "maybeInt", "", "0" },
   { "maybeBit", "", "false" },
   { "maybeWord", "", "9" },
   { "maybePair", "", R"(Test::Pair[id=1,text="",colour=blue,level=1,on=true,time=1])" },
};

TEST( AttributeDataValueTest, everySettableAttributeIsReadAndSetAsText )
{
   for ( const Example & e : settable ) {
      const Ptr< Root > root = Root::RootIs( "r" );
      TestSupport::Recorder recorder( *root );
      EXPECT_TRUE( of( e.name ).settable() ) << e.name;
      EXPECT_EQ( of( e.name ).get( *root ), e.before ) << e.name;
      of( e.name ).set( *root, e.text );
      EXPECT_EQ( of( e.name ).get( *root ), e.text ) << e.name;
      of( e.name ).set( *root, e.text );
      EXPECT_EQ(
            recorder.take(), Heard{ std::to_string( of( e.name ).id() ) + " was " + e.before } );
      of( e.name ).set( *root, e.before );
      EXPECT_EQ( of( e.name ).get( *root ), e.before ) << e.name;
   }
}

TEST( AttributeDataValueTest, whatIsSetIsSeenByTheAccessors )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   of( "maybeWord" ).set( *root, "9" );
   EXPECT_EQ( root->maybeWord(), ::Test::Full( 9 ) );
   of( "maybeWord" ).set( *root, "" );
   EXPECT_EQ( root->maybeWord(), std::nullopt );
   of( "maybeBit" ).set( *root, "false" );
   EXPECT_EQ( root->maybeBit(), false );
   of( "maybeBit" ).set( *root, "" );
   EXPECT_EQ( root->maybeBit(), std::nullopt );
   of( "title" ).set( *root, R"("")" );
   EXPECT_EQ( root->title(), "" );
   of( "address" ).set( *root, "3-4" );
   EXPECT_EQ( root->address(), ::Test::Address( 3, 4 ) );
}

TEST( AttributeDataValueTest, theEmptyTextUnsetsOptionalsAlone )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->maybePairIs( ::Test::Pair() );
   of( "maybePair" ).set( *root, "" );
   EXPECT_EQ( root->maybePair(), std::nullopt );
   for ( const char * name : { "title", "enabled", "mid", "pair", "level" } ) {
      EXPECT_THROW( of( name ).set( *root, "" ), Corvo::ParseException ) << name;
   }
   EXPECT_THROW( of( "colour" ).set( *root, "" ), Corvo::EnumRangeException );
}

// Whatever `attempt` throws is an E with this message; the entity is as it was, with nobody told.
template< class E >
void expectRefused( std::string_view name, std::string_view text, std::string_view message )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const Corvo::String before = of( name ).get( *root );
   TestSupport::Recorder recorder( *root );
   try {
      of( name ).set( *root, text );
      ADD_FAILURE() << name << " was set to " << text;
   } catch ( const E & e ) {
      EXPECT_EQ( e.what(), message );
   }
   EXPECT_EQ( of( name ).get( *root ), before );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( AttributeDataValueTest, boundsAndGrammarAreCheckedAsByTheMutators )
{
   using Corvo::RangeException;
   expectRefused< RangeException >(
         "tiny", "9", "Test::Root::tiny < 1 or > (Test::Level::top - 2) not allowed" );
   expectRefused< RangeException >(
         "level", "11", "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   expectRefused< RangeException >(
         "maybe", "0", "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   expectRefused< Corvo::EnumRangeException >(
         "colour", "pink", "Test::Colour has no enumerator named pink" );
   expectRefused< Corvo::DeserializationException >( "pair",
         "Test::Pair[id=1,text=a,colour=blue,level=0,on=true,time=1]",
         "attribute level: "
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   expectRefused< Corvo::ParseException >(
         "mid", "65536", "at offset 0: expected a number from 0 to 65535, found 65536" );
   expectRefused< Corvo::ParseException >(
         "title", "two words", R"(at offset 3: expected the end of the text, found " words")" );
   expectRefused< Corvo::ParseException >(
         "recipe", "Test::Recipe[id=256,step=[]]", "Test::Recipe has no text constructor" );
}

TEST( AttributeDataValueTest, whatHasNoMutatorIsReadAlone )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->midIs( 3 );
   EXPECT_EQ( of( "levelDefault" ).get( *root ), "7" );
   EXPECT_EQ( of( "total" ).get( *root ), "3" );
   EXPECT_EQ( of( "nameString" ).get( *root ), "r" );
   EXPECT_EQ( of( "recipe" ).get( *root ), "Test::Recipe[id=65535,step=[]]" );
   for ( const char * name : { "levelDefault", "total", "nameString", "names", "colours", "tree",
               "single", "refs", "path" } ) {
      EXPECT_THROW( of( name ).set( *root, "1" ), std::invalid_argument ) << name;
   }
   EXPECT_THROW( of( "path" ).get( *root ), std::invalid_argument );
}

TEST( AttributeDataValueTest, constructorArguments )
{
   const Ptr< ::Test::Slot > slot = ::Test::Slot::SlotIs( ::Test::Label( "two words" ), 5 );
   EXPECT_EQ( get( *slot, "label" ), R"("two words")" );
   EXPECT_EQ( get( *slot, "weight" ), "5" );
   TestSupport::Recorder recorder( *slot );
   slot->typeData().attribute( "weight" )->set( *slot, "6" );
   EXPECT_EQ( slot->weight(), 6 );
   EXPECT_EQ( recorder.take(), Heard{ "259 was 5" } );
   EXPECT_THROW( slot->typeData().attribute( "label" )->set( *slot, "x" ), std::invalid_argument );
   EXPECT_EQ( get( *::Test::Numbered::NumberedIs( ::Test::Narrow( 300 ) ), "id" ), "300" );
   EXPECT_EQ( get( *::Test::Host::HostIs( "alpha" ), "hostname" ), "alpha" );
   EXPECT_EQ( get( *::Test::Group::GroupIs( "g", 9 ), "seqno" ), "9" );
}

TEST( AttributeDataValueTest, aReferenceIsThePathOfWhatItRefersTo )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const Ptr< ::Test::Tree > inside = root->treeIs( "two words" );
   const auto binding = root->bindingsIs( ::Test::Label( "b" ), inside, ::Test::red );
   EXPECT_EQ( get( *binding, "target" ), R"(/tree["two words"])" );
   EXPECT_EQ( get( *binding, "mode" ), "red" );
   root->treeDel( "two words" );
   EXPECT_EQ( get( *binding, "target" ), "" );
}

TEST( AttributeDataValueTest, anyAttributeOfADerivedEntity )
{
   const Ptr< ::Test::Special > special = ::Test::Special::SpecialIs( "s" );
   special->typeData().attribute( "mid" )->set( *special, "5" );
   EXPECT_EQ( get( *special, "mid" ), "5" );
   EXPECT_EQ( special->typeData().attribute( "fill" )->call( *special ), "" );
   EXPECT_TRUE( special->colours( ::Test::red ) );
}

} // namespace
