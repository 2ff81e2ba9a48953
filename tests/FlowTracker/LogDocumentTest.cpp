// The worked example of docs/log.md is what writers write and readers read.
#include "FlowTracker/ApplicationId.h"
#include "Vok/NboAttrLogSa.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using FlowTracking::Application;
using FlowTracking::ApplicationId;
using Bytes = std::vector< std::byte >;

/// The bytes of each block of the page that is marked as bytes: what stands left of the bar.
std::vector< Bytes > documentedBatches()
{
   std::ifstream page( TEST_SOURCE_DIR "/../../docs/log.md" );
   std::vector< Bytes > batches;
   bool inside = false;
   for ( std::string line; std::getline( page, line ); ) {
      if ( line.starts_with( "```" ) ) {
         inside = line == "```bytes";
         if ( inside ) {
            batches.emplace_back();
         }
      } else if ( inside ) {
         std::istringstream cells( line.substr( 0, line.find( '|' ) ) );
         for ( std::string cell; cells >> cell; ) {
            batches.back().push_back( static_cast< std::byte >( std::stoul( cell, nullptr, 16 ) ) );
         }
      }
   }
   return batches;
}

/// The same batch with zeros for its stream's number and its checksum.
Bytes comparable( Bytes batch )
{
   std::fill_n( batch.begin() + 8, 8, std::byte{ 0 } );
   std::fill_n( batch.end() - 8, 8, std::byte{ 0 } );
   return batch;
}

Bytes written( Vok::EntityVokNboAttrLogSa & writer )
{
   Vok::NboAttrLog::Out out;
   writer.write( out );
   return { out.bytes().begin(), out.bytes().end() };
}

Application dns()
{
   return Application( ApplicationId( 5 ), "DNS", "Network", "Acceptable" );
}

TEST( LogDocumentTest, writersWriteIt )
{
   const auto batches = documentedBatches();
   ASSERT_EQ( batches.size(), 2U );
   const auto map = FlowTracking::applicationIdMapFactory( "writer" );
   map->applicationIs( ApplicationId( 5 ), dns() );
   Vok::EntityVokNboAttrLogSa writer( map );
   EXPECT_EQ( comparable( written( writer ) ), comparable( batches[ 0 ] ) );
   map->applicationDel( ApplicationId( 5 ) );
   EXPECT_EQ( comparable( written( writer ) ), comparable( batches[ 1 ] ) );
}

TEST( LogDocumentTest, readersReadIt )
{
   const auto batches = documentedBatches();
   ASSERT_EQ( batches.size(), 2U );
   const auto map = FlowTracking::applicationIdMapFactory( "replica" );
   Vok::EntityVokNboAttrLogReader reader( map );
   Vok::NboAttrLog::In first( batches[ 0 ] );
   reader.read( first );
   EXPECT_EQ( first.remaining(), 0U );
   EXPECT_EQ( map->application().size(), 1U );
   EXPECT_EQ( map->application( ApplicationId( 5 ) ), dns() );
   EXPECT_TRUE( reader.passedOver().empty() );
   Vok::NboAttrLog::In second( batches[ 1 ] );
   reader.read( second );
   EXPECT_EQ( map->application().size(), 0U );
}

} // namespace
