// Packets of a device, or of a capture file.
#pragma once

#include "tools/flowtrack-platform/PlatformAgent.h"
#include "tools/flowtrack-platform/flows/Packet.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

struct pcap;

namespace FlowtrackPlatform {

/// Why packets of a device or a file cannot be had.
class CaptureException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// A frame, of which the first bytes are there.
struct Frame {
   int linkType;
   std::span< const std::uint8_t > bytes;
   std::uint32_t length; ///< that it had
   Time time;
};

/// In bytes.
struct CaptureSizes {
   unsigned packet; ///< what is captured of one, from its beginning
   unsigned buffer; ///< of the kernel, for packets that are not taken yet; below 2^31

   bool operator==( const CaptureSizes & ) const = default;
};

class Capture {
 public:
   /// Of a device of this machine: its packets of one direction, from now on. Throws
   /// CaptureException.
   static std::unique_ptr< Capture > live(
         const std::string & device, Direction direction, const CaptureSizes & sizes );

   /// Of a file, from its beginning. Throws CaptureException.
   static std::unique_ptr< Capture > file( const std::string & path );

   ~Capture();

   /// For poll(2): readable when there are packets; a file always is.
   int descriptor() const noexcept { return descriptor_; }

   /// Hands out the packets that are there, at most so many. Returns false at the end of a file.
   /// Throws CaptureException.
   bool take( const std::function< void( const Frame & ) > & to, int most );

   /// Of a device; since the beginning.
   CaptureCounters counters() const;

 private:
   explicit Capture( pcap * handle ) : handle_( handle ) {}

   pcap * handle_;
   int descriptor_ = -1;
};

} // namespace FlowtrackPlatform
