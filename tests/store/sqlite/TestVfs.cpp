// The file system of SQLite that a TestDisk has: SQLite's own behind it, but for syncs, which only
// the model does.
#include "tests/store/sqlite/TestDisk.h"

#include <cstring>
#include <filesystem>
#include <memory>
#include <new>
#include <string>

namespace TestSupport {

namespace {

struct TestFile {
   sqlite3_file base; // first, where SQLite looks for it
   TestDisk * disk;
   DiskModel::File content; // none: of a temporary file
   std::string folder;
   bool syncsFolder; // with the first sync, as SQLite's own does
   sqlite3_file * real;
};

TestFile & of( sqlite3_file * file ) noexcept
{
   return *reinterpret_cast< TestFile * >( file );
}

sqlite3_vfs * below() noexcept
{
   return sqlite3_vfs_find( nullptr );
}

TestDisk & diskOf( sqlite3_vfs * vfs ) noexcept
{
   return *static_cast< TestDisk * >( vfs->pAppData );
}

int closeFile( sqlite3_file * file )
{
   TestFile & one = of( file );
   const int code = one.real->pMethods->xClose( one.real );
   one.~TestFile();
   return code;
}

int readFile( sqlite3_file * file, void * to, int size, sqlite3_int64 at )
{
   TestFile & one = of( file );
   {
      const auto held = one.disk->lock();
      if ( !one.disk->read() ) {
         return SQLITE_IOERR_READ;
      }
   }
   return one.real->pMethods->xRead( one.real, to, size, at );
}

int writeHere( sqlite3_file * file, const void * from, int size, sqlite3_int64 at )
{
   TestFile & one = of( file );
   const auto held = one.disk->lock();
   const bool done = one.disk->operate( TestDisk::Need::room );
   const int count = done ? size : size / 2;
   const int code = one.real->pMethods->xWrite( one.real, from, count, at );
   if ( one.content != nullptr && code == SQLITE_OK && count > 0 ) {
      one.content->changes.push_back( { static_cast< std::size_t >( at ),
            { static_cast< const char * >( from ), static_cast< std::size_t >( count ) } } );
   }
   return done ? code : SQLITE_FULL;
}

int truncateHere( sqlite3_file * file, sqlite3_int64 size )
{
   TestFile & one = of( file );
   const auto held = one.disk->lock();
   if ( !one.disk->operate( TestDisk::Need::nothing ) ) {
      return SQLITE_IOERR_TRUNCATE;
   }
   if ( one.content != nullptr ) {
      one.content->changes.push_back( { static_cast< std::size_t >( size ), "" } );
   }
   return one.real->pMethods->xTruncate( one.real, size );
}

int syncHere( sqlite3_file * file, int )
{
   TestFile & one = of( file );
   const auto held = one.disk->lock();
   const bool done = one.disk->operate( TestDisk::Need::nothing );
   if ( one.content != nullptr && done ) {
      DiskModel::sync( *one.content );
   } else if ( one.content != nullptr ) {
      DiskModel::syncFailed( *one.content, one.disk->random() );
   }
   if ( !done ) {
      return SQLITE_IOERR_FSYNC;
   }
   if ( one.syncsFolder ) {
      one.disk->model().syncFolder( one.folder );
      one.syncsFolder = false;
   }
   return SQLITE_OK;
}

int sizeOf( sqlite3_file * file, sqlite3_int64 * size )
{
   return of( file ).real->pMethods->xFileSize( of( file ).real, size );
}

int lockFile( sqlite3_file * file, int level )
{
   return of( file ).real->pMethods->xLock( of( file ).real, level );
}

int unlockFile( sqlite3_file * file, int level )
{
   return of( file ).real->pMethods->xUnlock( of( file ).real, level );
}

int isReserved( sqlite3_file * file, int * result )
{
   return of( file ).real->pMethods->xCheckReservedLock( of( file ).real, result );
}

// Hints of sizes to come would write beside the model.
int control( sqlite3_file * file, int operation, void * argument )
{
   if ( operation == SQLITE_FCNTL_SIZE_HINT || operation == SQLITE_FCNTL_CHUNK_SIZE ) {
      return SQLITE_NOTFOUND;
   }
   return of( file ).real->pMethods->xFileControl( of( file ).real, operation, argument );
}

int sectorSize( sqlite3_file * file )
{
   return of( file ).real->pMethods->xSectorSize( of( file ).real );
}

int characteristics( sqlite3_file * file )
{
   return of( file ).real->pMethods->xDeviceCharacteristics( of( file ).real );
}

int mapShared( sqlite3_file * file, int page, int size, int extend, void volatile ** to )
{
   return of( file ).real->pMethods->xShmMap( of( file ).real, page, size, extend, to );
}

int lockShared( sqlite3_file * file, int offset, int count, int flags )
{
   return of( file ).real->pMethods->xShmLock( of( file ).real, offset, count, flags );
}

void barrier( sqlite3_file * file )
{
   of( file ).real->pMethods->xShmBarrier( of( file ).real );
}

int unmapShared( sqlite3_file * file, int remove )
{
   return of( file ).real->pMethods->xShmUnmap( of( file ).real, remove );
}

constexpr sqlite3_io_methods methods = { 2, closeFile, readFile, writeHere, truncateHere, syncHere,
   sizeOf, lockFile, unlockFile, isReserved, control, sectorSize, characteristics, mapShared,
   lockShared, barrier, unmapShared, nullptr, nullptr };

int openFile( sqlite3_vfs * vfs, const char * name, sqlite3_file * file, int flags, int * outFlags )
{
   file->pMethods = nullptr; // nothing to close, so far
   TestDisk & disk = diskOf( vfs );
   const auto held = disk.lock();
   const bool made = name != nullptr && ( flags & SQLITE_OPEN_CREATE ) != 0 &&
         !std::filesystem::exists( name );
   if ( made && !disk.operate( TestDisk::Need::room ) ) {
      return SQLITE_CANTOPEN;
   }
   auto * const real = reinterpret_cast< sqlite3_file * >(
         reinterpret_cast< char * >( file ) + sizeof( TestFile ) );
   const int code = below()->xOpen( below(), name, real, flags, outFlags );
   if ( code == SQLITE_OK ) {
      auto & one = *new ( file ) TestFile{ { &methods }, &disk, nullptr, "", false, real };
      if ( name != nullptr ) {
         one.content = disk.model().open( name );
         one.folder = std::filesystem::path( name ).parent_path();
         one.syncsFolder = made && ( flags & ( SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_WAL ) ) != 0;
      }
   }
   return code;
}

int deleteFile( sqlite3_vfs * vfs, const char * name, int syncFolder )
{
   TestDisk & disk = diskOf( vfs );
   const auto held = disk.lock();
   if ( !disk.operate( TestDisk::Need::nothing ) ) {
      return SQLITE_IOERR_DELETE;
   }
   const int code = below()->xDelete( below(), name, 0 );
   if ( code == SQLITE_OK ) {
      disk.model().remove( name );
   }
   if ( code == SQLITE_OK && syncFolder != 0 ) {
      disk.model().syncFolder( std::filesystem::path( name ).parent_path() );
   }
   return code;
}

} // namespace

// What it does not change is SQLite's own function, which takes any file system of the machine.
void makeVfs( sqlite3_vfs & vfs, TestDisk & disk )
{
   vfs = *below();
   vfs.szOsFile += static_cast< int >( sizeof( TestFile ) );
   vfs.zName = disk.vfs();
   vfs.pAppData = &disk;
   vfs.pNext = nullptr;
   vfs.xOpen = openFile;
   vfs.xDelete = deleteFile;
}

} // namespace TestSupport
