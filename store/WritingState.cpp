// How a client writes a tree: what it sends, and what it knows that the store has.
#include "store/detail/ClientState.h"

namespace Vok::Store::Detail {

WritingState::WritingState( ClientState & owner, std::uint32_t number, std::string path,
      const Corvo::Ptr< Entity > & root, bool takeOver )
      : client( &owner ),
        channel( number ),
        path_( std::move( path ) ),
        root_( root ),
        takeOver_( takeOver ),
        stream_( root )
{
}

void WritingState::open()
{
   if ( refusal_.empty() ) {
      client->carrier().send(
            OpenWriter{ channel, path_, std::string( root_->typeData().name() ), takeOver_ } );
   }
}

// The store goes on behind the last batch of this stream that it has; one that has another stream,
// or none, gets the whole tree.
void WritingState::on( const Opened & message )
{
   const StreamPosition has{ message.stream, message.batch };
   underWay_.clear();
   underWayBytes_ = 0;
   NboAttrLog::Out out;
   stream_.write( out ); // so that nothing is pending
   out.clear();
   store_.catchUp( has, out );
   if ( out.size() != 0 ) {
      send( out );
   }
   if ( has.stream == stream_.position().stream ) {
      store_.moveTo( has.batch );
   }
   open_ = true;
   kept_ = message.kept;
}

void WritingState::on( const Refused & message )
{
   open_ = false;
   refusal_ = message.text;
}

void WritingState::on( const Acknowledged & message )
{
   store_.moveTo( message.batch );
   while ( !underWay_.empty() && underWay_.front().batch <= message.batch ) {
      underWayBytes_ -= underWay_.front().bytes;
      underWay_.pop_front();
   }
}

void WritingState::disconnected() noexcept
{
   open_ = false;
   problem_.clear();
}

void WritingState::on( const MountState & message )
{
   problem_ = message.problem;
}

void WritingState::on( const PassedOver & message )
{
   passedOver_.insert( passedOver_.end(), message.texts.begin(), message.texts.end() );
}

bool WritingState::mayGo() const noexcept
{
   return kept_ ? underWay_.empty() : underWayBytes_ < underWayMost;
}

void WritingState::flush()
{
   if ( !open_ || !mayGo() || !stream_.hasChanges() || client->carrier().busy() ) {
      return;
   }
   NboAttrLog::Out out;
   stream_.write( out );
   send( out );
}

void WritingState::send( const NboAttrLog::Out & batch )
{
   client->carrier().sendBatch( channel,
         std::make_shared< const Bytes >( batch.bytes().begin(), batch.bytes().end() ) );
   underWay_.push_back( { stream_.position().batch, batch.size() } );
   underWayBytes_ += batch.size();
}

} // namespace Vok::Store::Detail
