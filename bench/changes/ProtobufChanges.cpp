// protobuf: the whole table anew for each change; or a message of what differs, by key, of the keys
// that a program notes by hand.
#include "bench/Check.h"
#include "bench/changes/BenchChanges.pb.h"
#include "bench/changes/ChangingTable.h"

#include <string>
#include <unordered_set>

namespace Bench::Changes {
namespace {

BenchProto::TrafficTable tableOf( std::uint32_t members )
{
   BenchProto::TrafficTable table;
   for ( std::uint32_t number = 1; number <= members; ++number ) {
      BenchProto::Traffic & member = ( *table.mutable_traffic() )[ number ];
      member.set_packets( firstOf( number ).packets );
      member.set_bytes( firstOf( number ).bytes );
   }
   return table;
}

void put( BenchProto::Traffic & member, const Traffic & traffic )
{
   member.set_packets( traffic.packets );
   member.set_bytes( traffic.bytes );
}

bool equal( const BenchProto::TrafficTable & a, const BenchProto::TrafficTable & b )
{
   for ( const auto & [ number, member ] : a.traffic() ) {
      const auto found = b.traffic().find( number );
      if ( found == b.traffic().end() || found->second.packets() != member.packets() ||
            found->second.bytes() != member.bytes() ) {
         return false;
      }
   }
   return a.traffic().size() == b.traffic().size();
}

class ProtobufTable : public ChangingTable {
 public:
   ProtobufTable( std::uint32_t members, bool replicated ) : table_( tableOf( members ) )
   {
      if ( replicated ) {
         replica_ = table_;
      }
   }
   bool alike() const override { return equal( table_, replica_ ); }

 protected:
   BenchProto::TrafficTable table_;
   BenchProto::TrafficTable replica_;
   std::string out_;
};

class WholeTable final : public ProtobufTable {
 public:
   using ProtobufTable::ProtobufTable;

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      put( ( *table_.mutable_traffic() )[ number ], traffic );
   }
   std::size_t out() override
   {
      require( table_.SerializeToString( &out_ ), "serialize" );
      return out_.size();
   }
   void in() override { require( replica_.ParseFromString( out_ ), "parse" ); }
};

class DeltaTable final : public ProtobufTable {
 public:
   using ProtobufTable::ProtobufTable;

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      BenchProto::Traffic & member = ( *table_.mutable_traffic() )[ number ];
      if ( member.packets() != traffic.packets || member.bytes() != traffic.bytes ) {
         put( member, traffic );
         changed_.insert( number );
      }
   }
   std::size_t out() override
   {
      delta_.Clear();
      for ( const std::uint32_t number : changed_ ) {
         const auto found = table_.traffic().find( number );
         if ( found == table_.traffic().end() ) {
            delta_.add_gone( number );
         } else {
            ( *delta_.mutable_put() )[ number ] = found->second;
         }
      }
      changed_.clear();
      require( delta_.SerializeToString( &out_ ), "serialize" );
      return out_.size();
   }
   void in() override
   {
      require( read_.ParseFromString( out_ ), "parse" );
      for ( const auto & [ number, member ] : read_.put() ) {
         ( *replica_.mutable_traffic() )[ number ] = member;
      }
      for ( const std::uint32_t number : read_.gone() ) {
         replica_.mutable_traffic()->erase( number );
      }
   }

 private:
   std::unordered_set< std::uint32_t > changed_;
   BenchProto::TrafficDelta delta_; // both are used again, which saves allocations
   BenchProto::TrafficDelta read_;
};

} // namespace

std::unique_ptr< ChangingTable > protobufWhole( std::uint32_t members, bool replicated )
{
   return std::make_unique< WholeTable >( members, replicated );
}

std::unique_ptr< ChangingTable > protobufDelta( std::uint32_t members, bool replicated )
{
   return std::make_unique< DeltaTable >( members, replicated );
}

} // namespace Bench::Changes
