// How a mount outlives the store: a batch is shown to readers and acknowledged once it is kept.
#include "store/detail/ServerMount.h"
#include "store/detail/SessionState.h"

#include <algorithm>
#include <utility>

namespace Vok::Store {

// The kept batches are of a stream that has ended; the next one that is kept is a whole tree.
void ServerMount::recover( const Keeper::Kept & kept )
{
   EntityVokNboAttrLogReader reader( root_ );
   for ( const Bytes & batch : kept.batches ) {
      NboAttrLog::In in( batch );
      reader.read( in );
   }
   NboAttrLog::Out out;
   out_.write( out );
   program_ = kept.writer;
   happened( Event::Kind::recovered );
}

void ServerMount::keep()
{
   const bool all = keepWhole_ || keptSince_ > std::max( keptWhole_, keptAnewFrom );
   Keeper::Request request{
      path_, type(), program_, server_.lastRequest_ + 1, all, commit_->batch
   };
   if ( all ) {
      request.batch = whole();
      keptWhole_ = request.batch->size();
      keptSince_ = 0;
   } else {
      keptSince_ += request.batch->size();
   }
   commit_->number = request.number;
   ++server_.lastRequest_;
   server_.setup_.keeper->keep( std::move( request ) );
   keepWhole_ = false;
   commit_->failed = false;
}

void ServerMount::keepAgain()
{
   if ( commit_ && commit_->failed ) {
      keep();
   }
}

void ServerMount::kept( const Keeper::Result & result )
{
   if ( !commit_ || commit_->number != result.number ) {
      return; // of a mount that was here before
   }
   if ( result.problem != problem_ ) {
      problem_ = result.problem;
      happened( problem_.empty() ? Event::Kind::keptAgain : Event::Kind::notKept, problem_ );
      tellAll();
      tellWriter();
   }
   if ( !problem_.empty() ) {
      keepWhole_ = true;
      commit_->failed = true;
      return;
   }
   const Commit done = *std::exchange( commit_, std::nullopt );
   open();
   acknowledge();
   deliver( done.before, done.batch );
   measure();
}

} // namespace Vok::Store
