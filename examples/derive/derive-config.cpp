// The operator: configures flow tracking, changes it step by step, and waits after each step until
// the platform has answered it.
//
//    derive-config DIR STEPS
//
// It connects to the agent that listens in DIR, and says after each step how many trackers and
// interfaces are active; in the end what it has, and what became of each interface.
#include "Link.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <set>
#include <string>

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;
using Derive::Link;
using Wyre::HostAndPort;
using Wyre::IntfId;

/// What is configured: a tracker that stays, others that come and go.
class Operator {
 public:
   Operator()
   {
      config->enabledIs( true );
      const auto campus = config->flowTrackerConfigIs( "campus" );
      const auto operators = campus->expConfigIs( "operators" );
      operators->collectorHostAndPortIs( HostAndPort( "192.0.2.10", 4739 ) );
      operators->collectorHostAndPortIs( HostAndPort( "localhost", 4739 ) );
      operators->localIntfNameIs( "lo" );
      campus->expConfigIs( "archive" )
            ->collectorHostAndPortIs( HostAndPort( "2001:db8::5", 4739 ) );
      campus->fgConfigIs( "voice", 100 )->expNameIs( "operators" );
      campus->monitoredCpuQueueIs( "bgp" );
      for ( int port = 1; port <= 4; ++port ) {
         bindings->flowTrackerIntfConfigIs( intf( port ), "campus", Ft::sampleModeAll );
      }
      bindings->flowTrackerIntfConfigIs( IntfId( "Ethernet1.100" ), "campus", Ft::sampleModeAll );
   }

   /// The bindings of a step go out before its number, which comes back as the sampling rate.
   void step( std::uint32_t number )
   {
      const std::string tracker = "t" + std::to_string( number );
      bindings->flowTrackerIntfConfigDel( intf( 5 ) );
      bindings->flowTrackerIntfConfigIs( intf( 5 ), tracker, Ft::sampleModeAll );
      bindings->flowTrackerEgressIntfConfigDel( intf( 6 ) );
      if ( number % 3 != 0 ) {
         bindings->flowTrackerEgressIntfConfigIs( intf( 6 ), "campus", Ft::sampleModeTargeted );
      }
      const auto made = config->flowTrackerConfigIs( tracker );
      made->fgConfigIs( "all", number );
      made->expConfigIs( "probe" )->collectorHostAndPortIs( HostAndPort( "127.0.0.1", 2055 ) );
      if ( number > 4 ) {
         config->flowTrackerConfigDel( "t" + std::to_string( number - 4 ) );
      }
      const auto campus = config->flowTrackerConfig( "campus" );
      campus->expConfig( "operators" )
            ->dscpValueIs( Wyre::DscpValue( static_cast< std::uint8_t >( number % 64 ) ) );
      campus->groupsCommitInProgressIs( number % 4 == 1 );
      campus->fgConfigIs( "web", 50 + 100 * ( number % 2 ) );
      campus->fgConfigIs( "voice", 100 )
            ->ipAccessListIs( Ft::AccessList( number, "voice-v4", Acl::AclType::ip ) );
      config->sampleRateIs( Ft::SampleRate( number ) );
   }

   static IntfId intf( int port ) { return IntfId( "Ethernet" + std::to_string( port ) ); }

   Corvo::Ptr< Ft::Config > config = Ft::configFactory( "sampled" );
   Corvo::Ptr< Ft::FlowTrackerIntfConfigs > bindings =
         Ft::flowTrackerIntfConfigsFactory( "bindings" );
};

class OperatorProgram {
 public:
   explicit OperatorProgram( const std::string & dir )
         : config_( dir + "/config", Link::End::connects, operator_.config, told_ ),
           bindings_( dir + "/bindings", Link::End::connects, operator_.bindings, status_ )
   {
   }

