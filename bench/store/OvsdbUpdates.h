// What an OVSDB server tells a monitor, applied to a map: read event by event, so that no tree of
// a large message is made.
#pragma once

#include "bench/store/Subject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Bench {

class OvsdbUpdates {
 public:
   explicit OvsdbUpdates( Sink & sink ) noexcept : sink_( sink ) {}

   /// Applies a message: the answer to `monitor_cond_since`, or an `update3`. Whether it was an
   /// `echo`, which wants an answer.
   bool take( std::string_view text );

   /// The transaction up to which the map is; before the first, one that never was.
   const std::string & last() const noexcept { return last_; }

   void lost() noexcept { sink_.lost(); }
   void tell();

   /// What the parser calls: the events of a message in their order.
   void enter() { keys_.emplace_back(); }
   void leave();
   void key( std::string & name );
   void text( const std::string & value );
   void number( std::uint64_t value );

 private:
   struct Uuid {
      std::uint64_t high = 0;
      std::uint64_t low = 0;
      friend bool operator==( const Uuid &, const Uuid & ) = default;
   };
   struct UuidHash {
      std::size_t operator()( const Uuid & uuid ) const noexcept { return uuid.high ^ uuid.low; }
   };
   struct Member {
      std::string name;
      Row row{};
   };
   struct Field {
      std::uint32_t column = 0;
      std::uint64_t value = 0;
   };
   static constexpr std::size_t rowDepth = 5; // of: message, tables, rows, kind of change, columns

   static Uuid parse( std::string_view text );
   void applyRow();

   Sink & sink_;
   std::unordered_map< Uuid, Member, UuidHash > table_;
   std::string last_ = "00000000-0000-0000-0000-000000000000";
   std::vector< std::string > keys_; // that lead to where the parser is
   std::vector< Field > fields_; // of the row that is being read
   std::string name_; // the same
   std::string method_;
   bool answer_ = false; // the message is the answer: what it has is not told as changes
};

} // namespace Bench
