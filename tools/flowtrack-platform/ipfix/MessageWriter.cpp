// Headers, sets and their lengths, which are known once they end.
#include "tools/flowtrack-platform/ipfix/MessageWriter.h"

#include <algorithm>
#include <utility>

namespace FlowtrackPlatform {

namespace {

constexpr std::uint16_t version = 10;
constexpr std::size_t messageHeader = 16;
constexpr std::size_t setHeader = 4;
constexpr std::uint16_t templateSet = 2;
constexpr std::uint16_t optionsTemplateSet = 3;

} // namespace

void appendText( Bytes & to, std::string_view text )
{
   const std::size_t size = std::min< std::size_t >( text.size(), 65535 );
   if ( size < 255 ) {
      appendNumber( to, size, 1 );
   } else {
      appendNumber( to, 255, 1 );
      appendNumber( to, size, 2 );
   }
   to.insert( to.end(), text.begin(), text.begin() + static_cast< std::ptrdiff_t >( size ) );
}

MessageWriter::MessageWriter( std::uint32_t domain, std::size_t most, Send send )
      : domain_( domain ),
        most_( most ),
        send_( std::move( send ) )
{
}

/// Makes room for so many bytes in a set: in the one that is begun, in another one, in another
/// message.
bool MessageWriter::room( std::uint16_t set, std::size_t bytes )
{
   if ( messageHeader + setHeader + bytes > most_ ) {
      return false;
   }
   const std::size_t header = setId_ == set ? 0 : setHeader;
   if ( !message_.empty() && message_.size() + header + bytes > most_ ) {
      flush();
   }
   if ( message_.empty() ) {
      before_ = records_;
      appendNumber( message_, version, 2 );
      message_.resize( messageHeader );
   }
   if ( setId_ != set ) {
      set_ = message_.size();
      setId_ = set;
      appendNumber( message_, set, 2 );
      appendNumber( message_, 0, 2 );
   }
   return true;
}

bool MessageWriter::add( const Template & what )
{
   Bytes bytes;
   appendNumber( bytes, what.id, 2 );
   appendNumber( bytes, what.fields.size(), 2 );
   if ( what.scopes != 0 ) {
      appendNumber( bytes, what.scopes, 2 );
   }
   for ( const TemplateField & field : what.fields ) {
      appendNumber( bytes, static_cast< std::uint16_t >( field.element ), 2 );
      appendNumber( bytes, field.length, 2 );
   }
   if ( what.scopes != 0 ) {
      setId_ = 0; // a set of its own: there are collectors that read the first of a set only
   }
   if ( !room( what.scopes == 0 ? templateSet : optionsTemplateSet, bytes.size() ) ) {
      return false;
   }
   append( message_, bytes );
   replaceNumber( message_, set_ + 2, message_.size() - set_, 2 );
   return true;
}

bool MessageWriter::record( std::uint16_t templateId, std::span< const std::uint8_t > record )
{
   if ( !room( templateId, record.size() ) ) {
      return false;
   }
   append( message_, record );
   replaceNumber( message_, set_ + 2, message_.size() - set_, 2 );
   ++records_;
   return true;
}

void MessageWriter::flush()
{
   if ( message_.empty() ) {
      return;
   }
   replaceNumber( message_, 2, message_.size(), 2 );
   replaceNumber( message_, 4, time_, 4 );
   replaceNumber( message_, 8, before_, 4 );
   replaceNumber( message_, 12, domain_, 4 );
   ++messages_;
   const Bytes message = std::exchange( message_, {} );
   setId_ = 0;
   send_( message );
}

} // namespace FlowtrackPlatform