   void step( std::uint32_t number )
   {
      operator_.step( number );
      bindings_.send();
      config_.send();
      while ( !answered( number ) ) {
         bindings_.reconnect();
         config_.reconnect();
         Derive::takeAny( { &bindings_, &config_ }, -1, -1 );
      }
      // What the agent told with the answer is there as well.
      while ( Derive::takeAny( { &bindings_, &config_ }, -1, 0 ) ) {
      }
      std::size_t trackers = 0;
      for ( const auto & tracker : told_->ftStatus() ) {
         trackers += tracker->active() ? 1U : 0U;
      }
      std::size_t interfaces = 0;
      for ( const auto & intf : status_->hwIntfFtStatus() ) {
         interfaces += intf->active() ? 1U : 0U;
      }
      std::cout << "step " << number << ": " << trackers << " trackers and " << interfaces
                << " interfaces are active" << std::endl;
   }

   void say() const
   {
      std::cout << "config " << Vok::treeDigest( *operator_.config ).text() << "\nbindings "
                << Vok::treeDigest( *operator_.bindings ).text() << "\ntold "
                << Vok::treeDigest( *told_ ).text() << "\nhwStatus "
                << Vok::treeDigest( *status_ ).text() << std::endl;
      sayIntfs( "ingress", status_->hwIntfFtStatus() );
      sayIntfs( "egress", status_->egressHwIntfFtStatus() );
   }

 private:
   template< class View > static void sayIntfs( const char * direction, View intfs )
   {
      std::set< std::string > lines;
      for ( const auto & intf : intfs ) {
         lines.insert( std::string( intf->intfId().stringValue() ) + " " + direction + ": " +
               ( intf->active() ? "active" : std::string( intf->reason() ) ) );
      }
      for ( const std::string & line : lines ) {
         std::cout << line << std::endl;
      }
   }

   /// Whether the platform has the step, and says of exactly the interfaces that are bound to a
   /// tracker what became of them, and no collector is left to be found.
   bool answered( std::uint32_t number ) const
   {
      return status_->sampleRate() == number &&
            same( operator_.bindings->flowTrackerIntfConfig(), status_->hwIntfFtStatus() ) &&
            same( operator_.bindings->flowTrackerEgressIntfConfig(),
                  status_->egressHwIntfFtStatus() ) &&
            processed();
   }

   template< class Configured, class Said > bool same( Configured configured, Said said ) const
   {
      std::size_t bound = 0;
      for ( const auto & binding : configured ) {
         const bool has = operator_.config->flowTrackerConfig( binding->trackerName() ) != nullptr;
         bound += has ? 1U : 0U;
         if ( has != said.contains( binding->intfId() ) ) {
            return false;
         }
      }
      return bound == said.size();
   }

   bool processed() const
   {
      for ( const auto & tracker : operator_.config->flowTrackerConfig() ) {
         const auto status = told_->ftStatus( tracker->name() );
         if ( !status || status->inactiveReason() == Ft::trackerNotProcessed ) {
            return false;
         }
         for ( const auto & exporter : status->expStatus() ) {
            for ( const auto & collector : exporter->collectorStatus() ) {
               if ( collector->inactiveReason() == Ft::collectorNotProcessed ) {
                  return false;
               }
            }
         }
      }
      return true;
   }

   Operator operator_;
   Corvo::Ptr< Ft::Status > told_ = Ft::statusFactory( "replica" );
   Corvo::Ptr< Hw::Status > status_ = Hw::statusFactory( "replica" );
   Link config_;
   Link bindings_;
};

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 3 ) {
      std::cerr << "usage: derive-config DIR STEPS\n";
      return 2;
   }
   try {
      OperatorProgram program( argv[ 1 ] );
      const long steps = std::strtol( argv[ 2 ], nullptr, 10 );
      for ( long step = 1; step <= steps; ++step ) {
         program.step( static_cast< std::uint32_t >( step ) );
      }
      program.say();
   } catch ( const std::exception & e ) {
      std::cerr << "derive-config: " << e.what() << "\n";
      return 1;
   }
}
