// A connection to the store, for as long as a command takes.
#pragma once

#include "store/Client.h"
#include "store/Wire.h"
#include "store/net/Connection.h"
#include "store/net/Loop.h"
#include "tools/derive/StoreOptions.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Place.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Flowtrack {

/// What the store knows every command as. None of them writes for longer than its change takes.
inline constexpr const char * programName = "flowtrack";

/// See Context, whose half that needs a store it is.
class Session {
 public:
   /// Connects. Throws CommandError where there is no connection after some seconds.
   explicit Session( const Derive::StoreOptions & store );

   Vok::Store::Loop & loop() noexcept { return loop_; }
   Vok::Store::Client & client() noexcept { return client_; }

   /// The mounts of a pattern. Throws CommandError.
   std::vector< Vok::Store::MountEntry > list( const std::string & pattern, bool trees );

   /// The tree of a mount, as it is now. Throws CommandError where there is none.
   Corvo::Ptr< Vok::Entity > read( const std::string & mount );

   /// All trees of a pattern that can be read, by path.
   std::vector< std::pair< std::string, Corvo::Ptr< Vok::Entity > > > readAll(
         const std::string & pattern );

   /// Changes the tree of a mount. See Context::edit; `takeOver`: from the process that writes it.
   /// Where that is another command it is waited for, some seconds at most.
   void edit( const Place & place, const std::string & type, bool takeOver, const Change & change );

   /// Waits until something holds. Throws CommandError where it takes long, or the connection is
   /// lost: `what` says what did not happen.
   void wait( const std::function< bool() > & holds, const std::string & what );

   /// There is no mount at a path, by the list of mounts. Throws CommandError, with a hint.
   [[noreturn]] void throwNoMount( const std::string & mount );

 private:
   /// One attempt; false: another command writes the mount, and this was not to be the last.
   bool tryEdit( const Place & place, const std::string & type, bool takeOver,
         const Change & change, bool last );
   bool make( const Place & place, const std::string & type, const Change & change, bool last );

   /// Waits until a mount is this client's. False: as above; throws CommandError where it is
   /// refused for another reason.
   bool isOpen( const Vok::Store::Writing & writing, const std::string & mount, bool last );
   void settle( std::unique_ptr< Vok::Store::Writing > writing, const std::string & mount );

   Derive::StoreAddress store_;
   Vok::Store::Loop loop_;
   Vok::Store::Wire wire_{ programName };
   Vok::Store::Client client_{ wire_ };
   Vok::Store::Connection connection_;
};

} // namespace Flowtrack
