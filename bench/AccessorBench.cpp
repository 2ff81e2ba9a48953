// A collection of an entity, through its accessors and mutators while nobody listens, beside the
// map that it is.
#include "bench/BenchModel.h"
#include "bench/MapCases.h"

#include <cstddef>
#include <string>
#include <type_traits>

namespace Bench {
namespace {

/// The collection of a table that has this key.
template< class Key > class EntityMap {
   static constexpr bool byNumber = std::is_same_v< Key, std::uint32_t >;

 public:
   std::size_t size() const { return all().size(); }
   bool insert( const Key & key, Number number )
   {
      const std::size_t before = size();
      set( key, number );
      return size() != before;
   }
   Number find( const Key & key ) const
   {
      if constexpr ( byNumber ) {
         return table_->byNumber( key );
      } else {
         return table_->byText( key );
      }
   }
   bool erase( const Key & key )
   {
      if constexpr ( byNumber ) {
         return table_->byNumberDel( key ) != absent;
      } else {
         return table_->byTextDel( key ) != absent;
      }
   }
   template< class F > void each( F f ) const
   {
      for ( const auto & [ key, number ] : all() ) {
         f( number );
      }
   }

 private:
   auto all() const
   {
      if constexpr ( byNumber ) {
         return table_->byNumber();
      } else {
         return table_->byText();
      }
   }
   void set( const auto & key, Number number )
   {
      if constexpr ( byNumber ) {
         table_->byNumberIs( key, number );
      } else {
         table_->byTextIs( key, number );
      }
   }

   Corvo::Ptr< Table > table_ = tableFactory( "table" );
};

/// The map alone, which stores where mutators do.
template< class Key > struct MapAlone : VokHashMap< Key > {
   bool insert( const Key & key, Number number ) { return this->set( key, number ); }
};

/// A copy is made member by member, so that it has the same shape of both.
template< class Map, class Key > struct Copied : Map {
   Copied() = default;
   Copied( const Copied & other ) : Map()
   {
      other.each( [ this ]( Number number ) {
         this->insert( keyOf< Key >( static_cast< std::uint32_t >( number - 1 ) ), number );
      } );
   }
   Copied & operator=( const Copied & ) = delete;
};

constexpr MapSize sizes[] = {
   { "1e3", 1000 },
   { "1e5", 100'000 },
};

template< class Key > void addAll( const char * key )
{
   MapCases< Copied< EntityMap< Key >, Key >, Key >::add( "accessor/", key, "Vok", sizes );
   MapCases< Copied< MapAlone< Key >, Key >, Key >::add( "accessor/", key, "map-alone", sizes );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   addAll< std::uint32_t >( "u32" );
   addAll< std::string >( "text" );
   return runBenchmarks( argc, argv );
}
