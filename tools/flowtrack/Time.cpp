// The form of ISO 8601, in UTC.
#include "tools/flowtrack/Time.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <ctime>

namespace Flowtrack {

std::string timeText( std::chrono::milliseconds time )
{
   const std::time_t seconds = std::chrono::duration_cast< std::chrono::seconds >( time ).count();
   std::tm parts{};
   gmtime_r( &seconds, &parts );
   std::array< char, 32 > text{};
   const std::size_t size =
         std::strftime( text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts );
   std::array< char, 8 > fraction{};
   std::snprintf( fraction.data(), fraction.size(), ".%03dZ",
         static_cast< int >( time.count() % 1000 ) );
   return std::string( text.data(), size ) + fraction.data();
}

std::chrono::milliseconds now()
{
   return std::chrono::duration_cast< std::chrono::milliseconds >(
         std::chrono::system_clock::now().time_since_epoch() );
}

} // namespace Flowtrack
