// Trees that outlive the process that writes them.
#pragma once

#include "Vok/Vok.h"

#include <memory>
#include <string>
#include <vector>

namespace Derive {

/// Trees in a file, one batch each. The file is replaced as a whole: a process that is killed while
/// it writes leaves the one before.
class Kept {
 public:
   /// Brings the trees to what the file holds, if there is one. Throws std::system_error where it
   /// cannot be read, and what the reader of batches throws where it is damaged.
   Kept( std::string path, const std::vector< Corvo::Ptr< Vok::Entity > > & trees );

   /// Keeps the trees as they are, if they changed, and says whether they did.
   bool keep();

 private:
   std::string path_;
   std::vector< std::unique_ptr< Vok::EntityVokNboAttrLogSa > > writers_;
};

} // namespace Derive
