// What subjects share, and which there are.
#include "bench/store/Subject.h"

#include "bench/Check.h"
#include "bench/store/Process.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace Bench {

std::string Subject::scratchSocket( const Scratch & scratch )
{
   return scratch.file( "socket" );
}

void Subject::awaitSocket( const Process & server, const std::string & path )
{
   constexpr std::uint64_t patience = 10'000'000'000;
   sockaddr_un to{};
   to.sun_family = AF_UNIX;
   std::memcpy( to.sun_path, path.c_str(), std::min( path.size(), sizeof to.sun_path - 1 ) );
   const std::uint64_t begin = nanoseconds();
   for ( bool listens = false; !listens; ) {
      require( server.running() && nanoseconds() - begin < patience, "a server that listens" );
      usleep( 1000 );
      const int probe = socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0 );
      listens = connect( probe, reinterpret_cast< const sockaddr * >( &to ), sizeof to ) == 0;
      close( probe );
   }
}

std::vector< std::unique_ptr< Subject > > subjects()
{
   std::vector< std::unique_ptr< Subject > > all;
   all.push_back( entitySubject() );
   all.push_back( valueSubject() );
#ifdef WITH_REDIS
   all.push_back( redisSubject() );
#endif
#ifdef WITH_OVSDB
   all.push_back( ovsdbSubject() );
#endif
   return all;
}

} // namespace Bench
