// flowtrack-platform: forwarding hardware in software, over the store.
#include "tools/derive/StoreProgram.h"
#include "tools/flowtrack-platform/CapabilitiesFile.h"
#include "tools/flowtrack-platform/PlatformAgent.h"
#include "tools/flowtrack-platform/UdpSender.h"
#include "tools/flowtrack-platform/capture/CaptureSet.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace FlowtrackPlatform;
using Derive::ExitCode;
using Derive::StoreProgram;

struct Options {
   Derive::StoreOptions store;
   std::string kind = "sampled";
   std::string capabilities;
   std::vector< std::string > interfaces;
   std::string pcap;
   unsigned buffer = 8; ///< MiB
   bool takeOver = false;
};

/// How often flows are looked at.
constexpr std::chrono::milliseconds interval( 200 );

Time now()
{
   return static_cast< Time >( std::chrono::duration_cast< std::chrono::milliseconds >(
         std::chrono::system_clock::now().time_since_epoch() )
                                     .count() );
}

/// `LEFT=RIGHT`; with nothing to the left where there is no `=`.
std::pair< std::string, std::string > divided( const std::string & text )
{
   const std::size_t at = text.find( '=' );
   return at == std::string::npos ? std::pair( std::string(), text )
                                  : std::pair( text.substr( 0, at ), text.substr( at + 1 ) );
}

std::map< std::string, std::string > devicesOf( const std::vector< std::string > & texts )
{
   std::map< std::string, std::string > devices;
   for ( const std::string & text : texts ) {
      devices.insert( divided( text ) );
   }
   return devices;
}

/// A file is read faster than collectors read what is sent: it waits a little after each message.
class PacedSender final : public Sender {
 public:
   explicit PacedSender( const DestinationPlan & to ) : sender_( to ) {}

   void send( std::span< const std::uint8_t > message ) override
   {
      sender_.send( message );
      std::this_thread::sleep_for( std::chrono::microseconds( 200 ) );
   }

 private:
   UdpSender sender_;
};

class Program {
 public:
   explicit Program( const Options & options )
         : program_( "flowtrack-platform", options.store ),
           pcap_( divided( options.pcap ) ),
           captures_( devicesOf( options.interfaces ), options.buffer << 20 ),
           tracking_(
                 [ this ]( const DestinationPlan & to ) { return sender( to ); },
                 [ this ]( const std::string & intf ) { return captures_.indexOf( intf ); } ),
           agent_( { program_.client(), capabilitiesOfFile( options.capabilities ), tracking_,
                         [ this ] { return captures_.counters(); },
                         [ this ] { captures_.clearCounters(); }, options.takeOver },
                 options.kind )
   {
   }

   ExitCode run()
   {
      program_.run( [ this ] { return watched(); }, [ this ] { return step(); }, interval );
      tracking_.end( fromFile() ? 0 : now() );
      if ( !agent_.refusal().empty() ) {
         std::cerr << "flowtrack-platform: the store refused: " << agent_.refusal() << '\n';
         return ExitCode::refused;
      }
      return ExitCode::done;
   }

 private:
   bool fromFile() const { return !pcap_.second.empty(); }

   std::unique_ptr< Sender > sender( const DestinationPlan & to ) const
   {
      if ( fromFile() ) {
         return std::make_unique< PacedSender >( to );
      }
      return std::make_unique< UdpSender >( to );
   }

   /// Says whether to go on.
   bool step()
   {
      if ( agent_.step() ) {
         for ( const std::string & line : tracking_.complaints() ) {
            if ( told_.insert( line ).second ) {
               std::cerr << "flowtrack-platform: " << line << std::endl;
            }
         }
      }
      if ( fromFile() ) {
         begin();
      } else {
         capture();
      }
      return agent_.refusal().empty() && !( ended_ && agent_.settled() );
   }

   /// The file is played as the packets of a port once that is tracked and exported.
   void begin()
   {
      if ( file_ || ended_ ) {
         return;
      }
      for ( const Port & port : tracking_.ports() ) {
         const bool asked = pcap_.first.empty() || pcap_.first == port.intf;
         if ( asked && port.direction == Direction::ingress && tracking_.exports( port ) ) {
            std::cerr << "flowtrack-platform: plays " << pcap_.second << " as packets of "
                      << port.intf << std::endl;
            port_ = port;
            file_ = Capture::file( pcap_.second );
            return;
         }
      }
   }

