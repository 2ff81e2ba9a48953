// A forked process at the other end of a pair of sockets.
#include "bench/Check.h"
#include "bench/counters/Counters.h"

#include <csignal>
#include <ctime>
#include <vector>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Bench::Counters {
namespace {

void writeAll( int socket, const void * data, std::size_t size )
{
   const char * at = static_cast< const char * >( data );
   while ( size != 0 ) {
      const ssize_t done = ::write( socket, at, size );
      require( done > 0, "a socket takes what is sent" );
      at += done;
      size -= static_cast< std::size_t >( done );
   }
}

// False at the end.
bool readAll( int socket, void * data, std::size_t size )
{
   char * at = static_cast< char * >( data );
   while ( size != 0 ) {
      const ssize_t done = ::read( socket, at, size );
      if ( done <= 0 ) {
         return false;
      }
      at += done;
      size -= static_cast< std::size_t >( done );
   }
   return true;
}

} // namespace

ReaderProcess::ReaderProcess( const std::function< std::unique_ptr< Reader >() > & make )
{
   int ends[ 2 ];
   require( ::socketpair( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends ) == 0, "sockets" );
   pid_ = ::fork();
   require( pid_ >= 0, "fork" );
   if ( pid_ == 0 ) {
      ::prctl( PR_SET_PDEATHSIG, SIGKILL );
      ::close( ends[ 0 ] );
      socket_ = ends[ 1 ];
      read( *make() );
   }
   ::close( ends[ 1 ] );
   socket_ = ends[ 0 ];
}

ReaderProcess::~ReaderProcess()
{
   // Readers that were forked later have this end as well, so that closing it would not do.
   ::close( socket_ );
   ::kill( pid_, SIGKILL );
   ::waitpid( pid_, nullptr, 0 );
}

void ReaderProcess::send( const void * data, std::size_t size )
{
   const std::uint64_t length = size;
   writeAll( socket_, &length, sizeof length );
   writeAll( socket_, data, size );
}

std::uint64_t ReaderProcess::ask( std::uint64_t question )
{
   writeAll( socket_, &question, sizeof question );
   std::uint64_t answer = 0;
   require( readAll( socket_, &answer, sizeof answer ), "a reader answers" );
   return answer;
}

std::uint64_t ReaderProcess::processorTime() const
{
   clockid_t clock{};
   timespec time{};
   require( ::clock_getcpuclockid( pid_, &clock ) == 0 && ::clock_gettime( clock, &time ) == 0,
         "the time of a reader" );
   return static_cast< std::uint64_t >( time.tv_sec ) * 1'000'000'000 +
         static_cast< std::uint64_t >( time.tv_nsec );
}

void ReaderProcess::read( Reader & reader ) const
{
   std::vector< std::byte > message;
   for ( std::uint64_t length = 0; readAll( socket_, &length, sizeof length ); ) {
      if ( length == settled || length == digested ) {
         const std::uint64_t answer = length == digested ? reader.digest() : 0;
         writeAll( socket_, &answer, sizeof answer );
      } else {
         message.resize( length );
         require( readAll( socket_, message.data(), length ), "a message is whole" );
         reader.apply( message.data(), length );
      }
   }
   ::_exit( 0 );
}

} // namespace Bench::Counters
