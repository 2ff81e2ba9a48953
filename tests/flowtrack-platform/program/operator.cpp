// An operator of the tests: configures flow tracking over the store, line by line, and tells what
// became of it.
//
//    flow-operator ADDRESS KIND
//
// Lines of standard input:
//
//    rate N                       one packet in so many is sampled
//    tracker T ATTRIBUTE VALUE    any attribute of a tracker, which is made
//    exporter T E ATTRIBUTE VALUE any attribute of an exporter, which is made
//    collector T E HOST PORT      a collector of it
//    group T G SEQNO EXPORTER     a group of a tracker
//    bind INTERFACE T             an interface, for ingress
//    unbind INTERFACE
//    on                           flow tracking is on
//    settled                      answers `settled` once the store has all
//    await INTERFACE ACTIVE       answers `interface INTERFACE REASON` once it is (1) or is not (0)
//    active T E                   answers `active` once the exporter of the status is
//    drops                        asks for the counters of dropped packets: `drops KERNEL FULL OF`
#include "tools/derive/Followed.h"
#include "tools/derive/Paths.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/HwFlowTrackingStatus.h"
#include "store/Wire.h"
#include "store/net/Connection.h"

#include <chrono>
#include <csignal>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace Ft = FlowTracking;
using namespace Vok::Store;

void setAttribute( Vok::Entity & entity, const std::string & name, const std::string & value )
{
   const Vok::AttributeData * const attribute = entity.typeData().attribute( name );
   if ( !attribute ) {
      throw std::runtime_error( "no attribute " + name );
   }
   attribute->set( entity, value );
}

class Operator {
 public:
   Operator( const std::string & address, const std::string & kind )
         : paths_( kind ),
           connection_( loop_, wire_, Address::parse( address ) ),
           status_( client_, paths_.status ),
           hwStatus_( client_, paths_.hwStatus )
   {
      const auto write = [ this ]( const std::string & path, const auto & tree ) {
         writings_.push_back( client_.write( path, tree ) );
      };
      write( paths_.config, config_ );
      write( paths_.bindings, bindings_ );
      write( paths_.dropRequest, request_ );
   }

   void line( std::istringstream & words )
   {
      std::string verb;
      words >> verb;
      if ( verb == "on" ) {
         config_->enabledIs( true );
      } else if ( verb == "rate" ) {
         std::uint32_t rate = 1;
         words >> rate;
         config_->sampleRateIs( Ft::SampleRate( rate ) );
      } else if ( verb == "bind" || verb == "unbind" ) {
         bind( words, verb == "bind" );
      } else if ( verb == "settled" ) {
         wait( [ this ] { return settled(); } );
         std::cout << "settled" << std::endl;
      } else if ( verb == "await" ) {
         await( words );
      } else if ( verb == "active" ) {
         active( words );
      } else if ( verb == "drops" ) {
         drops();
      } else {
         configure( verb, words );
      }
   }

 private:
   bool settled() const
   {
      for ( const auto & writing : writings_ ) {
         if ( !writing->settled() ) {
            return false;
         }
      }
      return true;
   }

   void wait( const std::function< bool() > & holds )
   {
      if ( !loop_.runUntil( holds, std::chrono::seconds( 60 ) ) ) {
         throw std::runtime_error( "waited in vain" );
      }
   }

   void bind( std::istringstream & words, bool bound )
   {
      std::string intf;
      std::string tracker;
      words >> intf >> tracker;
      bindings_->flowTrackerIntfConfigDel( Wyre::IntfId( intf ) );
      if ( bound ) {
         bindings_->flowTrackerIntfConfigIs( Wyre::IntfId( intf ), tracker, Ft::sampleModeAll );
      }
   }

   void configure( const std::string & verb, std::istringstream & words )
   {
      std::string tracker;
      std::string name;
      words >> tracker >> name;
      const auto to = config_->flowTrackerConfigIs( tracker );
      std::string word;
      std::string value;
      words >> word >> value;
      if ( verb == "tracker" ) {
         setAttribute( *to, name, word );
      } else if ( verb == "exporter" ) {
         setAttribute( *to->expConfigIs( name ), word, value );
      } else if ( verb == "collector" ) {
         to->expConfigIs( name )->collectorHostAndPortIs( Wyre::HostAndPort(
               word, static_cast< std::uint16_t >( std::stoul( value ) ) ) );
      } else if ( verb == "group" ) {
         to->fgConfigIs( name, static_cast< std::uint32_t >( std::stoul( word ) ) )
               ->expNameIs( value );
      } else {
         throw std::runtime_error( "no line begins with " + verb );
      }
   }

   void await( std::istringstream & words )
   {
      std::string intf;
      bool wanted = false;
      words >> intf >> wanted;
      Corvo::Ptr< HwFlowTracking::IntfFtStatus > said;
      wait( [ & ] {
         const auto tree = hwStatus_.tree();
         said = tree ? tree->hwIntfFtStatus( Wyre::IntfId( intf ) ) : nullptr;
         return said && said->active() == wanted;
      } );
      std::cout << "interface " << intf << " " << said->reason() << std::endl;
   }

   void active( std::istringstream & words )
   {
      std::string tracker;
      std::string exporter;
      words >> tracker >> exporter;
      wait( [ & ] {
         const auto tree = status_.tree();
         const auto of = tree ? tree->ftStatus( tracker ) : nullptr;
         const auto one = of ? of->expStatus( exporter ) : nullptr;
         return one && one->active();
      } );
      std::cout << "active" << std::endl;
   }

   void drops()
   {
      const std::uint8_t number = request_->readerSeqNoInc( 1 );
      const auto answered = [ & ]( Ft::PktDropReason reason ) {
         const auto tree = status_.tree();
         return tree && tree->pktDropResp().contains( reason ) &&
               tree->pktDropResp( reason ).writerSeqNo() == number;
      };
      wait( [ & ] { return answered( Ft::kernelDrops ) && answered( Ft::ftFullDrops ); } );
      const auto tree = status_.tree();
      std::cout << "drops " << tree->pktDropResp( Ft::kernelDrops ).pktDrops() << " "
                << tree->pktDropResp( Ft::ftFullDrops ).pktDrops() << " "
                << tree->pktDropResp( Ft::ftFullDrops ).pkts() << std::endl;
   }

   Derive::Paths paths_;
   Loop loop_;
   Wire wire_{ "operator" };
   Client client_{ wire_ };
   Connection connection_;
   Derive::Followed< Ft::Status > status_;
   Derive::Followed< HwFlowTracking::Status > hwStatus_;
   Corvo::Ptr< Ft::Config > config_ = Ft::configFactory( "config" );
   Corvo::Ptr< Ft::FlowTrackerIntfConfigs > bindings_ =
         Ft::flowTrackerIntfConfigsFactory( "bindings" );
   Corvo::Ptr< Ft::PktDropCounterUpdateRequest > request_ =
         Ft::pktDropCounterUpdateRequestFactory( "request" );
   std::vector< std::unique_ptr< Writing > > writings_;
};

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 3 ) {
      std::cerr << "usage: flow-operator ADDRESS KIND\n";
      return 2;
   }
   std::signal( SIGPIPE, SIG_IGN ); // of a store that ended
   try {
      Operator one( argv[ 1 ], argv[ 2 ] );
      for ( std::string line; std::getline( std::cin, line ); ) {
         std::istringstream words( line );
         one.line( words );
      }
   } catch ( const std::exception & e ) {
      std::cerr << "flow-operator: " << e.what() << std::endl;
      return 1;
   }
}
