// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace FlowTracking {

// ---- CongestionIntervalBeforeAndAfterTheEvent ---------------------------------------------------

CongestionIntervalBeforeAndAfterTheEvent::CongestionIntervalBeforeAndAfterTheEvent(
      Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void CongestionIntervalBeforeAndAfterTheEvent::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- ExporterStatus -----------------------------------------------------------------------------

ExporterStatus::ExporterStatus( const Corvo::String & exporterNameInTheConfiguration,
      const CongestionIntervalBeforeAndAfterTheEvent & interval,
      CollectorInactiveReasonWithAVeryLongName reason )
      : Vok::Entity( exporterNameInTheConfiguration ),
        interval_( interval ),
        reason_( reason )
{
}

ExporterStatus::~ExporterStatus() = default;

Corvo::Ptr< ExporterStatus > ExporterStatus::ExporterStatusIs(
      const Corvo::String & exporterNameInTheConfiguration,
      const CongestionIntervalBeforeAndAfterTheEvent & interval,
      CollectorInactiveReasonWithAVeryLongName reason )
{
   return Vok::Detail::EntityAccess::make< ExporterStatus >(
         exporterNameInTheConfiguration, interval, reason );
}

void ExporterStatus::vokReinstantiate( const Corvo::String & exporterNameInTheConfiguration,
      const CongestionIntervalBeforeAndAfterTheEvent & interval,
      CollectorInactiveReasonWithAVeryLongName reason )
{
   Vok::Attribute::sameArgument( *this, exporterNameInTheConfigurationAttrId,
         "exporterNameInTheConfiguration", this->exporterNameInTheConfiguration(),
         exporterNameInTheConfiguration );
   Vok::Attribute::sameArgument( *this, intervalAttrId, "interval", this->interval(), interval );
   reasonIs( reason );
}

// ---- HardwareFlowTrackingConfiguration ----------------------------------------------------------

HardwareFlowTrackingConfiguration::HardwareFlowTrackingConfiguration( const Corvo::String & name )
      : Vok::Entity( name )
{
}

HardwareFlowTrackingConfiguration::~HardwareFlowTrackingConfiguration() = default;

Corvo::Ptr< HardwareFlowTrackingConfiguration >
HardwareFlowTrackingConfiguration::HardwareFlowTrackingConfigurationIs( const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< HardwareFlowTrackingConfiguration >( name );
}

void HardwareFlowTrackingConfiguration::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

void HardwareFlowTrackingConfiguration::collectorInactiveReasonsIs(
      CollectorInactiveReasonWithAVeryLongName key,
      const CongestionIntervalBeforeAndAfterTheEvent & value )
{
   Vok::Attribute::mapIs(
         *this, collectorInactiveReasonsAttrId, collectorInactiveReasons_, key, value );
}

CongestionIntervalBeforeAndAfterTheEvent
HardwareFlowTrackingConfiguration::collectorInactiveReasonsDel(
      CollectorInactiveReasonWithAVeryLongName key )
{
   return Vok::Attribute::mapDel(
         *this, collectorInactiveReasonsAttrId, collectorInactiveReasons_, key );
}

void HardwareFlowTrackingConfiguration::collectorInactiveReasonsDelAll()
{
   Vok::Attribute::delAll( *this, collectorInactiveReasonsAttrId, collectorInactiveReasons_ );
}

Corvo::Ptr< ExporterStatus > HardwareFlowTrackingConfiguration::exporterStatusByIntervalIs(
      const Corvo::String & exporterNameInTheConfiguration,
      const CongestionIntervalBeforeAndAfterTheEvent & interval,
      CollectorInactiveReasonWithAVeryLongName reason )
{
   return Vok::Attribute::childIs( *this, exporterStatusByIntervalAttrId, exporterStatusByInterval_,
         interval, exporterNameInTheConfiguration, interval, reason );
}

Corvo::Ptr< ExporterStatus > HardwareFlowTrackingConfiguration::exporterStatusByIntervalDel(
      const CongestionIntervalBeforeAndAfterTheEvent & key )
{
   return Vok::Attribute::childDel(
         *this, exporterStatusByIntervalAttrId, exporterStatusByInterval_, key );
}

void HardwareFlowTrackingConfiguration::exporterStatusByIntervalDelAll()
{
   Vok::Attribute::childDelAll( *this, exporterStatusByIntervalAttrId, exporterStatusByInterval_ );
}

} // namespace FlowTracking
