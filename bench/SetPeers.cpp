// The setters that are calls, out of the sight of those who call them.
#include "bench/SetPeers.h"

namespace Bench {

void CalledRecord::enabledIs( bool enabled ) { InlinedRecord::enabledIs( enabled ); }
void CalledRecord::limitIs( std::uint32_t limit ) { InlinedRecord::limitIs( limit ); }
void CalledRecord::titleIs( const std::string & title ) { InlinedRecord::titleIs( title ); }
void CalledRecord::rateIs( const PlainRate & rate ) { InlinedRecord::rateIs( rate ); }
void CalledRecord::maybeIs( std::optional< std::uint32_t > maybe )
{
   InlinedRecord::maybeIs( maybe );
}

} // namespace Bench
