// The flow-tracking agent: derives the hardware configuration from what the operator configures.
//
//    derive-agent DIR
//
// It listens in DIR for one operator and one platform. What it derived it keeps in DIR/kept before
// anybody gets it: killed and started again, it goes on from there, with the numbers of trackers
// that it gave out. When the operator leaves it says what it has, and whether that is what one
// derivation from nothing gives.
#include "Kept.h"
#include "Link.h"
#include "tools/derive/Deriver.h"
#include "tools/derive/History.h"
#include "tools/derive/StatusReport.h"
#include "tools/derive/SystemResolver.h"

#include <chrono>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;
using Derive::Link;

Corvo::Duration now()
{
   return Corvo::Duration( std::chrono::duration< double >(
         std::chrono::steady_clock::now().time_since_epoch() )
                                 .count() );
}

class Agent {
 public:
   explicit Agent( const std::string & dir )
         : kept_( dir + "/kept", { hw_, ids_ } ),
           config_( dir + "/config", Link::End::listens, told_, configured_ ),
           bindings_( dir + "/bindings", Link::End::listens, hwStatus_, bound_ ),
           hardware_( dir + "/hardware", Link::End::listens, hw_, hwStatus_ ),
           capabilities_( dir + "/capabilities", Link::End::listens, ids_, able_ )
   {
      for ( const auto & [ name, id ] : ids_->ftNameToFtId() ) {
         sayNumber( name );
      }
   }

   /// Waits for something to do, and does it. What is not known yet is no configuration to act on:
   /// after a start nothing is derived until everything has come once.
   void step()
   {
      const bool before = config_.connected();
      const bool any = Derive::takeAny(
            { &config_, &bindings_, &hardware_, &capabilities_ }, hosts_.descriptor(), 1000 );
      hosts_.take();
      if ( !any ) {
         interfaces_.refresh();
      }
      if ( config_.heard() && bindings_.heard() && capabilities_.heard() ) {
         if ( !deriver_ ) {
            deriver_.emplace( sources(), hw_, ids_ );
         }
         deriver_->derive();
         Derive::reportStatus( { *configured_, *hw_, *able_, *hwStatus_ }, *told_ );
         keep();
      }
      config_.send(); // before what the platform says of it
      bindings_.send();
      hardware_.send();
      capabilities_.send();
      if ( before && !config_.connected() ) {
         sayAll();
      }
   }

 private:
   void keep()
   {
      if ( kept_.keep() ) {
         for ( const Corvo::String & name : numbered_ ) {
            sayNumber( name );
         }
         numbered_.clear();
      }
   }

   void sayNumber( const Corvo::String & name ) const
   {
      std::cout << "number " << name << " " << ids_->ftNameToFtId( name ).value() << std::endl;
   }

   void sayAll() const
   {
      say( "config", *configured_ );
      say( "bindings", *bound_ );
      say( "told", *told_ );
      say( "hwStatus", *hwStatus_ );
      say( "hw", *hw_ );
      say( "ids", *ids_ );
      std::cout << ( sameFromNothing() ? "as from nothing" : "not as from nothing" ) << std::endl;
   }

   static void say( const char * what, const Vok::Entity & tree )
   {
      std::cout << what << " " << Vok::treeDigest( tree ).text() << std::endl;
   }

   /// Whether the tree is what a deriver makes that knows the numbers of trackers and nothing else.
   /// Generations, change bit maps and start times tell of what was before, and are taken over.
   bool sameFromNothing() const;

   Derive::Sources sources() const
   {
      return { configured_, bound_, requests_, able_, hosts_, interfaces_, now };
   }

   Corvo::Ptr< Ft::Config > configured_ = Ft::configFactory( "sampled" );
   Corvo::Ptr< Ft::FlowTrackerIntfConfigs > bound_ =
         Ft::flowTrackerIntfConfigsFactory( "bindings" );
   Corvo::Ptr< Ft::AgentReq > requests_ = Ft::agentReqFactory( "none" );
   Corvo::Ptr< Hw::Capabilities > able_ = Hw::capabilitiesFactory( "able" );
   Corvo::Ptr< Hw::Status > hwStatus_ = Hw::statusFactory( "status" );
   Corvo::Ptr< Hw::Config > hw_ = Hw::configFactory( "sampled" );
   Corvo::Ptr< Ft::FtIdStatus > ids_ = Ft::ftIdStatusFactory( "ids" );
   Corvo::Ptr< Ft::Status > told_ = Ft::statusFactory( "told" );
   mutable Derive::SystemResolver hosts_;
   mutable Derive::SystemInterfaces interfaces_;
   Derive::Kept kept_;
   std::vector< Corvo::String > numbered_; ///< trackers that got a number since it was kept
   Vok::Follower numbers_{ *ids_, Ft::FtIdStatus::ftNameToFtIdAttrId,
      [ this ]( const Corvo::Change & change ) {
         const auto & name = *change.key< Corvo::String >();
         if ( ids_->ftNameToFtId().contains( name ) ) {
            numbered_.push_back( name );
         }
      } };
   std::optional< Derive::Deriver > deriver_;
   Link config_;
   Link bindings_;
   Link hardware_;
   Link capabilities_;
};

bool Agent::sameFromNothing() const
{
   const auto hw = Hw::configFactory( "scratch" );
   const auto ids = Ft::ftIdStatusFactory( "scratch" );
   for ( const auto & [ id, name ] : ids_->ftIdToFtName() ) {
      ids->ftIdToFtNameIs( id, name );
      ids->ftNameToFtIdIs( name, id );
   }
   ids->nextFtIdIs( ids_->nextFtId() );
   Derive::Deriver( sources(), hw, ids ).derive();
   Derive::takeHistory( *hw_, *hw );
   return Vok::treeDigest( *hw ) == Vok::treeDigest( *hw_ ) &&
         Vok::treeDigest( *ids ) == Vok::treeDigest( *ids_ );
}

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 2 ) {
      std::cerr << "usage: derive-agent DIR\n";
      return 2;
   }
   try {
      Agent agent( argv[ 1 ] );
      for ( ;; ) {
         agent.step();
      }
   } catch ( const std::exception & e ) {
      std::cerr << "derive-agent: " << e.what() << "\n";
      return 1;
   }
}
