// What a command works on: the trees of a running store, or the one of a file; and where it prints.
#pragma once

#include "Vok/Vok.h"
#include "store/Client.h"
#include "tools/derive/StoreOptions.h"
#include "tools/flowtrack/Errors.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace Flowtrack {

class Session;

/// What is done to an entity.
using Change = std::function< void( Vok::Entity & ) >;

/// What is said before the command.
struct Options {
   Derive::StoreOptions store; ///< where it is
   std::string file; ///< a file in JSON in the place of a store; empty: the store
   std::string type; ///< full name: of the tree in the file, or of a mount that is made
   bool takeOver = false; ///< a mount is written though another process writes it
};

/// One for the program. A PATH is a mount's path, then, for a place in its tree, `:` and the form
/// that Vok::pathOf gives: `flowtracking/status/sampled:/ftStatus[ft1]`. Of a file it is the place
/// alone: `/ftStatus[ft1]`, or `/`.
///
/// What fails is thrown as CommandError, what data do not allow as the framework throws it.
class Context {
 public:
   Context( std::ostream & standardOutput, std::ostream & standardError );
   Context( const Context & ) = delete;
   Context & operator=( const Context & ) = delete;
   ~Context();

   std::ostream & out;
   std::ostream & err;
   bool terminal; ///< what is printed is seen by a person
   bool colours; ///< who does not mind colours
   Options options;
   ExitCode exitCode = done; ///< of a command that was done

   /// Whether anybody can still read what is printed: the other end of a pipe may have gone.
   bool isHeard() const;

   /// The entity at a path: a replica, as it is now. The tree lives as long as this.
   Corvo::Ptr< Vok::Entity > read( const std::string & path );

   /// Changes the entity at a path, and waits until the store has all of it, or the file is
   /// written. What `change` throws is thrown on, and nothing is changed then; it is called with
   /// copies, and may be called twice. A mount, or a file, that is not there is made, where `type`
   /// says of which type; one of another type is an error.
   void edit( const std::string & path, const std::string & type, const Change & change );

   /// The connection to the store, which is made at the first call.
   Session & session();

 private:
   Corvo::Ptr< Vok::Entity > fileTree() const;

   std::unique_ptr< Session > session_;
   std::vector< Corvo::Ptr< Vok::Entity > > held_;
};

} // namespace Flowtrack
