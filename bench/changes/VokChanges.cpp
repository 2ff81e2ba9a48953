// The framework's streams, of a table of values and of one of entities.
#include "Vok/Vok.h"
#include "bench/Check.h"
#include "bench/changes/BenchCounters.h"
#include "bench/changes/ChangingTable.h"

#include <string>

namespace Bench::Changes {
namespace {

struct Values {
   using Tree = TrafficTable;
   static Corvo::Ptr< Tree > make() { return trafficTableFactory( "table" ); }
   static void put( Tree & tree, std::uint32_t number, const Traffic & traffic )
   {
      tree.trafficIs( number, Bench::Traffic( traffic.packets, traffic.bytes ) );
   }
   static std::size_t size( const Tree & tree ) { return tree.traffic().size(); }
};

struct Entities {
   using Tree = CounterTable;
   static Corvo::Ptr< Tree > make() { return counterTableFactory( "table" ); }
   static void put( Tree & tree, std::uint32_t number, const Traffic & traffic )
   {
      const auto counter = tree.counterIs( std::to_string( number ) );
      counter->packetsIs( traffic.packets );
      counter->bytesIs( traffic.bytes );
   }
   static std::size_t size( const Tree & tree ) { return tree.counter().size(); }
};

template< class Kind > class VokTable final : public ChangingTable {
 public:
   VokTable( std::uint32_t members, bool replicated ) : members_( members )
   {
      for ( std::uint32_t number = 1; number <= members; ++number ) {
         Kind::put( *tree_, number, firstOf( number ) );
      }
      writer_.write( out_ );
      if ( replicated ) {
         in();
      }
      out_ = Vok::NboAttrLog::Out(); // the memory for a whole tree goes back
   }

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      Kind::put( *tree_, number, traffic );
   }
   std::size_t out() override
   {
      out_.clear();
      writer_.write( out_ );
      return out_.size();
   }
   void in() override
   {
      Vok::NboAttrLog::In in( out_.data(), out_.size() );
      reader_.read( in );
      require( in.remaining() == 0, "all of a batch is read" );
   }
   bool alike() const override
   {
      return Kind::size( *replica_ ) == members_ &&
            Vok::treeDigest( *tree_ ) == Vok::treeDigest( *replica_ );
   }

 private:
   std::size_t members_;
   Corvo::Ptr< typename Kind::Tree > tree_ = Kind::make();
   Corvo::Ptr< typename Kind::Tree > replica_ = Kind::make();
   Vok::EntityVokNboAttrLogSa writer_{ tree_ };
   Vok::EntityVokNboAttrLogReader reader_{ replica_ };
   Vok::NboAttrLog::Out out_;
};

} // namespace

std::unique_ptr< ChangingTable > values( std::uint32_t members, bool replicated )
{
   return std::make_unique< VokTable< Values > >( members, replicated );
}

std::unique_ptr< ChangingTable > entities( std::uint32_t members, bool replicated )
{
   return std::make_unique< VokTable< Entities > >( members, replicated );
}

} // namespace Bench::Changes
