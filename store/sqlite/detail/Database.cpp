// Calls of SQLite, with its errors as exceptions.
#include "store/sqlite/detail/Database.h"

#include <cstring>
#include <new>

namespace Vok::Store::Detail {

namespace {

/// The statements are the keeper's own: where one is not understood, the tables are not what they
/// were.
FileException::Kind kindOf( int code ) noexcept
{
   switch ( code & 0xff ) {
   case SQLITE_CORRUPT:
   case SQLITE_NOTADB:
   case SQLITE_ERROR:
   case SQLITE_TOOBIG:
      return FileException::Kind::damaged;
   default:
      return FileException::Kind::failed;
   }
}

} // namespace

Database::Database( const std::string & file, int flags, const char * vfs )
{
   sqlite3 * made = nullptr;
   const int code = sqlite3_open_v2(
         file.c_str(), &made, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, vfs );
   connection_.reset( made );
   if ( code != SQLITE_OK ) {
      fail( code );
   }
   sqlite3_busy_timeout( made, 2000 ); // somebody who looks into it
}

void Database::run( const char * statements )
{
   if ( const int code = sqlite3_exec( get(), statements, nullptr, nullptr, nullptr );
         code != SQLITE_OK ) {
      fail( code );
   }
}

void Database::leaveLog() noexcept
{
   sqlite3_db_config( get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr );
}

void Database::fail( int code ) const
{
   if ( !connection_ || ( code & 0xff ) == SQLITE_NOMEM ) {
      throw std::bad_alloc();
   }
   std::string what = "cannot be used; SQLite says: ";
   what += sqlite3_errmsg( get() );
   what += " (" + std::to_string( code );
   const int error = sqlite3_system_errno( get() );
   const int primary = code & 0xff;
   if ( error != 0 && ( primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN ) ) {
      what += ", ";
      what += std::strerror( error );
   }
   throw FileException( kindOf( code ), what + ")" );
}

Statement::Statement( const Database & database, const char * text ) : database_( database )
{
   sqlite3_stmt * made = nullptr;
   const int code = sqlite3_prepare_v3(
         database.get(), text, -1, SQLITE_PREPARE_PERSISTENT, &made, nullptr );
   statement_.reset( made );
   check( code );
}

void Statement::bind( int place, std::uint64_t number )
{
   check( sqlite3_bind_int64(
         statement_.get(), place, static_cast< sqlite3_int64 >( number ) ) );
}

void Statement::bind( int place, std::string_view text )
{
   check( sqlite3_bind_text64( statement_.get(), place, text.empty() ? "" : text.data(),
         text.size(), SQLITE_STATIC, SQLITE_UTF8 ) );
}

// Where the address is null, SQLite would take no bytes for no value.
void Statement::bind( int place, std::span< const std::byte > bytes )
{
   const void * const from = bytes.empty() ? "" : static_cast< const void * >( bytes.data() );
   check( sqlite3_bind_blob64( statement_.get(), place, from, bytes.size(), SQLITE_STATIC ) );
}

bool Statement::step()
{
   const int code = sqlite3_step( statement_.get() );
   if ( code == SQLITE_ROW ) {
      return true;
   }
   if ( code != SQLITE_DONE ) {
      check( code );
   }
   check( sqlite3_reset( statement_.get() ) );
   return false;
}

void Statement::run()
{
   while ( step() ) {
   }
}

std::uint64_t Statement::number( int column ) const noexcept
{
   return static_cast< std::uint64_t >( sqlite3_column_int64( statement_.get(), column ) );
}

std::string Statement::text( int column ) const
{
   const auto found = bytes( column );
   return { reinterpret_cast< const char * >( found.data() ), found.size() };
}

// As they lie in the row: nothing is converted, which could want memory. The order of the calls is
// SQLite's.
std::span< const std::byte > Statement::bytes( int column ) const noexcept
{
   const void * const at = sqlite3_column_blob( statement_.get(), column );
   const int size = sqlite3_column_bytes( statement_.get(), column );
   return at == nullptr ? std::span< const std::byte >{}
                        : std::span( static_cast< const std::byte * >( at ),
                                static_cast< std::size_t >( size ) );
}

void Statement::check( int code ) const
{
   if ( code != SQLITE_OK ) {
      database_.fail( code );
   }
}

} // namespace Vok::Store::Detail
