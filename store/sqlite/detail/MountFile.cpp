// The tables of a kept mount, and their checksums.
#include "store/sqlite/detail/MountFile.h"

#include "Vok/detail/Hash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <span>

namespace Vok::Store::Detail {

namespace {

using Vok::Detail::checksum64;

/// "VokM": that a file is of a kept mount.
constexpr std::uint32_t applicationId = 0x566f6b4d;

/// Of the tables; a newer one is not read.
constexpr std::uint32_t version = 1;

constexpr const char * tables =
      "PRAGMA application_id = 0x566f6b4d;"
      "PRAGMA user_version = 1;"
      "CREATE TABLE mount( path TEXT NOT NULL, type TEXT NOT NULL, writer TEXT NOT NULL,"
      " pieces INTEGER NOT NULL, batches INTEGER NOT NULL, last INTEGER NOT NULL,"
      " checksum INTEGER NOT NULL );"
      "CREATE TABLE piece( number INTEGER PRIMARY KEY, batch INTEGER NOT NULL,"
      " bytes BLOB NOT NULL, checksum INTEGER NOT NULL );"
      "INSERT INTO mount VALUES( '', '', '', 0, 0, 0, 0 );";

/// A row takes little memory, however long its batch is.
constexpr std::size_t longestPiece = std::size_t{ 1 } << 20;

/// Where a database's header has which number, as big-endian 32 bits.
constexpr std::size_t headerSize = 100;
constexpr std::size_t versionAt = 60;
constexpr std::size_t applicationAt = 68;

[[noreturn]] void damaged( const std::string & what )
{
   throw FileException( FileException::Kind::damaged, what );
}

/// Numbers count with eight bytes each, the highest first.
std::uint64_t checksumOf( std::initializer_list< std::uint64_t > numbers ) noexcept
{
   std::array< std::byte, 64 > bytes{};
   std::size_t size = 0;
   for ( const std::uint64_t number : numbers ) {
      for ( unsigned shift = 64; shift != 0; ) {
         shift -= 8;
         bytes[ size++ ] = static_cast< std::byte >( number >> shift & 0xff );
      }
   }
   return checksum64( bytes.data(), size );
}

std::uint64_t checksumOf( const std::string & text ) noexcept
{
   return checksum64( reinterpret_cast< const std::byte * >( text.data() ), text.size() );
}

std::uint64_t checksumOfPiece( std::uint64_t before, std::uint64_t number, std::uint64_t batch,
      std::span< const std::byte > bytes ) noexcept
{
   return checksumOf( { before, number, batch, checksum64( bytes.data(), bytes.size() ) } );
}

void checkKind( std::uint32_t application, std::uint32_t found )
{
   if ( application != applicationId ) {
      throw FileException( FileException::Kind::foreign,
            "is no kept mount: its application_id is " + std::to_string( application ) );
   }
   if ( found > version ) {
      throw FileException( FileException::Kind::foreign,
            "is of version " + std::to_string( found ) + ", this program knows those up to " +
                  std::to_string( version ) );
   }
}

// SQLite would finish what a log has before it tells what the file is; another's is not touched.
void checkHeader( const std::string & file )
{
   std::array< unsigned char, headerSize > header{};
   errno = 0;
   std::ifstream in( file, std::ios::binary );
   if ( !in && errno != ENOENT ) {
      throw FileException( FileException::Kind::failed,
            std::string( "cannot be opened: " ) + std::strerror( errno ) );
   }
   in.read( reinterpret_cast< char * >( header.data() ), headerSize );
   if ( in.bad() ) {
      throw FileException( FileException::Kind::failed, "cannot be read" );
   }
   if ( !in ) {
      damaged( "is shorter than a database" );
   }
   const auto numberAt = [ & ]( std::size_t at ) {
      std::uint32_t number = 0;
      for ( std::size_t i = 0; i != 4; ++i ) {
         number = number << 8 | header[ at + i ];
      }
      return number;
   };
   constexpr char magic[] = "SQLite format 3";
   if ( !std::equal( magic, magic + sizeof magic, header.begin() ) ) {
      damaged( "does not begin as a database" );
   }
   checkKind( numberAt( applicationAt ), numberAt( versionAt ) );
}

std::uint32_t pragma( const Database & database, const char * text )
{
   Statement statement( database, text );
   statement.step();
   return static_cast< std::uint32_t >( statement.number( 0 ) );
}

/// In other modes a commit would not be on the disk when it is done.
void useLog( const Database & database )
{
   Statement mode( database, "PRAGMA journal_mode = WAL" );
   mode.step();
   if ( mode.text( 0 ) != "wal" ) {
      throw FileException( FileException::Kind::failed,
            "cannot have a write-ahead log in this file system" );
   }
}

} // namespace

std::uint64_t MountFile::Head::checksum() const noexcept
{
   return checksumOf( { checksumOf( path ), checksumOf( type ), checksumOf( writer ), pieces,
         batches, last } );
}

MountFile::Statements::Statements( const Database & database )
      : begin( database, "BEGIN IMMEDIATE" ),
        clear( database, "DELETE FROM piece" ),
        insert( database, "INSERT INTO piece VALUES( ?, ?, ?, ? )" ),
        head( database, "UPDATE mount SET path = ?, type = ?, writer = ?, pieces = ?, batches = ?,"
                        " last = ?, checksum = ?" ),
        commit( database, "COMMIT" )
{
}

// A file that is being made is thrown away unless it is finished: that needs no syncs.
void MountFile::make( const std::string & file, const char * vfs, const Keeper::Request & whole )
{
   MountFile made( file, vfs, Empty{} );
   made.database_.run( "PRAGMA synchronous = OFF" );
   useLog( made.database_ );
   made.database_.run( tables );
   made.head_.path = whole.path;
   made.keep( whole );
   made.database_.run( "PRAGMA wal_checkpoint( TRUNCATE )" );
}

MountFile::MountFile( const std::string & file, const char * vfs, Empty )
      : database_( file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, vfs )
{
}

MountFile::MountFile( const std::string & file, const char * vfs )
      : database_( ( checkHeader( file ), file ), SQLITE_OPEN_READWRITE, vfs )
{
   leave(); // until it is known to be the keeper's, and in order
   database_.run( "PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON" );
   checkKind( pragma( database_, "PRAGMA application_id" ),
         pragma( database_, "PRAGMA user_version" ) );
   useLog( database_ );
   database_.run( "PRAGMA synchronous = FULL; PRAGMA journal_size_limit = 4194304;"
                  "PRAGMA cache_size = -256; PRAGMA secure_delete = OFF" );
   readHead();
   sqlite3_db_config( database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr );
}

void MountFile::readHead()
{
   Statement rows( database_,
         "SELECT path, type, writer, pieces, batches, last, checksum FROM mount" );
   if ( !rows.step() ) {
      damaged( "has no row in the table mount" );
   }
   head_ = { rows.text( 0 ), rows.text( 1 ), rows.text( 2 ), rows.number( 3 ), rows.number( 4 ),
      rows.number( 5 ) };
   if ( head_.checksum() != rows.number( 6 ) ) {
      damaged( "has a wrong checksum in the table mount" );
   }
   if ( rows.step() ) {
      damaged( "has several rows in the table mount" );
   }
}

Keeper::Kept MountFile::load()
{
   Keeper::Kept kept{ head_.path, head_.type, head_.writer, {} };
   std::uint64_t last = 0;
   std::uint64_t number = 0;
   Statement rows( database_, "SELECT number, batch, bytes, checksum FROM piece ORDER BY number" );
   while ( rows.step() ) {
      ++number;
      const auto bytes = rows.bytes( 2 );
      last = checksumOfPiece( last, number, rows.number( 1 ), bytes );
      if ( rows.number( 0 ) != number || rows.number( 3 ) != last ) {
         damaged( "lacks piece " + std::to_string( number ) + ", or it has a wrong checksum" );
      }
      if ( rows.number( 1 ) != kept.batches.size() ) {
         kept.batches.emplace_back();
      }
      kept.batches.back().insert( kept.batches.back().end(), bytes.begin(), bytes.end() );
   }
   if ( number != head_.pieces || kept.batches.size() != head_.batches || last != head_.last ) {
      damaged( "has " + std::to_string( number ) + " pieces, not the " +
            std::to_string( head_.pieces ) + " that were written" );
   }
   // What of the file has no rows may be damaged, too, and would damage them later. An error that
   // is of the disk, and passes, is told in the same way, but once.
   std::string found;
   for ( int i = 0; i != 2; ++i ) {
      Statement check( database_, "PRAGMA quick_check( 1 )" );
      check.step();
      found = check.text( 0 );
      if ( found == "ok" ) {
         return kept;
      }
   }
   damaged( "is not in order; SQLite says: " + found );
}

void MountFile::settle()
{
   Statement checkpoint( database_, "PRAGMA wal_checkpoint( TRUNCATE )" );
   checkpoint.step();
   if ( checkpoint.number( 0 ) != 0 ) {
      throw FileException( FileException::Kind::failed, "is in use by somebody else" );
   }
}

void MountFile::append( Statements & statements, Head & head, const Keeper::Bytes & batch )
{
   ++head.batches;
   std::span< const std::byte > rest = batch;
   do {
      const auto piece = rest.first( std::min( rest.size(), longestPiece ) );
      rest = rest.subspan( piece.size() );
      ++head.pieces;
      head.last = checksumOfPiece( head.last, head.pieces, head.batches, piece );
      statements.insert.bind( 1, head.pieces );
      statements.insert.bind( 2, head.batches );
      statements.insert.bind( 3, piece );
      statements.insert.bind( 4, head.last );
      statements.insert.run();
   } while ( !rest.empty() );
}

void MountFile::keep( const Keeper::Request & request )
{
   if ( !statements_ ) {
      statements_.emplace( database_ );
   }
   Head next{ head_.path, request.type, request.writer, head_.pieces, head_.batches, head_.last };
   statements_->begin.run();
   if ( request.whole ) {
      statements_->clear.run();
      next.pieces = next.batches = next.last = 0;
   }
   append( *statements_, next, *request.batch );
   Statement & head = statements_->head;
   head.bind( 1, next.path );
   head.bind( 2, next.type );
   head.bind( 3, next.writer );
   head.bind( 4, next.pieces );
   head.bind( 5, next.batches );
   head.bind( 6, next.last );
   head.bind( 7, next.checksum() );
   head.run();
   statements_->commit.run();
   head_ = std::move( next );
}

} // namespace Vok::Store::Detail
