// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace FlowTracking {

// ---- IntervalAroundCongestion -------------------------------------------------------------------

IntervalAroundCongestion::IntervalAroundCongestion( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void IntervalAroundCongestion::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- ExporterStatus -----------------------------------------------------------------------------

ExporterStatus::ExporterStatus( const Corvo::String & exporterNameInTheConfiguration,
      const IntervalAroundCongestion & interval, CollectorInactiveReasonWithAVeryLongName reason )
      : Vok::Entity( exporterNameInTheConfiguration ),
        interval_( interval ),
        reason_( reason )
{
}

ExporterStatus::~ExporterStatus() = default;

Corvo::Ptr< ExporterStatus > ExporterStatus::ExporterStatusIs(
      const Corvo::String & exporterNameInTheConfiguration,
      const IntervalAroundCongestion & interval, CollectorInactiveReasonWithAVeryLongName reason )
{
   return Vok::Detail::EntityAccess::make< ExporterStatus >(
         exporterNameInTheConfiguration, interval, reason );
}

void ExporterStatus::vokReinstantiate( const Corvo::String & exporterNameInTheConfiguration,
      const IntervalAroundCongestion & interval, CollectorInactiveReasonWithAVeryLongName reason )
{
   Vok::Attribute::sameArgument( *this, exporterNameInTheConfigurationAttrId,
         "exporterNameInTheConfiguration", this->exporterNameInTheConfiguration(),
         exporterNameInTheConfiguration );
   Vok::Attribute::sameArgument( *this, intervalAttrId, "interval", this->interval(), interval );
   reasonIs( reason );
}

// ---- HardwareConfiguration ----------------------------------------------------------------------

HardwareConfiguration::HardwareConfiguration( const Corvo::String & name )
      : Vok::Entity( name )
{
}

HardwareConfiguration::~HardwareConfiguration() = default;

Corvo::Ptr< HardwareConfiguration > HardwareConfiguration::HardwareConfigurationIs(
      const Corvo::String & name )
{
   return Vok::Detail::EntityAccess::make< HardwareConfiguration >( name );
}

void HardwareConfiguration::vokReinstantiate( const Corvo::String & name )
{
   Vok::Attribute::sameArgument( *this, 154, "name", this->name(), name );
}

void HardwareConfiguration::collectorInactiveReasonsIs(
      CollectorInactiveReasonWithAVeryLongName key, const IntervalAroundCongestion & value )
{
   Vok::Attribute::mapIs(
         *this, collectorInactiveReasonsAttrId, collectorInactiveReasons_, key, value );
}

IntervalAroundCongestion HardwareConfiguration::collectorInactiveReasonsDel(
      CollectorInactiveReasonWithAVeryLongName key )
{
   return Vok::Attribute::mapDel(
         *this, collectorInactiveReasonsAttrId, collectorInactiveReasons_, key );
}

void HardwareConfiguration::collectorInactiveReasonsDelAll()
{
   Vok::Attribute::delAll( *this, collectorInactiveReasonsAttrId, collectorInactiveReasons_ );
}

Corvo::Ptr< ExporterStatus > HardwareConfiguration::exporterStatusByIntervalIs(
      const Corvo::String & exporterNameInTheConfiguration,
      const IntervalAroundCongestion & interval, CollectorInactiveReasonWithAVeryLongName reason )
{
   return Vok::Attribute::childIs( *this, exporterStatusByIntervalAttrId, exporterStatusByInterval_,
         interval, exporterNameInTheConfiguration, interval, reason );
}

Corvo::Ptr< ExporterStatus > HardwareConfiguration::exporterStatusByIntervalDel(
      const IntervalAroundCongestion & key )
{
   return Vok::Attribute::childDel(
         *this, exporterStatusByIntervalAttrId, exporterStatusByInterval_, key );
}

void HardwareConfiguration::exporterStatusByIntervalDelAll()
{
   Vok::Attribute::childDelAll( *this, exporterStatusByIntervalAttrId, exporterStatusByInterval_ );
}

} // namespace FlowTracking
