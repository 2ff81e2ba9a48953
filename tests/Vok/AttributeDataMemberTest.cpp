// Collections and children of entities through reflection; making entities.
#include "Vok/TypeData.h"
#include "tests/model/Everything.h"
#include "tests/support/Recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using Corvo::Ptr;
using ::Test::Label;
using ::Test::Narrow;
using ::Test::Root;
using testing::ElementsAre;
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

template< class E > std::string whyRefused( const std::function< void() > & attempt )
{
   try {
      attempt();
   } catch ( const E & e ) {
      return e.what();
   }
   return "";
}

constexpr const char * one = "Test::Pair[id=1,text=a,colour=red,level=2,on=true,time=0]";
constexpr const char * two = "Test::Pair[id=2,text=b,colour=red,level=2,on=true,time=0]";

// ---- Maps and sets ----------------------------------------------------------------------------

TEST( AttributeDataMemberTest, mapsByTexts )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   TestSupport::Recorder recorder( *root );
   of( "byName" ).memberIs( *root, R"("two words")", one );
   of( "byName" ).memberIs( *root, R"("two words")", two );
   of( "byName" ).memberIs( *root, R"("two words")", two );
   EXPECT_EQ( root->byName( "two words" ).id(), 2U );
   EXPECT_EQ( of( "byName" ).member( *root, R"("two words")" ), two );
   EXPECT_THAT( of( "byName" ).keys( *root ), ElementsAre( R"("two words")" ) );
   of( "byName" ).memberDel( *root, "absent" );
   of( "byName" ).memberDel( *root, R"("two words")" );
   EXPECT_EQ( recorder.take(),
         ( Heard{ R"(285["two words"])", std::string( R"(285["two words"] was )" ) + one,
               std::string( R"(285["two words"] was )" ) + two } ) );
   EXPECT_EQ(
         whyRefused< std::out_of_range >( [ & ] { of( "byName" ).member( *root, "absent" ); } ),
         "byName has no member absent" );
}

TEST( AttributeDataMemberTest, keysOfOrderedCollectionsAreInOrder )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   for ( const char * key : { "20", "3", "100" } ) {
      of( "steps" ).memberIs( *root, key, "1" );
      of( "marks" ).memberIs( *root, key, "" );
      of( "groups" ).childIs( *root, key, { "g" } );
   }
   EXPECT_THAT( of( "steps" ).keys( *root ), ElementsAre( "3", "20", "100" ) );
   EXPECT_THAT( of( "marks" ).keys( *root ), ElementsAre( "3", "20", "100" ) );
   EXPECT_THAT( of( "groups" ).keys( *root ), ElementsAre( "3", "20", "100" ) );
}

TEST( AttributeDataMemberTest, aMapByAFieldOfItsValueTakesNoOtherKey )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   of( "sorted" ).memberIs( *root, "1", one );
   EXPECT_EQ( root->sorted( 1 ).text(), "a" );
   EXPECT_EQ( whyRefused< std::invalid_argument >(
                    [ & ] { of( "sorted" ).memberIs( *root, "1", two ); } ),
         "the key of a member of sorted is its field id, which is another" );
   EXPECT_EQ( root->sorted().size(), 1U );
   of( "plains" ).memberIs( *root, "blue", "Test::Plain[colour=blue,big=1,small=1,ratio=1]" );
   EXPECT_EQ( root->plains( ::Test::blue ).big(), 1U );
}

TEST( AttributeDataMemberTest, sets )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   TestSupport::Recorder recorder( *root );
   of( "colours" ).memberIs( *root, "blue", "" );
   of( "colours" ).memberIs( *root, "blue", "ignored" );
   of( "words" ).memberIs( *root, R"("two words")", "" );
   EXPECT_TRUE( root->colours( ::Test::blue ) && root->words( "two words" ) );
   EXPECT_EQ( of( "colours" ).member( *root, "blue" ), "blue" );
   EXPECT_THROW( of( "colours" ).member( *root, "red" ), std::out_of_range );
   EXPECT_THROW( of( "colours" ).memberIs( *root, "pink", "" ), Corvo::EnumRangeException );
   of( "colours" ).memberDel( *root, "blue" );
   EXPECT_EQ( recorder.take(), ( Heard{ "290[blue]", R"(291["two words"])", "290[blue]" } ) );
}

