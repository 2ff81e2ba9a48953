// A platform: takes the hardware configuration, and reports what became of it.
//
//    derive-platform DIR
//
// It connects to the agent that listens in DIR. It has room for three trackers, and tracks nothing
// on subinterfaces. When the agent has gone it says what it has.
#include "Link.h"
#include "tools/derive/Platform.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <exception>
#include <iostream>
#include <string>

namespace {

namespace Hw = HwFlowTracking;
using Derive::Link;

Corvo::Ptr< Hw::Capabilities > capabilities()
{
   auto able = Hw::capabilitiesFactory( "able" );
   able->supportedIs( true );
   able->swExportSupportedIs( true );
   able->maxTrackersIs( 3 );
   able->maxExportersPerTrackerIs( 2 );
   able->maxCollectorsPerExporterIs( 2 );
   able->flowGroupConfigSupportedIs( true );
   able->mirroringSupportedIs( true );
   able->egressFlowTrackerIntfSupportedIs( true );
   able->tunnelIntfSupportedIs( true );
   able->exportFormatHwSupportedIs( FlowTracking::ExportFormat::formatIpfix );
   able->monitoredCpuQueueSupportedIs( "bgp", 4 );
   return able;
}

class PlatformProgram {
 public:
   explicit PlatformProgram( const std::string & dir )
         : hardware_( dir + "/hardware", Link::End::connects, status_, hw_ ),
           capabilities_( dir + "/capabilities", Link::End::connects, able_, ids_ )
   {
   }

   void step()
   {
      Derive::takeAny( { &hardware_, &capabilities_ }, -1, -1 );
      if ( hardware_.heard() ) {
         platform_.report();
         hardware_.send();
      }
      if ( !hardware_.connected() ) {
         say();
      }
      hardware_.reconnect();
      capabilities_.reconnect();
   }

 private:
   void say() const
   {
      std::cout << "hw " << Vok::treeDigest( *hw_ ).text() << "\nids "
                << Vok::treeDigest( *ids_ ).text() << "\nhwStatus "
                << Vok::treeDigest( *status_ ).text() << std::endl;
   }

   Corvo::Ptr< Hw::Config > hw_ = Hw::configFactory( "replica" );
   Corvo::Ptr< FlowTracking::FtIdStatus > ids_ = FlowTracking::ftIdStatusFactory( "replica" );
   Corvo::Ptr< Hw::Capabilities > able_ = capabilities();
   Corvo::Ptr< Hw::Status > status_ = Hw::statusFactory( "status" );
   Derive::Platform platform_{ hw_, able_, status_ };
   Link hardware_;
   Link capabilities_;
};

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 2 ) {
      std::cerr << "usage: derive-platform DIR\n";
      return 2;
   }
   try {
      PlatformProgram platform( argv[ 1 ] );
      for ( ;; ) {
         platform.step();
      }
   } catch ( const std::exception & e ) {
      std::cerr << "derive-platform: " << e.what() << "\n";
      return 1;
   }
}
