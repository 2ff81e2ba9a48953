// Modules and their files: what is too large, too deep, or not there.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"

#include <gtest/gtest.h>

#include <string>

namespace VokGenTest {
namespace {

std::string errorsOf( const TemporaryFolder & folder, const std::string & file )
{
   const WorkingFolder inside( folder.path() );
   return VokGen::compile( file, { "." } ).errors;
}

// A module that uses the next one, which the last one does not.
std::string link( int number, int last )
{
   const std::string name = "M" + std::to_string( number );
   std::string text = "module " + name + "\n";
   if ( number != last ) {
      text += "use M" + std::to_string( number + 1 ) + "\n";
   }
   return text + "namespace Test {\nenum E" + name + " : u8 { /// It.\n   a" + name +
         " = 0; /// zero\n}\n}\n";
}

std::string errorsOfChain( int modules )
{
   const TemporaryFolder folder;
   for ( int i = 1; i <= modules; ++i ) {
      folder.write( "M" + std::to_string( i ) + ".vok", link( i, modules ) );
   }
   return errorsOf( folder, "M1.vok" );
}

TEST( LoaderTest, modulesUseOneAnother64Deep )
{
   EXPECT_EQ( errorsOfChain( 64 ), "" );
   EXPECT_NE( errorsOfChain( 66 ).find(
                    "modules use one another in too long a chain; at most 64" ),
         std::string::npos );
}

// A module that is loaded already counts with all that it uses.
TEST( LoaderTest, aSecondWayIntoAChainCounts )
{
   const TemporaryFolder folder;
   for ( int i = 3; i <= 66; ++i ) {
      folder.write( "M" + std::to_string( i ) + ".vok", link( i, 66 ) );
   }
   folder.write( "M2.vok", link( 2, 66 ) );
   folder.write( "M1.vok", "module M1\nuse M4, M2\n" );
   EXPECT_NE( errorsOf( folder, "M1.vok" ).find( "in too long a chain; at most 64" ),
         std::string::npos );
}

TEST( LoaderTest, filesAreAtMost16MiB )
{
   const TemporaryFolder folder;
   folder.write( "Large.vok", "module Large\n" + std::string( std::size_t{ 16 } << 20, ' ' ) );
   EXPECT_NE( errorsOf( folder, "Large.vok" )
                    .find( "error: cannot read Large.vok: it is larger than 16 MiB\n" ),
         std::string::npos );
}

// Where an unknown type might be declared is looked for in all modules, good ones or not.
TEST( LoaderTest, aTypeIsLookedForInModulesThatCannotBeUsed )
{
   const TemporaryFolder folder;
   folder.write( "User.vok",
         "module User\nnamespace Test {\nvalue V { /// It.\n   x : Other::Thing; /// x\n}\n}\n" );
   folder.write( "Misnamed.vok", "module Another\nnamespace Other {\n"
                                 "value Thing { /// It.\n   x : u8 = 0; /// x\n}\n}\n" );
   EXPECT_NE( errorsOf( folder, "User.vok" ).find( "no type is called 'Other::Thing' here" ),
         std::string::npos )
         << errorsOf( folder, "User.vok" );
}

} // namespace
} // namespace VokGenTest
