// Values as texts and back, with one interface for each that does it.
#pragma once

#include "bench/BenchModel.h"
#include "bench/Messages.pb.h"
#include "bench/TextPeers.h"

#include "Vok/Vok.h"

#include <google/protobuf/text_format.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Bench {

/// What Vok holds for a plain value.
inline std::uint32_t vokOf( std::uint32_t value ) { return value; }
inline double vokOf( double value ) { return value; }
inline Kind vokOf( PlainKind kind ) { return static_cast< Kind >( kind ); }
inline Rate vokOf( const PlainRate & rate )
{
   return Rate( rate.packets, rate.bytes, vokOf( rate.kind ), rate.exact );
}
inline Service vokOf( const PlainService & service )
{
   return Service( service.id, service.name, service.category, vokOf( service.kind ) );
}

/// The same as messages; a plain number stands in a field of a record.
inline BenchMessages::Record messageOf( std::uint32_t value )
{
   BenchMessages::Record record;
   record.set_count( value );
   return record;
}
inline BenchMessages::Record messageOf( double value )
{
   BenchMessages::Record record;
   record.set_ratio( value );
   return record;
}
inline BenchMessages::Record messageOf( PlainKind kind )
{
   BenchMessages::Record record;
   record.set_kind( static_cast< BenchMessages::Kind >( kind ) );
   return record;
}
inline BenchMessages::Rate messageOf( const PlainRate & rate )
{
   BenchMessages::Rate message;
   message.set_packets( rate.packets );
   message.set_bytes( rate.bytes );
   message.set_kind( static_cast< BenchMessages::Kind >( rate.kind ) );
   message.set_exact( rate.exact );
   return message;
}
inline BenchMessages::Service messageOf( const PlainService & service )
{
   BenchMessages::Service message;
   message.set_id( service.id );
   message.set_name( service.name );
   message.set_category( service.category );
   message.set_kind( static_cast< BenchMessages::Kind >( service.kind ) );
   return message;
}

struct VokText {
   static constexpr const char * name = "Vok";
   static auto from( const auto & plain ) { return vokOf( plain ); }
   static auto print( const auto & value ) { return Corvo::valueToStrep( value ); }
   template< class V > static V parse( std::string_view text )
   {
      return Corvo::strepToValue< V >( text );
   }
};

struct TextByHand {
   static constexpr const char * name = "by-hand";
   static auto from( const auto & plain ) { return plain; }
   static std::string print( const auto & value ) { return ByHand::print( value ); }
   template< class V > static V parse( std::string_view text )
   {
      V value{};
      if ( !ByHand::parse( text, value ) ) {
         throw std::invalid_argument( "text" );
      }
      return value;
   }
};

/// It prints only.
struct FormattedText {
   static constexpr const char * name = "fmt";
   static auto from( const auto & plain ) { return plain; }
   static std::string print( const auto & value ) { return Formatted::print( value ); }
};

struct MessageText {
   static constexpr const char * name = "protobuf";
   static auto from( const auto & plain ) { return messageOf( plain ); }
   static std::string print( const google::protobuf::Message & message )
   {
      std::string out;
      printer().PrintToString( message, &out );
      return out;
   }
   template< class V > static V parse( const std::string & text )
   {
      V message;
      if ( !google::protobuf::TextFormat::ParseFromString( text, &message ) ) {
         throw std::invalid_argument( "text" );
      }
      return message;
   }

 private:
   static const google::protobuf::TextFormat::Printer & printer()
   {
      static const auto made = [] {
         auto printer = std::make_unique< google::protobuf::TextFormat::Printer >();
         printer->SetSingleLineMode( true );
         return printer;
      }();
      return *made;
   }
};

} // namespace Bench
