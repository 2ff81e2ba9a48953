// The registry of modules and what each tells of its types.
#include "Vok/ModuleInspectData.h"
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace {

using Corvo::ModuleInspectData;

const ModuleInspectData & everything() { return ::Test::Root::vokType().module(); }

TEST( ModuleInspectDataTest, theModuleIsRegisteredByLoading )
{
   std::vector< std::string_view > names;
   for ( const ModuleInspectData & module : ModuleInspectData::modules() ) {
      names.push_back( module.name() );
   }
   EXPECT_EQ( std::count( names.begin(), names.end(), "Everything" ), 1 );
   EXPECT_EQ( ModuleInspectData::modules().size(), names.size() );
   EXPECT_FALSE( ModuleInspectData::modules().empty() );
}

TEST( ModuleInspectDataTest, aModuleHasItsNameItsFingerprintAndItsDocumentation )
{
   EXPECT_EQ( everything().name(), "Everything" );
   EXPECT_NE( everything().fingerprint(), 0U );
   static_assert( std::is_same_v< decltype( everything().fingerprint() ), std::uint64_t > );
   EXPECT_EQ( everything().documentation().substr( 0, 43 ),
         "Every construct of the definition language," );
}

TEST( ModuleInspectDataTest, typesStandInDeclaredOrder )
{
   std::vector< std::string_view > names;
   for ( const Vok::TypeData & type : everything().types() ) {
      names.push_back( type.name() );
      EXPECT_EQ( &type.module(), &everything() ) << type.name();
      EXPECT_FALSE( type.documentation().empty() ) << type.name();
   }
   EXPECT_EQ( everything().types().size(), names.size() );
   EXPECT_EQ( everything().types()[ 0 ].name(), "Test::Colour" );
   const std::string_view inOrder[] = { "Test::Colour", "Test::Wide", "Test::Huge", "Test::Limits",
      "Test::Holder", "Test::Level", "Test::Narrow", "Test::Lazy", "Test::Full", "Test::Interval",
      "Test::Flags", "Test::Registers", "Test::Mode", "Test::Label", "Test::Pair", "Test::Plain",
      "Test::Recipe", "Test::Shelf", "Test::Address", "Test::Leaf", "Test::Bare", "Test::Host",
      "Test::Slot", "Test::Numbered", "Test::Group", "Test::Binding", "Test::Tree", "Test::Root",
      "Test::Special", "Test::Request" };
   auto at = names.begin();
   for ( const std::string_view name : inOrder ) {
      at = std::find( at, names.end(), name );
      ASSERT_NE( at, names.end() ) << name;
   }
   for ( const std::string_view name : { "Test::Holder::Status", "Test::Mode::Kind" } ) {
      EXPECT_EQ( std::count( names.begin(), names.end(), name ), 1 ) << name;
   }
}

TEST( ModuleInspectDataTest, aTypeIsFoundByItsFullName )
{
   for ( const Vok::TypeData & type : everything().types() ) {
      EXPECT_EQ( ModuleInspectData::findType( type.name() ), &type );
   }
   EXPECT_EQ( ModuleInspectData::findType( "Test::Root" ), &::Test::Root::vokType() );
   EXPECT_EQ( ModuleInspectData::findType( "Test::Mode::Kind" )->name(), "Test::Mode::Kind" );
   for ( const char * name :
         { "", "Root", "Test", "Test::", "Test::Rooty", "test::Root", "u32" } ) {
      EXPECT_EQ( ModuleInspectData::findType( name ), nullptr ) << name;
   }
}

TEST( ModuleInspectDataTest, registersInOrderAndOnce )
{
   static const ModuleInspectData first( { .name = "First" } );
   static const ModuleInspectData second( { .name = "Second" } );
   const std::size_t before = ModuleInspectData::modules().size();
   ModuleInspectData::loaded( first );
   ModuleInspectData::loaded( second );
   ModuleInspectData::loaded( first );
   std::vector< std::string_view > names;
   for ( const ModuleInspectData & module : ModuleInspectData::modules() ) {
      names.push_back( module.name() );
   }
   ASSERT_EQ( names.size(), before + 2 );
   EXPECT_EQ( names[ before ], "First" );
   EXPECT_EQ( names[ before + 1 ], "Second" );
   EXPECT_TRUE( first.types().empty() );
}

const ModuleInspectData & used() noexcept
{
   static constinit const ModuleInspectData module( { .name = "Used" } );
   return module;
}

TEST( ModuleInspectDataTest, whatAModuleUsesIsRegisteredBeforeIt )
{
   static constexpr ModuleInspectData::Use uses[] = { used };
   static const ModuleInspectData user( { .name = "User", .uses = uses } );
   const std::size_t before = ModuleInspectData::modules().size();
   ModuleInspectData::loaded( user );
   ModuleInspectData::loaded( used() );
   std::vector< std::string_view > names;
   for ( const ModuleInspectData & module : ModuleInspectData::modules() ) {
      names.push_back( module.name() );
   }
   ASSERT_EQ( names.size(), before + 2 );
   EXPECT_EQ( names[ before ], "Used" );
   EXPECT_EQ( names[ before + 1 ], "User" );
}

/// Types are put into an index when one is asked for, which takes memory.
TEST( ModuleInspectDataTest, aTypeIsFoundWithoutMemory )
{
   static const Vok::TypeData * const types[] = { &::Test::Root::vokType() };
   static const ModuleInspectData late( { .name = "Late", .types = types } );
   ModuleInspectData::loaded( late );
   {
      const TestSupport::HeapFault fault( 1, TestSupport::HeapFault::Lasts::forGood );
      EXPECT_EQ( ModuleInspectData::findType( "Test::Root" ), &::Test::Root::vokType() );
      EXPECT_EQ( ModuleInspectData::findType( "Test::Rooty" ), nullptr );
      EXPECT_TRUE( fault.struck() );
   }
   EXPECT_EQ( ModuleInspectData::findType( "Test::Root" ), &::Test::Root::vokType() );
}

} // namespace
