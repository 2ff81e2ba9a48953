// A keeper and the one who asks it, as a store would; what may be kept, as a model.
#pragma once

#include "store/sqlite/SqliteKeeper.h"
#include "store/sqlite/detail/Disk.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

using Vok::Store::Keeper;
using Vok::Store::SqliteKeeper;

/// A folder that goes with the test: in memory where the machine has such, unless it is to be on
/// the disk, which takes long.
class Folder {
 public:
   enum class Where {
      memory,
      disk
   };
   explicit Folder( Where where = Where::memory );
   Folder( const Folder & ) = delete;
   Folder & operator=( const Folder & ) = delete;
   ~Folder();

   const std::string & path() const noexcept { return path_; }

   /// In which a keeper keeps.
   std::string kept() const { return path_ + "/kept"; }

   /// The database of a mount, and what was set aside.
   std::string file( const std::string & name ) const;
   std::vector< std::string > aside() const;

 private:
   std::string path_;
};

std::string fileText( const std::string & path );

/// Overwrites it.
void writeFile( const std::string & path, std::string_view text );

/// Runs statements in a database, as somebody else may.
void runIn( const std::string & database, const std::string & statements );

Keeper::Bytes bytesOf( std::string_view text );

using Batches = std::vector< Keeper::Bytes >;

/// Batches that are these texts.
Batches texts( std::initializer_list< std::string_view > all );

/// A batch that no other number has, of this size.
Keeper::Bytes batchOf( std::uint64_t number, std::size_t size );

/// A keeper that keeps all paths of up to three names, waited for.
class Keeping {
 public:
   explicit Keeping( const std::string & folder,
         Vok::Store::Detail::Disk & disk = Vok::Store::Detail::Disk::machine() );

   /// Asks, and waits for the result: the problem.
   std::string keep( const std::string & path, bool whole, std::string_view text );
   std::string keep( const Keeper::Request & request );

   /// The results that come next, one at least.
   std::vector< Keeper::Result > next();

   /// All that is kept, by path.
   std::map< std::string, Keeper::Kept > load();

 private:
   std::mutex mutex_;
   std::condition_variable woken_;
   bool awake_ = false;

 public:
   SqliteKeeper keeper;
};

/// What may be kept of each path, as far as the results say.
class History {
 public:
   /// No value: nothing.
   struct State {
      std::string type;
      std::string writer;
      Batches batches;
      friend bool operator==( const State &, const State & ) = default;
   };
   using MaybeState = std::optional< State >;

   /// It is about to be asked.
   void asked( const Keeper::Request & request );
   void removing( const std::string & path );

   void told( const Keeper::Result & result );

   /// Whether this may be what is kept, which is known from then on. Else a text that says what is
   /// wrong.
   std::string found( const std::map< std::string, Keeper::Kept > & kept );

   /// Whether a batch of the path is under way, and whether the next one is to be whole.
   bool busy( const std::string & path ) const { return requests_.contains( path ); }
   bool idle() const { return requests_.empty(); }
   bool needsWhole( const std::string & path ) { return paths_[ path ].needsWhole; }

 private:
   struct Path {
      MaybeState last; ///< as it is once all that was asked is done
      std::vector< MaybeState > possible{ std::nullopt };
      bool needsWhole = true;
      std::optional< std::uint64_t > removing; ///< asked after the request of this number
   };
   std::map< std::string, Path > paths_;
   std::map< std::string, std::uint64_t > requests_; // under way, by path
   std::uint64_t lastAsked_ = 0;
};

/// Asks at random: batches of all sizes, some of them whole, for several paths at a time.
class RandomAsker {
 public:
   RandomAsker( std::uint64_t seed, std::uint64_t firstNumber ) : random_( seed ),
                                                                  number_( firstNumber ) {}

   /// The path of the next step, the batch to be kept there, if it is none to be removed.
   struct Step {
      std::string path;
      std::optional< Keeper::Request > request;
   };

   /// One that the history allows; no value where every path is busy.
   std::optional< Step > next( History & history );

   std::mt19937_64 & random() noexcept { return random_; }

 private:
   std::mt19937_64 random_;
   std::uint64_t number_;
};

/// A request for the batch of this number.
Keeper::Request requestOf( const std::string & path, std::uint64_t number, bool whole,
      std::size_t size );

} // namespace TestSupport
