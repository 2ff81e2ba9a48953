#include "vokgen/ImportPath.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace fs = std::filesystem;

namespace VokGen {
namespace {

fs::path resolved( const fs::path & path )
{
   std::error_code failed;
   fs::path result = fs::weakly_canonical( path, failed );
   return failed ? path : result;
}

bool isSearched( const fs::path & folder )
{
   std::error_code failed;
   const std::string name = folder.filename().string();
   return ( name.empty() || name.front() != '.' ) &&
         !fs::exists( folder / "CMakeCache.txt", failed );
}

} // namespace

void ImportPath::search()
{
   if ( searched_ ) {
      return;
   }
   searched_ = true;
   std::set< fs::path > known;
   for ( const std::string & folder : folders_ ) {
      std::error_code failed;
      std::vector< fs::path > found;
      fs::recursive_directory_iterator entry( folder,
            fs::directory_options::skip_permission_denied, failed );
      for ( ; !failed && entry != fs::recursive_directory_iterator(); entry.increment( failed ) ) {
         std::error_code unknown;
         if ( entry->is_directory( unknown ) && !isSearched( entry->path() ) ) {
            entry.disable_recursion_pending();
         } else if ( entry->path().extension() == ".vok" && entry->is_regular_file( unknown ) ) {
            found.push_back( entry->path() );
         }
      }
      std::sort( found.begin(), found.end() );
      for ( const fs::path & path : found ) {
         if ( known.insert( resolved( path ) ).second ) {
            files_[ path.stem().string() ].push_back( path.string() );
         }
      }
   }
}

const std::vector< std::string > & ImportPath::filesOf( const std::string & module )
{
   search();
   static const std::vector< std::string > none;
   const auto found = files_.find( module );
   return found == files_.end() ? none : found->second;
}

std::vector< std::string > ImportPath::modules()
{
   search();
   std::vector< std::string > names;
   for ( const auto & [ name, files ] : files_ ) {
      names.push_back( name );
   }
   return names;
}

std::string ImportPath::headerOf( const std::string & file ) const
{
   fs::path header = fs::path( file ).filename();
   std::size_t depth = 0;
   const fs::path path = resolved( file );
   for ( const std::string & folder : folders_ ) {
      const fs::path base = resolved( folder );
      const auto length = static_cast< std::size_t >( std::distance( base.begin(), base.end() ) );
      const auto [ inBase, inPath ] =
            std::mismatch( base.begin(), base.end(), path.begin(), path.end() );
      const bool below =
            inBase == base.end() || ( inBase->empty() && std::next( inBase ) == base.end() );
      if ( below && length > depth ) {
         depth = length;
         header = path.lexically_relative( base );
      }
   }
   return header.replace_extension( ".h" ).generic_string();
}

} // namespace VokGen
