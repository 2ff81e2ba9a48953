// Replicas of a status, and notifiees for all of a subtree.
#include "tests/FlowTracker/StatusReplica.h"

namespace FlowTrackerTest {

StatusReplica::StatusReplica( const Corvo::Ptr< FlowTracking::Status > & status ) : writer( status )
{
}

std::size_t StatusReplica::follow()
{
   Vok::NboAttrLog::Out out;
   writer.write( out );
   if ( out.size() != 0 ) {
      Vok::NboAttrLog::In in( out.bytes() );
      reader.read( in );
   }
   return out.size();
}

void attach( Corvo::Notifiee & notifiee, const FlowTracking::TrackerStatus & tracker )
{
   tracker.publisher().notifieeIs( &notifiee );
   for ( const auto & exporter : tracker.expStatus() ) {
      exporter->publisher().notifieeIs( &notifiee );
      for ( const auto & collector : exporter->collectorStatus() ) {
         collector->publisher().notifieeIs( &notifiee );
      }
   }
}

void attach( Corvo::Notifiee & notifiee, const FlowTracking::Status & status )
{
   status.publisher().notifieeIs( &notifiee );
   for ( const auto & tracker : status.ftStatus() ) {
      attach( notifiee, *tracker );
   }
}

} // namespace FlowTrackerTest
