// SQLite, as far as the keeper uses it.
#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Vok::Store::Detail {

/// A mount's file cannot be used; what() says why, without the name of the file.
class FileException : public std::runtime_error {
 public:
   enum class Kind : std::uint8_t {
      failed, ///< now; another time it may be
      damaged, ///< it does not have what was written to it
      foreign ///< nobody knows what is in it
   };

   FileException( Kind kind, const std::string & what ) : std::runtime_error( what ),
                                                          kind_( kind ) {}

   Kind kind() const noexcept { return kind_; }

 private:
   Kind kind_;
};

/// A connection to a database. Functions throw FileException, with SQLite's words, and
/// std::bad_alloc.
class Database {
 public:
   /// SQLite's flags; null is its own file system.
   Database( const std::string & file, int flags, const char * vfs );

   /// Statements that give nothing, or nothing of interest.
   void run( const char * statements );

   /// What is in the log stays there when it is closed, and the file as it is.
   void leaveLog() noexcept;

   sqlite3 * get() const noexcept { return connection_.get(); }

   [[noreturn]] void fail( int code ) const;

 private:
   struct Close {
      void operator()( sqlite3 * connection ) const noexcept { sqlite3_close( connection ); }
   };
   std::unique_ptr< sqlite3, Close > connection_;
};

/// A statement, which does not outlive its database. Places and columns begin as SQLite's do: with
/// 1 and 0.
class Statement {
 public:
   Statement( const Database & database, const char * text );

   /// What is bound stays until the statement has run.
   void bind( int place, std::uint64_t number );
   void bind( int place, std::string_view text );
   void bind( int place, std::span< const std::byte > bytes );

   /// Whether there is a row. After the last one it begins anew.
   bool step();

   /// For one that gives no rows.
   void run();

   /// Of the row: what a type has no value for is 0 or empty.
   std::uint64_t number( int column ) const noexcept;
   std::string text( int column ) const;
   std::span< const std::byte > bytes( int column ) const noexcept;

 private:
   void check( int code ) const;

   struct Finalize {
      void operator()( sqlite3_stmt * one ) const noexcept { sqlite3_finalize( one ); }
   };
   const Database & database_;
   std::unique_ptr< sqlite3_stmt, Finalize > statement_;
};

} // namespace Vok::Store::Detail
