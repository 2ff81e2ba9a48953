// The database of one kept mount.
#pragma once

#include "store/Keeper.h"
#include "store/sqlite/detail/Database.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Vok::Store::Detail {

/// An open database. Functions throw FileException and std::bad_alloc; after any of them the
/// database is to be closed, and what the file has is what it had, or what it was to have.
class MountFile {
 public:
   /// Makes one that has a whole tree. It is closed then, and not brought to the disk.
   static void make( const std::string & file, const char * vfs, const Keeper::Request & whole );

   /// Opens one. What is of somebody else stays as it is.
   MountFile( const std::string & file, const char * vfs );

   /// All that it has, checked from end to end.
   Keeper::Kept load();

   /// Brings what is in the log into the database, and both to the disk: what was written before it
   /// was opened may be in the system's memory only, even where the system has said otherwise, when
   /// a sync failed.
   void settle();

   /// Keeps a batch: when it returns, that is on the disk.
   void keep( const Keeper::Request & request );

   /// It is closed as it is.
   void leave() noexcept { database_.leaveLog(); }

 private:
   /// What the rows of the table `mount` say.
   struct Head {
      std::string path;
      std::string type;
      std::string writer;
      std::uint64_t pieces = 0;
      std::uint64_t batches = 0;
      std::uint64_t last = 0; ///< checksum of the last piece
      std::uint64_t checksum() const noexcept;
   };

   /// The statements that keep a batch.
   struct Statements {
      explicit Statements( const Database & database );
      Statement begin, clear, insert, head, commit;
   };

   struct Empty {}; ///< a new file
   MountFile( const std::string & file, const char * vfs, Empty );

   void readHead();
   void append( Statements & statements, Head & head, const Keeper::Bytes & batch );

   Database database_;
   Head head_;
   std::optional< Statements > statements_; // once a batch is kept
};

} // namespace Vok::Store::Detail
