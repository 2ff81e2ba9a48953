// What a failing disk does, and what stays of its files and names.
#include "tests/store/sqlite/TestDisk.h"

#include "tests/store/sqlite/Keeping.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>

namespace TestSupport {

namespace {

/// Of a disk, which writes one whole or not at all.
constexpr std::size_t sector = 512;

std::string parent( const std::string & path )
{
   return std::filesystem::path( path ).parent_path();
}

bool isBelow( const std::string & path, const std::string & folder )
{
   return path == folder || path.starts_with( folder + "/" );
}

std::string diskName()
{
   static std::atomic< int > last = 0;
   return "test disk " + std::to_string( ++last );
}

} // namespace

void DiskModel::apply( Names & names, const NameChange & change )
{
   Names moved;
   if ( !change.gone.empty() ) {
      std::erase_if( names, [ & ]( const auto & one ) {
         if ( !isBelow( one.first, change.gone ) ) {
            return false;
         }
         if ( !change.added.empty() ) {
            moved[ change.added + one.first.substr( change.gone.size() ) ] = one.second;
         }
         return true;
      } );
   } else {
      moved[ change.added ] = change.file;
   }
   names.merge( moved );
}

void DiskModel::change( NameChange change )
{
   if ( change.added.empty() ) { // nor will what was made there before
      std::erase_if( changes_, [ & ]( const auto & one ) {
         return one.gone.empty() && isBelow( one.added, change.gone );
      } );
   }
   apply( names_, change );
   changes_.push_back( std::move( change ) );
}

void DiskModel::add( const std::string & path, const File & file )
{
   change( { "", path, file } );
}

void DiskModel::remove( const std::string & path )
{
   change( { path, "", nullptr } );
}

void DiskModel::rename( const std::string & from, const std::string & to )
{
   change( { from, to, nullptr } );
}

DiskModel::File DiskModel::open( const std::string & path )
{
   if ( !names_.contains( path ) ) {
      add( path, std::make_shared< Content >() );
   }
   return names_.at( path );
}

// What was changed in other folders stays as it is: one that is moved is there, but may be without
// what was made in it.
void DiskModel::syncFolder( const std::string & path )
{
   std::vector< NameChange > left;
   for ( NameChange & one : changes_ ) {
      const bool before = !one.isMove() && one.gone == path; // another folder of this name
      if ( !before && parent( one.gone ) != path && parent( one.added ) != path ) {
         left.push_back( std::move( one ) );
         continue;
      }
      if ( one.isMove() ) {
         std::erase_if( left, [ & ]( NameChange & earlier ) {
            const bool itself = earlier.gone == one.gone || earlier.added == one.gone;
            if ( itself ) {
               apply( durable_, earlier );
            } else if ( isBelow( earlier.added, one.gone ) ) {
               earlier.added.replace( 0, one.gone.size(), one.added );
            }
            return itself;
         } );
      }
      apply( durable_, one );
   }
   changes_ = std::move( left );
}

void DiskModel::sync( Content & file )
{
   for ( const auto & change : file.changes ) {
      file.durable.resize( change.bytes.empty()
                  ? change.at
                  : std::max( file.durable.size(), change.at + change.bytes.size() ) );
      file.durable.replace( change.at, change.bytes.size(), change.bytes );
   }
   file.changes.clear();
}

void DiskModel::applySome( std::string & bytes, const Content::Change & change,
      std::mt19937_64 & random )
{
   if ( random() % 2 == 0 ) {
      return;
   }
   if ( change.bytes.empty() ) {
      bytes.resize( change.at );
      return;
   }
   const bool torn = random() % 4 == 0;
   for ( std::size_t done = 0; done < change.bytes.size(); ) {
      const std::size_t at = change.at + done;
      const std::size_t size = std::min( sector - at % sector, change.bytes.size() - done );
      if ( !torn || random() % 2 == 0 ) {
         bytes.resize( std::max( bytes.size(), at + size ) );
         bytes.replace( at, size, change.bytes, done, size );
      }
      done += size;
   }
}

void DiskModel::syncFailed( Content & file, std::mt19937_64 & random )
{
   for ( const auto & change : file.changes ) {
      applySome( file.durable, change, random );
   }
   file.changes.clear();
}

void DiskModel::restore( const std::string & from, const std::string & to,
      std::mt19937_64 & random ) const
{
   Names names = durable_;
   for ( std::size_t i = random() % ( changes_.size() + 1 ), k = 0; k != i; ++k ) {
      apply( names, changes_[ k ] );
   }
   std::filesystem::create_directory( to );
   for ( const auto & [ path, file ] : names ) {
      if ( !isBelow( path, from ) ) {
         continue;
      }
      const std::string there = to + path.substr( from.size() );
      if ( file == nullptr ) {
         std::filesystem::create_directories( there );
         continue;
      }
      std::string bytes = file->durable;
      for ( const auto & change : file->changes ) {
         applySome( bytes, change, random );
      }
      writeFile( there, bytes );
   }
}

TestDisk::TestDisk( std::uint64_t seed ) : name_( diskName() ),
                                           random_( seed )
{
   makeVfs( vfs_, *this );
   sqlite3_vfs_register( &vfs_, 0 );
}

TestDisk::~TestDisk()
{
   sqlite3_vfs_unregister( &vfs_ );
}

void TestDisk::failAt( std::size_t k, Fault fault )
{
   const auto held = lock();
   failAt_ = operations_ + k;
   fault_ = fault;
   failed_ = false;
}

void TestDisk::failReadAt( std::size_t k )
{
   const auto held = lock();
   failReadAt_ = reads_ + k;
   failed_ = false;
}

void TestDisk::heal()
{
   const auto held = lock();
   failAt_ = 0;
   failReadAt_ = 0;
}

bool TestDisk::failed() const
{
   const auto held = lock();
   return failed_;
}

std::size_t TestDisk::operations() const
{
   const auto held = lock();
   return operations_;
}

void TestDisk::restore( const std::string & from, const std::string & to,
      std::mt19937_64 & random ) const
{
   const auto held = lock();
   model_.restore( from, to, random );
}

bool TestDisk::operate( Need need )
{
   ++operations_;
   const bool now = fault_ == Fault::once ? operations_ == failAt_ : operations_ >= failAt_;
   if ( failAt_ == 0 || !now || ( fault_ == Fault::full && need == Need::nothing ) ) {
      return true;
   }
   failed_ = true;
   return false;
}

bool TestDisk::read()
{
   if ( ++reads_ != failReadAt_ ) {
      return true;
   }
   failed_ = true;
   return false;
}

void TestDisk::operateOrThrow( Need need, const std::string & path )
{
   if ( !operate( need ) ) {
      Vok::Store::Detail::throwSystemError( need == Need::room ? ENOSPC : EIO, path );
   }
}

bool TestDisk::makeFolder( const std::string & path )
{
   const auto held = lock();
   operateOrThrow( Need::room, path );
   const bool made = Disk::makeFolder( path );
   if ( made ) {
      model_.add( path, nullptr );
   }
   return made;
}

void TestDisk::rename( const std::string & from, const std::string & to )
{
   const auto held = lock();
   operateOrThrow( Need::nothing, from );
   Disk::rename( from, to );
   model_.rename( from, to );
}

void TestDisk::removeAll( const std::string & path )
{
   const auto held = lock();
   operateOrThrow( Need::nothing, path );
   Disk::removeAll( path );
   model_.remove( path );
}

void TestDisk::write( const std::string & path, std::string_view text )
{
   const auto held = lock();
   operateOrThrow( Need::room, path );
   Disk::write( path, text );
   model_.open( path )->changes.push_back( { 0, std::string( text ) } );
}

void TestDisk::sync( const std::string & path )
{
   const auto held = lock();
   const bool folder = std::filesystem::is_directory( path );
   if ( !folder && !std::filesystem::exists( path ) ) {
      Vok::Store::Detail::throwSystemError( ENOENT, path );
   }
   if ( folder ) {
      operateOrThrow( Need::nothing, path );
      model_.syncFolder( path );
   } else if ( operate( Need::nothing ) ) {
      DiskModel::sync( *model_.open( path ) );
   } else {
      DiskModel::syncFailed( *model_.open( path ), random_ );
      Vok::Store::Detail::throwSystemError( EIO, path );
   }
}

} // namespace TestSupport
