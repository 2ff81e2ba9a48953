// The event loop, over libuv's.
#include "store/net/Loop.h"

#include "store/net/uv/LoopState.h"

#include <algorithm>
#include <utility>

namespace Vok::Store {

namespace Detail {

class WatchState {
 public:
   WatchState( LoopState & loop, int descriptor, std::function< void() > readable )
         : loop_( loop ),
           readable_( std::move( readable ) ),
           poll_( new uv_poll_t )
   {
      if ( const int code = uv_poll_init( &loop.loop, poll_, descriptor ); code != 0 ) {
         delete poll_;
         throw systemError( code, "a descriptor cannot be waited for" );
      }
      poll_->data = this;
      loop.wait( *poll_, UV_READABLE, []( uv_poll_t * poll, int, int ) {
         auto * const self = static_cast< WatchState * >( poll->data );
         self->loop_.guard( [ self ] { self->readable_(); } );
      } );
   }
   WatchState( const WatchState & ) = delete;
   WatchState & operator=( const WatchState & ) = delete;
   ~WatchState()
   {
      loop_.thread.check( "Watch::~Watch" );
      uv_close( reinterpret_cast< uv_handle_t * >( poll_ ),
            []( uv_handle_t * handle ) { delete reinterpret_cast< uv_poll_t * >( handle ); } );
   }

 private:
   LoopState & loop_;
   std::function< void() > readable_;
   uv_poll_t * poll_; // libuv needs it until it is closed
};

} // namespace Detail

namespace {

void workAll( Detail::LoopState & state )
{
   do {
      for ( std::size_t i = 0; i != state.users.size(); ++i ) {
         state.users[ i ]->work();
      }
   } while ( std::any_of( state.users.begin(), state.users.end(),
         []( const Detail::LoopUser * user ) { return user->hasWork(); } ) );
   if ( state.thrown ) {
      std::rethrow_exception( std::exchange( state.thrown, nullptr ) );
   }
}

void runOnce( Detail::LoopState & state, uv_run_mode mode )
{
   workAll( state );
   state.turns = false;
   uv_run( &state.loop, mode );
   workAll( state );
}

} // namespace

Watch::Watch( std::unique_ptr< Detail::WatchState > state ) : state_( std::move( state ) ) {}

Watch::~Watch() = default;

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
   state_->thread.check( "Loop::descriptor" );
   return uv_backend_fd( &state_->loop );
}

std::chrono::milliseconds Loop::timeout() const noexcept
{
   state_->thread.check( "Loop::timeout" );
   if ( state_->turns ) {
      return std::chrono::milliseconds( 0 );
   }
   // Of a loop that has nothing to wait for libuv says 0: that it is at an end.
   return uv_loop_alive( &state_->loop ) != 0
         ? std::chrono::milliseconds( uv_backend_timeout( &state_->loop ) )
         : never;
}

std::unique_ptr< Watch > Loop::watch( int descriptor, std::function< void() > readable )
{
   state_->thread.check( "Loop::watch" );
   return std::unique_ptr< Watch >( new Watch(
         std::make_unique< Detail::WatchState >( *state_, descriptor, std::move( readable ) ) ) );
}

void Loop::run()
{
   state_->thread.check( "Loop::run" );
   runOnce( *state_, UV_RUN_NOWAIT );
}

bool Loop::runUntil( const std::function< bool() > & done, std::chrono::milliseconds most )
{
   state_->thread.check( "Loop::runUntil" );
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
         []( uv_timer_t * timer ) {
            static_cast< Deadline * >( timer->data )->passed = true;
            uv_stop( timer->loop ); // which may be about to wait, and has no timer now
         },
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
