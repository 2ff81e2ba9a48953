// How the parts are put together and run by one loop.
#include "tools/flowtrackd/Daemon.h"

#include "store/Server.h"
#include "store/net/Listener.h"
#include "store/net/Loop.h"
#include "store/sqlite/SqliteKeeper.h"
#include "tools/flowtrackd/AccessRules.h"
#include "tools/flowtrackd/HttpServer.h"
#include "tools/flowtrackd/Metrics.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <memory>
#include <optional>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <system_error>
#include <systemd/sd-daemon.h>
#include <unistd.h>
#include <vector>

namespace Flowtrackd {

namespace {

using namespace Vok::Store;
using std::chrono::milliseconds;

/// A descriptor that the system gives for signals, times and wake-ups.
class Descriptor {
 public:
   Descriptor( int number, const char * what ) : number_( number )
   {
      if ( number_ < 0 ) {
         throw std::system_error( errno, std::generic_category(), what );
      }
   }
   Descriptor( const Descriptor & ) = delete;
   Descriptor & operator=( const Descriptor & ) = delete;
   ~Descriptor() { ::close( number_ ); }

   int get() const noexcept { return number_; }

   /// Takes what made it readable.
   template< class T > T take() const
   {
      T value{};
      static_cast< void >( !::read( number_, &value, sizeof value ) );
      return value;
   }

 private:
   int number_;
};

int stopSignals()
{
   sigset_t set;
   sigemptyset( &set );
   sigaddset( &set, SIGTERM );
   sigaddset( &set, SIGINT );
   pthread_sigmask( SIG_BLOCK, &set, nullptr ); // before there is any other thread
   return ::signalfd( -1, &set, SFD_CLOEXEC | SFD_NONBLOCK );
}

int everySoOften( milliseconds time )
{
   const int timer = ::timerfd_create( CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK );
   const auto seconds = std::chrono::duration_cast< std::chrono::seconds >( time );
   const timespec each{ seconds.count(), ( time - seconds ).count() * 1000000 };
   const itimerspec when{ each, each };
   if ( timer >= 0 ) {
      ::timerfd_settime( timer, 0, &when, nullptr );
   }
   return timer;
}

/// How often the service manager wants to hear of us; how often there is something to do besides.
milliseconds tick()
{
   constexpr milliseconds most( 1000 );
   std::uint64_t microseconds = 0;
   if ( ::sd_watchdog_enabled( 0, &microseconds ) <= 0 ) {
      return most;
   }
   return std::clamp( milliseconds( microseconds / 3000 ), milliseconds( 1 ), most );
}

class Daemon {
 public:
   Daemon( const Config & config, Log & log ) : config_( config ),
                                                log_( log ),
                                                access_( config.access )
   {
      if ( !config.keptFolder.empty() ) {
         keeper_ = std::make_unique< SqliteKeeper >( config.keptFolder, config.kept,
               [ this ] { ::eventfd_write( wake_.get(), 1 ); } );
      }
      server_.emplace( clock_,
            ServerSetup{ config.access.empty() ? nullptr : &access_, keeper_.get(), &log_,
                  config.limits } );
      if ( config.tls ) {
         tls_.emplace( *config.tls );
      }
      for ( const Address & address : config.listen ) {
         listen( address );
      }
      if ( config.metrics ) {
         http_.emplace( *config.metrics, [ this ] { return metricsText( *server_ ); } );
         watches_.push_back( loop_.watch( http_->descriptor(), [ this ] { http_->run(); } ) );
      }
      watches_.push_back( loop_.watch( signals_.get(), [ this ] { stop(); } ) );
      watches_.push_back( loop_.watch( timer_.get(), [ this ] { ticked(); } ) );
      // That it woke the loop is all: listeners publish what has become of requests.
      watches_.push_back(
            loop_.watch( wake_.get(), [ this ] { wake_.take< std::uint64_t >(); } ) );
   }

   void run()
   {
      log_.line( Level::info, "ready", {} );
      ::sd_notify( 0, "READY=1" );
      while ( !loop_.runUntil( [ this ] { return stopped_; }, std::chrono::hours( 1 ) ) ) {
      }
      ::sd_notify( 0, "STOPPING=1" );
      log_.line( Level::info, "stopped", {} );
   }

 private:
   void listen( const Address & address )
   {
      if ( address.kind != Address::Kind::unixSocket ) {
         listeners_.push_back( std::make_unique< Listener >(
               loop_, *server_, address, tls_ ? &*tls_ : nullptr ) );
      } else {
         const mode_t before = ::umask( 0177 ); // nobody else before it has its mode
         listeners_.push_back( std::make_unique< Listener >( loop_, *server_, address ) );
         ::umask( before );
         const char * const file = address.place.c_str();
         if ( ( config_.socketGroup &&
                    ::chown( file, static_cast< uid_t >( -1 ), *config_.socketGroup ) != 0 ) ||
               ::chmod( file, config_.socketMode ) != 0 ) {
            throw std::system_error( errno, std::generic_category(), address.place );
         }
      }
      log_.line( Level::info, "listening", { { "address", listeners_.back()->address().text() } } );
   }

   void stop()
   {
      signals_.take< signalfd_siginfo >();
      stopped_ = true;
   }

   void ticked()
   {
      timer_.take< std::uint64_t >();
      ::sd_notify( 0, "WATCHDOG=1" );
      server_->keepAgain();
      if ( http_ ) {
         http_->run();
      }
   }

   const Config & config_;
   Log & log_;
   AccessRules access_;
   SystemClock clock_;
   Descriptor signals_{ stopSignals(), "signals cannot be waited for" };
   Descriptor timer_{ everySoOften( tick() ), "a timer cannot be made" };
   Descriptor wake_{ ::eventfd( 0, EFD_CLOEXEC | EFD_NONBLOCK ), "an event cannot be made" };
   std::unique_ptr< SqliteKeeper > keeper_;
   std::optional< Server > server_;
   std::optional< TlsContext > tls_;
   Loop loop_;
   std::optional< HttpServer > http_;
   std::vector< std::unique_ptr< Watch > > watches_;
   std::vector< std::unique_ptr< Listener > > listeners_;
   bool stopped_ = false;
};

} // namespace

void serve( const Config & config, Log & log )
{
   Daemon( config, log ).run();
}

} // namespace Flowtrackd
