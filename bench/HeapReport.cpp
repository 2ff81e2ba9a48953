// What things cost in bytes: members of maps, entities and children; and what a change allocates.
// Fails where a change that is heard allocates.
#include "bench/Check.h"
#include "bench/MapSubjects.h"
#include "bench/MutatePeers.h"
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace Bench {
namespace {

constexpr std::size_t members = 100'000;

void print( const std::string & what, std::size_t object, double heap )
{
   std::printf( "%-44s %8zu %12.1f\n", what.c_str(), object, heap );
}

// Makes 100,000 of something by calling `add( i )`; returns the bytes of each.
template< class Add > double bytesOfEach( Add add )
{
   const TestSupport::HeapMeter heap;
   for ( std::size_t i = 0; i != members; ++i ) {
      add( i );
   }
   return static_cast< double >( heap.held() ) / members;
}

template< class Map > void reportMap( const char * keyName )
{
   Map map;
   TestSupport::Random random( 1 );
   const double bytes = bytesOfEach( [ & ]( std::size_t i ) { map.insert( random.word(), i ); } );
   require( map.size() == members, "members of a map" );
   print( std::string( "member of a map by " ) + keyName + ", " + Map::name, sizeof( Map ), bytes );
}

template< class T, class Make > void reportEntity( const char * name, Make make )
{
   const auto made = std::make_unique< Corvo::Ptr< T >[] >( members );
   const double bytes = bytesOfEach( [ & ]( std::size_t i ) { made[ i ] = make(); } );
   print( std::string( "empty " ) + name, sizeof( T ), bytes );
}

void reportChildren()
{
   const auto tree = Test::treeFactory( "tree" );
   const double bytes = bytesOfEach(
         [ & ]( std::size_t i ) { tree->hostsIs( "Ethernet" + std::to_string( i ) ); } );
   require( tree->hosts().size() == members, "children" );
   print( "child in its collection, Test::Host", sizeof( Test::Host ), bytes );
}

class Deaf : public Corvo::Notifiee {
   void onChange( const Corvo::Change & ) override {}
};

// The most that the heap held above its level before, during some changes.
template< class Object > std::size_t heldByChanges( Object & object )
{
   object.midIs( 1 );
   const TestSupport::HeapMeter heap;
   for ( std::uint16_t mid = 2; mid != 1000; ++mid ) {
      object.midIs( mid );
   }
   return heap.peak();
}

void reportChanges()
{
   Deaf deaf;
   const auto root = Test::rootFactory( "root" );
   root->publisher().notifieeIs( &deaf );
   const std::size_t bytes = heldByChanges( *root );
   print( "heard change, Vok", 0, static_cast< double >( bytes ) );

   SignalObject object;
   object.changed.connect( []( const SignalObject &, std::uint16_t ) {} );
   print( "heard change, boost-signals2", 0, static_cast< double >( heldByChanges( object ) ) );
   require( bytes == 0, "a heard change allocates nothing" );
}

} // namespace
} // namespace Bench

int main()
{
   using namespace Bench;
   std::printf( "%-44s %8s %12s\n", "bytes", "sizeof", "on the heap" );
   reportMap< VokMap< std::uint64_t > >( "u64" );
   reportMap< BoostMap< std::uint64_t > >( "u64" );
   reportMap< AbslMap< std::uint64_t > >( "u64" );
   reportMap< StdMap< std::uint64_t > >( "u64" );
   reportEntity< Test::Leaf >( "Test::Leaf", [] { return Test::leafFactory( "leaf" ); } );
   reportEntity< Test::Tree >( "Test::Tree", [] { return Test::treeFactory( "tree" ); } );
   reportEntity< Test::Root >( "Test::Root", [] { return Test::rootFactory( "root" ); } );
   reportChildren();
   reportChanges();
}
