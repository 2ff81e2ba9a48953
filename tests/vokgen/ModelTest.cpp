// The model of tests/model/Everything.vok, which uses every construct once.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <set>

namespace VokGen {
namespace {

using Model::Attribute;
using Model::AttributeKind;
using Model::CheckTime;
using Model::Constant;

const Model::Module & everything()
{
   static const Compilation made =
         compile( ( VokGenTest::testFolder() / "../model/Everything.vok" ).string(), {} );
   if ( !made.module ) {
      throw std::runtime_error( made.errors );
   }
   return *made.module;
}

const Model::TypeDeclaration & type( const std::string & name )
{
   for ( const Model::TypeDeclaration * candidate : everything().allTypes() ) {
      if ( candidate->fullName == "Test::" + name ) {
         return *candidate;
      }
   }
   throw std::out_of_range( name );
}

const Model::ValueType & value( const std::string & name )
{
   return *Model::asValue( &type( name ) );
}
const Model::EntityType & entity( const std::string & name )
{
   return *Model::asEntity( &type( name ) );
}

const Attribute & attribute( const std::string & typeName, const std::string & name )
{
   const Attribute * found = Model::asRecord( &type( typeName ) )->find( name );
   if ( !found ) {
      throw std::out_of_range( typeName + "::" + name );
   }
   return *found;
}

using Names = std::vector< std::string >;

template< class List >
Names namesOf( const List & attributes )
{
   Names names;
   for ( const auto & each : attributes ) {
      names.push_back( each->name );
   }
   return names;
}

TEST( Everything, module )
{
   EXPECT_EQ( everything().name, "Everything" );
   EXPECT_EQ( everything().fileName, "Everything.vok" );
   EXPECT_EQ( everything().header, "Everything.h" );
   EXPECT_EQ( everything().documentation.substr( 0, 16 ), "Every construct " );
   EXPECT_EQ( everything().fingerprintText().size(), 16U );
   ASSERT_EQ( everything().functions.size(), 1U );
   EXPECT_EQ( everything().functions[ 0 ]->name, "describe" );
   EXPECT_EQ( everything().functions[ 0 ]->nameSpace, "Test" );
}

TEST( Everything, definitionOrderPutsNeedsFirst )
{
   std::set< const Model::TypeDeclaration * > defined;
   for ( const Model::TypeDeclaration * each : everything().definitionOrder ) {
      if ( const Model::RecordType * record = Model::asRecord( each ) ) {
         for ( const Model::TypeDeclaration * need : record->needsDefined ) {
            EXPECT_EQ( defined.count( need ), 1U ) << each->name << " needs " << need->name;
         }
      }
      defined.insert( each );
   }
   EXPECT_EQ( defined.size(), everything().types.size() );
   // Limits is declared before Level, and its constant is a Level.
   EXPECT_EQ( Model::asRecord( &type( "Limits" ) )->needsDefined,
         ( std::vector< const Model::TypeDeclaration * >{ &type( "Colour" ), &type( "Level" ) } ) );
   const auto & declared = entity( "Root" ).needsDeclared;
   EXPECT_NE( std::find( declared.begin(), declared.end(), &type( "Tree" ) ), declared.end() );
}

TEST( Everything, enumerations )
{
   const Model::EnumType & colour = *Model::asEnum( &type( "Colour" ) );
   EXPECT_EQ( colour.bits, 8U );
   EXPECT_EQ( namesOf( colour.enumerators ), ( Names{ "red", "green", "blue" } ) );
   EXPECT_EQ( colour.find( "blue" )->code, 7U );
   EXPECT_EQ( colour.withCode( 1 )->fullName(), "Test::Colour::green" );
   EXPECT_EQ( colour.withCode( 2 ), nullptr );
   EXPECT_EQ( Model::asEnum( &type( "Huge" ) )->find( "hugeTop" )->code, 4000000000U );
   const Model::EnumType & nested = *Model::asEnum( &type( "Holder::Status" ) );
   EXPECT_EQ( nested.holder, &type( "Holder" ) );
   EXPECT_EQ( nested.nameSpace, "Test" );
}

TEST( Everything, constants )
{
   EXPECT_EQ( attribute( "Limits", "label" ).value.value.text, "a \"b\"\n" );
   EXPECT_EQ( attribute( "Limits", "label" ).value.text, "\"a \\\"b\\\"\\n\"" );
   EXPECT_EQ( attribute( "Limits", "colourMax" ).value.value.enumerator->name, "blue" );
   const Attribute & computed = attribute( "Limits", "computed" );
   EXPECT_EQ( computed.value.value.integer, 153U );
   EXPECT_EQ( computed.value.text, "(Test::Limits::nameMax + 25)" );
   EXPECT_EQ( computed.value.namedConstant(), nullptr );
   ASSERT_EQ( computed.value.terms.size(), 2U );
   EXPECT_EQ( computed.value.terms[ 0 ].constant, &attribute( "Limits", "nameMax" ) );
   EXPECT_EQ( computed.value.terms[ 1 ].integer, 25U );
   EXPECT_EQ( attribute( "Limits", "level" ).value.value.integer, 10U );
   EXPECT_EQ( attribute( "Limits", "level" ).type.value, &type( "Level" ) );
   const Attribute & twice = attribute( "Limits", "twice" );
   EXPECT_EQ( twice.id, 8U );
   EXPECT_TRUE( twice.function->isStatic );
   EXPECT_EQ( twice.function->parameters[ 0 ].type.cppName, "std::uint32_t" );
}

TEST( Everything, idsOfValues )
{
   const Names expected = { "value", "first", "second", "top", "maskFirst", "maskSecond" };
   EXPECT_EQ( namesOf( value( "Flags" ).attributes ), expected );
   for ( const std::string name : { "Flags", "Level", "Recipe", "Interval" } ) {
      unsigned id = 2;
      for ( const auto & each : value( name ).attributes ) {
         EXPECT_EQ( each->id, id++ ) << each->fullName();
      }
   }
   EXPECT_EQ( attribute( "Recipe", "id" ).id, 2U );
   EXPECT_EQ( attribute( "Recipe", "step" ).id, 3U );
}

TEST( Everything, flags )
{
   const Attribute & top = attribute( "Flags", "top" );
   EXPECT_EQ( top.flag->bit, 7U );
   EXPECT_EQ( top.flag->mask, nullptr );
   EXPECT_EQ( top.flag->maskValue(), 128U );
   const Attribute & second = attribute( "Flags", "second" );
   EXPECT_EQ( second.flag->word, &attribute( "Flags", "value" ) );
   EXPECT_EQ( second.flag->mask, &attribute( "Flags", "maskSecond" ) );
   EXPECT_EQ( second.flag->mask->value.value.integer, 2U );
   EXPECT_EQ( second.flag->mask->type.fullName, "u8" );
}

TEST( Everything, boundsAndMessages )
{
   const Model::Bounds & level = *attribute( "Level", "value" ).bounds;
   EXPECT_EQ( level.time, CheckTime::always );
   EXPECT_EQ( level.message,
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   EXPECT_EQ( level.upper.namedConstant(), &attribute( "Level", "top" ) );
   const Model::Bounds & lazy = *attribute( "Lazy", "value" ).bounds;
   EXPECT_EQ( lazy.time, CheckTime::validated );
   EXPECT_EQ( lazy.message, "value is out of bounds" );
   EXPECT_EQ( lazy.except, 0U );
   EXPECT_TRUE( value( "Lazy" ).hasValidate() );
   const Model::Bounds & full = *attribute( "Full", "value" ).bounds;
   EXPECT_EQ( full.time, CheckTime::never );
   EXPECT_FALSE( full.lowerCanFail || full.upperCanFail );
   const Model::Bounds & tiny = *attribute( "Root", "tiny" ).bounds;
   EXPECT_EQ( tiny.time, CheckTime::onSet );
   EXPECT_EQ( tiny.upper.value.integer, 8U );
   EXPECT_EQ( tiny.message, "Test::Root::tiny < 1 or > (Test::Level::top - 2) not allowed" );
   const Model::Bounds & borrowed = *attribute( "Root", "borrowed" ).bounds;
   EXPECT_EQ( borrowed.message,
         "Test::Root::borrowed < Test::Narrow::min or > Test::Narrow::max not allowed" );
   EXPECT_TRUE( borrowed.lowerCanFail );
   EXPECT_FALSE( borrowed.upperCanFail );
}

TEST( Everything, widerConstructionCanFailAtTheTop )
{
   const Attribute & narrow = attribute( "Narrow", "value" );
   EXPECT_EQ( narrow.builtFrom->fullName, "u32" );
   EXPECT_TRUE( narrow.bounds->upperCanFail );
}

TEST( Everything, defaults )
{
   EXPECT_EQ( attribute( "Root", "big" ).value.value.integer,
         std::numeric_limits< std::uint64_t >::max() );
   EXPECT_EQ( attribute( "Root", "ratio" ).value.value.real, 1.5 );
   EXPECT_EQ(
         attribute( "Root", "end" ).value.value.real, std::numeric_limits< double >::infinity() );
   EXPECT_EQ( attribute( "Root", "title" ).value.value.text, "none" );
   EXPECT_EQ( attribute( "Root", "colour" ).value.text, "Test::Colour::green" );
   EXPECT_EQ( attribute( "Root", "level" ).value.value.integer, 3U );
   EXPECT_EQ( attribute( "Root", "pair" ).value.value.kind, Constant::Kind::ownDefault );
   EXPECT_FALSE( attribute( "Root", "pair" ).defaultStated );
   EXPECT_TRUE( attribute( "Root", "lazy" ).validated );
   const Attribute & full = attribute( "Full", "value" );
   EXPECT_EQ( full.value.namedConstant(), &attribute( "Full", "defaultSize" ) );
   EXPECT_EQ( full.value.value.integer, 1024U );
}

TEST( Everything, valuesOfOneField )
{
   EXPECT_EQ( value( "Label" ).onlyField(), &attribute( "Label", "stringValue" ) );
   EXPECT_EQ( value( "Flags" ).onlyField(), &attribute( "Flags", "value" ) );
   EXPECT_EQ( value( "Recipe" ).onlyField(), nullptr );
   EXPECT_EQ( value( "Interval" ).onlyField(), nullptr );
   EXPECT_EQ( attribute( "Root", "level" ).type.innermost()->fullName, "u32" );
   EXPECT_EQ( attribute( "Root", "pair" ).type.innermost(), nullptr );
}

TEST( Everything, valueModifiers )
{
   EXPECT_TRUE( value( "Narrow" ).fixed && value( "Narrow" ).ordered );
   EXPECT_FALSE( attribute( "Narrow", "value" ).hasMutator() );
   EXPECT_TRUE( attribute( "Level", "value" ).hasMutator() );
   EXPECT_TRUE( value( "Pair" ).truth );
   EXPECT_FALSE( value( "Plain" ).hashable );
   EXPECT_FALSE( value( "Recipe" ).textable || value( "Recipe" ).hashable );
   EXPECT_TRUE( value( "Address" ).textByHand && value( "Address" ).logByHand );
   EXPECT_EQ( value( "Address" ).handDefault, "0-0" );
   EXPECT_TRUE( value( "Span" ).constructorsByHand && !value( "Address" ).constructorsByHand );
   ASSERT_EQ( value( "Address" ).constructors.size(), 1U );
   EXPECT_EQ( value( "Address" ).constructors[ 0 ].documentation, "from its text, like \"1-2\"" );
   EXPECT_EQ( attribute( "Label", "stringValue" ).textLimit->message,
         "Test::Label::bytes > maxLength() not allowed" );
   EXPECT_EQ( namesOf( value( "Recipe" ).fields() ), Names{ "id" } );
}

TEST( Everything, idsOfEntities )
{
   EXPECT_EQ( entity( "Root" ).attributes.front()->id, 258U );
   EXPECT_EQ( attribute( "Host", "hostname" ).id, 258U );
   EXPECT_EQ( attribute( "Group", "instantiate" ).id, 261U );
   EXPECT_EQ( attribute( "Root", "instantiate" ).id, 304U );
   EXPECT_EQ( attribute( "Special", "fill" ).id, 305U );
   EXPECT_EQ( entity( "Request" ).find( "instantiate" ), nullptr );
   EXPECT_TRUE( entity( "Request" ).instantiates );
   EXPECT_EQ( entity( "Special" ).allAttributes().back(), &attribute( "Special", "fill" ) );
   EXPECT_EQ( entity( "Special" ).allAttributes().size(), entity( "Root" ).attributes.size() + 1 );
}

TEST( Everything, identities )
{
   EXPECT_EQ( entity( "Leaf" ).identity(), Model::Identity::name );
   EXPECT_EQ( entity( "Leaf" ).nameArgument->id, 154U );
   EXPECT_EQ( entity( "Leaf" ).nameArgument->reflectedName(), "nameString" );
   EXPECT_EQ( entity( "Host" ).identity(), Model::Identity::argument );
   EXPECT_EQ( entity( "Host" ).identityArgument()->reflectedName(), "hostname" );
   EXPECT_EQ( entity( "Numbered" ).identity(), Model::Identity::none );
   EXPECT_EQ( entity( "Bare" ).identity(), Model::Identity::none );
   EXPECT_EQ( entity( "Special" ).identity(), Model::Identity::name );
}

TEST( Everything, constructorArguments )
{
   EXPECT_EQ( namesOf( entity( "Group" ).constructorArguments() ), ( Names{ "name", "seqno" } ) );
   EXPECT_EQ( namesOf( entity( "Special" ).constructorArguments() ), Names{ "name" } );
   EXPECT_FALSE( entity( "Group" ).hasFactory );
   EXPECT_TRUE( attribute( "Slot", "weight" ).hasMutator() );
   EXPECT_TRUE( attribute( "Binding", "target" ).isReference );
   EXPECT_EQ( attribute( "Binding", "target" ).type.entity, &type( "Tree" ) );
   // What stands behind a comma shares the comment of its type's line.
   EXPECT_EQ( attribute( "Group", "seqno" ).documentation, entity( "Group" ).documentation );
   EXPECT_EQ(
         attribute( "Slot", "weight" ).documentation, "a constructor argument with a mutator" );
}

TEST( Everything, derivedTypes )
{
   EXPECT_EQ( entity( "Special" ).base, &type( "Root" ) );
   ASSERT_EQ( entity( "Special" ).checks.size(), 1U );
   EXPECT_EQ( entity( "Special" ).checks[ 0 ], &attribute( "Root", "tiny" ) );
   EXPECT_TRUE( attribute( "Special", "fill" ).function->mutating );
}

TEST( Everything, keysOfCollections )
{
   const Model::Collection & plains = *attribute( "Root", "plains" ).collection;
   EXPECT_EQ( plains.origin, Model::KeyOrigin::member );
   EXPECT_EQ( plains.keyAttribute, &attribute( "Plain", "colour" ) );
   EXPECT_EQ( plains.key.fullName, "Test::Colour" );
   EXPECT_EQ( attribute( "Root", "names" ).collection->key.fullName, "u32" );
   EXPECT_EQ( attribute( "Root", "colours" ).collection->origin, Model::KeyOrigin::element );
   EXPECT_EQ( attribute( "Root", "tree" ).collection->keyAttribute,
         entity( "Tree" ).nameArgument.get() );
   EXPECT_EQ(
         attribute( "Root", "refs" ).collection->keyAttribute, &attribute( "Numbered", "id" ) );
   EXPECT_TRUE( attribute( "Root", "groups" ).collection->ordered );
   EXPECT_EQ( attribute( "Root", "recipes" ).collection->secondLookup, Model::SecondLookup::same );
   EXPECT_EQ(
         attribute( "Root", "sorted" ).collection->secondLookup, Model::SecondLookup::optional );
   EXPECT_EQ( attribute( "Root", "steps" ).collection->secondLookup, Model::SecondLookup::none );
}

TEST( Everything, hashSaltsDiffer )
{
   std::set< std::uint32_t > salts;
   std::size_t collections = 0;
   for ( const Attribute * each : entity( "Root" ).allAttributes() ) {
      if ( each->collection ) {
         salts.insert( each->collection->hashSalt );
         ++collections;
      }
   }
   EXPECT_EQ( salts.size(), collections );
}

TEST( Everything, reinstantiation )
{
   using Model::Reinstantiation;
   const auto rules = []( const char * typeName, const char * name ) {
      std::vector< Reinstantiation > result;
      for ( const Model::ChildArgument & argument :
            attribute( typeName, name ).collection->arguments ) {
         result.push_back( argument.rule );
      }
      return result;
   };
   using Rules = std::vector< Reinstantiation >;
   EXPECT_EQ(
         rules( "Root", "slots" ), ( Rules{ Reinstantiation::key, Reinstantiation::update } ) );
   EXPECT_EQ(
         rules( "Root", "groups" ), ( Rules{ Reinstantiation::refuse, Reinstantiation::key } ) );
   EXPECT_EQ( rules( "Root", "bindings" ),
         ( Rules{ Reinstantiation::key, Reinstantiation::refuse, Reinstantiation::refuse } ) );
   EXPECT_EQ( rules( "Root", "single" ), Rules{ Reinstantiation::replace } );
   EXPECT_EQ( rules( "Root", "only" ), Rules{} );
   EXPECT_TRUE( attribute( "Root", "only" ).collection->constructed );
}

TEST( Everything, optionals )
{
   EXPECT_EQ( attribute( "Root", "maybe" ).kind, AttributeKind::optional );
   EXPECT_FALSE( attribute( "Root", "maybe" ).emptyWord );
   EXPECT_EQ( attribute( "Root", "maybeWord" ).emptyWord, 0U );
   EXPECT_TRUE( attribute( "Root", "count" ).counter );
}

} // namespace
} // namespace VokGen
