// Keeps mounts in SQLite databases, one for each mount, so that they outlive the store.
//
//    Vok::Store::SqliteKeeper keeper( "/var/lib/flowtrackd", { PathPattern( "config/*" ) }, wake );
//    Vok::Store::Server server( clock, { .keeper = &keeper } );
#pragma once

#include "Vok/Export.h"
#include "store/Keeper.h"
#include "store/Path.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Vok::Store {

namespace Detail {
class Disk;
struct KeeperState;
} // namespace Detail

/// What lies where and how it is written: docs/store.md. All functions are called from one thread,
/// the constructor and the destructor too; none but `load` and those two waits for the disk. A
/// thread of the keeper's own does what they ask, in order. The requests that wait are not bounded
/// here: a store has one batch of a mount waiting at a time.
///
/// Results with number 0 tell what became of a mount without a request for a batch: after `load`,
/// what could not be loaded and was set aside or left where it is; later, a mount that could not be
/// removed or set aside.
class VOK_EXPORT SqliteKeeper final : public Keeper {
 public:
   /// Keeps the mounts that one of `keeps` matches. The folder is made where it is missing, but not
   /// those above it, and is nobody else's while the keeper is there. `wake` is called from the
   /// keeper's thread whenever there are results, until the destructor has returned; it must not
   /// throw, nor call the keeper. Throws std::system_error, which names the folder: it cannot be
   /// used, its name is too long, or another keeper uses it.
   SqliteKeeper( const std::string & folder, std::vector< PathPattern > keeps,
         std::function< void() > wake );

   /// For tests: what is not read through `disk` alone is of its making. It outlives the keeper.
   VOK_HIDDEN SqliteKeeper( const std::string & folder, std::vector< PathPattern > keeps,
         std::function< void() > wake, Detail::Disk & disk );

   SqliteKeeper( const SqliteKeeper & ) = delete;
   SqliteKeeper & operator=( const SqliteKeeper & ) = delete;

   /// Does first what was asked; results that nobody took are lost.
   ~SqliteKeeper() override;

   bool keeps( std::string_view path ) const override;

   /// What no pattern matches is not among it, and stays in the folder. Throws std::system_error
   /// where the folder cannot be read, and std::bad_alloc.
   std::vector< Kept > load() override;

   void keep( Request request ) override;
   void remove( const std::string & path ) override;
   void setAside( const std::string & path, const std::string & why ) override;
   std::vector< Result > results() override;

 private:
   std::unique_ptr< Detail::KeeperState > state_;
};

} // namespace Vok::Store
