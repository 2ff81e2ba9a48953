// The devices whose packets are captured.
#pragma once

#include "tools/flowtrack-platform/capture/Capture.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace FlowtrackPlatform {

/// Captures the packets of the ports that are wanted. What cannot be captured is tried again every
/// ten seconds.
class CaptureSet {
 public:
   /// `devices` are names of devices by those of interfaces, where they differ; `bufferBytes` are
   /// of the kernel, for each capture.
   CaptureSet( std::map< std::string, std::string > devices, unsigned bufferBytes )
         : devices_( std::move( devices ) ),
           sizes_{ 0, bufferBytes }
   {
   }

   /// Captures of these from now on, so many bytes of each packet.
   void wantedAre( const std::vector< Port > & ports, unsigned bytes, Time now );

   /// Why an interface's packets cannot be captured, of those that are wanted.
   const std::map< std::string, std::string > & troubles() const noexcept { return troubles_; }

   const std::map< Port, std::unique_ptr< Capture > > & captures() const { return captures_; }

   /// Hands out the packets of a port that are there.
   void take( const Port & port, const std::function< void( const Frame & ) > & to );

   CaptureCounters counters() const;
   void clearCounters();

   /// The index of the device that an interface is; a number of its own where it is none.
   std::uint32_t indexOf( const std::string & intf );

 private:
   const std::string & deviceOf( const std::string & intf ) const;
   void close( const Port & port );

   std::map< std::string, std::string > devices_;
   std::map< Port, std::unique_ptr< Capture > > captures_;
   std::map< std::string, std::string > troubles_;
   std::map< std::string, Time > again_; ///< when it is tried again
   std::map< std::string, std::uint32_t > indexes_;
   CaptureSizes sizes_;
   CaptureCounters gone_; ///< of captures that are closed
   CaptureCounters cleared_; ///< what was counted by then
};

} // namespace FlowtrackPlatform
