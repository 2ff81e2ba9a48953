// The two sides of the keeper: the store's thread, which asks, and the keeper's, which does.
#include "store/sqlite/SqliteKeeper.h"

#include "store/sqlite/detail/Disk.h"
#include "store/sqlite/detail/KeeperWork.h"
#include "store/sqlite/detail/MountFolder.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

namespace Vok::Store {

namespace Detail {

struct KeeperState {
   KeeperState( Disk & disk, const std::string & folder, std::vector< PathPattern > which,
         std::function< void() > wakeStore )
         : keeps( std::move( which ) ),
           folder_( disk, folder ),
           wake_( std::move( wakeStore ) ),
           thread_( [ this ] { run(); } )
   {
   }
   KeeperState( const KeeperState & ) = delete;
   KeeperState & operator=( const KeeperState & ) = delete;

   ~KeeperState()
   {
      {
         const std::lock_guard lock( mutex_ );
         ending_ = true;
      }
      asked_.notify_one();
      thread_.join();
   }

   using Task = std::function< void( KeeperWork & ) >;

   /// For the store's thread: to be done after all that was asked before.
   void ask( Task task )
   {
      {
         const std::lock_guard lock( mutex_ );
         tasks_.push_back( std::move( task ) );
      }
      asked_.notify_one();
   }

   /// For the keeper's thread.
   void tell( Keeper::Result result )
   {
      {
         const std::lock_guard lock( mutex_ );
         results_.push_back( std::move( result ) );
      }
      wake_();
   }

   /// Tells what went wrong without a request for a batch, if something did.
   void tellProblem( const std::string & path, std::string problem )
   {
      if ( !problem.empty() ) {
         tell( { path, 0, std::move( problem ) } );
      }
   }

   std::vector< Keeper::Result > takeResults()
   {
      const std::lock_guard lock( mutex_ );
      return std::exchange( results_, {} );
   }

   bool keepsPath( std::string_view path ) const
   {
      const auto matches = [ path ]( const PathPattern & one ) { return one.matches( path ); };
      return std::ranges::any_of( keeps, matches );
   }

   const std::vector< PathPattern > keeps;

 private:
   void run()
   {
      KeeperWork work( folder_ );
      while ( const Task task = next() ) {
         task( work );
      }
   }

   /// None: everything is done, and nothing more will come.
   Task next()
   {
      std::unique_lock lock( mutex_ );
      asked_.wait( lock, [ this ] { return ending_ || !tasks_.empty(); } );
      if ( tasks_.empty() ) {
         return {};
      }
      Task task = std::move( tasks_.front() );
      tasks_.pop_front();
      return task;
   }

   MountFolder folder_; // used by the keeper's thread alone, once that runs
   std::function< void() > wake_;
   std::mutex mutex_; // of the four that follow
   std::condition_variable asked_;
   std::deque< Task > tasks_;
   std::vector< Keeper::Result > results_;
   bool ending_ = false;
   std::thread thread_; // last, because it uses all others
};

} // namespace Detail

SqliteKeeper::SqliteKeeper( const std::string & folder, std::vector< PathPattern > keeps,
      std::function< void() > wake )
      : SqliteKeeper( folder, std::move( keeps ), std::move( wake ), Detail::Disk::machine() )
{
}

SqliteKeeper::SqliteKeeper( const std::string & folder, std::vector< PathPattern > keeps,
      std::function< void() > wake, Detail::Disk & disk )
      : state_( std::make_unique< Detail::KeeperState >(
              disk, folder, std::move( keeps ), std::move( wake ) ) )
{
}

SqliteKeeper::~SqliteKeeper() = default;

bool SqliteKeeper::keeps( std::string_view path ) const
{
   return state_->keepsPath( path );
}

std::vector< Keeper::Kept > SqliteKeeper::load()
{
   std::promise< std::vector< Kept > > loaded;
   state_->ask( [ this, &loaded ]( Detail::KeeperWork & work ) {
      try {
         loaded.set_value( work.load(
               [ this ]( std::string_view path ) { return keeps( path ); },
               [ this ]( const std::string & path, std::string problem ) {
                  state_->tellProblem( path, std::move( problem ) );
               } ) );
      } catch ( ... ) {
         loaded.set_exception( std::current_exception() );
      }
   } );
   return loaded.get_future().get();
}

void SqliteKeeper::keep( Request request )
{
   state_->ask( [ state = state_.get(), request = std::move( request ) ](
                      Detail::KeeperWork & work ) {
      state->tell( { request.path, request.number, work.keep( request ) } );
   } );
}

void SqliteKeeper::remove( const std::string & path )
{
   state_->ask( [ state = state_.get(), path ]( Detail::KeeperWork & work ) {
      state->tellProblem( path, work.remove( path ) );
   } );
}

void SqliteKeeper::setAside( const std::string & path, const std::string & why )
{
   state_->ask( [ state = state_.get(), path, why ]( Detail::KeeperWork & work ) {
      state->tellProblem( path, work.setAside( path, why ) );
   } );
}

std::vector< Keeper::Result > SqliteKeeper::results()
{
   return state_->takeResults();
}

} // namespace Vok::Store
