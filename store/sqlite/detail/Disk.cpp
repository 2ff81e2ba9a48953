// Folders and files of the machine.
#include "store/sqlite/detail/Disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace Vok::Store::Detail {

namespace {

/// An open file.
class Descriptor {
 public:
   Descriptor( const std::string & path, int flags ) : number( open( path.c_str(), flags, 0600 ) )
   {
      if ( number < 0 ) {
         throwSystemError( errno, path + " cannot be opened" );
      }
   }
   Descriptor( const Descriptor & ) = delete;
   Descriptor & operator=( const Descriptor & ) = delete;
   ~Descriptor() { close( number ); }

   const int number;
};

} // namespace

void throwSystemError( int error, const std::string & what )
{
   throw std::system_error( error, std::generic_category(), what );
}

bool Disk::makeFolder( const std::string & path )
{
   if ( mkdir( path.c_str(), 0700 ) == 0 ) {
      return true;
   }
   if ( const int error = errno; error != EEXIST || !std::filesystem::is_directory( path ) ) {
      throwSystemError( error == EEXIST ? ENOTDIR : error, path + " cannot be used as a folder" );
   }
   return false;
}

void Disk::rename( const std::string & from, const std::string & to )
{
   if ( ::rename( from.c_str(), to.c_str() ) != 0 ) {
      throwSystemError( errno, from + " cannot be moved to " + to );
   }
}

void Disk::removeAll( const std::string & path )
{
   std::error_code error;
   std::filesystem::remove_all( path, error );
   if ( error ) {
      throw std::system_error( error, path + " cannot be removed" );
   }
}

void Disk::write( const std::string & path, std::string_view text )
{
   const Descriptor file( path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC );
   while ( !text.empty() ) {
      const ssize_t count = ::write( file.number, text.data(), text.size() );
      if ( count < 0 ) {
         throwSystemError( errno, path + " cannot be written" );
      }
      text.remove_prefix( static_cast< std::size_t >( count ) );
   }
}

void Disk::sync( const std::string & path )
{
   const Descriptor file( path, O_RDONLY | O_CLOEXEC );
   if ( fsync( file.number ) != 0 ) {
      throwSystemError( errno, path + " cannot be brought to the disk" );
   }
}

Disk & Disk::machine()
{
   static Disk disk;
   return disk;
}

} // namespace Vok::Store::Detail
