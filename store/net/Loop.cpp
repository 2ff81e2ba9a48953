// The event loop, over libuv's.
#include "store/net/Loop.h"

#include "store/net/uv/LoopState.h"
#include "store/net/uv/Stream.h"

#include <utility>

namespace Vok::Store {

namespace {

void workAll( Detail::LoopState & state )
{
   for ( std::size_t i = 0; i != state.users.size(); ++i ) {
      state.users[ i ]->work();
   }
   if ( state.thrown ) {
      std::rethrow_exception( std::exchange( state.thrown, nullptr ) );
   }
}

void runOnce( Detail::LoopState & state, uv_run_mode mode )
{
   workAll( state );
   uv_run( &state.loop, mode );
   workAll( state );
}

} // namespace

Loop::Loop() : state_( std::make_unique< Detail::LoopState >() )
{
   if ( const int code = uv_loop_init( &state_->loop ); code != 0 ) {
      throw Detail::systemError( code, "an event loop cannot be made" );
   }
}

Loop::~Loop()
{
   uv_run( &state_->loop, UV_RUN_NOWAIT ); // so that what was closed is freed
   uv_loop_close( &state_->loop );
}

int Loop::descriptor() const noexcept
{
   return uv_backend_fd( &state_->loop );
}

std::chrono::milliseconds Loop::timeout() const noexcept
{
   return std::chrono::milliseconds( uv_backend_timeout( &state_->loop ) );
}

void Loop::run()
{
   runOnce( *state_, UV_RUN_NOWAIT );
}

bool Loop::runUntil( const std::function< bool() > & done, std::chrono::milliseconds most )
{
   struct Deadline {
      uv_timer_t timer{};
      bool passed = false;
   };
   auto deadline = std::make_unique< Deadline >();
   uv_timer_init( &state_->loop, &deadline->timer );
   deadline->timer.data = deadline.get();
   uv_update_time( &state_->loop );
   uv_timer_start(
         &deadline->timer,
         []( uv_timer_t * timer ) { static_cast< Deadline * >( timer->data )->passed = true; },
         static_cast< std::uint64_t >( most.count() ), 0 );
   const auto close = []( Deadline * one ) {
      uv_close( reinterpret_cast< uv_handle_t * >( &one->timer ), []( uv_handle_t * handle ) {
         delete static_cast< Deadline * >( handle->data );
      } );
   };
   const std::unique_ptr< Deadline, decltype( close ) > held( deadline.release(), close );
   while ( !done() ) {
      if ( held->passed ) {
         return false;
      }
      runOnce( *state_, UV_RUN_ONCE );
   }
   return true;
}

} // namespace Vok::Store