TEST( AttributeDataMemberTest, eachMemberOfAMapOrSet )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->namesIs( 1, "one" );
   root->namesIs( 2, "two words" );
   root->marksIs( 7 );
   using Members = std::map< std::string, std::string >;
   const auto membersOf = [ & ]( const char * name ) {
      Members members;
      of( name ).each( *root, [ & ]( std::string_view key, std::string_view value ) {
         members.emplace( key, value );
      } );
      return members;
   };
   EXPECT_EQ( membersOf( "names" ), ( Members{ { "1", "one" }, { "2", R"("two words")" } } ) );
   EXPECT_EQ( membersOf( "marks" ), ( Members{ { "7", "7" } } ) );
   EXPECT_EQ( membersOf( "steps" ), Members{} );
}

TEST( AttributeDataMemberTest, membersMayGoWhileTheyAreVisited )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   for ( std::uint32_t i = 0; i != 300; ++i ) {
      root->namesIs( i, "x" );
   }
   int seen = 0;
   of( "names" ).each( *root, [ & ]( std::string_view key, std::string_view ) {
      ++seen;
      of( "names" ).memberDel( *root, key );
   } );
   EXPECT_EQ( seen, 300 );
   EXPECT_TRUE( root->names().empty() );
}

TEST( AttributeDataMemberTest, valuesWithoutATextTravelAsValues )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( "Test::Recipe" );
   Vok::Value recipe = type.make( { "300" } );
   type.fieldMemberIs( recipe.data(), "step", "5", one );
   of( "recipes" ).memberValueIs( *root, "300", recipe );
   EXPECT_EQ( root->recipes( Narrow( 300 ) ).step( 5 ).text(), "a" );
   const Vok::Value back = of( "recipes" ).memberValue( *root, "300" );
   EXPECT_EQ( &back.typeData(), &type );
   EXPECT_TRUE( type.isEq( back.data(), recipe.data() ) );
   EXPECT_THROW( of( "recipes" ).memberValueIs( *root, "301", recipe ), std::invalid_argument );
   EXPECT_THROW( of( "byName" ).memberValueIs( *root, "a", recipe ), std::invalid_argument );
   EXPECT_THROW( of( "recipes" ).memberValue( *root, "301" ), std::out_of_range );
   EXPECT_THROW( of( "recipes" ).memberIs( *root, "300", "Test::Recipe[id=300,step=[]]" ),
         Corvo::ParseException );
}

TEST( AttributeDataMemberTest, badTextsChangeNothing )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->namesIs( 1, "one" );
   TestSupport::Recorder recorder( *root );
   EXPECT_THROW( of( "names" ).memberIs( *root, "01", "x" ), Corvo::ParseException );
   EXPECT_THROW( of( "names" ).memberIs( *root, "1", "two words" ), Corvo::ParseException );
   EXPECT_THROW( of( "names" ).member( *root, "x" ), Corvo::ParseException );
   EXPECT_THROW( of( "names" ).memberDel( *root, "" ), Corvo::ParseException );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( root->names( 1 ), "one" );
}

TEST( AttributeDataMemberTest, whatDoesNotFitTheKindIsRefused )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const auto nothing = []( std::string_view, std::string_view ) {};
   for ( const char * name : { "mid", "maybe", "total", "path", "levelDefault" } ) {
      EXPECT_THROW( of( name ).keys( *root ), std::invalid_argument ) << name;
      EXPECT_THROW( of( name ).each( *root, nothing ), std::invalid_argument ) << name;
      EXPECT_THROW( of( name ).member( *root, "1" ), std::invalid_argument ) << name;
      EXPECT_THROW( of( name ).memberIs( *root, "1", "1" ), std::invalid_argument ) << name;
      EXPECT_THROW( of( name ).memberDel( *root, "1" ), std::invalid_argument ) << name;
      EXPECT_THROW( of( name ).child( *root, "1" ), std::invalid_argument ) << name;
      EXPECT_THROW( of( name ).childIs( *root, "1" ), std::invalid_argument ) << name;
   }
   EXPECT_THROW( of( "names" ).child( *root, "1" ), std::invalid_argument );
   EXPECT_THROW( of( "tree" ).memberIs( *root, "a", "b" ), std::invalid_argument );
   EXPECT_THROW( of( "refs" ).childIs( *root, "300" ), std::invalid_argument );
}

