// IPFIX messages (RFC 7011).
#pragma once

#include "tools/flowtrack-platform/ipfix/Bytes.h"

#include "Ipfix/IpfixTypes.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace FlowtrackPlatform {

/// A field of a template: an information element by its number in IANA's registry "IPFIX
/// Information Elements".
struct TemplateField {
   /// A length that says that each record tells its own.
   static constexpr std::uint16_t variable = 65535;

   Ipfix::RecordType element;
   std::uint16_t length; ///< bytes in each record

   friend bool operator==( const TemplateField &, const TemplateField & ) = default;
};

/// What records of one kind hold, in order.
struct Template {
   std::uint16_t id = 0; ///< 256 or more
   std::uint16_t scopes = 0; ///< so many fields say what an options record is of; 0: flow records
   std::vector< TemplateField > fields;

   friend bool operator==( const Template &, const Template & ) = default;
};

/// Appends a text of variable length as a record has it (RFC 7011, 7). At most 65535 bytes of it.
void appendText( Bytes & to, std::string_view text );

/// Puts templates and records into the messages of one observation domain, as few as they fit in,
/// and numbers them. It has no socket and no clock.
class MessageWriter {
 public:
   using Send = std::function< void( std::span< const std::uint8_t > ) >;

   /// No message has more bytes than `most`, which holds a header at least. `send` gets each
   /// message once it is full, or flushed.
   MessageWriter( std::uint32_t domain, std::size_t most, Send send );

   /// When messages are exported, from now on: seconds since 1970.
   void timeIs( std::uint32_t seconds ) noexcept { time_ = seconds; }

   /// Writes a template. Returns false, and does nothing, where no message has room for it.
   bool add( const Template & what );

   /// Writes a record of a template; the same.
   bool record( std::uint16_t templateId, std::span< const std::uint8_t > record );

   /// Ends the message that is begun, if any.
   void flush();

   // Since the beginning.
   std::uint64_t messages() const noexcept { return messages_; }
   std::uint64_t records() const noexcept { return records_; }

 private:
   bool room( std::uint16_t set, std::size_t bytes );

   std::uint32_t domain_;
   std::size_t most_;
   Send send_;
   std::uint32_t time_ = 0;
   Bytes message_; ///< that is begun; empty: none
   std::size_t set_ = 0; ///< where its last set begins
   std::uint16_t setId_ = 0;
   std::uint64_t messages_ = 0;
   std::uint64_t records_ = 0;
   std::uint64_t before_ = 0; ///< records before the message that is begun
};

} // namespace FlowtrackPlatform
