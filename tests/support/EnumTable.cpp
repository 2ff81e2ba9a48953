// Checks an enumeration against its table.
#include "tests/support/EnumTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <set>

namespace TestSupport {

namespace {

void expectEnumerator( const EnumOps & ops, unsigned code, const std::string & name )
{
   SCOPED_TRACE( name );
   EXPECT_EQ( ops.name( code ), name );
   EXPECT_EQ( ops.streamed( code ), name );
   EXPECT_EQ( ops.text( code ), name );
   EXPECT_EQ( ops.parsed( name ), code );
   EXPECT_EQ( ops.ofCode( code ), code );
   EXPECT_EQ( ops.ofName( name ), code );
}

void expectUnknown( const EnumTable & table, unsigned code )
{
   try {
      table.ops.ofCode( code );
      ADD_FAILURE() << code << " was taken";
   } catch ( const Corvo::EnumRangeException & e ) {
      EXPECT_EQ( std::string( e.what() ),
            std::string( table.type ) + " has no enumerator with code " + std::to_string( code ) );
   }
}

void expectUnknown( const EnumTable & table, const std::string & name )
{
   EXPECT_THROW( table.ops.ofName( name ), Corvo::EnumRangeException ) << name;
   EXPECT_THROW( table.ops.parsed( name ), Corvo::RangeException ) << name;
}

void expectRecord( const EnumTable & table )
{
   const Vok::TypeData * type = Corvo::ModuleInspectData::findType( table.type );
   ASSERT_NE( type, nullptr );
   EXPECT_EQ( type->kind(), Vok::TypeKind::enumeration );
   const auto enumerators = type->enumerators();
   ASSERT_EQ( enumerators.size(), table.enumerators.size() );
   for ( std::size_t i = 0; i != enumerators.size(); ++i ) {
      EXPECT_EQ( enumerators[ i ].first, table.enumerators[ i ].first );
      EXPECT_EQ( enumerators[ i ].second, table.enumerators[ i ].second );
      EXPECT_FALSE( type->enumeratorDocumentation( enumerators[ i ].first ).empty() );
   }
}

} // namespace

void expectEnumeration( const EnumTable & table )
{
   SCOPED_TRACE( table.type );
   EXPECT_EQ( table.ops.bits, table.bits );
   ASSERT_NO_FATAL_FAILURE( expectRecord( table ) );
   std::set< unsigned > codes;
   for ( const auto & [ code, name ] : table.enumerators ) {
      codes.insert( code );
      expectEnumerator( table.ops, code, std::string( name ) );
      expectUnknown( table, std::string( name ) + "x" );
      expectUnknown( table, std::string( name.substr( 0, name.size() - 1 ) ) );
      expectUnknown( table, " " + std::string( name ) );
   }
   expectUnknown( table, "" );
   expectUnknown( table, "0" );
   const unsigned last = *codes.rbegin();
   for ( const unsigned above : { last + 1, 65536U, 65536U + last, 4294967295U } ) {
      expectUnknown( table, above );
   }
   for ( unsigned code = 0; code != 300; ++code ) {
      if ( !codes.contains( code ) ) {
         expectUnknown( table, code );
      }
   }
   EXPECT_EXIT( table.ops.name( last + 1 ), testing::KilledBySignal( SIGABRT ),
         std::string( table.type ) + ".*" + std::to_string( last + 1 ) );
}

} // namespace TestSupport
