// Attributes read and set as texts, by their names, of objects whose type is not known.
#include "bench/BenchModel.h"
#include "bench/Check.h"
#include "bench/Messages.pb.h"
#include "bench/Program.h"

#include "Vok/Vok.h"

#include <google/protobuf/text_format.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Bench {
namespace {

constexpr std::int64_t callsAtOnce = 100;

/// The two types of objects, which are known only where they are made.
enum class Type {
   record,
   counts // has sixteen numbers
};

struct VokNames {
   static constexpr const char * name = "Vok";

   explicit VokNames( Type type )
         : entity_( type == Type::record ? Corvo::Ptr< Vok::Entity >( recordFactory( "record" ) )
                                         : countsFactory( "counts" ) )
   {
   }
   void set( std::string_view attribute, const std::string & text )
   {
      entity_->typeData().attribute( attribute )->set( *entity_, text );
   }
   Corvo::String get( std::string_view attribute ) const
   {
      return entity_->typeData().attribute( attribute )->get( *entity_ );
   }

 private:
   Corvo::Ptr< Vok::Entity > entity_;
};

using google::protobuf::FieldDescriptor;

/// Through its reflection, which is typed: texts are made and read as one would do it by hand.
struct MessageNames {
   static constexpr const char * name = "protobuf";

   explicit MessageNames( Type type )
   {
      if ( type == Type::record ) {
         message_ = std::make_unique< BenchMessages::Record >();
      } else {
         message_ = std::make_unique< BenchMessages::Counts >();
      }
   }
   void set( const std::string & attribute, const std::string & text )
   {
      const FieldDescriptor * const field = fieldOf( attribute );
      switch ( field->cpp_type() ) {
      case FieldDescriptor::CPPTYPE_UINT32: {
         std::uint32_t number = 0;
         const char * const end = text.data() + text.size();
         if ( std::from_chars( text.data(), end, number ).ptr != end ) {
            throw std::invalid_argument( text );
         }
         reflection().SetUInt32( message_.get(), field, number );
         break;
      }
      case FieldDescriptor::CPPTYPE_BOOL:
         if ( text != "true" && text != "false" ) {
            throw std::invalid_argument( text );
         }
         reflection().SetBool( message_.get(), field, text == "true" );
         break;
      case FieldDescriptor::CPPTYPE_STRING:
         reflection().SetString( message_.get(), field, text );
         break;
      default:
         throw std::invalid_argument( attribute );
      }
   }
   std::string get( const std::string & attribute ) const
   {
      const FieldDescriptor * const field = fieldOf( attribute );
      switch ( field->cpp_type() ) {
      case FieldDescriptor::CPPTYPE_UINT32: {
         char digits[ 10 ];
         const std::uint32_t number = reflection().GetUInt32( *message_, field );
         return { digits, std::to_chars( digits, std::end( digits ), number ).ptr };
      }
      case FieldDescriptor::CPPTYPE_BOOL:
         return reflection().GetBool( *message_, field ) ? "true" : "false";
      case FieldDescriptor::CPPTYPE_STRING:
         return reflection().GetString( *message_, field );
      default:
         throw std::invalid_argument( attribute );
      }
   }

 protected:
   const FieldDescriptor * fieldOf( const std::string & attribute ) const
   {
      return message_->GetDescriptor()->FindFieldByName( attribute );
   }
   const google::protobuf::Reflection & reflection() const { return *message_->GetReflection(); }

   std::unique_ptr< google::protobuf::Message > message_;
};

/// Through the text of one field, in the library's own form.
struct MessageTexts : MessageNames {
   using MessageNames::MessageNames;
   static constexpr const char * name = "protobuf-text";

   void set( const std::string & attribute, const std::string & text )
   {
      const FieldDescriptor * const field = fieldOf( attribute );
      const bool quoted = field->cpp_type() == FieldDescriptor::CPPTYPE_STRING;
      if ( !google::protobuf::TextFormat::ParseFieldValueFromString(
                 quoted ? '"' + text + '"' : text, field, message_.get() ) ) {
         throw std::invalid_argument( text );
      }
   }
   std::string get( const std::string & attribute ) const
   {
      std::string text;
      google::protobuf::TextFormat::PrintFieldValueToString(
            *message_, fieldOf( attribute ), -1, &text );
      return text.front() == '"' ? text.substr( 1, text.size() - 2 ) : text;
   }
};

struct Attribute {
   Type type;
   const char * sort;
   std::string name;
   std::array< std::string, 2 > texts;
};

template< class Subject > void set( benchmark::State & state, const Attribute & attribute )
{
   Subject subject( attribute.type );
   for ( auto _ : state ) {
      for ( std::size_t i = 0; i != callsAtOnce; ++i ) {
         subject.set( attribute.name, attribute.texts[ i % 2 ] );
      }
   }
   state.SetItemsProcessed( state.iterations() * callsAtOnce );
   require( subject.get( attribute.name ) == attribute.texts[ 1 ], "the text that was set last" );
}

template< class Subject > void get( benchmark::State & state, const Attribute & attribute )
{
   Subject subject( attribute.type );
   subject.set( attribute.name, attribute.texts[ 0 ] );
   for ( auto _ : state ) {
      for ( std::size_t i = 0; i != callsAtOnce; ++i ) {
         auto text = subject.get( attribute.name );
         benchmark::DoNotOptimize( text );
      }
   }
   state.SetItemsProcessed( state.iterations() * callsAtOnce );
   require( subject.get( attribute.name ) == attribute.texts[ 0 ], "the text that was set" );
}

template< class Subject > void add()
{
   static const Attribute attributes[] = {
      { Type::record, "number", "count", { "12", "3456" } },
      { Type::record, "bool", "enabled", { "true", "false" } },
      { Type::record, "text", "title", { "Ethernet3/1", "Ethernet4/2" } },
      { Type::counts, "of-16", "count16", { "12", "3456" } },
   };
   for ( const Attribute & attribute : attributes ) {
      const auto put = [ & ]( const char * what, auto run ) {
         const std::string name =
               std::string( "reflection/" ) + what + "/" + attribute.sort + "/" + Subject::name;
         benchmark::RegisterBenchmark( name.c_str(),
               [ run, &attribute ]( benchmark::State & state ) { run( state, attribute ); } );
      };
      put( "set", set< Subject > );
      put( "get", get< Subject > );
   }
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   add< VokNames >();
   add< MessageNames >();
   add< MessageTexts >();
   return runBenchmarks( argc, argv );
}
