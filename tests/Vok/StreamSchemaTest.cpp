// Streams of a writer whose module is another version of this side's: batches in which names and
// defaults were exchanged.
#include "tests/Vok/Streams.h"
#include "tests/support/AlteredBatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

using TestSupport::Bytes;
using TestSupport::describeTree;
using TestSupport::expectEqual;
using TestSupport::Random;
using TestSupport::RandomTree;
using TestSupport::renamed;
using TestSupport::Replica;
using TestSupport::signAgain;
using TestSupport::Source;
using TestSupport::textOf;

std::string other( std::string_view name )
{
   std::string text( name );
   text.back() = text.back() == 'Q' ? 'R' : 'Q';
   return text;
}

bool hasState( const Vok::AttributeData & attribute )
{
   using Vok::AttributeKind;
   return attribute.kind() != AttributeKind::constant &&
         attribute.kind() != AttributeKind::derived &&
         attribute.kind() != AttributeKind::function &&
         attribute.kind() != AttributeKind::constructorArgument;
}

/// Whether no other entity type of the module has an attribute of this name.
bool isRootsAlone( const Vok::AttributeData & attribute )
{
   for ( const Vok::TypeData & type :
         Corvo::ModuleInspectData::findType( "Test::Root" )->module().types() ) {
      if ( type.kind() == Vok::TypeKind::entity && type.name() != "Test::Root" &&
            type.name() != "Test::Special" && type.attribute( attribute.name() ) ) {
         return false;
      }
   }
   return true;
}

/// The description of a tree, apart into what belongs to one attribute of its root and the rest.
/// What is computed from others belongs to neither.
struct Parts {
   Parts( const Vok::Entity & root, std::string_view attribute )
   {
      std::istringstream description( describeTree( root ) );
      std::string * into = &rest;
      std::string computed;
      for ( std::string line; std::getline( description, line ); ) {
         if ( !line.starts_with( "   " ) ) {
            into = line.starts_with( "  " + std::string( attribute ) + " = " ) ? &own : &rest;
            into = line.starts_with( "  total = " ) ? &computed : into;
         }
         into->append( line ).append( "\n" );
      }
   }

   std::string own;
   std::string rest;
};

TEST( StreamSchemaTest, anUnknownAttributeOfEachKindIsPassedOverAndNamed )
{
   Source source;
   Random random( 11 );
   RandomTree( *source.root, random ).changes( 1500 );
   // What they refer to would be gone with the collection that has it.
   source.root->bindingsDelAll();
   source.root->leafRefsDelAll();
   source.root->refsDelAll();
   source.root->refsIs( ::Test::Numbered::NumberedIs( ::Test::Narrow( 300 ) ) );
   source.root->onlyIs();
   const auto fresh = ::Test::Root::RootIs( "fresh" );
   std::size_t passed = 0;
   for ( const Vok::AttributeData & attribute : source.root->typeData().attributes() ) {
      if ( !hasState( attribute ) || !isRootsAlone( attribute ) ) {
         continue;
      }
      const std::string_view name = attribute.name();
      Replica replica;
      replica.read( renamed( source.whole(), name, other( name ) ) );
      const Parts sent( *source.root, name );
      const Parts initial( *fresh, name );
      EXPECT_EQ( Parts( *replica.root, name ).rest, sent.rest ) << name;
      EXPECT_EQ( Parts( *replica.root, name ).own, initial.own ) << name;
      std::vector< Corvo::String > expected;
      if ( sent.own != initial.own || name == "only" ) {
         expected.emplace_back( "Test::Root::" + other( name ) );
         ++passed;
      }
      EXPECT_EQ( replica.reader.passedOver(), expected ) << name;
   }
   EXPECT_GE( passed, 25U );
}

