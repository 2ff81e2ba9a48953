// What a writer looks at of a type that has more attributes than a word has bits.
#include "Vok/detail/StreamType.h"

#include "Vok/TypeData.h"
#include "Vok/detail/ValueOpsOf.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

/// A type without generated code, as such a one would be long.
class Many final : public Vok::Entity {
 public:
   static constexpr std::size_t count = 150;

   static Corvo::Ptr< Many > make() { return Corvo::Ptr< Many >::adopt( new Many ); }
   const Vok::TypeData & typeData() const noexcept override
   {
      static const Description description;
      return description.type;
   }

   std::array< std::uint8_t, count > numbers{}; // stands right behind the base

 private:
   struct Description {
      std::vector< Vok::AttributeData > attributes;
      Vok::Detail::TypeRow row{ .name = "Test::Many", .kind = Vok::TypeKind::entity };
      Vok::TypeData type{ described() };

      const Vok::Detail::TypeRow & described()
      {
         for ( Vok::AttrId i = 0; i != count; ++i ) {
            attributes.emplace_back( Vok::Detail::AttributeRow{ .id = 258 + i,
                  .name = "number",
                  .typeName = "u8",
                  .offset = static_cast< std::uint32_t >( sizeof( Vok::Entity ) + i ),
                  .value = &Vok::Detail::valueOps< std::uint8_t > } );
         }
         row.module = ::Test::Host::vokType().row().module;
         row.attributes.first = attributes.data();
         row.attributes.count = count;
         return row;
      }
   };
};

TEST( StreamTypeTest, whatDiffersFromItsDefaultIsFoundInItsOrder )
{
   const auto many = Many::make();
   const Vok::Detail::WrittenType written( many->typeData() );
   const auto found = [ & ] {
      std::vector< std::size_t > numbers;
      written.eachSuspect( *many, [ & ]( const Vok::Detail::WrittenRow & row ) {
         const bool differs = row.numberAt( row.storageIn( *many ) ) != row.initialNumber;
         EXPECT_EQ( row.number, row.index + 1 );
         if ( differs ) {
            numbers.push_back( row.index );
         }
      } );
      return numbers;
   };
   EXPECT_TRUE( found().empty() );
   for ( std::size_t first = 0; first + 1 != Many::count; ++first ) {
      many->numbers[ first ] = 1;
      many->numbers[ Many::count - 1 ] = 255;
      EXPECT_EQ( found(), ( std::vector< std::size_t >{ first, Many::count - 1 } ) );
      many->numbers[ first ] = 0;
   }
}

} // namespace
