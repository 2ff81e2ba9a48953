// What is compared: something that keeps a table for one writer and many readers, over a Unix
// socket.
#pragma once

#include "bench/store/Model.h"
#include "bench/store/Slots.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Bench {

class Process;
class Scratch;

/// Where a session tells what it hears.
class Sink {
 public:
   explicit Sink( Slot & slot ) noexcept : slot_( slot ) {}

   /// A counter of a member has changed; `marks`: it is the first member's.
   void changed( std::uint32_t column, std::uint64_t value, bool marks ) noexcept
   {
      ++delivered_;
      if ( column != stampColumn ) {
         return;
      }
      if ( marks ) {
         mark_ = value;
         slot_.at = nanoseconds();
      } else if ( value != 0 ) {
         slot_.latencies.add( nanoseconds() - value );
      }
   }

   /// Whether a mark is to be told: some time after it came, so that reading the whole table does
   /// not keep other sessions of the process waiting.
   bool marked() const noexcept
   {
      constexpr std::uint64_t later = 20'000'000;
      return mark_ != slot_.mark.load( std::memory_order_relaxed ) &&
            nanoseconds() - slot_.at > later;
   }

   /// The table is what the writer had at the mark.
   template< class Digest > void tell( Digest digest ) noexcept
   {
      slot_.delivered = delivered_;
      slot_.digest = digest();
      slot_.mark = mark_;
   }

   void lost() noexcept { ++slot_.lost; }
   void awayIs( bool away ) noexcept { slot_.away = away; }

 private:
   Slot & slot_;
   std::uint64_t mark_ = 0;
   std::uint64_t delivered_ = 0;
};

class Writer {
 public:
   Writer() = default;
   Writer( const Writer & ) = delete;
   Writer & operator=( const Writer & ) = delete;
   virtual ~Writer() = default;

   /// Makes the table.
   virtual void fill( const Model & model ) = 0;

   virtual void change( const Change & change ) = 0;

   /// Sends what has changed, as one batch.
   virtual void flush() = 0;

   /// Returns once the server has everything.
   virtual void settle() = 0;
};

/// The sessions of one process.
class Readers {
 public:
   Readers() = default;
   Readers( const Readers & ) = delete;
   Readers & operator=( const Readers & ) = delete;
   virtual ~Readers() = default;

   virtual void connect() = 0;

   /// Leaves the server, and keeps the table.
   virtual void disconnect() = 0;

   /// Takes what comes until `done()` holds, which it is asked after whatever comes, and each
   /// `pause`.
   virtual void run( const std::function< bool() > & done ) = 0;
   static constexpr std::chrono::milliseconds pause{ 20 };
};

/// How a subject's writer sends.
struct WriterSetup {
   /// Every batch goes for itself, also where the subject would put several into one.
   bool apart = false;
};

class Subject {
 public:
   Subject() = default;
   Subject( const Subject & ) = delete;
   Subject & operator=( const Subject & ) = delete;
   virtual ~Subject() = default;

   virtual std::string name() const = 0;

   /// What is missing for it; empty: nothing.
   virtual std::string missing() const = 0;

   /// Starts the server, and waits until it listens at the address. `limits`: as it is delivered;
   /// otherwise it may keep as much for a reader as it takes.
   virtual std::unique_ptr< Process > start( const Scratch & scratch, bool limits ) const = 0;
   virtual std::string address( const Scratch & scratch ) const { return scratchSocket( scratch ); }

   virtual std::unique_ptr< Writer > writer(
         const std::string & address, const WriterSetup & setup ) const = 0;

   /// A session for each sink. `hears`: of every change, not only of marks.
   virtual std::unique_ptr< Readers > readers(
         const std::string & address, std::vector< Sink > & sinks, bool hears ) const = 0;

 protected:
   static std::string scratchSocket( const Scratch & scratch );
   static void awaitSocket( const Process & server, const std::string & path );
};

/// All that this program was built with.
std::vector< std::unique_ptr< Subject > > subjects();
std::unique_ptr< Subject > entitySubject();
std::unique_ptr< Subject > valueSubject();
std::unique_ptr< Subject > redisSubject();
std::unique_ptr< Subject > ovsdbSubject();

} // namespace Bench
