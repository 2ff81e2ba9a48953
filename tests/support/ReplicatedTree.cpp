// Trees and their replicas, through reflection alone.
#include "tests/support/ReplicatedTree.h"

#include "tests/support/DescribeTree.h"
#include "tests/support/RandomEntity.h"

#include <gtest/gtest.h>

namespace TestSupport {

using Vok::AttributeData;
using Vok::AttributeKind;

namespace {

void expectSame( const Vok::Entity & root, const Vok::Entity & replica )
{
   ASSERT_EQ( describeTree( root ), describeTree( replica ) );
   ASSERT_EQ( Vok::treeDigest( root ), Vok::treeDigest( replica ) );
}

void readAll( Vok::EntityVokNboAttrLogReader & reader, const Vok::NboAttrLog::Out & out )
{
   Vok::NboAttrLog::In in( out.data(), out.size() );
   reader.read( in );
   ASSERT_EQ( in.remaining(), 0U );
   ASSERT_TRUE( reader.passedOver().empty() );
}

} // namespace

ReplicatedTree::ReplicatedTree( const EntityTable & table ) : root( entityOf( table ) ),
                                                              replica( entityOf( table ) ),
                                                              late_( entityOf( table ) )
{
}

void ReplicatedTree::follow()
{
   Vok::NboAttrLog::Out out;
   writer.write( out );
   if ( out.size() != 0 ) {
      ASSERT_NO_FATAL_FAILURE( readAll( reader, out ) );
   }
   expectSame( *root, *replica );
}

void ReplicatedTree::resync()
{
   writer.resync();
   Vok::NboAttrLog::Out out;
   writer.write( out );
   ASSERT_NO_FATAL_FAILURE( readAll( reader, out ) );
   ASSERT_NO_FATAL_FAILURE( expectSame( *root, *replica ) );
   Vok::EntityVokNboAttrLogReader late( late_ );
   ASSERT_NO_FATAL_FAILURE( readAll( late, out ) );
   expectSame( *root, *late_ );
}

EntityPtr childOf( const EntityPtr & parent, std::string_view attribute, std::string_view key )
{
   return parent->typeData().attribute( attribute )->child( *parent, key );
}

namespace {

/// Whether an attribute can be, and is, other than in a fresh entity.
bool isAway( const Vok::Entity & entity, const AttributeData & a )
{
   switch ( a.kind() ) {
   case AttributeKind::plain:
   case AttributeKind::optional:
      return a.get( entity ) != a.defaultText();
   case AttributeKind::map:
   case AttributeKind::set:
   case AttributeKind::children:
   case AttributeKind::references:
      return !a.keys( entity ).empty();
   case AttributeKind::child:
      return a.child( entity, "" ) != nullptr;
   default:
      return false;
   }
}

bool canBeAway( const AttributeRow & row )
{
   switch ( row.form.kind ) {
   case AttributeKind::plain:
      return !row.other.empty();
   case AttributeKind::constructorArgument:
      return false;
   default:
      return row.form.settable;
   }
}

std::string attributeName( std::string_view type, std::string_view attribute )
{
   return std::string( type ).append( "::" ).append( attribute );
}

} // namespace

void Away::addReferences( const Vok::Entity & entity, const AttributeData & a )
{
   const std::string name = attributeName( entity.typeData().name(), a.name() );
   if ( a.kind() == AttributeKind::references ) {
      for ( const Corvo::String & key : a.keys( entity ) ) {
         const bool inside = &Vok::rootOf( *a.child( entity, key ) ) == &Vok::rootOf( entity );
         ( inside ? inward_ : outward_ ).insert( name );
      }
   } else if ( a.row().reference ) {
      ( a.get( entity ).empty() ? outward_ : inward_ ).insert( name );
   }
}

bool Away::referredTo( const std::string & attribute ) const
{
   return inward_.contains( attribute ) && outward_.contains( attribute );
}

void Away::add( const Vok::Entity & root )
{
   for ( const AttributeData & a : root.typeData().attributes() ) {
      addReferences( root, a );
      if ( !isAway( root, a ) ) {
         continue;
      }
      names_.insert( attributeName( root.typeData().name(), a.name() ) );
      if ( a.kind() == AttributeKind::child ) {
         add( *a.child( root, "" ) );
      } else if ( a.kind() == AttributeKind::children ) {
         for ( const Corvo::String & key : a.keys( root ) ) {
            add( *a.child( root, key ) );
         }
      }
   }
}

std::string Away::missing( const std::vector< EntityTable > & tables ) const
{
   std::string missing;
   for ( const EntityTable & table : tables ) {
      for ( const AttributeRow & row : table.attributes ) {
         const std::string name = attributeName( table.type, row.name );
         if ( canBeAway( row ) && !names_.contains( name ) ) {
            missing.append( name ).append( " " );
         }
      }
   }
   return missing;
}

void expectWholeTreeFollows( const EntityTable & table, const std::vector< EntityTable > & types,
      const std::function< void( const EntityPtr & root ) > & change )
{
   ReplicatedTree tree( table );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const Vok::Digest before = Vok::treeDigest( *tree.root );
   change( tree.root );
   Away away;
   away.add( *tree.root );
   EXPECT_EQ( away.missing( types ), "" );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_FALSE( before == Vok::treeDigest( *tree.replica ) );
   tree.resync();
}

void expectRandomTreesFollow( const EntityTable & table, const RandomRuns & runs, Away & away )
{
   for ( std::uint64_t seed = 0; seed != runs.trees; ++seed ) {
      Random random( seed );
      ReplicatedTree tree( table );
      RandomEntity changes( *tree.root, random );
      for ( unsigned batch = 0; batch != runs.batches; ++batch ) {
         changes.changes( 1 + random.below( runs.changes ) );
         if ( random.oneIn( 10 ) ) {
            tree.writer.resync();
         }
         ASSERT_NO_FATAL_FAILURE( tree.follow() ) << "seed " << seed << " batch " << batch;
      }
      away.add( *tree.replica );
   }
}

} // namespace TestSupport