// ---- Children ---------------------------------------------------------------------------------

TEST( AttributeDataMemberTest, childrenByTheirKey )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const Ptr< Vok::Entity > kid = of( "tree" ).childIs( *root, R"("two words")" );
   EXPECT_EQ( kid, root->tree( "two words" ) );
   EXPECT_EQ( kid->parent(), root.get() );
   EXPECT_EQ( of( "tree" ).childIs( *root, R"("two words")" ), kid );
   EXPECT_EQ( of( "tree" ).child( *root, R"("two words")" ), kid );
   EXPECT_EQ( of( "tree" ).child( *root, "absent" ), nullptr );
   EXPECT_THAT( of( "tree" ).keys( *root ), ElementsAre( R"("two words")" ) );
   of( "tree" ).memberDel( *root, "absent" );
   of( "tree" ).memberDel( *root, R"("two words")" );
   EXPECT_EQ( kid->parent(), nullptr );
   EXPECT_THROW( of( "tree" ).childIs( *root, "a", { "b" } ), Corvo::ConstructorArgsException );
   const Ptr< Vok::Entity > numbered = of( "numbered" ).childIs( *root, "300" );
   EXPECT_EQ( root->numbered( Narrow( 300 ) ), numbered );
   EXPECT_THROW( of( "numbered" ).childIs( *root, "5" ), Corvo::RangeException );
}

TEST( AttributeDataMemberTest, childrenTakeTheirOtherArguments )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const Ptr< Vok::Entity > group = of( "groups" ).childIs( *root, "7", { "g" } );
   EXPECT_EQ( root->groups( 7 ), group );
   EXPECT_EQ( group->name(), "g" );
   EXPECT_EQ( whyRefused< Corvo::ReinstantiationException >(
                    [ & ] { of( "groups" ).childIs( *root, "7", { "h" } ); } ),
         R"(Test::Group "g" exists with another name (attribute 154): old "g", new "h")" );
   const Ptr< Vok::Entity > slot = of( "slots" ).childIs( *root, "left", { "5" } );
   EXPECT_EQ( of( "slots" ).childIs( *root, "left", { "6" } ), slot );
   EXPECT_EQ( root->slots( Label( "left" ) )->weight(), 6 );
   EXPECT_THROW( of( "slots" ).childIs( *root, "left" ), Corvo::ConstructorArgsException );
   EXPECT_THROW( of( "slots" ).childIs( *root, "left", { "x" } ), Corvo::ParseException );
}

TEST( AttributeDataMemberTest, aReferenceAmongTheArgumentsIsAPath )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const auto tree = root->treeIs( "t" );
   const auto binding = of( "bindings" ).childIs( *root, "b", { "/tree[t]", "blue" } );
   EXPECT_EQ( root->bindings( Label( "b" ) ), binding );
   EXPECT_EQ( root->bindings( Label( "b" ) )->target(), tree );
   EXPECT_EQ( of( "bindings" ).childIs( *root, "b", { "/tree[t]", "blue" } ), binding );
   EXPECT_EQ( whyRefused< Corvo::ConstructorArgsException >( [ & ] {
      of( "bindings" ).childIs( *root, "c", { "/tree[absent]", "blue" } );
   } ),
         "Test::Binding::target: there is no Test::Tree at /tree[absent]" );
   EXPECT_THROW(
         of( "bindings" ).childIs( *root, "c", { "/", "blue" } ), Corvo::ConstructorArgsException );
   EXPECT_THROW(
         of( "bindings" ).childIs( *root, "c", { "tree", "blue" } ), Corvo::ParseException );
   EXPECT_EQ( root->bindings().size(), 1U );
}