   void play()
   {
      constexpr int most = 1000;
      const bool more =
            file_->take( [ this ]( const Frame & frame ) { take( port_, frame ); }, most );
      if ( !more ) {
         tracking_.end( 0 );
         file_.reset();
         ended_ = true;
      }
   }

   void take( const Port & port, const Frame & frame )
   {
      tracking_.frame( port, frame.linkType, frame.bytes, frame.length, frame.time );
      if ( fromFile() && frame.time > ticked_ + 100 ) {
         ticked_ = frame.time;
         tracking_.tick( ticked_ );
      }
   }

   void capture()
   {
      const Time time = now();
      captures_.wantedAre( tracking_.ports(), agent_.bytesOfPacket(), time );
      for ( const std::string & intf : std::exchange( troubled_, {} ) ) {
         if ( !captures_.troubles().contains( intf ) ) {
            agent_.troubleIs( intf, {} );
         }
      }
      for ( const auto & [ intf, why ] : captures_.troubles() ) {
         agent_.troubleIs( intf, why );
         troubled_.insert( intf );
      }
      agent_.step();
      if ( time >= ticked_ + static_cast< Time >( interval.count() ) ) {
         ticked_ = time;
         tracking_.tick( time );
      }
   }

   std::vector< StoreProgram::Watched > watched()
   {
      std::vector< StoreProgram::Watched > all;
      if ( file_ ) {
         all.push_back( { file_->descriptor(), [ this ] { play(); } } );
      }
      for ( const auto & [ port, capture ] : captures_.captures() ) {
         all.push_back( { capture->descriptor(), [ this, port = port ] {
                            captures_.take(
                                  port, [ & ]( const Frame & frame ) { take( port, frame ); } );
                         } } );
      }
      return all;
   }

   StoreProgram program_;
   std::pair< std::string, std::string > pcap_; ///< interface, or empty, and file
   CaptureSet captures_;
   Tracking tracking_;
   PlatformAgent agent_;
   std::set< std::string > told_;
   std::set< std::string > troubled_; ///< interfaces
   std::unique_ptr< Capture > file_; ///< that is played
   Port port_; ///< as whose packets
   bool ended_ = false;
   Time ticked_ = 0;
};

} // namespace

int main( int argc, char ** argv )
{
   CLI::App app( "Forwarding hardware in software: takes the hardware configuration, tracks flows "
                 "as far as its capabilities go, and exports them as IPFIX.",
         "flowtrack-platform" );
   Options options;
   addStoreOptions( app, options.store );
   app.add_option( "--type", options.kind, "kind of flow tracking; sampled, where it is not given" )
         ->check( CLI::IsMember( Derive::allKinds() ) );
   app.add_option( "--capabilities", options.capabilities, "JSON file of what the platform can do" )
         ->required();
   app.add_option( "--interface", options.interfaces,
            "INTERFACE=DEVICE: a device whose name is another than the interface's" )
         ->check( []( const std::string & text ) {
            return text.find( '=' ) == std::string::npos ? "expected INTERFACE=DEVICE" : "";
         } );
   app.add_option( "--pcap", options.pcap,
         "[INTERFACE=]FILE: in place of devices, packets that arrive; it ends with the file" );
   app.add_option( "--buffer", options.buffer,
            "MiB of the kernel for the packets of a port that are not looked at yet" )
         ->capture_default_str()
         ->check( CLI::Range( 1, 1024 ) );
   app.add_flag(
         "--take-over", options.takeOver, "takes its mounts from a platform that has them" );
   try {
      app.parse( argc, argv );
      return Program( options ).run();
   } catch ( const CLI::ParseError & e ) {
      return app.exit( e ) == 0 ? ExitCode::done : ExitCode::wrongUsage;
   } catch ( const Vok::Store::AddressException & e ) {
      std::cerr << "flowtrack-platform: " << e.what() << '\n';
      return ExitCode::wrongUsage;
   } catch ( const CapabilitiesException & e ) {
      std::cerr << "flowtrack-platform: " << e.what() << '\n';
      return ExitCode::wrongUsage;
   } catch ( const std::exception & e ) {
      std::cerr << "flowtrack-platform: " << e.what() << '\n';
      return ExitCode::failed;
   }
}
