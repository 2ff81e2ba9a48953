// What a loop runs. Part of Loop.cpp, Connection.cpp and Listener.cpp.
#pragma once

#include "store/detail/ThreadCheck.h"

#include <uv.h>

#include <array>
#include <cstddef>
#include <exception>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

namespace Vok::Store::Detail {

/// What a program tells of an error of libuv, which are the system's with the sign changed.
inline std::system_error systemError( int code, const std::string & what )
{
   return { -code, std::generic_category(), what };
}

/// Does its work before a loop waits, and after it has.
class LoopUser {
 public:
   virtual ~LoopUser() = default;
   virtual void work() = 0;

   /// Whether there is work after all: another user's may have made some.
   virtual bool hasWork() const noexcept = 0;
};

struct LoopState {
   uv_loop_t loop{};
   std::vector< LoopUser * > users;
   bool turns = true; ///< libuv waits for what it was told to only after another turn
   std::exception_ptr thrown; ///< in a callback of libuv, which lets none through
   ThreadCheck thread;

   /// What a socket gives, until its user has taken it: idle connections need no memory for it.
   std::array< std::byte, 65536 > input;
   std::array< std::byte, 16384 > decrypted; ///< the same of one record

   /// Begins to wait for something, or for something else.
   void wait( uv_poll_t & poll, int events, uv_poll_cb happened ) noexcept
   {
      uv_poll_start( &poll, events, happened );
      turns = true;
   }

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
