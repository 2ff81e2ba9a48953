// What the tests of derivation begin with: a configured switch and its deriver.
#pragma once

#include "tools/derive/Deriver.h"

#include "Vok/Vok.h"

#include <memory>
#include <set>

namespace DeriveTest {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

/// Brings `to` to what `from` holds, by one batch.
inline void copyTree( const Corvo::Ptr< Vok::Entity > & from, const Corvo::Ptr< Vok::Entity > & to )
{
   Vok::NboAttrLog::Out out;
   Vok::EntityVokNboAttrLogSa( from ).write( out );
   Vok::NboAttrLog::In in( out.data(), out.size() );
   Vok::EntityVokNboAttrLogReader( to ).read( in );
}

/// A table of answers that knows for what it is asked.
class Table : public Derive::Resolver {
 public:
   std::set< Corvo::String > names;

 private:
   void asked( const Corvo::String & name ) override { names.insert( name ); }
   void dropped( const Corvo::String & name ) override { names.erase( name ); }
};

/// The trees that are derived from, those that are derived, and who derives.
class Switch {
 public:
   /// A deriver that knows nothing of what was before, as after a restart. At first there is none.
   void restart()
   {
      deriver_.reset();
      deriver_ = std::make_unique< Derive::Deriver >( sources(), hw, ids );
   }
   void stop() { deriver_.reset(); }

   /// The deriver stops, and what was answered is forgotten.
   void loseAnswers()
   {
      stop();
      hosts_ = std::make_unique< Table >();
      interfaces_ = std::make_unique< Table >();
   }

   void derive() { deriver_->derive(); }

   Table & hosts() { return *hosts_; }
   Table & interfaces() { return *interfaces_; }

   Derive::Sources sources()
   {
      return { config, bindings, requests, capabilities, hosts(), interfaces(),
         [ this ] { return Corvo::Duration( clock ); } };
   }

   Corvo::Ptr< Ft::Config > config = Ft::configFactory( "sampled" );
   Corvo::Ptr< Ft::FlowTrackerIntfConfigs > bindings = Ft::flowTrackerIntfConfigsFactory( "b" );
   Corvo::Ptr< Ft::AgentReq > requests = Ft::agentReqFactory( "r" );
   Corvo::Ptr< Hw::Capabilities > capabilities = Hw::capabilitiesFactory( "c" );
   double clock = 1;
   Corvo::Ptr< Hw::Config > hw = Hw::configFactory( "hw" );
   Corvo::Ptr< Ft::FtIdStatus > ids = Ft::ftIdStatusFactory( "ids" );

 private:
   std::unique_ptr< Table > hosts_ = std::make_unique< Table >();
   std::unique_ptr< Table > interfaces_ = std::make_unique< Table >();
   std::unique_ptr< Derive::Deriver > deriver_;
};

} // namespace DeriveTest
