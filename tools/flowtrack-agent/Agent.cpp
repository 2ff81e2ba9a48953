// Which trees there are, and what is done when something came.
#include "tools/flowtrack-agent/Agent.h"

#include "tools/derive/StatusReport.h"

#include <algorithm>
#include <utility>

namespace FlowtrackAgent {

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

/// The tree, or `other` where there is none.
template< class T > Corvo::Ptr< T > orElse( Corvo::Ptr< T > tree, const Corvo::Ptr< T > & other )
{
   return tree ? tree : other;
}

} // namespace

Agent::Before::Before( Vok::Store::Client & client, const Derive::Paths & paths )
      : hw( client, paths.hwConfig ),
        ids( client, paths.ids ),
        status( client, paths.status )
{
}

Agent::Agent( const Setup & setup, const std::string & kind )
      : setup_( setup ),
        paths_( kind ),
        config_( setup.client, paths_.config ),
        bindings_( setup.client, paths_.bindings ),
        requests_( setup.client, paths_.agentRequests ),
        capabilities_( setup.client, paths_.capabilities ),
        hwStatus_( setup.client, paths_.hwStatus ),
        dropRequest_( setup.client, paths_.dropRequest ),
        drops_( setup.client, paths_.drops ),
        before_( std::in_place, setup.client, paths_ ),
        empty_{ Ft::configFactory( kind ), Ft::flowTrackerIntfConfigsFactory( kind ),
           Ft::agentReqFactory( kind ), Hw::capabilitiesFactory( kind ) }
{
}

/// Takes its own mounts over as they are: what it derived before it was ended, its numbers and
/// generations among it.
void Agent::goOn()
{
   hw_ = orElse( before_->hw.tree(), Hw::configFactory( paths_.hwConfig ) );
   ids_ = orElse( before_->ids.tree(), Ft::ftIdStatusFactory( paths_.ids ) );
   status_ = orElse( before_->status.tree(), Ft::statusFactory( paths_.status ) );
   before_.reset(); // nobody else changes these trees any more
   const auto write = [ this ]( const std::string & path, const Corvo::Ptr< Vok::Entity > & tree ) {
      writings_.push_back( setup_.client.write( path, tree, setup_.takeOver ) );
   };
   write( paths_.ids, ids_ ); // numbers before what carries them
   write( paths_.hwConfig, hw_ );
   write( paths_.status, status_ );
}

bool Agent::mayDerive()
{
   if ( before_ ) {
      if ( !config_.tree() || !before_->hw.known() || !before_->ids.known() ||
            !before_->status.known() ) {
         return false;
      }
      goOn();
   }
   configured_ = configured_ ||
         ( config_.tree() && bindings_.known() && requests_.known() && capabilities_.known() );
   return configured_;
}

void Agent::follow()
{
   const Inputs now{
      orElse< const Ft::Config >( config_.tree(), empty_.config ),
      orElse< const Ft::FlowTrackerIntfConfigs >( bindings_.tree(), empty_.bindings ),
      orElse< const Ft::AgentReq >( requests_.tree(), empty_.requests ),
      orElse< const Hw::Capabilities >( capabilities_.tree(), empty_.capabilities )
   };
   if ( deriver_ && now == inputs_ ) {
      return;
   }
   inputs_ = now;
   deriver_.reset(); // it stops following before another one follows
   deriver_ = std::make_unique< Derive::Deriver >(
         Derive::Sources{ now.config, now.bindings, now.requests, now.capabilities, setup_.hosts,
               setup_.interfaces, setup_.now },
         hw_, ids_ );
}

void Agent::step()
{
   if ( !mayDerive() ) {
      return;
   }
   follow();
   deriver_->derive();
   const auto hwStatus = orElse( hwStatus_.tree(), Hw::statusFactory( paths_.hwStatus ) );
   Derive::reportStatus( { *inputs_.config, *hw_, *inputs_.capabilities, *hwStatus }, *status_ );
   answerDrops();
}

/// A request is a number; the answers carry it. The platform that has the counters is asked by the
/// same number, and its answers are passed on. Without one nothing is counted: what was told last
/// stands.
void Agent::answerDrops()
{
   const auto request = dropRequest_.tree();
   if ( !request ) {
      return;
   }
   for ( const Ft::PktDropReason reason : { Ft::kernelDrops, Ft::ftFullDrops } ) {
      answer( reason, request->readerSeqNo() );
   }
}

void Agent::answer( Ft::PktDropReason reason, std::uint8_t number )
{
   const auto told = status_->pktDropResp();
   if ( told.contains( reason ) && status_->pktDropResp( reason ).writerSeqNo() == number ) {
      return;
   }
   const auto platform = drops_.tree();
   if ( !drops_.live() ) {
      Ft::PktDropCounterUpdateResponse last( reason, 0, 0, number );
      if ( told.contains( reason ) ) {
         last = status_->pktDropResp( reason );
         last.writerSeqNoIs( number );
      }
      status_->pktDropRespIs( last );
   } else if ( platform->pktDropResp().contains( reason ) &&
         platform->pktDropResp( reason ).writerSeqNo() == number ) {
      status_->pktDropRespIs( platform->pktDropResp( reason ) );
   }
}

std::string Agent::refusal() const
{
   for ( const auto & writing : writings_ ) {
      if ( !writing->refusal().empty() ) {
         return writing->refusal();
      }
   }
   return {};
}

std::vector< std::string > Agent::failures() const
{
   const Derive::FollowedMount * const mounts[] = { &config_, &bindings_, &requests_,
      &capabilities_, &hwStatus_, &dropRequest_, &drops_ };
   std::vector< std::string > lines;
   for ( const Derive::FollowedMount * const mount : mounts ) {
      if ( !mount->failure().empty() ) {
         lines.push_back( mount->path() + ": " + mount->failure() );
      }
   }
   return lines;
}

bool Agent::settled() const
{
   return configured_ && std::all_of( writings_.begin(), writings_.end(), []( const auto & one ) {
      return one->settled();
   } );
}

} // namespace FlowtrackAgent
