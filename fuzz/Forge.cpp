// Forging batches: a changed batch gets a frame that fits it, and so gets past the checksum.
#include "fuzz/Forge.h"

#include "Vok/Vok.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/ReadType.h"

namespace Fuzz {

namespace Format = Vok::Detail::Batch;
using Vok::NboAttrLog::In;
using Vok::NboAttrLog::Out;

BatchParts partsOf( const Batch & batch )
{
   In in( Bytes( batch ).subspan( Format::headerSize ) );
   in.getVarint(); // the number
   const std::byte * const types = in.position();
   Vok::Detail::readTypes( in, {} );
   const std::byte * const end = batch.data() + batch.size() - Format::checksumSize;
   return { Batch( types, in.position() ), Batch( in.position(), end ) };
}

Batch batchOf( bool whole, std::uint64_t stream, std::uint64_t number, Bytes types, Bytes records )
{
   constexpr std::size_t lengthAt = 4;
   Out out;
   out.put( Format::magic );
   out.put( Format::version );
   out.put( whole ? Format::wholeFlag : std::uint8_t{ 0 } );
   out.put( std::uint32_t{ 0 } );
   out.put( stream );
   out.putVarint( number );
   out.putBytes( types.data(), types.size() );
   out.putBytes( records.data(), records.size() );
   out.patch32( lengthAt, static_cast< std::uint32_t >( out.size() + Format::checksumSize ) );
   out.put( Vok::Detail::checksum64( out.data(), out.size() ) );
   return { out.bytes().begin(), out.bytes().end() };
}

namespace {

void fillTree( Test::Root & root )
{
   const auto tree = root.treeIs( "a" );
   tree->depthIs( 3 );
   tree->kidsIs( "b" )->kidsIs( "c" )->depthIs( 5 );
   tree->groupsIs( "g", 1 )->seenIs( true );
   tree->slotsIs( Test::Label( "s" ), 7 )->colourIs( Test::Colour::blue );
   tree->hostsIs( "h" )->activeIs( true );
   root.groupsIs( "g", 1 )->innerIs()->pathIs( "p" );
   root.groupsIs( "h", 2 )->innerDel();
   root.slotsIs( Test::Label( "s" ), 200 );
   root.numberedIs( Test::Narrow( 300 ) )->countIs( 1 );
   root.singleIs( "one" )->activeIs( true );
   root.onlyIs()->pathIs( "only" );
}

void fillReferences( Test::Root & root )
{
   const auto outside = Test::Tree::TreeIs( "outside" );
   outside->kidsIs( "below" )->depthIs( 1 );
   root.bindingsIs( Test::Label( "l" ), outside, Test::Colour::red );
   root.leafRefsIs( root.tree( "a" )->kids( "b" ) );
   root.refsIs( root.numbered( Test::Narrow( 300 ) ) );
}

void fillValues( Test::Root & root )
{
   const Test::Pair pair(
         1, "text", Test::Colour::green, Test::Level( 2 ), true, Vok::Seconds( 1 ) );
   root.enabledIs( true );
   root.titleIs( "title" );
   root.maybePairIs( pair );
   root.maybeBitIs( true );
   root.maybeWordIs( Test::Full( 7 ) );
   root.namesIs( 1, "one" );
   root.byNameIs( "n", pair );
   root.plainsIs( Test::Plain() );
   Test::Recipe recipe( Test::Narrow( 300 ) );
   recipe.stepIs( 1, pair );
   root.recipesIs( recipe );
   root.sortedIs( pair );
   root.stepsIs( 1, 2 );
   root.coloursIs( Test::Colour::blue );
   root.wordsIs( "word" );
   root.marksIs( 4 );
}

} // namespace

Corvo::Ptr< Test::Root > baseTree()
{
   const auto root = Test::Root::RootIs( "base" );
   fillTree( *root );
   fillReferences( *root );
   fillValues( *root );
   return root;
}

const Batch & baseBatch()
{
   static const Batch batch = [] {
      Vok::EntityVokNboAttrLogSa writer( baseTree() );
      Out out;
      writer.write( out );
      const BatchParts parts = partsOf( { out.bytes().begin(), out.bytes().end() } );
      return batchOf( true, baseStream, 1, parts.types, parts.records );
   }();
   return batch;
}

} // namespace Fuzz
