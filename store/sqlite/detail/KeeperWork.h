// What the keeper's thread does.
#pragma once

#include "store/Keeper.h"
#include "store/sqlite/detail/MountFile.h"
#include "store/sqlite/detail/MountFolder.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Vok::Store::Detail {

/// Functions that give a text give what went wrong, empty where nothing did.
class KeeperWork {
 public:
   explicit KeeperWork( MountFolder & folder ) : folder_( folder ) {}

   using Keeps = std::function< bool( std::string_view path ) >;
   using Tell = std::function< void( const std::string & path, std::string problem ) >;

   /// Tells what it leaves out.
   std::vector< Keeper::Kept > load( const Keeps & keeps, const Tell & tell );

   std::string keep( const Keeper::Request & request );
   std::string remove( const std::string & path );
   std::string setAside( const std::string & path, const std::string & why );

 private:
   /// A database that is open.
   struct Open {
      Open( const std::string & path, const char * vfs ) : file( path, vfs ) {}
      MountFile file;
      std::uint64_t used = 0; ///< by which request, last
   };

   /// Each takes three descriptors. What was not used for longest is closed where there were more.
   static constexpr std::size_t mostOpen = 64;

   void load( const std::string & name, const Keeps & keeps, const Tell & tell,
         std::vector< Keeper::Kept > & all );
   void write( const std::string & name, const Keeper::Request & request );
   void make( const std::string & name, const Keeper::Request & request );
   MountFile & open( const std::string & name );

   /// Without finishing what its log has.
   void leave( const std::string & name ) noexcept;

   /// What has become of a damaged one, as a text.
   std::string moveAway( const std::string & name, const std::string & path,
         const std::string & why );

   MountFolder & folder_;
   std::map< std::string, Open, std::less<> > open_; // by name
   std::set< std::string, std::less<> > behind_; // paths whose last batch may not be kept
   std::uint64_t requests_ = 0;
};

} // namespace Vok::Store::Detail
