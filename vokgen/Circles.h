// Walks over types that need one another, each after those that it needs; circles are errors.
#pragma once

#include "vokgen/Scopes.h"

#include <functional>

namespace VokGen {

/// A type that another one needs, and where it says so.
struct Need {
   TypeDraft * type = nullptr;
   Range range;
};

/// Visits types depth first. Does not recurse: a chain of needs may be as long as a file.
class CircleFinder {
 public:
   using Needs = std::function< std::vector< Need >( const TypeDraft & ) >;
   using Visit = std::function< void( TypeDraft & ) >;

   /// `message` is reported for a circle, with the circle as text. `visit` is called once for each
   /// type, after it has been for all that it needs.
   CircleFinder( const Scopes & scopes, Message message, Needs needs, Visit visit );

   /// Visits a type and all that it needs, as far as they have not been visited.
   void walk( TypeDraft & from );

 private:
   struct State {
      bool running = true;
      std::size_t index = 0; ///< On the path, while it is running.
   };
   struct Step {
      TypeDraft * type = nullptr;
      std::vector< Need > needs;
      std::size_t next = 0;
   };

   void report( const Need & closing, std::size_t first );

   const Scopes & scopes_;
   Message message_;
   Needs needs_;
   Visit visit_;
   std::unordered_map< const TypeDraft *, State > states_;
   std::vector< Step > path_;
};

} // namespace VokGen
