// Reads IPFIX messages (RFC 7011) as a collector does, for tests of what is exported.
#pragma once

#include "tools/flowtrack-platform/ipfix/MessageWriter.h"

#include <cstdint>
#include <map>
#include <span>
#include <stdexcept>
#include <vector>

namespace FlowTest {

using FlowtrackPlatform::Bytes;
using FlowtrackPlatform::Template;
using FlowtrackPlatform::TemplateField;

/// One record: the bytes of its fields, by element.
struct Record {
   std::uint16_t templateId = 0;
   std::map< Ipfix::RecordType, Bytes > fields;

   std::uint64_t number( Ipfix::RecordType element ) const
   {
      std::uint64_t value = 0;
      for ( const std::uint8_t byte : fields.at( element ) ) {
         value = value << 8 | byte;
      }
      return value;
   }
};

/// Collects messages. Throws std::runtime_error for what makes no sense, a record whose template is
/// not known and a hole in the sequence numbers among it.
class IpfixDecoder {
 public:
   struct Message {
      std::uint32_t time;
      std::uint32_t sequence;
      std::uint32_t domain;
      std::size_t bytes;
   };

   void take( std::span< const std::uint8_t > message )
   {
      rest_ = message;
      need( number( 2 ) == 10, "the version is not 10" );
      need( number( 2 ) == message.size(), "the length is not that of the message" );
      const auto time = static_cast< std::uint32_t >( number( 4 ) );
      const auto sequence = static_cast< std::uint32_t >( number( 4 ) );
      const auto domain = static_cast< std::uint32_t >( number( 4 ) );
      need( sequence == flows.size() + options.size(), "records are missing" );
      messages.push_back( { time, sequence, domain, message.size() } );
      while ( !rest_.empty() ) {
         set();
      }
   }

   std::vector< Message > messages;
   std::map< std::uint16_t, Template > templates;
   unsigned templateRecords = 0; ///< templates that came, repeated ones as well
   std::vector< Record > flows;
   std::vector< Record > options;

 private:
   static void need( bool holds, const char * what )
   {
      if ( !holds ) {
         throw std::runtime_error( what );
      }
   }

   std::span< const std::uint8_t > bytes( std::size_t count )
   {
      need( count <= rest_.size(), "it is cut short" );
      const auto first = rest_.first( count );
      rest_ = rest_.subspan( count );
      return first;
   }

   std::uint64_t number( std::size_t length )
   {
      std::uint64_t value = 0;
      for ( const std::uint8_t byte : bytes( length ) ) {
         value = value << 8 | byte;
      }
      return value;
   }

   void set()
   {
      const auto id = static_cast< std::uint16_t >( number( 2 ) );
      const std::uint64_t length = number( 2 );
      need( length > 4, "a set is empty" );
      const std::span< const std::uint8_t > whole = bytes( length - 4 );
      const std::span< const std::uint8_t > behind = rest_;
      rest_ = whole;
      while ( !rest_.empty() ) {
         if ( id == 2 || id == 3 ) {
            readTemplate( id == 3 );
         } else {
            record( id );
         }
      }
      rest_ = behind;
   }

   void readTemplate( bool ofOptions )
   {
      Template one;
      one.id = static_cast< std::uint16_t >( number( 2 ) );
      need( one.id >= 256, "a template has the number of a set" );
      const std::uint64_t count = number( 2 );
      one.scopes = ofOptions ? static_cast< std::uint16_t >( number( 2 ) ) : std::uint16_t{ 0 };
      need( !ofOptions || one.scopes != 0, "options are of nothing" );
      for ( std::uint64_t i = 0; i != count; ++i ) {
         const auto element = static_cast< Ipfix::RecordType >( number( 2 ) );
         one.fields.push_back( { element, static_cast< std::uint16_t >( number( 2 ) ) } );
      }
      templates[ one.id ] = one;
      ++templateRecords;
   }

   void record( std::uint16_t id )
   {
      need( templates.contains( id ), "a record's template is not known" );
      const Template & form = templates[ id ];
      Record one{ id, {} };
      for ( const TemplateField & field : form.fields ) {
         std::size_t length = field.length;
         if ( field.length == TemplateField::variable ) {
            length = number( 1 );
            length = length == 255 ? number( 2 ) : length;
         }
         const auto value = bytes( length );
         one.fields[ field.element ] = Bytes( value.begin(), value.end() );
      }
      ( form.scopes == 0 ? flows : options ).push_back( one );
   }

   std::span< const std::uint8_t > rest_;
};

} // namespace FlowTest
