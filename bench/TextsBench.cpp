// Values printed as texts, and read from them.
#include "bench/Check.h"
#include "bench/Program.h"
#include "bench/TextSubjects.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Bench {
namespace {

constexpr std::size_t valuesAtOnce = 64;

PlainKind randomKind( TestSupport::Random & random )
{
   static constexpr PlainKind kinds[] = { PlainKind::none, PlainKind::web, PlainKind::streaming,
      PlainKind::voice };
   return kinds[ random.below( 4 ) ];
}

// Numbers of all lengths.
std::uint32_t randomNumber( TestSupport::Random & random )
{
   return static_cast< std::uint32_t >( random.word() ) >> random.below( 32 );
}

// One text in four needs quotes.
std::string randomText( TestSupport::Random & random )
{
   std::string text;
   for ( std::uint32_t left = 4 + random.below( 21 ); left != 0; --left ) {
      text += static_cast< char >( 'a' + random.below( 26 ) );
   }
   if ( random.oneIn( 4 ) ) {
      text[ 2 ] = ' ';
   }
   return text;
}

template< class V > V randomValue( TestSupport::Random & random );
template<> std::uint32_t randomValue( TestSupport::Random & random )
{
   return randomNumber( random );
}
template<> double randomValue( TestSupport::Random & random )
{
   return randomNumber( random ) / 1000.0;
}
template<> PlainKind randomValue( TestSupport::Random & random ) { return randomKind( random ); }
template<> PlainRate randomValue( TestSupport::Random & random )
{
   return { randomNumber( random ), random.word() >> random.below( 64 ), randomKind( random ),
      random.oneIn( 2 ) };
}
template<> PlainService randomValue( TestSupport::Random & random )
{
   return { randomNumber( random ), randomText( random ), randomText( random ),
      randomKind( random ) };
}

template< class Subject, class Plain > using Values =
      std::vector< decltype( Subject::from( std::declval< const Plain & >() ) ) >;

template< class Subject, class Plain > Values< Subject, Plain > values()
{
   TestSupport::Random random( 64 );
   Values< Subject, Plain > made;
   while ( made.size() != valuesAtOnce ) {
      made.push_back( Subject::from( randomValue< Plain >( random ) ) );
   }
   return made;
}

template< class Subject, class Plain > void print( benchmark::State & state )
{
   const auto from = values< Subject, Plain >();
   for ( auto _ : state ) {
      for ( const auto & value : from ) {
         auto text = Subject::print( value );
         benchmark::DoNotOptimize( text );
      }
   }
   state.SetItemsProcessed( state.iterations() * std::int64_t{ valuesAtOnce } );
   if constexpr ( requires { ByHand::print( from[ 0 ] ); } ) {
      const auto ours = values< VokText, Plain >();
      for ( std::size_t i = 0; i != valuesAtOnce; ++i ) {
         require( VokText::print( ours[ i ] ) == Subject::print( from[ i ] ), "the same text" );
      }
   }
}

template< class Subject, class Plain > void parse( benchmark::State & state )
{
   const auto wanted = values< Subject, Plain >();
   std::vector< std::string > texts;
   for ( const auto & value : wanted ) {
      texts.emplace_back( Subject::print( value ) );
   }
   using Value = typename Values< Subject, Plain >::value_type;
   for ( auto _ : state ) {
      for ( const std::string & text : texts ) {
         auto value = Subject::template parse< Value >( text );
         benchmark::DoNotOptimize( value );
      }
   }
   state.SetItemsProcessed( state.iterations() * std::int64_t{ valuesAtOnce } );
   for ( std::size_t i = 0; i != valuesAtOnce; ++i ) {
      const auto read = Subject::template parse< Value >( texts[ i ] );
      require( Subject::print( read ) == texts[ i ], "the value of a text" );
   }
}

template< class Subject, class Plain > void addOne( const std::string & what )
{
   benchmark::RegisterBenchmark(
         ( "print/" + what + "/" + Subject::name ).c_str(), print< Subject, Plain > );
   if constexpr ( !std::is_same_v< Subject, FormattedText > ) {
      benchmark::RegisterBenchmark(
            ( "parse/" + what + "/" + Subject::name ).c_str(), parse< Subject, Plain > );
   }
}

template< class Plain > void add( const std::string & what )
{
   addOne< VokText, Plain >( what );
   addOne< FormattedText, Plain >( what );
   addOne< TextByHand, Plain >( what );
   addOne< MessageText, Plain >( what );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   add< std::uint32_t >( "number" );
   add< double >( "double" );
   add< PlainKind >( "enumerator" );
   add< PlainRate >( "composite-numbers" );
   add< PlainService >( "composite-texts" );
   return runBenchmarks( argc, argv );
}
