// Descriptions of types that no writer writes: each type and attribute stands once in a stream, and
// a reader keeps little of what it has not found good yet.
#include "tests/Vok/Streams.h"
#include "tests/support/HeapMeter.h"

#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/StreamType.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace {

using TestSupport::Bytes;
using TestSupport::bytesOf;
using TestSupport::Replica;
using Vok::NboAttrLog::Out;

void putName( Out & out, std::string_view name )
{
   out.putVarint( name.size() );
   out.putBytes( name.data(), name.size() );
}

/// A batch of a whole tree that describes types and holds nothing else.
class Descriptions {
 public:
   /// How many types; each is to be put.
   explicit Descriptions( std::size_t types )
   {
      namespace Batch = Vok::Detail::Batch;
      out_.put( Batch::magic );
      out_.put( Batch::version );
      out_.put( Batch::wholeFlag );
      out_.put( std::uint32_t{ 0 } ); // the length
      out_.put( std::uint64_t{ 1 } ); // the stream
      out_.putVarint( 1 ); // the batch
      out_.putVarint( types );
   }

   /// The module of what is described from here on.
   Descriptions & module( std::string name )
   {
      module_ = std::move( name );
      return *this;
   }

   /// A Test::Leaf with its attribute so many times, and what that is by default.
   Descriptions & leaf( std::size_t rows, bool active = false )
   {
      type( "Test::Leaf", 1 );
      putName( out_, "nameString" );
      putName( out_, "Corvo::String" );
      out_.put( Vok::Detail::Batch::identityArgument );
      out_.put( Vok::Detail::layoutOf( "Corvo::String" ) );
      out_.putVarint( rows );
      for ( ; rows != 0; --rows ) {
         row( "active", "bool", active );
      }
      return *this;
   }

   /// A type that the reader does not know.
   Descriptions & unknown( std::string_view name, std::size_t rows )
   {
      type( name, 0 );
      out_.putVarint( rows );
      for ( ; rows != 0; --rows ) {
         row( "", "bool" );
      }
      return *this;
   }

   /// The root, which is of the first type, a Test::Leaf; all at its default.
   Descriptions & root( std::string_view name )
   {
      Out arguments;
      arguments.putString( name );
      out_.putVarint( arguments.size() );
      out_.putBytes( arguments.data(), arguments.size() );
      return *this;
   }

   Bytes batch()
   {
      constexpr std::size_t lengthAt = 4;
      const std::size_t length = out_.size() + Vok::Detail::Batch::checksumSize;
      out_.patch32( lengthAt, static_cast< std::uint32_t >( length ) );
      out_.put( Vok::Detail::checksum64( out_.data(), out_.size() ) );
      return bytesOf( out_ );
   }

 private:
   void type( std::string_view name, std::size_t arguments )
   {
      putName( out_, name );
      putName( out_, module_ );
      out_.put( std::uint64_t{ 0 } ); // fingerprint
      out_.putVarint( arguments );
   }

   void row( std::string_view name, std::string_view typeName, bool initial = false )
   {
      out_.putVarint( 258 );
      out_.put( std::uint8_t{ 0 } );
      putName( out_, name );
      putName( out_, typeName );
      putName( out_, "" ); // key
      out_.put( Vok::Detail::layoutOf( typeName ) );
      out_.put( std::uint64_t{ 0 } );
      out_.putVarint( 1 ); // size
      out_.putVarint( 0 ); // type of members
      out_.putVarint( 1 ); // size of the default
      out_.putBool( initial );
   }

   Out out_;
   std::string module_;
};

/// Why a batch is refused, where the reader holds no more than it may meanwhile.
std::string refusalInBounds( const Bytes & batch )
{
   Replica replica;
   Vok::NboAttrLog::In in( batch );
   std::string why;
   const TestSupport::HeapMeter heap;
   try {
      replica.reader.read( in );
   } catch ( const Vok::NboAttrLog::Exception & e ) {
      EXPECT_LE( heap.peak(), 2 * batch.size() + ( 64 << 10 ) );
      why = e.what();
   }
   return why;
}

TEST( StreamDescriptionTest, whereTheKeysOfACollectionStandIsPartOfTheirLayout )
{
   using Vok::Detail::keyLayoutOf;
   using Vok::Detail::layoutOf;
   const auto row = []( std::string_view name ) {
      return ::Test::Root::vokType().attribute( name )->row();
   };
   EXPECT_EQ( keyLayoutOf( row( "steps" ) ), layoutOf( "u32" ) );
   EXPECT_NE( keyLayoutOf( row( "groups" ) ), layoutOf( row( "groups" ).keyTypeName ) );
   EXPECT_NE( keyLayoutOf( row( "sorted" ) ), layoutOf( row( "sorted" ).keyTypeName ) );
   EXPECT_EQ( keyLayoutOf( row( "title" ) ), 0U );
}

