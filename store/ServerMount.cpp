// How a mount takes batches and hands them on.
#include "store/detail/ServerMount.h"

#include "store/detail/SessionState.h"

#include <algorithm>
#include <utility>

namespace Vok::Store {

ServerMount::ServerMount( Server & server, std::uint32_t number, std::string path,
      const Corvo::Ptr< Entity > & root )
      : server_( server ),
        number_( number ),
        path_( std::move( path ) ),
        root_( root ),
        in_( root ),
        out_( root ),
        since_( server.clock_.wall() )
{
   server_.changed_.reserve( server_.mounts_.size() + 1 );
   out_.onPending( [ this ] {
      if ( !std::exchange( pending_, true ) ) {
         server_.changed_.push_back( this ); // has room: one place for each mount
      }
   } );
}

void ServerMount::writerIs( const std::string & program )
{
   writer_ = program;
   stale_ = false;
   since_ = server_.clock_.wall();
   tellAll();
}

void ServerMount::writerGone()
{
   stale_ = true;
   since_ = server_.clock_.wall();
   tellAll();
}

void ServerMount::tellAll()
{
   for ( const Reading * const reading : readers_ ) {
      if ( reading->announced ) {
         tellState( *reading );
      }
   }
}

void ServerMount::apply( std::span< const std::byte > batch )
{
   NboAttrLog::In in( batch );
   const bool first = in_.position().batch == 0;
   in_.read( in );
   if ( in.remaining() != 0 ) {
      throw NboAttrLog::Exception( "more than a batch comes as one" );
   }
   if ( first && !std::exchange( pending_, true ) ) {
      server_.changed_.push_back( this ); // from now on there is a tree to be told of
   }
}

void ServerMount::add( Reading & reading )
{
   readers_.push_back( &reading );
}

void ServerMount::remove( Reading & reading ) noexcept
{
   std::erase( readers_, &reading );
}

void ServerMount::publish()
{
   const StreamPosition before = out_.position();
   NboAttrLog::Out out;
   out_.write( out );
   const auto batch = std::make_shared< const Bytes >( out.bytes().begin(), out.bytes().end() );
   for ( Reading * const reading : readers_ ) {
      if ( reading->has == before && before.batch != 0 && !reading->session->busy() ) {
         announce( *reading );
         reading->session->link().sendBatch( reading->channel, number_, batch );
         reading->has = out_.position();
      } else {
         serve( *reading );
      }
   }
   pending_ = false;
}

void ServerMount::serve( Reading & reading )
{
   if ( out_.hasChanges() || out_.position().batch == 0 || reading.session->busy() ) {
      return;
   }
   announce( reading );
   NboAttrLog::Out out;
   if ( start_.catchUp( reading.has, out ) != StreamPlace::Told::nothing ) {
      reading.session->link().sendBatch( reading.channel, number_,
            std::make_shared< const Bytes >( out.bytes().begin(), out.bytes().end() ) );
   }
   reading.has = out_.position();
}

void ServerMount::announce( Reading & reading )
{
   if ( !std::exchange( reading.announced, true ) ) {
      reading.session->link().send( Mounted{ reading.channel, number_, path_, type() } );
      tellState( reading );
   }
}

void ServerMount::tellState( const Reading & reading ) const
{
   const auto since =
         std::chrono::duration_cast< std::chrono::milliseconds >( since_.time_since_epoch() );
   reading.session->link().send( MountState{ reading.channel, number_, stale_,
         static_cast< std::uint64_t >( since.count() ), writer_ } );
}

} // namespace Vok::Store
