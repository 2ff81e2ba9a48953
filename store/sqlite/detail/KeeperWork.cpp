// The keeper's thread: databases opened, written, closed, and moved away when they are damaged.
#include "store/sqlite/detail/KeeperWork.h"

#include <algorithm>
#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

namespace Vok::Store::Detail {

namespace {

/// Does it, and gives what went wrong.
template< class F > std::string attempt( F f )
{
   try {
      f();
      return {};
   } catch ( const std::bad_alloc & ) {
      return "there is no memory left";
   } catch ( const std::exception & e ) {
      return e.what();
   }
}

bool isDamage( const FileException & e ) noexcept
{
   return e.kind() == FileException::Kind::damaged;
}

} // namespace

std::vector< Keeper::Kept > KeeperWork::load( const Keeps & keeps, const Tell & tell )
{
   std::vector< Keeper::Kept > all;
   for ( const std::string & name : folder_.names() ) {
      load( name, keeps, tell, all );
   }
   return all;
}

void KeeperWork::load( const std::string & name, const Keeps & keeps, const Tell & tell,
      std::vector< Keeper::Kept > & all )
{
   const std::string file = folder_.file( name );
   const auto path = pathOfName( name );
   if ( !path ) {
      tell( name, file + " has a name that no mount has: it is left there" );
      return;
   }
   if ( !keeps( *path ) ) {
      tell( *path, file + " is of a mount that is not kept any more: it is left there" );
      return;
   }
   try {
      MountFile mount( file, folder_.vfs() );
      Keeper::Kept kept;
      try {
         kept = mount.load();
         if ( kept.path != *path ) {
            throw FileException( FileException::Kind::damaged, "is of the mount " + kept.path );
         }
      } catch ( ... ) {
         mount.leave();
         throw;
      }
      all.push_back( std::move( kept ) );
   } catch ( const FileException & e ) {
      const std::string why = file + " " + e.what();
      tell( *path, isDamage( e ) ? moveAway( name, *path, why ) : why + ": it is left there" );
   }
}

// After a problem the database is closed, so that the next batch begins with what is on the disk.
std::string KeeperWork::keep( const Keeper::Request & request )
{
   const std::string name = nameOfPath( request.path );
   std::string problem = attempt( [ & ] {
      if ( !request.whole && behind_.contains( request.path ) ) {
         throw std::runtime_error( request.path + " needs a whole tree after a problem" );
      }
      behind_.insert( request.path );
      write( name, request );
      behind_.erase( request.path );
   } );
   if ( !problem.empty() ) {
      open_.erase( name );
   }
   return problem;
}

// A damaged file makes room for a new one.
void KeeperWork::write( const std::string & name, const Keeper::Request & request )
{
   if ( !open_.contains( name ) && !folder_.has( name ) ) {
      make( name, request );
      return;
   }
   try {
      open( name ).keep( request );
   } catch ( const FileException & e ) {
      const std::string why = folder_.file( name ) + " " + e.what();
      if ( isDamage( e ) ) {
         leave( name );
         throw std::runtime_error( moveAway( name, request.path, why ) );
      }
      throw std::runtime_error( why );
   }
}

void KeeperWork::make( const std::string & name, const Keeper::Request & request )
{
   if ( !request.whole ) {
      throw std::runtime_error( request.path + " has no whole tree that the batch could follow" );
   }
   const std::string file = folder_.begin();
   try {
      MountFile::make( file, folder_.vfs(), request );
   } catch ( const FileException & e ) {
      throw std::runtime_error( file + " " + e.what() );
   }
   folder_.finish( name );
}

MountFile & KeeperWork::open( const std::string & name )
{
   ++requests_;
   auto at = open_.find( name );
   if ( at == open_.end() ) {
      if ( open_.size() == mostOpen ) {
         open_.erase( std::ranges::min_element( open_,
               {}, []( const auto & one ) { return one.second.used; } ) );
      }
      at = open_.try_emplace( name, folder_.file( name ), folder_.vfs() ).first;
      at->second.file.settle();
      folder_.keepNames();
   }
   at->second.used = requests_;
   return at->second.file;
}

void KeeperWork::leave( const std::string & name ) noexcept
{
   if ( const auto at = open_.find( name ); at != open_.end() ) {
      at->second.file.leave();
      open_.erase( at );
   }
}

std::string KeeperWork::moveAway( const std::string & name, const std::string & path,
      const std::string & why )
{
   std::string result = why;
   const std::string problem = attempt( [ & ] {
      result += "; it was set aside as " + folder_.setAside( name, path, why );
   } );
   if ( !problem.empty() ) {
      result += "; it cannot be set aside: " + problem;
   }
   return result;
}

std::string KeeperWork::remove( const std::string & path )
{
   return attempt( [ & ] {
      const std::string name = nameOfPath( path );
      leave( name );
      behind_.erase( path );
      folder_.remove( name );
   } );
}

std::string KeeperWork::setAside( const std::string & path, const std::string & why )
{
   return attempt( [ & ] {
      const std::string name = nameOfPath( path );
      leave( name );
      folder_.setAside( name, path, why );
   } );
}

} // namespace Vok::Store::Detail
