// Children of an entity: made, and destroyed one by one, beside objects of the same size in the
// standard map.
#include "bench/Check.h"
#include "bench/Program.h"
#include "tests/model/Everything.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Bench {
namespace {

// As big as the entity, with an attribute like its own.
struct Plain {
   explicit Plain( const std::string & itsName ) : name( itsName ) {}
   std::string name;
   Plain * parent = nullptr;
   bool active = false;
   char rest[ sizeof( Test::Host ) - sizeof( std::string ) - 2 * sizeof( void * ) ];
};
static_assert( sizeof( Plain ) == sizeof( Test::Host ) );

class EntityTree {
 public:
   static constexpr const char * name = "Vok";
   void make( const std::string & child ) { tree_->hostsIs( child ); }
   void destroy( const std::string & child ) { tree_->hostsDel( child ); }
   std::size_t size() const { return tree_->hosts().size(); }

 private:
   Corvo::Ptr< Test::Tree > tree_ = Test::treeFactory( "tree" );
};

class StandardTree {
 public:
   static constexpr const char * name = "std";
   void make( const std::string & child )
   {
      children_.try_emplace( child, std::make_unique< Plain >( child ) );
   }
   void destroy( const std::string & child ) { children_.erase( child ); }
   std::size_t size() const { return children_.size(); }

 private:
   std::unordered_map< std::string, std::unique_ptr< Plain > > children_;
};

// Names in two orders: that of the birth and that of the death.
struct Names {
   std::vector< std::string > born;
   std::vector< std::string > dying;

   explicit Names( std::size_t size )
   {
      TestSupport::Random random( size );
      for ( std::size_t number = 0; number != size; ++number ) {
         born.push_back( "Ethernet" + std::to_string( number ) );
      }
      dying = born;
      shuffle( dying, random );
   }
};

template< class Tree > void create( benchmark::State & state, const Names & names )
{
   for ( auto _ : state ) {
      auto tree = std::make_unique< Tree >();
      for ( const std::string & name : names.born ) {
         tree->make( name );
      }
      state.PauseTiming();
      require( tree->size() == names.born.size(), "children made" );
      tree.reset();
      state.ResumeTiming();
   }
}

template< class Tree > void destroy( benchmark::State & state, const Names & names )
{
   for ( auto _ : state ) {
      state.PauseTiming();
      auto tree = std::make_unique< Tree >();
      for ( const std::string & name : names.born ) {
         tree->make( name );
      }
      state.ResumeTiming();
      for ( const std::string & name : names.dying ) {
         tree->destroy( name );
      }
      state.PauseTiming();
      require( tree->size() == 0, "children destroyed" );
      tree.reset();
      state.ResumeTiming();
   }
}

template< class Tree > void registerTree()
{
   using Body = void ( * )( benchmark::State &, const Names & );
   const std::pair< const char *, std::size_t > sizes[] = {
      { "1e3", 1000 },
      { "1e5", 100'000 },
   };
   const std::pair< const char *, Body > cases[] = {
      { "create/", create< Tree > },
      { "destroy/", destroy< Tree > },
   };
   for ( const auto & [ caseName, body ] : cases ) {
      for ( const auto & [ sizeName, size ] : sizes ) {
         const std::string name = std::string( caseName ) + sizeName + "/" + Tree::name;
         benchmark::RegisterBenchmark( name.c_str(),
               [ run = body, count = size ]( benchmark::State & state ) {
                  run( state, Names( count ) );
                  state.SetItemsProcessed(
                        state.iterations() * static_cast< std::int64_t >( count ) );
               } );
      }
   }
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   Bench::registerTree< Bench::EntityTree >();
   Bench::registerTree< Bench::StandardTree >();
   return Bench::runBenchmarks( argc, argv );
}
