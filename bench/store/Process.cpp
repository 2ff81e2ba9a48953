// Child processes.
#include "bench/store/Process.h"

#include "bench/Check.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

// The system counts what a process reads, but not what it receives.
extern "C" ssize_t recv( int descriptor, void * bytes, std::size_t size, int flags )
{
   return flags == 0 ? read( descriptor, bytes, size )
                     : recvfrom( descriptor, bytes, size, flags, nullptr, nullptr );
}

namespace Bench {

namespace {

// The number behind `field` in one of the system's lists, lines of a field and its value.
std::uint64_t numberIn( const std::string & file, std::string_view field )
{
   std::ifstream in( file );
   for ( std::string line; std::getline( in, line ); ) {
      if ( line.starts_with( field ) ) {
         return std::strtoull( line.c_str() + field.size(), nullptr, 10 );
      }
   }
   require( false, "the system's word on a process" );
   return 0;
}

std::uint64_t processorTimeIn( const std::string & file )
{
   std::uint64_t time = 0;
   std::ifstream( file ) >> time;
   return time;
}

} // namespace

Scratch::Scratch()
{
   std::string name = std::filesystem::temp_directory_path() / "store-bench-XXXXXX";
   require( mkdtemp( name.data() ) != nullptr, "a scratch folder" );
   path_ = name;
}

Scratch::~Scratch()
{
   std::error_code ignored;
   std::filesystem::remove_all( path_, ignored );
}

Process::Process( const std::string & program, const std::vector< std::string > & arguments,
      const std::string & log, const std::string & name )
{
   std::vector< const char * > all{ name.empty() ? program.c_str() : name.c_str() };
   for ( const std::string & one : arguments ) {
      all.push_back( one.c_str() );
   }
   all.push_back( nullptr );
   const pid_t parent = getpid();
   pid_ = fork();
   require( pid_ >= 0, "a process" );
   if ( pid_ == 0 ) {
      prctl( PR_SET_PDEATHSIG, SIGKILL );
      const int out = open( log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600 );
      if ( getppid() == parent && out >= 0 && dup2( out, 1 ) == 1 && dup2( out, 2 ) == 2 ) {
         execv( program.c_str(), const_cast< char * const * >( all.data() ) );
      }
      _exit( 127 );
   }
}

Process::~Process()
{
   kill( pid_, SIGKILL );
   waitpid( pid_, nullptr, 0 );
}

bool Process::running() const noexcept
{
   siginfo_t about{};
   return waitid( P_PID, static_cast< id_t >( pid_ ), &about, WEXITED | WNOHANG | WNOWAIT ) == 0 &&
         about.si_pid == 0;
}

void Process::stop() const noexcept
{
   kill( pid_, SIGSTOP );
}

void Process::go() const noexcept
{
   kill( pid_, SIGCONT );
}

std::string Process::proc( const char * file ) const
{
   return "/proc/" + std::to_string( pid_ ) + "/" + file;
}

Memory Process::memory() const
{
   const std::string rollup = proc( "smaps_rollup" );
   const std::string status = proc( "status" );
   constexpr std::size_t kilo = 1024;
   return { numberIn( status, "VmRSS:" ) * kilo, numberIn( status, "VmHWM:" ) * kilo,
      ( numberIn( rollup, "Private_Clean:" ) + numberIn( rollup, "Private_Dirty:" ) ) * kilo };
}

void Process::forgetPeak() const
{
   std::ofstream( proc( "clear_refs" ) ) << "5";
}

std::uint64_t Process::processorTime() const
{
   return processorTimeIn( proc( "schedstat" ) );
}

std::uint64_t ownProcessorTime()
{
   return processorTimeIn( "/proc/self/schedstat" );
}

std::uint64_t Process::bytesRead() const
{
   return numberIn( proc( "io" ), "rchar:" );
}

std::string findProgram( const std::string & name )
{
   const char * const path = std::getenv( "PATH" );
   std::istringstream folders( std::string( path ? path : "" ) + ":/usr/sbin:/sbin" );
   for ( std::string folder; std::getline( folders, folder, ':' ); ) {
      const std::string file = folder + "/" + name;
      if ( access( file.c_str(), X_OK ) == 0 ) {
         return file;
      }
   }
   return {};
}

} // namespace Bench
