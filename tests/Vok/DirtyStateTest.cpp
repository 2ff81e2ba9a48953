// What a FlowOut notes of a type that has more attributes than a word has bits.
#include "Vok/detail/DirtyState.h"

#include "Vok/TypeData.h"
#include "tests/Vok/Streams.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {

constexpr Vok::AttrId firstId = 258;

TEST( DirtyStateTest, aTypeMayHaveMoreAttributesThanAWordHasBits )
{
   constexpr std::size_t count = 150;
   std::vector< Vok::AttributeData > attributes;
   for ( Vok::AttrId id = firstId; attributes.size() != count; ++id ) {
      attributes.emplace_back( Vok::Detail::AttributeRow{ .id = id, .name = "wide" } );
   }
   Vok::Detail::TypeRow row{ .name = "Test::Wide", .kind = Vok::TypeKind::entity };
   row.attributes.first = attributes.data();
   row.attributes.count = count;
   const Vok::TypeData type( row );

   const auto host = ::Test::hostFactory( "host" );
   Vok::Detail::DirtyState state( type );
   EXPECT_FALSE( state.any() );
   for ( const std::size_t changed : { 0U, 63U, 64U, 127U, 128U, 149U } ) {
      const auto id = static_cast< Vok::AttrId >( firstId + changed );
      state.note( Corvo::Change( *host, id, {}, {} ) );
      EXPECT_TRUE( state.any() );
      for ( std::size_t i = 0; i != count; ++i ) {
         EXPECT_EQ( state.attribute( i ), i == changed ) << i;
      }
      state.clear( host->publisher() );
      EXPECT_FALSE( state.any() );
   }
}

} // namespace
