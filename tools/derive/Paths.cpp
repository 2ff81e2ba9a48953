// The paths of one kind, and the kinds.
#include "tools/derive/Paths.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "Vok/Vok.h"

namespace Derive {

namespace {

std::string configPath( const std::string & kind )
{
   return std::string( FlowTracking::configFactory( kind )->flowTrackingCliConfigPath( kind ) );
}

} // namespace

Paths::Paths( const std::string & kind )
      : config( configPath( kind ) ),
        bindings( "flowtracking/input/config/" + kind + "/interfaces" ),
        configRequests( "flowtracking/input/request/" + kind + "/config" ),
        agentRequests( "flowtracking/input/request/" + kind + "/agent" ),
        dropRequest( "flowtracking/input/request/" + kind + "/drops" ),
        status( "flowtracking/status/" + kind ),
        ids( "flowtracking/ids/" + kind ),
        hwConfig( "flowtracking/hardware/" + kind + "/config" ),
        hwStatus( "flowtracking/hardware/" + kind + "/status" ),
        capabilities( "flowtracking/hardware/" + kind + "/capabilities" ),
        drops( "flowtracking/hardware/" + kind + "/drops" )
{
}

std::vector< std::string > allKinds()
{
   std::vector< std::string > kinds;
   const auto * const type =
         Corvo::ModuleInspectData::findType( "FlowTracking::FlowTrackingType" );
   for ( const auto & [ code, name ] : type->enumerators() ) {
      if ( name != "none" ) {
         kinds.emplace_back( name );
      }
   }
   return kinds;
}

} // namespace Derive
