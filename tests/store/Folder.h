// A folder that goes with the test.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>

namespace TestSupport {

/// In memory, where there is such a place: a disk would only make tests wait.
class Folder {
 public:
   Folder()
   {
      namespace fs = std::filesystem;
      const fs::path memory = "/dev/shm";
      std::string name = ( fs::exists( memory ) ? memory : fs::temp_directory_path() ) /
            "storeXXXXXX";
      path_ = mkdtemp( name.data() );
   }
   Folder( const Folder & ) = delete;
   Folder & operator=( const Folder & ) = delete;
   ~Folder() { std::filesystem::remove_all( path_ ); }

   const std::string & path() const noexcept { return path_; }

 private:
   std::string path_;
};

} // namespace TestSupport