TEST( StreamSchemaTest, whatIsPassedOverIsSaidOfTheLastBatchOnly )
{
   Source source;
   Replica replica;
   source.root->titleIs( "t" );
   source.root->countIs( 3 );
   replica.read( renamed( source.batch(), "title", "titlQ" ) );
   EXPECT_EQ( replica.reader.passedOver(), std::vector< Corvo::String >{ "Test::Root::titlQ" } );
   EXPECT_EQ( replica.root->title(), "none" );
   EXPECT_EQ( replica.root->count(), 3U );
   source.root->countIs( 4 );
   replica.read( source.batch() );
   EXPECT_TRUE( replica.reader.passedOver().empty() );
   source.root->titleIs( "u" );
   replica.read( source.batch() );
   EXPECT_EQ( replica.reader.passedOver(), std::vector< Corvo::String >{ "Test::Root::titlQ" } );
}

TEST( StreamSchemaTest, entitiesInAnUnknownCollectionAreFollowedWithoutHarm )
{
   Source source;
   Replica replica;
   source.root->treeIs( "a" )->kidsIs( "b" )->depthIs( 1 );
   replica.read( renamed( source.batch(), "kids", "kidQ" ) );
   EXPECT_EQ( replica.root->tree( "a" )->kids().size(), 0U );
   EXPECT_EQ( replica.reader.passedOver(), std::vector< Corvo::String >{ "Test::Tree::kidQ" } );
   source.root->tree( "a" )->kids( "b" )->depthIs( 2 );
   source.root->tree( "a" )->kids( "b" )->hostsIs( "h" );
   source.root->tree( "a" )->depthIs( 5 );
   replica.read( source.batch() );
   EXPECT_EQ( replica.root->tree( "a" )->depth(), 5U );
   source.root->treeDelAll();
   replica.read( source.batch() );
   EXPECT_EQ( replica.root->tree().size(), 0U );
}

TEST( StreamSchemaTest, anAttributeThatTheWriterLacksStays )
{
   Source source;
   Replica replica;
   replica.root->titleIs( "mine" );
   replica.read( renamed( source.batch(), "title", "titlQ" ) );
   EXPECT_EQ( replica.root->title(), "mine" );
}

TEST( StreamSchemaTest, theWritersDefaultIsStored )
{
   Source source;
   Replica replica;
   Bytes batch = source.batch();
   // The default of title: a block that holds the text "none".
   const std::size_t at = textOf( batch ).find( std::string_view( "\x08\0\0\0\4none", 9 ) );
   ASSERT_NE( at, std::string_view::npos );
   batch[ at + 5 ] = static_cast< std::byte >( 'b' );
   signAgain( batch );
   replica.read( batch );
   EXPECT_EQ( replica.root->title(), "bone" );
}

TEST( StreamSchemaTest, aDefaultBeyondTheReadersBoundsIsRefused )
{
   Source source;
   Replica replica;
   Bytes batch = source.batch();
   // The description of tiny: its name and type, no key, two layouts, size, no members, default.
   const std::size_t at = textOf( batch ).find( std::string_view( "\4tiny\2u8\0", 9 ) );
   ASSERT_NE( at, std::string_view::npos );
   ASSERT_EQ( batch[ at + 28 ], std::byte{ 1 } );
   batch[ at + 28 ] = std::byte{ 99 };
   signAgain( batch );
   EXPECT_EQ(
         replica.refusal( batch ), "Test::Root::tiny < 1 or > (Test::Level::top - 2) not allowed" );
   EXPECT_EQ( replica.root->tiny(), 1 );
}

TEST( StreamSchemaTest, whatCannotBeReconciledIsRefusedAndNamed )
{
   Source source;
   source.root->singleIs( "s" );
   Replica replica;
   const auto before = Vok::treeDigest( *replica.root );
   EXPECT_EQ( replica.refusal( renamed( source.whole(), "Test::Flags", "Test::FlagQ" ) ),
         "Test::Root::flags: the writer's attribute is of another type" );
   EXPECT_EQ( replica.refusal( renamed( source.whole(), "Test::Leaf", "Test::LeaQ" ) ),
         "Test::Root::single: the writer's attribute is of another type" );
   EXPECT_EQ( replica.refusal( renamed( source.whole(), "label", "labeQ" ) ),
         "Test::Slot::labeQ: the writer's constructor argument is another" );
   EXPECT_EQ( Vok::treeDigest( *replica.root ), before );
}

} // namespace
