// Information elements that packets and flows have values of.
#pragma once

#include "tools/flowtrack-platform/flows/Flow.h"
#include "tools/flowtrack-platform/ipfix/Bytes.h"

#include "Ipfix/IpfixTypes.h"

#include <cstdint>

namespace FlowtrackPlatform {

/// One information element of IANA's registry "IPFIX Information Elements", encoded as RFC 7011
/// has it.
struct Element {
   Ipfix::RecordType number;
   std::uint16_t length; ///< bytes
   void ( *ofPacket )( const Packet & packet, Bytes & to ); ///< null where only flows have it
   void ( *ofFlow )( const Flow & flow, Bytes & to ); ///< null: that of its first packet

   void append( const Flow & flow, Bytes & to ) const
   {
      if ( ofFlow ) {
         ofFlow( flow, to );
      } else {
         ofPacket( flow.first, to );
      }
   }
};

/// The element of a number, or null where flows have no value of it here.
const Element * findElement( Ipfix::RecordType number );

} // namespace FlowtrackPlatform
