// Child processes: started, stopped for a while, ended with the object; and what the system says
// of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

namespace Bench {

/// A folder that goes with the object, for sockets and files.
class Scratch {
 public:
   Scratch();
   Scratch( const Scratch & ) = delete;
   Scratch & operator=( const Scratch & ) = delete;
   ~Scratch();

   std::string file( const std::string & name ) const { return path_ + "/" + name; }

 private:
   std::string path_;
};

/// Bytes of a process.
struct Memory {
   std::size_t resident = 0;
   std::size_t peak = 0; ///< the most that were resident since the start, or `forgetPeak`
   std::size_t own = 0; ///< shared with no other process
};

class Process {
 public:
   /// Runs a program, whose output goes to `log`. It dies with this process. `name` is what it is
   /// called as, where that is not its path.
   Process( const std::string & program, const std::vector< std::string > & arguments,
         const std::string & log, const std::string & name = {} );
   Process( const Process & ) = delete;
   Process & operator=( const Process & ) = delete;
   ~Process();

   bool running() const noexcept;
   void stop() const noexcept;
   void go() const noexcept;
   Memory memory() const;
   void forgetPeak() const;

   /// Nanoseconds of the processor's time that its first thread has taken so far.
   std::uint64_t processorTime() const;

   /// The bytes that it has read so far, from whatever descriptors.
   std::uint64_t bytesRead() const;

 private:
   std::string proc( const char * file ) const;

   pid_t pid_;
};

/// The processor's time that this process has taken so far.
std::uint64_t ownProcessorTime();

/// The path of a program among those where programs are; empty where there is none.
std::string findProgram( const std::string & name );

} // namespace Bench
