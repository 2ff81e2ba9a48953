// Messages over UDP.
#pragma once

#include "tools/flowtrack-platform/metering/Exporter.h"

#include <array>
#include <string>
#include <vector>

namespace FlowtrackPlatform {

/// Sends each message to all collectors of a destination, with its DSCP and from its source
/// addresses. What cannot be sent is lost, and told once on standard error.
class UdpSender final : public Sender {
 public:
   explicit UdpSender( const DestinationPlan & to );
   UdpSender( const UdpSender & ) = delete;
   UdpSender & operator=( const UdpSender & ) = delete;
   ~UdpSender() override;

   void send( std::span< const std::uint8_t > message ) override;

 private:
   struct Collector {
      std::string name;
      int family;
      std::vector< std::uint8_t > address; ///< a sockaddr
   };

   int open( int family, const std::string & source, unsigned dscp );
   void complain( const std::string & what );

   std::array< int, 2 > sockets_{ -1, -1 }; ///< of IPv4 and of IPv6
   std::vector< Collector > collectors_;
   std::string complaint_; ///< made last
};

} // namespace FlowtrackPlatform
