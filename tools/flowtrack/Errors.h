// What commands end with.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace Flowtrack {

enum ExitCode {
   done = 0,
   notFound = 1, ///< or what was compared differs
   wrongUsage = 2,
   refused = 3, ///< the store cannot be reached, or does not take what is written
   invalidData = 4
};

/// A command cannot be done. It is told as `flowtrack: TEXT`, then the hint on a line of its own.
class CommandError : public std::runtime_error {
 public:
   CommandError( ExitCode code, const std::string & text, std::string hint = {} )
         : std::runtime_error( text ),
           code_( code ),
           hint_( std::move( hint ) )
   {
   }

   ExitCode code() const noexcept { return code_; }
   const std::string & hint() const noexcept { return hint_; }

 private:
   ExitCode code_;
   std::string hint_;
};

} // namespace Flowtrack
