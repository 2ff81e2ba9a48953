// A keeper whose disk is slow, fails and outlives the store, as a test wants it.
#pragma once

#include "store/Keeper.h"
#include "store/Path.h"

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

/// Keeps what is below `kept/`.
class TestKeeper final : public Vok::Store::Keeper {
 public:
   bool keeps( std::string_view path ) const override { return path.starts_with( "kept/" ); }

   std::vector< Kept > load() override
   {
      std::vector< Kept > all;
      for ( const auto & [ path, kept ] : disk ) {
         all.push_back( kept );
      }
      return all;
   }

   void keep( Request request ) override
   {
      waiting.push_back( std::move( request ) );
      if ( !slow ) {
         work( std::size_t( -1 ) );
      }
   }

   void remove( const std::string & path ) override
   {
      std::erase_if( waiting, [ & ]( const Request & one ) { return one.path == path; } );
      disk.erase( path );
   }

   void setAside( const std::string & path, const std::string & why ) override
   {
      disk.erase( path );
      aside[ path ] = why;
   }

   std::vector< Result > results() override { return std::exchange( results_, {} ); }

   /// The first `most` of what waits are kept, or fail.
   void work( std::size_t most )
   {
      for ( ; most != 0 && !waiting.empty(); --most ) {
         const Request one = std::move( waiting.front() );
         waiting.pop_front();
         results_.push_back( { one.path, one.number, problem } );
         if ( !problem.empty() ) {
            continue;
         }
         Kept & kept = disk[ one.path ];
         kept.path = one.path;
         kept.type = one.type;
         kept.writer = one.writer;
         if ( one.whole ) {
            kept.batches.clear();
         }
         kept.batches.push_back( *one.batch );
         ++batches;
      }
   }

   /// The process ends: what waits is kept as far as it comes, and nobody is told.
   void crash( std::size_t done )
   {
      work( done );
      waiting.clear();
      results_.clear();
   }

   std::size_t bytes( const std::string & path ) const
   {
      std::size_t sum = 0;
      for ( const Bytes & batch : disk.at( path ).batches ) {
         sum += batch.size();
      }
      return sum;
   }

   bool slow = false; ///< `work` has to be called
   std::string problem; ///< of all that is to be kept
   std::deque< Request > waiting;
   std::map< std::string, Kept > disk;
   std::map< std::string, std::string > aside;
   std::size_t batches = 0; ///< kept, in all

 private:
   std::vector< Result > results_;
};

} // namespace TestSupport
