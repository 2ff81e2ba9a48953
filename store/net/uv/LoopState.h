// What a loop runs. Part of Loop.cpp, Connection.cpp and Listener.cpp.
#pragma once

#include <uv.h>

#include <exception>
#include <functional>
#include <vector>

namespace Vok::Store::Detail {

/// Does its work before a loop waits, and after it has.
class LoopUser {
 public:
   virtual ~LoopUser() = default;
   virtual void work() = 0;
};

struct LoopState {
   uv_loop_t loop{};
   std::vector< LoopUser * > users;
   std::exception_ptr thrown; ///< in a callback of libuv, which lets none through

   /// For callbacks of libuv: what `f` throws comes out of Loop::run().
   template< class F > void guard( F f ) noexcept
   {
      try {
         f();
      } catch ( ... ) {
         if ( !thrown ) {
            thrown = std::current_exception();
         }
      }
   }
};

} // namespace Vok::Store::Detail