TEST( StreamDescriptionTest, aTypeThatIsDescribedTwiceIsRefused )
{
   EXPECT_EQ( refusalInBounds( Descriptions( 2 ).leaf( 1 ).leaf( 1 ).batch() ),
         "Test::Leaf: a stream describes it twice" );
   EXPECT_EQ( refusalInBounds( Descriptions( 2 ).unknown( "A", 0 ).unknown( "A", 0 ).batch() ),
         "A: a stream describes it twice" );
}

TEST( StreamDescriptionTest, anAttributeThatIsDescribedTwiceIsRefused )
{
   EXPECT_EQ( refusalInBounds( Descriptions( 1 ).leaf( 2 ).batch() ),
         "Test::Leaf::active: a stream describes it twice" );
}

// What was read of a type before must not be taken for what another stream says of it.

TEST( StreamDescriptionTest, aDefaultIsThatOfTheStream )
{
   const auto leaf = ::Test::Leaf::LeafIs( "replica" );
   for ( const bool active : { false, true, true, false, true } ) {
      const Bytes batch = Descriptions( 1 ).leaf( 1, active ).root( "writer" ).batch();
      Vok::EntityVokNboAttrLogReader reader( leaf );
      Vok::NboAttrLog::In in( batch );
      reader.read( in );
      EXPECT_EQ( leaf->active(), active );
   }
}

TEST( StreamDescriptionTest, attributesThatOneStreamHasAndAnotherLacks )
{
   const auto leaf = ::Test::Leaf::LeafIs( "replica" );
   for ( const std::size_t rows : { 1U, 0U, 1U, 0U } ) {
      leaf->activeIs( true );
      const Bytes batch = Descriptions( 1 ).leaf( rows ).root( "writer" ).batch();
      Vok::EntityVokNboAttrLogReader reader( leaf );
      Vok::NboAttrLog::In in( batch );
      reader.read( in );
      EXPECT_EQ( leaf->active(), rows == 0 ); // what the writer does not have stays as it is
   }
}

TEST( StreamDescriptionTest, ofALongDescriptionNothingStays )
{
   const auto leaf = ::Test::Leaf::LeafIs( "replica" );
   const Bytes shorter = Descriptions( 1 ).leaf( 1 ).root( "writer" ).batch();
   const Bytes longer =
         Descriptions( 1 ).module( std::string( 1 << 20, 'm' ) ).leaf( 1 ).root( "w" ).batch();
   const auto read = [ &leaf ]( const Bytes & batch ) {
      Vok::EntityVokNboAttrLogReader reader( leaf );
      Vok::NboAttrLog::In in( batch );
      reader.read( in );
   };
   read( shorter );
   const TestSupport::HeapMeter heap;
   read( longer );
   EXPECT_LE( heap.held(), 4096U );
}

TEST( StreamDescriptionTest, aTypeOfChildrenHasAnotherNumberInAnotherTree )
{
   TestSupport::Source source;
   const std::array trees = { source.root->treeIs( "below" ), ::Test::Tree::TreeIs( "root" ) };
   for ( const auto & tree : trees ) {
      tree->kidsIs( "kid" )->hostsIs( "host" );
      tree->groupsIs( "group", 7 );
      tree->hostsIs( "other" );
   }
   const auto & alone = trees.back();
   for ( int round = 0; round != 3; ++round ) {
      Replica replica;
      replica.read( source.whole() );
      TestSupport::expectEqual( *source.root, *replica.root );

      const auto copy = ::Test::Tree::TreeIs( "copy" );
      Vok::EntityVokNboAttrLogSa writer( alone );
      Out out;
      writer.write( out );
      Vok::EntityVokNboAttrLogReader reader( copy );
      Vok::NboAttrLog::In in( out.bytes() );
      reader.read( in );
      TestSupport::expectEqual( *alone, *copy );
   }
}

TEST( StreamDescriptionTest, whatIsKeptOfDescriptionsIsBounded )
{
   Descriptions leaves( 256 );
   for ( int i = 0; i != 256; ++i ) {
      leaves.leaf( 256 );
   }
   EXPECT_NE( refusalInBounds( leaves.batch() ), "" );

   Descriptions unknown( 256 );
   for ( int i = 0; i != 256; ++i ) {
      unknown.unknown( std::to_string( i ), i == 255 ? 256 : 0 );
   }
   EXPECT_EQ( refusalInBounds( unknown.batch() ),
         "the stream is of a tree of type 0, the replica's root is a Test::Root" );

   EXPECT_EQ( refusalInBounds( Descriptions( 1 ).unknown( "A", 257 ).batch() ),
         "a stream describes too many attributes that this side does not know" );
}

} // namespace