TEST( AttributeDataMemberTest, aSingleChild )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   EXPECT_EQ( of( "single" ).child( *root, "" ), nullptr );
   EXPECT_EQ( of( "single" ).get( *root ), "" );
   const Ptr< Vok::Entity > first =
         of( "single" ).childIs( *root, "ignored", { R"("first one")" } );
   EXPECT_EQ( root->single(), first );
   EXPECT_EQ( first->name(), "first one" );
   EXPECT_EQ( of( "single" ).get( *root ), "first one" );
   EXPECT_EQ( of( "single" ).child( *root, "anything" ), first );
   EXPECT_EQ( of( "single" ).childIs( *root, "", { R"("first one")" } ), first );
   const Ptr< Vok::Entity > second = of( "single" ).childIs( *root, "", { "second" } );
   EXPECT_EQ( first->parent(), nullptr );
   EXPECT_EQ( second->parent(), root.get() );
   of( "single" ).memberDel( *root, "whatever" );
   EXPECT_EQ( root->single(), nullptr );
   EXPECT_EQ( of( "only" ).childIs( *root, "" ), root->only() );
   EXPECT_THROW( of( "single" ).childIs( *root, "" ), Corvo::ConstructorArgsException );
}

TEST( AttributeDataMemberTest, references )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const auto target = ::Test::Numbered::NumberedIs( Narrow( 300 ) );
   root->refsIs( target );
   EXPECT_THAT( of( "refs" ).keys( *root ), ElementsAre( "300" ) );
   EXPECT_EQ( of( "refs" ).child( *root, "300" ), target );
   EXPECT_EQ( of( "refs" ).child( *root, "301" ), nullptr );
   of( "refs" ).memberDel( *root, "300" );
   EXPECT_TRUE( root->refs().empty() );
}

// ---- Making entities --------------------------------------------------------------------------

const Vok::TypeData & typeOf( const char * name )
{
   return *Corvo::ModuleInspectData::findType( name );
}

TEST( AttributeDataMemberTest, instantiatesAnyType )
{
   const Ptr< Vok::Entity > leaf = typeOf( "Test::Leaf" ).instantiate( "two words" );
   EXPECT_EQ( leaf->name(), "two words" );
   EXPECT_EQ( &leaf->typeData(), &typeOf( "Test::Leaf" ) );
   EXPECT_EQ( leaf->refCount(), 1U );
   EXPECT_EQ( typeOf( "Test::Host" ).instantiate( "alpha" )->name(), "alpha" );
   const auto slot = typeOf( "Test::Slot" ).instantiate( "left side", { "7" } );
   EXPECT_EQ( static_cast< ::Test::Slot & >( *slot ).label(), Label( "left side" ) );
   EXPECT_EQ( static_cast< ::Test::Slot & >( *slot ).weight(), 7 );
   const auto numbered = typeOf( "Test::Numbered" ).instantiate( "ignored", { "300" } );
   EXPECT_EQ( numbered->name(), "" );
   EXPECT_EQ( static_cast< ::Test::Numbered & >( *numbered ).id(), Narrow( 300 ) );
   EXPECT_EQ( typeOf( "Test::Bare" ).instantiate( "" )->name(), "" );
   EXPECT_EQ( typeOf( "Test::Group" ).instantiate( "g", { "4" } )->name(), "g" ); // no factory
   EXPECT_NE(
         dynamic_cast< Root * >( typeOf( "Test::Special" ).instantiate( "s" ).get() ), nullptr );
}

TEST( AttributeDataMemberTest, instantiatingChecksItsArguments )
{
   using Corvo::ConstructorArgsException;
   EXPECT_THROW( typeOf( "Test::Leaf" ).instantiate( "a", { "b" } ), ConstructorArgsException );
   EXPECT_THROW( typeOf( "Test::Group" ).instantiate( "a" ), ConstructorArgsException );
   EXPECT_THROW( typeOf( "Test::Numbered" ).instantiate( "300" ), ConstructorArgsException );
   EXPECT_THROW( typeOf( "Test::Binding" ).instantiate( "", { "b", "/", "red" } ),
         ConstructorArgsException );
   EXPECT_THROW( typeOf( "Test::Numbered" ).instantiate( "", { "5" } ), Corvo::RangeException );
   EXPECT_THROW( typeOf( "Test::Slot" ).instantiate( "a name of 21 bytes xx", { "1" } ),
         Corvo::RangeException );
   EXPECT_THROW( typeOf( "Test::Pair" ).instantiate( "" ), std::invalid_argument );
}

} // namespace
