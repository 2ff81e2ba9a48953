// What may come next on a command line.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/ShellLine.h"

#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace Flowtrack {

/// Completes by what the arguments of commands are called: PATH, ATTRIBUTE, KEY and VALUE from the
/// running store, TYPE from the data model. Without a store there is nothing to be said of paths.
class Completer {
 public:
   Completer( const CLI::App & program, Context & context )
         : program_( program ),
           context_( context )
   {
   }

   /// What may take the place of the last word of a line, the beginning of one or nothing: as the
   /// shell has to be given it.
   std::vector< std::string > complete( const ShellLine & line );

 private:
   using Words = std::vector< std::string >;

   void storeIs( const std::map< std::string, std::string > & given );
   Words argument( const std::string & name, const Words & before, const std::string & word );
   Words paths( const std::string & word );
   Words places( const std::string & word );
   Words attributes( const Vok::Entity & entity ) const;
   Words keys( const Vok::Entity & entity, const std::string & attribute ) const;
   Words values( const Vok::Entity & entity, const std::string & attribute ) const;
   static Words types();

   const CLI::App & program_;
   Context & context_;
};

} // namespace Flowtrack
