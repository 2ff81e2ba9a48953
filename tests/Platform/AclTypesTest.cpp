// Acl::AclType.
#include "Acl/AclTypes.h"

#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

namespace {

using Acl::AclType;
using PlatformTest::expectText;

TEST( AclTypesTest, CodesAndNames )
{
   static_assert( std::is_same_v< std::underlying_type_t< AclType >, std::uint8_t > );
   EXPECT_EQ( static_cast< unsigned >( Acl::ip ), 0u );
   EXPECT_EQ( static_cast< unsigned >( Acl::ipv6 ), 1u );
   EXPECT_EQ( static_cast< unsigned >( AclType::mac ), 2u );
   expectText( AclType::ip, "ip" );
   expectText( AclType::ipv6, "ipv6" );
   expectText( AclType::mac, "mac" );
   EXPECT_THROW( Acl::AclTypeInstance( 3 ), Corvo::EnumRangeException );
}

} // namespace
