// By hand: a map of structures, the keys that changed, and a message of fixed widths for each.
#include "bench/Check.h"
#include "bench/changes/ChangingTable.h"

#include <cstring>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Bench::Changes {
namespace {

// One key of a message. A member that is gone is told with the counters 0, which are not read.
struct Record {
   std::uint32_t number;
   std::uint32_t gone;
   Traffic traffic;
};

class BareTable final : public ChangingTable {
 public:
   BareTable( std::uint32_t members, bool replicated )
   {
      for ( std::uint32_t number = 1; number <= members; ++number ) {
         table_[ number ] = firstOf( number );
      }
      if ( replicated ) {
         replica_ = table_;
      }
   }

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      Traffic & member = table_[ number ];
      if ( member != traffic ) {
         member = traffic;
         changed_.insert( number );
      }
   }
   std::size_t out() override
   {
      out_.resize( changed_.size() * sizeof( Record ) );
      std::size_t at = 0;
      for ( const std::uint32_t number : changed_ ) {
         const auto found = table_.find( number );
         const bool gone = found == table_.end();
         const Record record{ number, gone, gone ? Traffic() : found->second };
         std::memcpy( out_.data() + at, &record, sizeof record );
         at += sizeof record;
      }
      changed_.clear();
      return out_.size();
   }
   void in() override
   {
      require( out_.size() % sizeof( Record ) == 0, "a message is whole" );
      for ( std::size_t at = 0; at != out_.size(); at += sizeof( Record ) ) {
         Record record;
         std::memcpy( &record, out_.data() + at, sizeof record );
         if ( record.gone != 0 ) {
            replica_.erase( record.number );
         } else {
            replica_[ record.number ] = record.traffic;
         }
      }
   }
   bool alike() const override { return table_ == replica_; }

 private:
   std::unordered_map< std::uint32_t, Traffic > table_;
   std::unordered_map< std::uint32_t, Traffic > replica_;
   std::unordered_set< std::uint32_t > changed_;
   std::vector< char > out_;
};

} // namespace

std::unique_ptr< ChangingTable > bareDelta( std::uint32_t members, bool replicated )
{
   return std::make_unique< BareTable >( members, replicated );
}

} // namespace Bench::Changes
