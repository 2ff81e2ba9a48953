// poll(2) over the store's loop, a signalfd(2) and what a program has besides.
#include "tools/derive/StoreProgram.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <poll.h>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>

namespace Derive {

namespace {

int stopSignals()
{
   std::signal( SIGPIPE, SIG_IGN );
   sigset_t set;
   sigemptyset( &set );
   sigaddset( &set, SIGTERM );
   sigaddset( &set, SIGINT );
   pthread_sigmask( SIG_BLOCK, &set, nullptr );
   const int descriptor = ::signalfd( -1, &set, SFD_CLOEXEC | SFD_NONBLOCK );
   if ( descriptor < 0 ) {
      throw std::system_error( errno, std::generic_category(), "signalfd" );
   }
   return descriptor;
}

} // namespace

StoreProgram::StoreProgram( const std::string & name, const StoreOptions & store )
      : name_( name ),
        store_( store ),
        signals_( stopSignals() ),
        wire_( name ),
        client_( wire_ ),
        connection_( loop_, wire_, store_.address(), store_.tls() )
{
}

StoreProgram::~StoreProgram()
{
   ::close( signals_ );
}

void StoreProgram::tellConnection()
{
   const std::string now = connection_.connected() ? "connected"
         : connection_.error().empty()             ? ""
                                                   : "no connection: " + connection_.error();
   if ( now != told_ && !now.empty() ) {
      std::cerr << name_ << ": " << now << std::endl;
      told_ = now;
   }
}

void StoreProgram::run( const std::function< std::vector< Watched >() > & watched,
      const std::function< bool() > & step, std::chrono::milliseconds interval )
{
   for ( ;; ) {
      loop_.run();
      tellConnection();
      const bool last = !step();
      loop_.run(); // what the step changed is sent
      if ( last ) {
         return;
      }
      const std::vector< Watched > others = watched();
      std::vector< pollfd > waits = { { signals_, POLLIN, 0 }, { loop_.descriptor(), POLLIN, 0 } };
      for ( const Watched & one : others ) {
         waits.push_back( { one.descriptor, POLLIN, 0 } );
      }
      const auto due = loop_.timeout();
      const auto most = due == Vok::Store::Loop::never ? interval : std::min( due, interval );
      ::poll( waits.data(), waits.size(), static_cast< int >( most.count() ) );
      if ( waits[ 0 ].revents != 0 ) {
         return;
      }
      for ( std::size_t i = 0; i != others.size(); ++i ) {
         if ( waits[ i + 2 ].revents != 0 ) {
            others[ i ].readable();
         }
      }
   }
}

} // namespace Derive
