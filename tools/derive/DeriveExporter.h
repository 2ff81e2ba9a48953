// One exporter of a tracker.
#pragma once

#include "tools/derive/Following.h"
#include "tools/derive/Resolver.h"
#include "tools/derive/Sources.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <map>
#include <memory>

namespace Derive {

/// Keeps one exporter in hardware, and what its tracker says of it, like its configuration.
///
/// A collector's address is its host where that is an address, else what the resolver answers.
/// While there is no answer, an address that hardware has for the host stays: a restart takes no
/// collector away. The same holds for the addresses of the local interface.
class ExporterDeriver {
 public:
   ExporterDeriver( const Sources & sources, Corvo::Ptr< const FlowTracking::ExporterConfig > from,
         Corvo::Ptr< HwFlowTracking::FtConfig > tracker );

   void request() { work_.request(); }

   /// Does what was requested, and says whether that was anything.
   bool derive();

 private:
   using Asked = std::map< Corvo::String, std::unique_ptr< Resolver::Question > >;

   struct Collectors {
      std::map< Corvo::String, Wyre::IpAndPort > ip;
      std::map< Corvo::String, Wyre::Ip6AndPort > ip6;
      bool allKnown = true;
   };

   void work();
   void ask();
   void settings( HwFlowTracking::ExporterConfig & to );
   void source( HwFlowTracking::ExporterConfig & to );
   void collectors( HwFlowTracking::ExporterConfig & to );
   void ready( HwFlowTracking::ExporterConfig & to );
   void mark( bool resolved, bool waiting );
   Collectors found( const HwFlowTracking::ExporterConfig & to ) const;
   Addresses addressesOf(
         const Corvo::String & host, const HwFlowTracking::ExporterConfig & to ) const;

   const Sources & sources_;
   Corvo::Ptr< const FlowTracking::ExporterConfig > from_;
   Corvo::Ptr< HwFlowTracking::FtConfig > tracker_;
   Vok::Deferred work_;
   EntityFollower follower_;
   Asked hosts_; ///< by name
   Asked interface_; ///< none or one
};

} // namespace Derive
