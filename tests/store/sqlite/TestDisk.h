// A disk that fails when it is told to, and that forgets what was not synced when the power goes:
// for the keeper's own calls and, as a file system of SQLite, for SQLite's.
#pragma once

#include "store/sqlite/detail/Disk.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

/// What a disk has of files and folders, and what it would have if the power went. Paths are
/// absolute.
class DiskModel {
 public:
   /// The bytes of a file.
   struct Content {
      /// Since the last sync. A cut, if it has no bytes.
      struct Change {
         std::size_t at;
         std::string bytes;
      };
      std::string durable;
      std::vector< Change > changes;
   };
   using File = std::shared_ptr< Content >; ///< null: a folder

   void add( const std::string & path, const File & file );
   void remove( const std::string & path );
   void rename( const std::string & from, const std::string & to );

   /// The file of this name, which is added where there is none.
   File open( const std::string & path );

   /// What stands in a folder is on the disk from now on.
   void syncFolder( const std::string & path );
   static void sync( Content & file );

   /// It failed: of what was changed, what is on the disk is there by chance, and the rest is never
   /// brought there, unless it is changed again.
   static void syncFailed( Content & file, std::mt19937_64 & random );

   /// Makes what a machine finds of the folder `from` once it has power again, in the folder `to`.
   void restore( const std::string & from, const std::string & to, std::mt19937_64 & random ) const;

 private:
   using Names = std::map< std::string, File >;

   /// Of the names: something was added, or removed with all below it, or both.
   struct NameChange {
      std::string gone;
      std::string added;
      File file;
      bool isMove() const noexcept { return !gone.empty() && !added.empty(); }
   };
   static void apply( Names & names, const NameChange & change );
   static void applySome( std::string & bytes, const Content::Change & change,
         std::mt19937_64 & random );
   void change( NameChange change );

   Names names_;
   Names durable_;
   std::vector< NameChange > changes_;
};

/// Its functions may be called while the keeper is at work.
class TestDisk final : public Vok::Store::Detail::Disk {
 public:
   enum class Fault {
      once, ///< one operation fails
      on, ///< that, and all that follow, until it is healed
      full ///< of these, those that need room; half of what is written comes to the disk
   };

   explicit TestDisk( std::uint64_t seed );
   ~TestDisk() override;

   /// The operation number k from now on fails, 1 is the next one. Of reads, or of all others.
   void failAt( std::size_t k, Fault fault );
   void failReadAt( std::size_t k );
   void heal();

   /// Whether one has failed since.
   bool failed() const;

   /// How many there were, without reads.
   std::size_t operations() const;

   /// In the folder `to`, which is made: what there is of the folder `from` if the power goes now.
   void restore( const std::string & from, const std::string & to, std::mt19937_64 & random ) const;

   bool makeFolder( const std::string & path ) override;
   void rename( const std::string & from, const std::string & to ) override;
   void removeAll( const std::string & path ) override;
   void write( const std::string & path, std::string_view text ) override;
   void sync( const std::string & path ) override;
   const char * vfs() const noexcept override { return name_.c_str(); }

   // For the file system of SQLite.

   /// What an operation does to the disk; whether it succeeds.
   enum class Need {
      room,
      nothing
   };
   bool operate( Need need );
   bool read();

   /// While this is held, nothing else changes the model.
   std::unique_lock< std::mutex > lock() const { return std::unique_lock( mutex_ ); }
   DiskModel & model() noexcept { return model_; }
   std::mt19937_64 & random() noexcept { return random_; }

 private:
   void operateOrThrow( Need need, const std::string & path );

   const std::string name_;
   mutable std::mutex mutex_; // of all that follows
   DiskModel model_;
   std::mt19937_64 random_;
   std::size_t operations_ = 0;
   std::size_t failAt_ = 0; // 0: never
   Fault fault_ = Fault::once;
   std::size_t reads_ = 0;
   std::size_t failReadAt_ = 0;
   bool failed_ = false;
   sqlite3_vfs vfs_;
};

/// Fills in a file system of SQLite for a disk.
void makeVfs( sqlite3_vfs & vfs, TestDisk & disk );

} // namespace TestSupport
