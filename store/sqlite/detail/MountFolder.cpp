// The folder of kept mounts.
#include "store/sqlite/detail/MountFolder.h"

#include "store/Path.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace Vok::Store::Detail {

namespace {

constexpr const char * database = "/mount.sqlite";

/// What SQLite appends to the longest name at most.
constexpr std::size_t longestSuffix = 8;

/// The bytes of the longest file name of the system.
constexpr std::size_t longestName = 255;

/// A moment as a part of a file name.
std::string stamp( std::time_t now )
{
   std::tm parts{};
   gmtime_r( &now, &parts );
   char text[ 32 ];
   return { text, std::strftime( text, sizeof text, "@%Y%m%dT%H%M%SZ", &parts ) };
}

/// The process that has the lock, as it has written into the file.
std::string holder( int file )
{
   char text[ 32 ];
   const ssize_t size = pread( file, text, sizeof text, 0 );
   return size > 0 ? "process " + std::string( text, static_cast< std::size_t >( size ) )
                   : "another process";
}

void checkLength( const std::string & folder, const char * vfs )
{
   const sqlite3_vfs * const system = sqlite3_vfs_find( vfs );
   const std::size_t longest = static_cast< std::size_t >( system->mxPathname ) - longestSuffix -
         std::string( database ).size() - longestPath - std::string( "/mounts/" ).size();
   if ( folder.size() > longest ) {
      throwSystemError(
            ENAMETOOLONG, folder + " has more than " + std::to_string( longest ) + " bytes" );
   }
}

} // namespace

std::string nameOfPath( const std::string & path )
{
   if ( path == "." || path == ".." ) {
      return "+" + path;
   }
   std::string name = path;
   std::ranges::replace( name, '/', '+' );
   return name;
}

std::optional< std::string > pathOfName( const std::string & name )
{
   if ( name == "+." || name == "+.." ) {
      return name.substr( 1 );
   }
   std::string path = name;
   std::ranges::replace( path, '+', '/' );
   try {
      checkPath( path );
   } catch ( const PathException & ) {
      return std::nullopt;
   }
   return path;
}

MountFolder::MountFolder( Disk & disk, const std::string & folder )
      : disk_( disk ),
        folder_( std::filesystem::absolute( folder ).lexically_normal() )
{
   if ( folder_.ends_with( '/' ) && folder_.size() > 1 ) {
      folder_.pop_back();
   }
   checkLength( folder_, disk.vfs() );
   if ( disk_.makeFolder( folder_ ) ) {
      disk_.sync( std::filesystem::path( folder_ ).parent_path() );
   }
   lock();
   try {
      disk_.makeFolder( folder_ + "/mounts" );
      disk_.makeFolder( folder_ + "/aside" );
      disk_.removeAll( folder_ + "/making" );
      disk_.removeAll( folder_ + "/gone" );
      disk_.sync( folder_ );
   } catch ( ... ) {
      close( lock_ );
      throw;
   }
}

MountFolder::~MountFolder()
{
   close( lock_ );
}

// The lock goes with the process, however that ends. The file stays: a lock on one that somebody
// removes meanwhile would lock nobody out.
void MountFolder::lock()
{
   const std::string path = folder_ + "/lock";
   lock_ = open( path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600 );
   if ( lock_ < 0 ) {
      throwSystemError( errno, path + " cannot be opened" );
   }
   if ( flock( lock_, LOCK_EX | LOCK_NB ) != 0 ) {
      const int error = errno;
      const std::string who = holder( lock_ );
      close( lock_ );
      if ( error == EWOULDBLOCK ) {
         throwSystemError( EBUSY, folder_ + " is in use by " + who );
      }
      throwSystemError( error, path + " cannot be locked" );
   }
   const std::string process = std::to_string( getpid() );
   if ( ftruncate( lock_, 0 ) != 0 || pwrite( lock_, process.data(), process.size(), 0 ) < 0 ) {
      return; // on a full disk, and it is for people only
   }
}

std::vector< std::string > MountFolder::names() const
{
   std::vector< std::string > all;
   for ( const auto & entry : std::filesystem::directory_iterator( folder_ + "/mounts" ) ) {
      all.push_back( entry.path().filename() );
   }
   std::ranges::sort( all );
   return all;
}

bool MountFolder::has( const std::string & name ) const
{
   return std::filesystem::exists( folder_ + "/mounts/" + name );
}

std::string MountFolder::file( const std::string & name ) const
{
   return folder_ + "/mounts/" + name + database;
}

std::string MountFolder::begin()
{
   const std::string making = folder_ + "/making";
   disk_.removeAll( making );
   disk_.makeFolder( making );
   return making + database;
}

void MountFolder::finish( const std::string & name )
{
   const std::string making = folder_ + "/making";
   disk_.sync( making + database );
   disk_.sync( making );
   disk_.rename( making, folder_ + "/mounts/" + name );
   keepNames();
}

void MountFolder::keepNames()
{
   disk_.sync( folder_ + "/mounts" );
}

// It is gone at once or not at all: what has been moved away is of no mount.
void MountFolder::remove( const std::string & name )
{
   if ( has( name ) ) {
      const std::string gone = folder_ + "/gone";
      disk_.removeAll( gone );
      disk_.rename( folder_ + "/mounts/" + name, gone );
      keepNames();
      disk_.removeAll( gone );
   }
}

std::string MountFolder::setAside( const std::string & name, const std::string & path,
      const std::string & why )
{
   const std::time_t now = std::time( nullptr );
   const std::string when = stamp( now );
   const std::string first = folder_ + "/aside/" +
         name.substr( 0, longestName - when.size() - longestSuffix ) + when;
   std::string to = first;
   for ( int i = 2; std::filesystem::exists( to ); ++i ) {
      to = first;
      to += "-" + std::to_string( i );
   }
   disk_.rename( folder_ + "/mounts/" + name, to );
   disk_.sync( folder_ + "/aside" );
   keepNames();
   disk_.write( to + "/why.txt", path + "\n" + when.substr( 1 ) + "\n" + why + "\n" );
   disk_.sync( to + "/why.txt" );
   disk_.sync( to );
   return to;
}

} // namespace Vok::Store::Detail
