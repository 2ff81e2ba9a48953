// By hand: structures of fixed widths, one for each update, or one for each member that changed.
#include "bench/Check.h"
#include "bench/counters/Counters.h"

#include <cstring>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Bench::Counters {
namespace {

using Table = std::unordered_map< std::uint32_t, Traffic >;

struct Record {
   std::uint32_t number;
   std::uint32_t unused;
   Traffic traffic;
};

std::uint64_t digestOf( const Table & table )
{
   std::uint64_t sum = 0;
   for ( const auto & [ number, traffic ] : table ) {
      sum += Counters::digestOf( number, traffic );
   }
   return sum;
}

class HandReader final : public Reader {
 public:
   void apply( const std::byte * data, std::size_t size ) override
   {
      require( size % sizeof( Record ) == 0, "a message is whole" );
      for ( std::size_t at = 0; at != size; at += sizeof( Record ) ) {
         Record record;
         std::memcpy( &record, data + at, sizeof record );
         table_[ record.number ] = record.traffic;
      }
   }
   std::uint64_t digest() const override { return digestOf( table_ ); }

 private:
   Table table_;
};

template< bool coalesced > class HandWriter final : public Writer {
 public:
   explicit HandWriter( std::uint32_t members )
   {
      for ( std::uint32_t number = 1; number <= members; ++number ) {
         change( number, firstOf( number ) );
      }
      flush();
   }

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      Traffic & member = table_[ number ];
      if ( member == traffic ) {
         return;
      }
      member = traffic;
      if constexpr ( coalesced ) {
         changed_.insert( number );
      } else {
         log_.push_back( { number, 0, traffic } );
      }
   }
   void flush() override
   {
      for ( const std::uint32_t number : changed_ ) {
         log_.push_back( { number, 0, table_[ number ] } );
      }
      changed_.clear();
      if ( !log_.empty() ) {
         reader_.send( log_.data(), log_.size() * sizeof( Record ) );
         log_.clear();
      }
   }
   void settle() override
   {
      flush();
      reader_.settle();
   }
   std::uint64_t elsewhere() const override { return reader_.processorTime(); }
   bool alike() override { return reader_.digest() == digestOf( table_ ); }

 private:
   ReaderProcess reader_{ [] { return std::make_unique< HandReader >(); } };
   Table table_;
   std::unordered_set< std::uint32_t > changed_;
   std::vector< Record > log_;
};

} // namespace

std::unique_ptr< Writer > loggedByHand( std::uint32_t members )
{
   return std::make_unique< HandWriter< false > >( members );
}

std::unique_ptr< Writer > coalescedByHand( std::uint32_t members )
{
   return std::make_unique< HandWriter< true > >( members );
}

} // namespace Bench::Counters
