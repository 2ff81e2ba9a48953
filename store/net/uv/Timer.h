// Something that is to be done after a while. Part of Connection.cpp, Acceptor.cpp, Accepted.cpp.
#pragma once

#include "store/net/uv/LoopState.h"

#include <uv.h>

#include <chrono>
#include <functional>
#include <utility>

namespace Vok::Store::Detail {

class Timer {
 public:
   /// What `due` throws comes out of Loop::run().
   Timer( LoopState & loop, std::function< void() > due ) : loop_( loop ),
                                                            due_( std::move( due ) ),
                                                            timer_( new uv_timer_t )
   {
      uv_timer_init( &loop.loop, timer_ );
      timer_->data = this;
   }
   Timer( const Timer & ) = delete;
   Timer & operator=( const Timer & ) = delete;
   ~Timer()
   {
      uv_close( reinterpret_cast< uv_handle_t * >( timer_ ),
            []( uv_handle_t * handle ) { delete reinterpret_cast< uv_timer_t * >( handle ); } );
   }

   /// Once, and from now on: what was to come before does not.
   void start( std::chrono::milliseconds after ) noexcept
   {
      uv_update_time( &loop_.loop );
      uv_timer_start(
            timer_,
            []( uv_timer_t * timer ) {
               auto * const self = static_cast< Timer * >( timer->data );
               uv_stop( timer->loop ); // which may be about to wait: there is work first
               self->loop_.guard( [ self ] { self->due_(); } );
            },
            static_cast< std::uint64_t >( after.count() ), 0 );
   }

   void stop() noexcept { uv_timer_stop( timer_ ); }

 private:
   LoopState & loop_;
   std::function< void() > due_;
   uv_timer_t * timer_; // libuv needs it until it is closed
};

} // namespace Vok::Store::Detail
