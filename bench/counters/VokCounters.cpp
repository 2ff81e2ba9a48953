// The framework's stream: a batch of what changed.
#include "Vok/Vok.h"
#include "bench/Check.h"
#include "bench/changes/BenchCounters.h"
#include "bench/counters/Counters.h"

#include <charconv>
#include <string>
#include <vector>

namespace Bench::Counters {
namespace {

struct Values {
   using Tree = TrafficTable;
   static Corvo::Ptr< Tree > make() { return trafficTableFactory( "table" ); }

   explicit Values( Tree & tree ) : tree_( tree ) {}
   void put( std::uint32_t number, const Traffic & traffic )
   {
      tree_.trafficIs( number, Bench::Traffic( traffic.packets, traffic.bytes ) );
   }
   static std::uint64_t digest( const Tree & tree )
   {
      std::uint64_t sum = 0;
      for ( const auto & [ number, member ] : tree.traffic() ) {
         sum += digestOf( number, { member.packets(), member.bytes() } );
      }
      return sum;
   }

 private:
   Tree & tree_;
};

// Who counts keeps its counters at hand.
struct Entities {
   using Tree = CounterTable;
   static Corvo::Ptr< Tree > make() { return counterTableFactory( "table" ); }

   explicit Entities( Tree & tree ) : tree_( tree ) {}
   void put( std::uint32_t number, const Traffic & traffic )
   {
      if ( number >= counters_.size() ) {
         counters_.resize( number + 1 );
      }
      Corvo::Ptr< Counter > & counter = counters_[ number ];
      if ( !counter ) {
         counter = tree_.counterIs( std::to_string( number ) );
      }
      counter->packetsIs( traffic.packets );
      counter->bytesIs( traffic.bytes );
   }
   static std::uint64_t digest( const Tree & tree )
   {
      std::uint64_t sum = 0;
      for ( const auto & member : tree.counter() ) {
         const std::string_view name = member->name();
         std::uint32_t number = 0;
         std::from_chars( name.data(), name.data() + name.size(), number );
         sum += digestOf( number, { member->packets(), member->bytes() } );
      }
      return sum;
   }

 private:
   Tree & tree_;
   std::vector< Corvo::Ptr< Counter > > counters_;
};

template< class Kind > class VokReader final : public Reader {
 public:
   void apply( const std::byte * data, std::size_t size ) override
   {
      Vok::NboAttrLog::In in( data, size );
      reader_.read( in );
      require( in.remaining() == 0, "all of a batch is read" );
   }
   std::uint64_t digest() const override { return Kind::digest( *replica_ ); }

 private:
   Corvo::Ptr< typename Kind::Tree > replica_ = Kind::make();
   Vok::EntityVokNboAttrLogReader reader_{ replica_ };
};

template< class Kind > class VokWriter final : public Writer {
 public:
   explicit VokWriter( std::uint32_t members )
   {
      for ( std::uint32_t number = 1; number <= members; ++number ) {
         kind_.put( number, firstOf( number ) );
      }
      flush();
   }

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      kind_.put( number, traffic );
   }
   void flush() override
   {
      out_.clear();
      writer_.write( out_ );
      if ( out_.size() != 0 ) {
         reader_.send( out_.data(), out_.size() );
      }
   }
   void settle() override
   {
      flush();
      reader_.settle();
   }
   std::uint64_t elsewhere() const override { return reader_.processorTime(); }
   bool alike() override { return reader_.digest() == Kind::digest( *tree_ ); }

 private:
   ReaderProcess reader_{ [] { return std::make_unique< VokReader< Kind > >(); } };
   Corvo::Ptr< typename Kind::Tree > tree_ = Kind::make();
   Kind kind_{ *tree_ };
   Vok::EntityVokNboAttrLogSa writer_{ tree_ };
   Vok::NboAttrLog::Out out_;
};

} // namespace

std::unique_ptr< Writer > values( std::uint32_t members )
{
   return std::make_unique< VokWriter< Values > >( members );
}

std::unique_ptr< Writer > entities( std::uint32_t members )
{
   return std::make_unique< VokWriter< Entities > >( members );
}

} // namespace Bench::Counters
