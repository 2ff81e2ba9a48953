// How a mount takes batches and hands them on.
#include "store/detail/ServerMount.h"

#include "store/detail/SessionState.h"

#include <algorithm>
#include <utility>

namespace Vok::Store {

namespace {

std::shared_ptr< const Bytes > shared( const NboAttrLog::Out & out )
{
   return std::make_shared< const Bytes >( out.bytes().begin(), out.bytes().end() );
}

} // namespace

ServerMount::ServerMount( Server & server, std::uint32_t number, std::string path,
      const Corvo::Ptr< Entity > & root )
      : server_( server ),
        number_( number ),
        path_( std::move( path ) ),
        root_( root ),
        in_( root ),
        out_( root ),
        since_( server.clock_.wall() ),
        isKept_( server.setup_.keeper && server.setup_.keeper->keeps( path_ ) )
{
   server_.changed_.reserve( server_.mounts_.size() + 1 );
}

void ServerMount::happened( Event::Kind kind, std::string_view text ) const
{
   const std::string_view peer =
         writer_ ? std::string_view( writer_->session->peer().name ) : std::string_view();
   server_.happened( { kind, path_, program_, peer, text } );
}

MountInfo ServerMount::info() const
{
   return { path_, type(), program_, stale(), since_, readers_.size(), isKept_, problem_,
      counters_ };
}

std::optional< Server::TreeInfo > ServerMount::tree()
{
   publish();
   if ( !hasTree() ) {
      return std::nullopt;
   }
   return Server::TreeInfo{ treeDigest( *root_ ), whole()->size() };
}

MountEntry ServerMount::entry( bool withTree )
{
   const MountState now = state();
   MountEntry entry{ path_, type(), program_, stale(), now.since, isKept_, problem_,
      readers_.size(), counters_.batchesIn, counters_.bytesIn, counters_.batchesOut,
      counters_.bytesOut, counters_.differences, counters_.wholeTrees };
   if ( const auto known = withTree ? tree() : std::nullopt ) {
      entry.bytes = known->bytes;
      entry.digestHigh = known->digest.high();
      entry.digestLow = known->digest.low();
   }
   return entry;
}

// ---- The writer -------------------------------------------------------------------------------

void ServerMount::writerIs( MountWriter & writer )
{
   writer_ = &writer;
   program_ = writer.session->program();
   since_ = server_.clock_.wall();
   ++counters_.sessions;
   happened( Event::Kind::writerCame );
   tellAll();
   open();
   if ( !problem_.empty() ) {
      tellWriter();
   }
}

void ServerMount::writerGone()
{
   happened( Event::Kind::writerGone );
   writer_ = nullptr;
   since_ = server_.clock_.wall();
   tellAll();
}

// What it goes on behind is known once nothing is under way.
void ServerMount::open()
{
   if ( !writer_ || writer_->opened || commit_ ) {
      return;
   }
   const StreamPosition has = in_.position();
   writer_->opened = true;
   acknowledged_ = has;
   Link & link = writer_->session->link();
   link.send( Opened{ writer_->channel, has.stream, has.batch, isKept_ } );
   if ( !passedOver_.empty() ) {
      link.send(
            PassedOver{ writer_->channel, 0, { passedOver_.begin(), passedOver_.end() } } );
   }
}

void ServerMount::apply( std::span< const std::byte > batch )
{
   if ( commit_ || !writer_->opened ) {
      throw ProtocolException( path_ + " is kept: the next batch comes once the last one is "
                                       "acknowledged" );
   }
   NboAttrLog::In in( batch );
   in_.read( in );
   if ( in.remaining() != 0 ) {
      throw NboAttrLog::Exception( "more than a batch comes as one" );
   }
   ++counters_.batchesIn;
   counters_.bytesIn += batch.size();
   ++server_.counters_.batchesIn;
   server_.counters_.bytesIn += batch.size();
   pendingIs();
   tellPassedOver();
}

void ServerMount::pendingIs()
{
   if ( !std::exchange( pending_, true ) ) {
      server_.changed_.push_back( this ); // has room: one place for each mount
   }
}

void ServerMount::acknowledge()
{
   if ( writer_ && writer_->opened && acknowledged_ != in_.position() ) {
      acknowledged_ = in_.position();
      writer_->session->link().send( Acknowledged{ writer_->channel, acknowledged_.batch } );
   }
}

// A text is told once.
void ServerMount::tellPassedOver()
{
   std::vector< std::string > fresh;
   for ( const Corvo::String & text : in_.passedOver() ) {
      if ( passedOver_.insert( std::string( text.view() ) ).second ) {
         fresh.emplace_back( text.view() );
         happened( Event::Kind::passedOver, text.view() );
      }
   }
   if ( fresh.empty() ) {
      return;
   }
   writer_->session->link().send( PassedOver{ writer_->channel, 0, fresh } );
   for ( const MountReader * const reader : readers_ ) {
      if ( reader->announced ) {
         reader->session->link().send( PassedOver{ reader->channel, number_, fresh } );
      }
   }
}

// ---- Readers ----------------------------------------------------------------------------------

void ServerMount::add( MountReader & reader )
{
   readers_.push_back( &reader );
}

void ServerMount::remove( MountReader & reader ) noexcept
{
   std::erase( readers_, &reader );
}

void ServerMount::publish()
{
   if ( !commit_ ) {
      if ( in_.position().batch != 0 && out_.hasChanges() ) {
         const StreamPosition before = out_.position();
         NboAttrLog::Out out;
         out_.write( out );
         const auto batch = shared( out );
         if ( isKept_ ) {
            commit_ = Commit{ 0, before, batch, true };
            keep();
         } else {
            deliver( before, batch );
         }
      }
      if ( !commit_ ) {
         acknowledge();
         measure();
      }
   }
   pending_ = false;
}

// A tree grows by no more than what comes in: it is measured when that might be too much.
void ServerMount::measure()
{
   const std::size_t most = server_.setup_.limits.tree;
   if ( !writer_ || counters_.bytesIn - measured_ <= most / 4 || out_.hasChanges() ) {
      return;
   }
   measured_ = counters_.bytesIn;
   if ( whole()->size() > most ) {
      writer_->session->refuseWriter( writer_->channel, Refusal::limit,
            "the tree at " + path_ + " has more than " + std::to_string( most ) + " bytes" );
   }
}

void ServerMount::deliver(
      const StreamPosition & before, const std::shared_ptr< const Bytes > & batch )
{
   for ( MountReader * const reader : readers_ ) {
      if ( reader->has == before && before.batch != 0 && !reader->session->busy() ) {
         send( *reader, batch );
      } else {
         serve( *reader );
      }
   }
}

void ServerMount::send( MountReader & reader, const std::shared_ptr< const Bytes > & batch )
{
   announce( reader );
   reader.session->link().sendBatch( reader.channel, number_, batch );
   reader.has = out_.position();
   ++counters_.batchesOut;
   counters_.bytesOut += batch->size();
   ++server_.counters_.batchesOut;
   server_.counters_.bytesOut += batch->size();
}

void ServerMount::serve( MountReader & reader )
{
   const bool misses = reader.has != out_.position();
   if ( commit_ || out_.hasChanges() || !hasTree() || ( !misses && reader.announced ) ) {
      return;
   }
   if ( reader.session->busy() ) {
      reader.session->behind( reader );
      return;
   }
   if ( !misses ) {
      announce( reader ); // it has been here before
      return;
   }
   std::string_view why = "it follows another stream: the store or the mount began anew";
   if ( reader.has.stream == out_.position().stream ) {
      if ( const auto batch = missedSince( reader.has ) ) {
         ++counters_.differences;
         ++server_.counters_.differences;
         send( reader, batch );
         return;
      }
      why = "an entity has its place in another one, or memory ran out";
   }
   if ( reader.has.stream != 0 ) {
      server_.happened( { Event::Kind::wholeTree, path_, reader.session->program(),
            reader.session->peer().name, why } );
   }
   ++counters_.wholeTrees;
   ++server_.counters_.wholeTrees;
   send( reader, whole() );
}

// What a reader missed; null where only the whole tree tells it. Many that stopped at the same
// batch come at once, after the store was away or a program that has many began: they share it.
std::shared_ptr< const Bytes > ServerMount::missedSince( const StreamPosition & has )
{
   std::shared_ptr< const Bytes > bytes = missed_.lock();
   if ( !bytes || missedFrom_ != has || missedTo_ != out_.position() ) {
      NboAttrLog::Out out;
      if ( start_.catchUp( has, out ) != StreamPlace::Told::changes ) {
         return nullptr;
      }
      bytes = shared( out );
      missed_ = bytes;
      missedFrom_ = has;
      missedTo_ = out_.position();
   }
   return bytes;
}

// Readers that come at a time share its bytes.
std::shared_ptr< const Bytes > ServerMount::whole()
{
   std::shared_ptr< const Bytes > bytes = whole_.lock();
   if ( !bytes || wholeAt_ != out_.position().batch ) {
      NboAttrLog::Out out;
      out_.writeWhole( out );
      bytes = shared( out );
      whole_ = bytes;
      wholeAt_ = out_.position().batch;
   }
   return bytes;
}

void ServerMount::announce( MountReader & reader )
{
   if ( !std::exchange( reader.announced, true ) ) {
      Link & link = reader.session->link();
      link.send( Mounted{ reader.channel, number_, path_, type() } );
      tellState( reader );
      if ( !passedOver_.empty() ) {
         link.send( PassedOver{
               reader.channel, number_, { passedOver_.begin(), passedOver_.end() } } );
      }
   }
}

MountState ServerMount::state() const
{
   const auto since =
         std::chrono::duration_cast< std::chrono::milliseconds >( since_.time_since_epoch() );
   return { 0, 0, stale(), static_cast< std::uint64_t >( since.count() ), program_, problem_ };
}

void ServerMount::tellState( const MountReader & reader ) const
{
   MountState message = state();
   message.channel = reader.channel;
   message.mount = number_;
   reader.session->link().send( message );
}

void ServerMount::tellWriter() const
{
   if ( writer_ ) {
      MountState message = state();
      message.channel = writer_->channel;
      writer_->session->link().send( message );
   }
}

void ServerMount::tellAll() const
{
   for ( const MountReader * const reader : readers_ ) {
      if ( reader->announced ) {
         tellState( *reader );
      }
   }
}

} // namespace Vok::Store
