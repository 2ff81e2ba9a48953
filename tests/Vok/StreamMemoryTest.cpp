// What a writer of change streams keeps once a batch is written.
#include "Vok/Vok.h"
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST( StreamMemoryTest, theBytesOfAWholeTreeAreGivenBack )
{
   const auto root = ::Test::Root::RootIs( "root" );
   const Corvo::String text( std::string( 1 << 20, 'x' ) );
   for ( std::uint32_t i = 0; i != 20; ++i ) {
      root->namesIs( i, text ); // shares the bytes
   }
   const TestSupport::HeapMeter heap;
   Vok::EntityVokNboAttrLogSa writer( root );
   {
      Vok::NboAttrLog::Out out;
      writer.write( out );
      EXPECT_GT( out.size(), std::size_t{ 20 } << 20 );
   }
   EXPECT_LT( heap.held(), std::size_t{ 1 } << 20 );
}

} // namespace
