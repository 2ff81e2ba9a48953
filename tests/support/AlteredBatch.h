// Batches as a writer with another version of a module would send them: texts exchanged, and the
// checksum made good.
#pragma once

#include "Vok/detail/Hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

inline std::string_view textOf( const std::vector< std::byte > & bytes )
{
   return { reinterpret_cast< const char * >( bytes.data() ), bytes.size() };
}

inline void signAgain( std::vector< std::byte > & batch )
{
   std::uint64_t sum = Vok::Detail::checksum64( batch.data(), batch.size() - 8 );
   for ( auto at = batch.rbegin(); at != batch.rbegin() + 8; ++at, sum >>= 8 ) {
      *at = static_cast< std::byte >( sum );
   }
}

/// Puts another text of the same size in the place of every text in a batch that stands behind its
/// length.
inline std::vector< std::byte > renamed(
      std::vector< std::byte > batch, std::string_view from, std::string_view to )
{
   const std::string sized = std::string( 1, static_cast< char >( from.size() ) ).append( from );
   std::size_t found = 0;
   for ( std::size_t at = textOf( batch ).find( sized ); at != std::string_view::npos;
         at = textOf( batch ).find( sized, at + 1 ) ) {
      std::transform( to.begin(), to.end(), batch.begin() + static_cast< std::ptrdiff_t >( at + 1 ),
            []( char c ) { return static_cast< std::byte >( c ); } );
      ++found;
   }
   EXPECT_NE( found, 0U ) << from;
   signAgain( batch );
   return batch;
}

} // namespace TestSupport
