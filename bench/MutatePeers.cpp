// The setters, out of the sight of those who call them.
#include "bench/MutatePeers.h"

#include <utility>

namespace Bench {

void PlainObject::midIs( std::uint16_t mid )
{
   if ( mid != mid_ ) {
      mid_ = mid;
   }
}

void HeardObject::midIs( std::uint16_t mid )
{
   if ( mid != mid_ ) {
      listener_->onMid( *this, std::exchange( mid_, mid ) );
   }
}

void SignalObject::midIs( std::uint16_t mid )
{
   if ( mid != mid_ ) {
      changed( *this, std::exchange( mid_, mid ) );
   }
}

} // namespace Bench
