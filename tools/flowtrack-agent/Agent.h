// The flow-tracking agent of one kind of flow tracking, over a client of the store.
#pragma once

#include "tools/derive/Deriver.h"
#include "tools/derive/Followed.h"
#include "tools/derive/Paths.h"

#include "FlowTracker/FlowTrackerStatus.h"
#include "store/Client.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace FlowtrackAgent {

/// What an agent stands on. All of it outlives the agent.
struct Setup {
   Vok::Store::Client & client;
   Derive::Resolver & hosts; ///< collectors by host name
   Derive::Resolver & interfaces; ///< source addresses by name of the local interface
   std::function< Corvo::Duration() > now;
   bool takeOver = false; ///< from an agent that writes the same mounts
};

/// Keeps the hardware configuration, the numbers of trackers and the status of one kind like what
/// operators configure and what the platform says (`Derive::Paths` has the mounts), and answers
/// requests for the counters of dropped packets.
///
/// It goes on from what it finds in its own mounts, and writes nothing before it knows them. It
/// derives nothing before a configuration has come once; from then on a mount that is taken away is
/// an empty one.
class Agent {
 public:
   Agent( const Setup & setup, const std::string & kind );
   Agent( const Agent & ) = delete;
   Agent & operator=( const Agent & ) = delete;

   /// Does what there is to do, after anything came from the store or from a resolver.
   void step();

   /// Why the store does not take what the agent writes; empty where it does.
   std::string refusal() const;

   /// What of its mounts cannot be read: a line for each.
   std::vector< std::string > failures() const;

   /// Whether the store has everything that was derived.
   bool settled() const;

   const Derive::Paths & paths() const noexcept { return paths_; }

   // The trees that it writes; null until it knows them.
   Corvo::Ptr< HwFlowTracking::Config > hw() const { return hw_; }
   Corvo::Ptr< FlowTracking::FtIdStatus > ids() const { return ids_; }
   Corvo::Ptr< FlowTracking::Status > status() const { return status_; }

 private:
   /// The agent's own mounts, as they were before it began.
   struct Before {
      Before( Vok::Store::Client & client, const Derive::Paths & paths );

      Derive::Followed< HwFlowTracking::Config > hw;
      Derive::Followed< FlowTracking::FtIdStatus > ids;
      Derive::Followed< FlowTracking::Status > status;
   };

   /// What is derived from. A mount that is not there has an empty tree here.
   struct Inputs {
      Corvo::Ptr< const FlowTracking::Config > config;
      Corvo::Ptr< const FlowTracking::FlowTrackerIntfConfigs > bindings;
      Corvo::Ptr< const FlowTracking::AgentReq > requests;
      Corvo::Ptr< const HwFlowTracking::Capabilities > capabilities;

      friend bool operator==( const Inputs &, const Inputs & ) = default;
   };

   void goOn();
   bool mayDerive();
   void follow();
   void answerDrops();
   void answer( FlowTracking::PktDropReason reason, std::uint8_t number );

   Setup setup_;
   Derive::Paths paths_;
   Derive::Followed< FlowTracking::Config > config_;
   Derive::Followed< FlowTracking::FlowTrackerIntfConfigs > bindings_;
   Derive::Followed< FlowTracking::AgentReq > requests_;
   Derive::Followed< HwFlowTracking::Capabilities > capabilities_;
   Derive::Followed< HwFlowTracking::Status > hwStatus_;
   Derive::Followed< FlowTracking::PktDropCounterUpdateRequest > dropRequest_;
   Derive::Followed< FlowTracking::Status > drops_;
   std::optional< Before > before_;
   Corvo::Ptr< HwFlowTracking::Config > hw_;
   Corvo::Ptr< FlowTracking::FtIdStatus > ids_;
   Corvo::Ptr< FlowTracking::Status > status_;
   std::vector< std::unique_ptr< Vok::Store::Writing > > writings_;
   bool configured_ = false; ///< a configuration has come
   const Inputs empty_;
   Inputs inputs_;
   std::unique_ptr< Derive::Deriver > deriver_;
};

} // namespace FlowtrackAgent
