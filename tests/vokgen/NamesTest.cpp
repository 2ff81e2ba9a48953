#include "vokgen/Names.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace VokGen::Names {
namespace {

TEST( Names, ofAttributes )
{
   EXPECT_EQ( mutator( "ftStatus" ), "ftStatusIs" );
   EXPECT_EQ( mutatorByText( "ftStatus" ), "vokFtStatusIs" );
   EXPECT_EQ( remover( "ftStatus" ), "ftStatusDel" );
   EXPECT_EQ( clearer( "ftStatus" ), "ftStatusDelAll" );
   EXPECT_EQ( incrementer( "genId" ), "genIdInc" );
   EXPECT_EQ( secondLookup( "field" ), "fieldGet" );
   EXPECT_EQ( attributeId( "genId" ), "genIdAttrId" );
   EXPECT_EQ( dataMember( "genId" ), "genId_" );
   EXPECT_EQ( hashNode( "ftStatus" ), "HN_FtStatus" );
   EXPECT_EQ( orderedNode( "field" ), "VokField" );
   EXPECT_EQ( keyFunctor( "ftStatus" ), "FtStatusKeyFunktor" );
}

TEST( Names, ofTypes )
{
   EXPECT_EQ( factory( "ApplicationIdMap" ), "applicationIdMapFactory" );
   EXPECT_EQ( creator( "ApplicationIdMap" ), "ApplicationIdMapIs" );
   EXPECT_EQ( instance( "EncapType" ), "EncapTypeInstance" );
}

TEST( Names, ofTheReflectionObjectHoldAllDigits )
{
   EXPECT_EQ( reflectionObject( "Everything", 0x1a2U ), "_Everything_00000000000001a2_vokModule" );
   EXPECT_EQ( hexadecimal( 0xfedcba9876543210U ), "fedcba9876543210" );
}

TEST( Names, firstLettersOnlyChangeCase )
{
   EXPECT_EQ( capitalised( "x" ), "X" );
   EXPECT_EQ( capitalised( "X1" ), "X1" );
   EXPECT_EQ( capitalised( "" ), "" );
   EXPECT_EQ( uncapitalised( "FgConfig" ), "fgConfig" );
   EXPECT_EQ( uncapitalised( "1" ), "1" );
}

TEST( Names, refusedOnes )
{
   for ( const char * word :
         { "register", "co_await", "xor_eq", "alignas", "EOF", "errno", "linux" } ) {
      EXPECT_TRUE( isCppKeyword( word ) ) << word;
   }
   for ( const char * word : { "value", "final", "override", "name", "error", "random", "none" } ) {
      EXPECT_FALSE( isCppKeyword( word ) ) << word;
   }
   const auto members = entityMembers();
   EXPECT_NE( std::find( members.begin(), members.end(), "publisher" ), members.end() );
}

} // namespace
} // namespace VokGen::Names
