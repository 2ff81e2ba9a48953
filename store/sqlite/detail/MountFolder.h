// The folder in which mounts are kept: what lies where.
//
//    lock                         held while a keeper uses the folder; has its process's number
//    mounts/NAME/mount.sqlite     a mount
//    making/mount.sqlite          a mount that is being made
//    gone/                        a mount that is being removed
//    aside/NAME@WHEN/             what was set aside, with why.txt
#pragma once

#include "store/sqlite/detail/Disk.h"

#include <optional>
#include <string>
#include <vector>

namespace Vok::Store::Detail {

/// The name of a mount's folder: its path with `+` in place of `/`, and behind a `+` where that
/// were the folder itself or the one above it.
std::string nameOfPath( const std::string & path );

/// The path that has this name, if any.
std::optional< std::string > pathOfName( const std::string & name );

/// Functions throw std::system_error. What they have done stays, whatever happens to the machine.
class MountFolder {
 public:
   /// Makes what is missing, locks the folder, and removes what was not finished.
   MountFolder( Disk & disk, const std::string & folder );
   MountFolder( const MountFolder & ) = delete;
   MountFolder & operator=( const MountFolder & ) = delete;
   ~MountFolder();

   const char * vfs() const noexcept { return disk_.vfs(); }

   /// The names of all mounts.
   std::vector< std::string > names() const;

   /// Whether there is a mount, and its database.
   bool has( const std::string & name ) const;
   std::string file( const std::string & name ) const;

   /// The database of a mount that is to be made: `finish` brings it to the disk and gives it its
   /// name, after it has been written and closed.
   std::string begin();
   void finish( const std::string & name );

   /// What was found under its name stays there.
   void keepNames();

   void remove( const std::string & name );

   /// Where it is now.
   std::string setAside( const std::string & name, const std::string & path,
         const std::string & why );

 private:
   void lock();

   Disk & disk_;
   std::string folder_;
   int lock_ = -1;
};

} // namespace Vok::Store::Detail
