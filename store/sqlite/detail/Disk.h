// What the keeper does to folders and files beside SQLite. Tests have disks that fail.
#pragma once

#include <string>
#include <string_view>

namespace Vok::Store::Detail {

/// The machine's. All functions throw std::system_error, which names the path.
class Disk {
 public:
   virtual ~Disk() = default;

   /// For the owner alone. False: there is one.
   virtual bool makeFolder( const std::string & path );
   virtual void rename( const std::string & from, const std::string & to );

   /// A file, or a folder with all below it; nothing where there is none.
   virtual void removeAll( const std::string & path );
   virtual void write( const std::string & path, std::string_view text );

   /// What was written to a file, or the names in a folder, stay whatever happens to the machine.
   virtual void sync( const std::string & path );

   /// The file system that SQLite is to use; null: its own.
   virtual const char * vfs() const noexcept { return nullptr; }

   static Disk & machine();
};

/// What is thrown for an error of the system.
[[noreturn]] void throwSystemError( int error, const std::string & what );

} // namespace Vok::Store::Detail
