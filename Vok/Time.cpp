// Times in texts and in attribute logs.
#include "Vok/Time.h"

#include "Vok/CharRange.h"
#include "Vok/NboAttrLog.h"

namespace Vok {

double Detail::timeFrom( CharRange & range ) { return range.doubleNumber(); }

double Detail::timeFrom( NboAttrLog::In & log ) { return log.getDouble(); }

NboAttrLog::Out & NboAttrLog::operator<<( Out & out, const Seconds & v )
{
   out.putDouble( v.value() );
   return out;
}

NboAttrLog::Out & NboAttrLog::operator<<( Out & out, const Corvo::Duration & v )
{
   out.putDouble( v.seconds() );
   return out;
}

} // namespace Vok
