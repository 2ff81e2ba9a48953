// What programs over the store have in common: a connection, signals, and one loop for all.
#pragma once

#include "store/Client.h"
#include "store/Wire.h"
#include "store/net/Connection.h"
#include "store/net/Loop.h"
#include "tools/derive/StoreOptions.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace Derive {

/// What the programs end with.
enum ExitCode {
   done = 0, ///< they were told to end
   failed = 1, ///< something that they need is not there
   wrongUsage = 2,
   refused = 3 ///< the store does not take what they write
};

/// A program that runs until SIGTERM or SIGINT. Made before the program has any other thread.
class StoreProgram {
 public:
   /// Begins to connect. Throws what StoreAddress does, and std::system_error.
   StoreProgram( const std::string & name, const StoreOptions & store );
   StoreProgram( const StoreProgram & ) = delete;
   StoreProgram & operator=( const StoreProgram & ) = delete;
   ~StoreProgram();

   Vok::Store::Client & client() noexcept { return client_; }

   /// A descriptor besides, and what is done once it is readable.
   struct Watched {
      int descriptor;
      std::function< void() > readable;
   };

   /// Calls `step` after whatever happened, and every `interval` at the latest, until it says that
   /// it is the last time, or a signal does. Tells on standard error of connections that come and
   /// go.
   void run( const std::function< std::vector< Watched >() > & watched,
         const std::function< bool() > & step, std::chrono::milliseconds interval );

 private:
   void tellConnection();

   std::string name_;
   StoreAddress store_;
   int signals_;
   Vok::Store::Loop loop_;
   Vok::Store::Wire wire_;
   Vok::Store::Client client_;
   Vok::Store::Connection connection_;
   std::string told_; ///< of the connection
};

} // namespace Derive
