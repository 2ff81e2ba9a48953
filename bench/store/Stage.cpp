// The server, the writer and the readers of a situation.
#include "bench/store/Stage.h"

#include "bench/Check.h"

#include <unistd.h>

#include <algorithm>

namespace Bench {

namespace {

constexpr std::uint64_t patience = 120'000'000'000;
constexpr useconds_t glance = 200; // between two looks at what sessions say

} // namespace

const Subject & findSubject( const std::string & name )
{
   static const auto all = subjects();
   const auto at = std::find_if( all.begin(), all.end(),
         [ & ]( const auto & subject ) { return subject->name() == name; } );
   require( at != all.end(), "a subject of this name" );
   return **at;
}

Stage::Stage( const Subject & subject, const Setup & setup )
      : subject_( subject ),
        setup_( setup ),
        model_( setup.members ),
        slots_( setup.sessions ),
        server_( subject.start( scratch_, setup.limits ) ),
        writer_( subject.writer( subject.address( scratch_ ), { setup.apart } ) )
{
   writer_->fill( model_ );
   writeMark();
   writer_->settle();
}

std::uint64_t Stage::startReaders()
{
   const std::uint32_t processes =
         setup_.processes == 0 ? setup_.sessions : setup_.processes;
   const std::uint64_t begin = nanoseconds();
   for ( std::uint32_t process = 0; process != processes; ++process ) {
      const std::uint32_t first = setup_.sessions * process / processes;
      const std::uint32_t next = setup_.sessions * ( process + 1 ) / processes;
      const std::vector< std::string > arguments{ "--read", subject_.name(),
         subject_.address( scratch_ ), std::to_string( slots_.descriptor() ),
         std::to_string( first ), std::to_string( next - first ),
         setup_.hears ? "1" : "0" };
      readers_.push_back( std::make_unique< Process >( "/proc/self/exe", arguments,
            scratch_.file( "readers.log" ), "StoreSituation" ) );
   }
   return begin;
}

void Stage::write( const Change & change )
{
   model_.apply( change );
   writer_->change( change );
}

void Stage::writeMark()
{
   write( { 0, stampColumn, ++mark_ } );
   writer_->flush();
}

std::uint64_t Stage::mark( std::uint32_t without )
{
   writeMark();
   writer_->settle();
   return awaitMark( without );
}

bool Stage::sessionHasMark( std::uint32_t session, std::uint64_t digest ) const
{
   const Slot & slot = slots_[ session ];
   if ( slot.mark != mark_ ) {
      return false;
   }
   require( slot.digest == digest, "a reader's table is the writer's" );
   return true;
}

std::uint64_t Stage::awaitMark( std::uint32_t without ) const
{
   const std::uint64_t begin = nanoseconds();
   const std::uint64_t digest = model_.digest();
   std::uint64_t last = 0;
   for ( std::uint32_t session = 0; session != slots_.size() - without; ++session ) {
      while ( !sessionHasMark( session, digest ) ) {
         require( nanoseconds() - begin < patience, "all readers have what was written, in time" );
         require( server_->running(), "a server that runs" );
         usleep( glance );
      }
      last = std::max( last, slots_[ session ].at.load() );
   }
   return last;
}

std::uint64_t Stage::writeRandom( Histogram * times )
{
   const auto end =
         nanoseconds() + static_cast< std::uint64_t >( setup_.seconds * 1'000'000'000 );
   std::uint64_t written = 0;
   std::uint64_t now = nanoseconds();
   while ( now < end && ( setup_.changes == 0 || written < setup_.changes ) ) {
      for ( std::uint32_t i = 0; i != setup_.batch; ++i ) {
         write( model_.randomChange( random_ ) );
      }
      written += setup_.batch;
      writer_->flush();
      const std::uint64_t then = nanoseconds();
      if ( times ) {
         times->add( then - now );
      }
      now = then;
   }
   return written;
}

std::uint64_t Stage::delivered() const
{
   std::uint64_t sum = 0;
   for ( std::uint32_t session = 0; session != slots_.size(); ++session ) {
      sum += slots_[ session ].delivered;
   }
   return sum;
}

std::uint64_t Stage::processorTime() const
{
   std::uint64_t sum = ownProcessorTime() + server_->processorTime();
   for ( const auto & reader : readers_ ) {
      sum += reader->processorTime();
   }
   return sum;
}

std::size_t Stage::readersMemory() const
{
   std::size_t sum = 0;
   for ( const auto & reader : readers_ ) {
      sum += reader->memory().own;
   }
   return sum;
}

void playReader( const ReaderPart & part )
{
   const Slots slots = Slots::inherited( part.slots );
   std::vector< Sink > sinks;
   for ( std::uint32_t session = part.first; session != part.first + part.count; ++session ) {
      sinks.emplace_back( slots[ session ] );
   }
   const auto readers = findSubject( part.subject ).readers( part.address, sinks, part.hears );
   while ( true ) {
      readers->connect();
      readers->run( [ & ] { return slots.ask() == Ask::goAway; } );
      readers->disconnect();
      for ( Sink & sink : sinks ) {
         sink.awayIs( true );
      }
      while ( slots.ask() == Ask::goAway ) {
         usleep( glance );
      }
   }
}

} // namespace Bench
