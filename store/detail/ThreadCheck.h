// Finds, in debug builds, calls that come from another thread than the one that they belong to.
#pragma once

#ifndef NDEBUG
#include "Vok/Assert.h"

#include <thread>
#endif

namespace Vok::Store::Detail {

#ifdef NDEBUG

/// Nothing, where the compiler does without assertions. What has one is no part of a public class:
/// a library and its user may be built differently.
class ThreadCheck {
 public:
   void check( const char * ) const noexcept {}
};

#else

/// Belongs to the thread that made it.
class ThreadCheck {
 public:
   /// Ends the process in any other thread. `call` is what was called.
   void check( const char * call ) const noexcept
   {
      if ( std::this_thread::get_id() != owner_ ) {
         assertionFailed( "store/detail/ThreadCheck.h", __LINE__, call,
               "std::this_thread::get_id() == owner_", "called from a thread that may not" );
      }
   }

 private:
   std::thread::id owner_ = std::this_thread::get_id();
};

#endif

} // namespace Vok::Store::Detail
