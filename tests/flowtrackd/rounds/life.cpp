// A process of the test kill-rounds: it writes a tree that changes all the time, or reads trees.
//
//    store-life ADDRESS write PATH SEED FIRST   writes; what its last line tells acknowledged, is
//    store-life ADDRESS read PATTERN            reads, and ends where what it sees cannot be
//
// It answers a line `report` with a line for each tree, `tree PATH DIGEST STAMP SETTLED`, and then
// `end`; a writer that was asked changes nothing more until it is told `go`. The stamp is a number
// that grows with each change.
#include "tests/support/RandomEntity.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "store/Client.h"
#include "store/Wire.h"
#include "store/net/Connection.h"

#include <fcntl.h>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

using Corvo::Ptr;
using FlowTracking::Config;
using namespace Vok::Store;

void tell( const std::string & line )
{
   std::cout << line << std::endl;
}

/// The lines of standard input, as they come.
class Lines {
 public:
   Lines() { ::fcntl( STDIN_FILENO, F_SETFL, O_NONBLOCK ); }

   /// The next one; empty where there is none yet. Ends the process with its driver.
   std::string next()
   {
      char piece[ 256 ];
      const ssize_t size = ::read( STDIN_FILENO, piece, sizeof piece );
      if ( size == 0 ) {
         std::exit( 0 );
      }
      if ( size > 0 ) {
         text_.append( piece, static_cast< std::size_t >( size ) );
      }
      const std::size_t end = text_.find( '\n' );
      if ( end == std::string::npos ) {
         return {};
      }
      const std::string line = text_.substr( 0, end );
      text_.erase( 0, end + 1 );
      return line;
   }

 private:
   std::string text_;
};

// The stamp stands in two attributes, which half a batch would tell apart.
void stampIs( Config & config, std::uint32_t stamp )
{
   config.ipfixExportShapingRateIs( stamp );
   config.minSamplesBeforeHwOffloadIs( stamp );
}

std::uint32_t stampOf( const Config & config )
{
   if ( config.ipfixExportShapingRate() != config.minSamplesBeforeHwOffload() ) {
      throw std::runtime_error( "half a batch is seen" );
   }
   return config.ipfixExportShapingRate();
}

void report( const std::string & path, const Config & config, bool settled )
{
   tell( "tree " + path + " " + std::string( Vok::treeDigest( config ).text().view() ) + " " +
         std::to_string( stampOf( config ) ) + ( settled ? " 1" : " 0" ) );
}

int write( Loop & loop, Client & client, const std::string & path, unsigned seed,
      std::uint32_t stamp )
{
   TestSupport::Random random( seed );
   const Ptr< Config > config = Config::ConfigIs( "writer" );
   stampIs( *config, stamp );
   const auto writing = client.write( path, config, true );
   Lines lines;
   bool goes = true;
   std::uint32_t acknowledged = 0;
   for ( ;; ) {
      const std::string line = lines.next();
      if ( line == "report" ) {
         goes = false;
         report( path, *config, writing->settled() );
         tell( "end" );
      } else if ( line == "go" ) {
         goes = true;
      }
      if ( goes ) {
         TestSupport::RandomEntity( *config, random ).changes( 1 + random.below( 5 ) );
         stampIs( *config, ++stamp );
      }
      loop.runUntil( [ & ] { return writing->settled(); }, std::chrono::milliseconds( 2 ) );
      if ( !writing->refusal().empty() ) {
         throw std::runtime_error( writing->refusal() );
      }
      if ( writing->settled() && acknowledged != stamp ) {
         acknowledged = stamp;
         tell( "acknowledged " + std::to_string( stamp ) );
      }
      if ( !goes || !writing->settled() ) {
         loop.runUntil( [] { return false; }, std::chrono::milliseconds( 1 ) );
      }
   }
}

class Trees final : public MountListener {
 public:
   void mounted( const std::string & path, const Ptr< Vok::Entity > & root ) override
   {
      roots[ path ] = root;
   }
   void unmounted( const std::string & path ) override
   {
      throw std::runtime_error( path + " is gone" );
   }
   void failed( const std::string & path, const std::string & text ) override
   {
      throw std::runtime_error( path + " failed: " + text );
   }

   std::map< std::string, Ptr< Vok::Entity > > roots;
};

int read( Loop & loop, Client & client, const std::string & pattern )
{
   Trees trees;
   const auto reading = client.read( pattern, trees );
   std::map< std::string, std::uint32_t > newest;
   Lines lines;
   for ( ;; ) {
      loop.runUntil( [] { return false; }, std::chrono::milliseconds( 2 ) );
      for ( const auto & [ path, root ] : trees.roots ) {
         const std::uint32_t stamp = stampOf( static_cast< const Config & >( *root ) );
         if ( stamp < newest[ path ] ) {
            throw std::runtime_error( "an older state of " + path + " is seen" );
         }
         newest[ path ] = stamp;
      }
      if ( lines.next() == "report" ) {
         for ( const auto & [ path, root ] : trees.roots ) {
            report( path, static_cast< const Config & >( *root ), true );
         }
         tell( "end" );
      }
   }
}

} // namespace

int main( int argc, char ** argv )
{
   const std::vector< std::string > args( argv + 1, argv + argc );
   try {
      Loop loop;
      Wire wire( args.at( 1 ) + " " + args.at( 2 ) );
      Client client( wire );
      const Connection connection( loop, wire, Address::parse( args.at( 0 ) ) );
      if ( args.at( 1 ) == "read" ) {
         return read( loop, client, args.at( 2 ) );
      }
      return write( loop, client, args.at( 2 ),
            static_cast< unsigned >( std::stoul( args.at( 3 ) ) ),
            static_cast< std::uint32_t >( std::stoul( args.at( 4 ) ) ) );
   } catch ( const std::exception & e ) {
      std::cerr << "store-life: " << e.what() << std::endl;
      return 1;
   }
}
