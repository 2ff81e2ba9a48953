// libyang: what differs between the tree as it was told last and as it is, found by comparing both.
#include "bench/Check.h"
#include "bench/changes/ChangingTable.h"

#include <libyang/libyang.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace Bench::Changes {
namespace {

constexpr const char * schema = R"(module counters {
   namespace "urn:counters";
   prefix c;
   container table {
      list traffic {
         key number;
         leaf number { type uint32; }
         leaf packets { type uint64; }
         leaf bytes { type uint64; }
      }
   }
})";

// A number as a text that ends with 0.
class Decimal {
 public:
   explicit Decimal( std::uint64_t number )
   {
      *std::to_chars( text_.data(), text_.data() + text_.size() - 1, number ).ptr = '\0';
   }
   const char * text() const noexcept { return text_.data(); }

 private:
   std::array< char, 24 > text_;
};

class Diff {
 public:
   ~Diff() { lyd_free_all( node ); }
   lyd_node * node = nullptr;
};

class YangTable final : public ChangingTable {
 public:
   YangTable( std::uint32_t members, bool replicated ) : members_( members + 1 )
   {
      require( ly_ctx_new( nullptr, 0, &context_ ) == LY_SUCCESS, "a context" );
      lys_module * module = nullptr;
      require( lys_parse_mem( context_, schema, LYS_IN_YANG, &module ) == LY_SUCCESS, "a schema" );
      require( lyd_new_inner( nullptr, module, "table", 0, &table_ ) == LY_SUCCESS, "a table" );
      for ( std::uint32_t number = 1; number <= members; ++number ) {
         const Traffic traffic = firstOf( number );
         lyd_node * member = nullptr;
         Leaves & leaves = members_[ number ];
         require( lyd_new_list( table_, module, "traffic", 0, &member, Decimal( number ).text() ) ==
                           LY_SUCCESS &&
                     lyd_new_term( member, module, "packets", Decimal( traffic.packets ).text(), 0,
                           &leaves.packets ) == LY_SUCCESS &&
                     lyd_new_term( member, module, "bytes", Decimal( traffic.bytes ).text(), 0,
                           &leaves.bytes ) == LY_SUCCESS,
               "a member" );
      }
      told_ = copyOfTable();
      if ( replicated ) {
         replica_ = copyOfTable();
      }
   }
   ~YangTable() override
   {
      lyd_free_all( table_ );
      lyd_free_all( told_ );
      lyd_free_all( replica_ );
      std::free( out_ ); // libyang has it from malloc
      ly_ctx_destroy( context_ );
   }

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      set( members_[ number ].packets, traffic.packets );
      set( members_[ number ].bytes, traffic.bytes );
   }
   std::size_t out() override
   {
      Diff diff;
      require( lyd_diff_siblings( told_, table_, 0, &diff.node ) == LY_SUCCESS, "a difference" );
      std::free( out_ );
      out_ = nullptr;
      require( lyd_print_mem( &out_, diff.node, LYD_JSON,
                     LYD_PRINT_WITHSIBLINGS | LYD_PRINT_SHRINK ) == LY_SUCCESS,
            "print" );
      require( lyd_diff_apply_all( &told_, diff.node ) == LY_SUCCESS, "apply" );
      return std::strlen( out_ );
   }
   void in() override
   {
      Diff diff;
      require( lyd_parse_data_mem( context_, out_, LYD_JSON, LYD_PARSE_ONLY | LYD_PARSE_STRICT, 0,
                     &diff.node ) == LY_SUCCESS,
            "parse" );
      require( lyd_diff_apply_all( &replica_, diff.node ) == LY_SUCCESS, "apply" );
   }
   bool alike() const override
   {
      return lyd_compare_single( table_, replica_, LYD_COMPARE_FULL_RECURSION ) == LY_SUCCESS;
   }

 private:
   struct Leaves {
      lyd_node * packets = nullptr;
      lyd_node * bytes = nullptr;
   };

   static void set( lyd_node * leaf, std::uint64_t value )
   {
      const LY_ERR error = lyd_change_term( leaf, Decimal( value ).text() );
      require( error == LY_SUCCESS || error == LY_ENOT || error == LY_EEXIST, "a value" );
   }
   lyd_node * copyOfTable() const
   {
      lyd_node * copy = nullptr;
      require( lyd_dup_single( table_, nullptr, LYD_DUP_RECURSIVE, &copy ) == LY_SUCCESS, "copy" );
      return copy;
   }

   std::vector< Leaves > members_;
   ly_ctx * context_ = nullptr;
   lyd_node * table_ = nullptr;
   lyd_node * told_ = nullptr;
   lyd_node * replica_ = nullptr;
   char * out_ = nullptr;
};

} // namespace

std::unique_ptr< ChangingTable > yangDiff( std::uint32_t members, bool replicated )
{
   return std::make_unique< YangTable >( members, replicated );
}

} // namespace Bench::Changes
