// An attribute is set while nobody listens, to other values and to the one that it has.
#include "bench/BenchModel.h"
#include "bench/Check.h"
#include "bench/Messages.pb.h"
#include "bench/Program.h"
#include "bench/SetPeers.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace Bench {
namespace {

constexpr std::int64_t setsAtOnce = 1000;

/// A message with the interface of the others. Its setters neither compare nor check.
class MessageRecord {
 public:
   using Text = std::string;
   using Rate = BenchMessages::Rate;
   static constexpr const char * name = "protobuf";

   bool enabled() const { return message_.enabled(); }
   std::uint32_t limit() const { return message_.limit(); }
   const std::string & title() const { return message_.title(); }
   const Rate & rate() const { return message_.rate(); }
   std::optional< std::uint32_t > maybe() const
   {
      return message_.has_maybe() ? std::optional( message_.maybe() ) : std::nullopt;
   }

   void enabledIs( bool enabled ) { message_.set_enabled( enabled ); }
   void limitIs( std::uint32_t limit ) { message_.set_limit( limit ); }
   void titleIs( const std::string & title ) { message_.set_title( title ); }
   void rateIs( const Rate & rate ) { *message_.mutable_rate() = rate; }
   void maybeIs( std::optional< std::uint32_t > maybe )
   {
      if ( maybe ) {
         message_.set_maybe( *maybe );
      } else {
         message_.clear_maybe();
      }
   }

 private:
   BenchMessages::Record message_;
};

template< class Object > struct Subject : Object {
   static std::unique_ptr< Object > make() { return std::make_unique< Object >(); }
};
template<> struct Subject< Record > {
   using Text = Corvo::String;
   using Rate = Bench::Rate;
   static constexpr const char * name = "Vok";
   static Corvo::Ptr< Record > make() { return recordFactory( "record" ); }
};

template< class Object > using TextOf = typename Subject< Object >::Text;
template< class Object > using RateOf = typename Subject< Object >::Rate;

template< class Rate > Rate rateOf( std::uint64_t packets )
{
   if constexpr ( std::is_same_v< Rate, BenchMessages::Rate > ) {
      Rate rate;
      rate.set_packets( packets );
      rate.set_bytes( 1000 );
      rate.set_kind( BenchMessages::kindWeb );
      rate.set_exact( true );
      return rate;
   } else if constexpr ( std::is_same_v< Rate, PlainRate > ) {
      return Rate{ packets, 1000, PlainKind::web, true };
   } else {
      return Rate( packets, 1000, kindWeb, true );
   }
}

bool operator==( const BenchMessages::Rate & a, const BenchMessages::Rate & b )
{
   return a.SerializeAsString() == b.SerializeAsString();
}

// The sorts of attributes: two values of each, and how they are set and read.
struct Bool {
   static constexpr const char * name = "bool";
   template< class Object > static std::array< bool, 2 > values() { return { true, false }; }
   static void set( auto & object, bool value ) { object.enabledIs( value ); }
   static bool get( const auto & object ) { return object.enabled(); }
};
struct Bounded {
   static constexpr const char * name = "bounded";
   template< class Object > static std::array< std::uint32_t, 2 > values() { return { 12, 3456 }; }
   static void set( auto & object, std::uint32_t value ) { object.limitIs( value ); }
   static std::uint32_t get( const auto & object ) { return object.limit(); }
};
struct Text {
   static void set( auto & object, const auto & value ) { object.titleIs( value ); }
   static const auto & get( const auto & object ) { return object.title(); }
};
struct ShortText : Text {
   static constexpr const char * name = "text/short";
   template< class Object > static std::array< TextOf< Object >, 2 > values()
   {
      return { "Ethernet3/1", "Ethernet4/2" };
   }
};
struct LongText : Text {
   static constexpr const char * name = "text/long";
   template< class Object > static std::array< TextOf< Object >, 2 > values()
   {
      return { "the uplink to the building across the road",
         "the uplink to the building behind the yard" };
   }
};
struct Value {
   static constexpr const char * name = "value";
   template< class Object > static std::array< RateOf< Object >, 2 > values()
   {
      return { rateOf< RateOf< Object > >( 5 ), rateOf< RateOf< Object > >( 70 ) };
   }
   static void set( auto & object, const auto & value ) { object.rateIs( value ); }
   static const auto & get( const auto & object ) { return object.rate(); }
};
struct Optional {
   static constexpr const char * name = "optional";
   template< class Object > static std::array< std::optional< std::uint32_t >, 2 > values()
   {
      return { 7, std::nullopt };
   }
   static void set( auto & object, const std::optional< std::uint32_t > & value )
   {
      object.maybeIs( value );
   }
   static std::optional< std::uint32_t > get( const auto & object ) { return object.maybe(); }
};

template< class Sort, class Object, bool changes > void set( benchmark::State & state )
{
   const auto made = Subject< Object >::make();
   Object & object = *made;
   auto values = Sort::template values< Object >();
   if ( !changes ) {
      values[ 0 ] = values[ 1 ];
   }
   Sort::set( object, values[ 1 ] );
   auto * seen = &values;
   benchmark::DoNotOptimize( seen ); // the compiler knows the values no more
   for ( auto _ : state ) {
      for ( std::int64_t i = 0; i != setsAtOnce; ++i ) {
         Sort::set( object, ( *seen )[ static_cast< std::size_t >( i & 1 ) ] );
         benchmark::ClobberMemory();
      }
   }
   require( Sort::get( object ) == values[ 1 ], "the value that was set last" );
   state.SetItemsProcessed( state.iterations() * setsAtOnce );
}

template< class Sort, class Object > void registerOne()
{
   const auto name = [ & ]( const char * what ) {
      return std::string( "set/" ) + Sort::name + what + Subject< Object >::name;
   };
   benchmark::RegisterBenchmark( name( "/other/" ).c_str(), set< Sort, Object, true > );
   benchmark::RegisterBenchmark( name( "/equal/" ).c_str(), set< Sort, Object, false > );
}

template< class... Sorts > void registerAll()
{
   ( registerOne< Sorts, Record >(), ... );
   ( registerOne< Sorts, CalledRecord >(), ... );
   ( registerOne< Sorts, InlinedRecord >(), ... );
   ( registerOne< Sorts, MessageRecord >(), ... );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   registerAll< Bool, Bounded, ShortText, LongText, Value, Bench::Optional >();
   return runBenchmarks( argc, argv );
}
