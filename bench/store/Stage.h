// A server, a writer and reader processes, on which situations are played.
#pragma once

#include "bench/store/Model.h"
#include "bench/store/Process.h"
#include "bench/store/Slots.h"
#include "bench/store/Subject.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Bench {

/// What a situation is played with.
struct Setup {
   std::uint32_t members = 10'000;
   std::uint32_t sessions = 1;
   std::uint32_t processes = 0; ///< of readers; 0: each session has its own
   std::uint32_t batch = 100; ///< changes between two flushes
   std::uint64_t changes = 0; ///< at most; 0: as many as the time allows
   double seconds = 3; ///< that the writer writes
   bool apart = false; ///< each batch goes for itself
   bool hears = true; ///< readers hear of each change
   bool limits = false; ///< the server keeps to the limits that it is delivered with
};

/// What is read off, by name.
using Figures = std::map< std::string, double >;

class Stage {
 public:
   /// Starts the server, and a writer that makes the table.
   Stage( const Subject & subject, const Setup & setup );

   /// Starts the readers: some seconds for 1000 sessions. Returns when they were begun with.
   std::uint64_t startReaders();

   /// Makes a mark behind all that was written, and waits until all sessions but the last
   /// `without` have it and the same table as the writer. Returns when the last of them had it.
   std::uint64_t mark( std::uint32_t without = 0 );

   /// The same for the mark that was made last.
   std::uint64_t awaitMark( std::uint32_t without = 0 ) const;

   /// Writes random changes for the time of the setup; returns how many.
   std::uint64_t writeRandom( Histogram * times = nullptr );
   void write( const Change & change );
   void writeMark();

   const Setup & setup() const noexcept { return setup_; }
   const Model & model() const noexcept { return model_; }
   Writer & writer() const noexcept { return *writer_; }
   const Process & server() const noexcept { return *server_; }
   const Slots & slots() const noexcept { return slots_; }
   const Process & reader( std::size_t process ) const { return *readers_.at( process ); }
   std::size_t readers() const noexcept { return readers_.size(); }

   /// Changes that sessions were told of, all together, up to the last mark.
   std::uint64_t delivered() const;

   /// Nanoseconds of the processor's time that server, readers and writer have taken so far.
   std::uint64_t processorTime() const;

   /// Bytes of all readers' processes that are no others'.
   std::size_t readersMemory() const;

 private:
   bool sessionHasMark( std::uint32_t session, std::uint64_t digest ) const;

   const Subject & subject_;
   Setup setup_;
   Model model_;
   TestSupport::Random random_{ 1 };
   Scratch scratch_;
   Slots slots_;
   std::unique_ptr< Process > server_;
   std::unique_ptr< Writer > writer_;
   std::vector< std::unique_ptr< Process > > readers_;
   std::uint64_t mark_ = 0;
};

/// The program of a process that reads: sessions from `first` on.
struct ReaderPart {
   std::string subject;
   std::string address;
   int slots = 0;
   std::uint32_t first = 0;
   std::uint32_t count = 0;
   bool hears = true;
};
[[noreturn]] void playReader( const ReaderPart & part );

const Subject & findSubject( const std::string & name );

} // namespace Bench
