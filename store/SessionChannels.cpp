// The channels of a connection: what a client writes, and what it reads.
#include "store/detail/SessionState.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Vok::Store::Detail {

// ---- What it writes ---------------------------------------------------------------------------

// The mount that is to be written, which is made where there is none; null where it is refused.
ServerMount * SessionState::mountToWrite( const OpenWriter & message )
{
   const auto no = [ & ]( Refusal reason, const std::string & text ) -> ServerMount * {
      refuse( message.channel, reason, text, message.path );
      return nullptr;
   };
   try {
      checkPath( message.path );
      if ( !allows( Right::write, message.path ) ) {
         return no( Refusal::access, user() + " may not write " + message.path );
      }
      ServerMount * const mount = server_.mount( message.path );
      if ( !mount ) {
         const std::size_t most = server_.setup_.limits.mounts;
         if ( server_.mounts_.size() >= most ) {
            return no(
                  Refusal::limit, "the store has " + std::to_string( most ) + " mounts at most" );
         }
         return &server_.make( message.path, message.type );
      }
      if ( mount->type() != message.type ) {
         return no( Refusal::type,
               message.path + " is a " + mount->type() + ", not a " + message.type );
      }
      if ( !mount->stale() && !message.takeOver ) {
         return no( Refusal::writer, message.path + " is written by " + mount->program() );
      }
      if ( !mount->stale() && !allows( Right::takeOver, message.path ) ) {
         return no( Refusal::access,
               user() + " may not take " + message.path + " over from " + mount->program() );
      }
      return mount;
   } catch ( const PathException & e ) {
      return no( Refusal::path, e.what() );
   } catch ( const std::invalid_argument & e ) {
      return no( Refusal::type, e.what() );
   }
}

void SessionState::on( const OpenWriter & message )
{
   needFree( message.channel );
   if ( !mayHaveChannel( message.channel ) ) {
      return;
   }
   ServerMount * const mount = mountToWrite( message );
   if ( !mount ) {
      return;
   }
   if ( const MountWriter * const before = mount->writer() ) {
      before->session->takenOver( before->channel, program_ );
   }
   MountWriter & writer =
         writers_
               .emplace( message.channel,
                     MountWriter{ this, message.channel, mount,
                           BatchAssembly( server_.setup_.limits.batch ) } )
               .first->second;
   mount->writerIs( writer );
}

void SessionState::takenOver( std::uint32_t channel, const std::string & by )
{
   const std::string & path = writers_.at( channel ).mount->path();
   server_.happened( { Event::Kind::takenOver, path, by, peer_.name, program_ } );
   refuse( channel, Refusal::takenOver, path + " is taken over by " + by, path );
   writers_.erase( channel );
}

void SessionState::on( const BatchPiece & message )
{
   const auto at = writers_.find( message.channel );
   if ( at == writers_.end() ) {
      return; // it was refused meanwhile, and the client does not know yet
   }
   MountWriter & writer = at->second;
   const auto batch = writer.assembly.add( message );
   if ( !batch ) {
      std::size_t unfinished = 0;
      for ( const auto & [ channel, other ] : writers_ ) {
         unfinished += other.assembly.size();
      }
      if ( unfinished > server_.setup_.limits.unfinished ) {
         throw ProtocolException( "the batches that a connection has begun may have " +
               std::to_string( server_.setup_.limits.unfinished ) + " bytes in all" );
      }
      return;
   }
   try {
      writer.mount->apply( *batch );
      writer.assembly.reset();
   } catch ( const NboAttrLog::Exception & e ) {
      refuseWriter( message.channel, Refusal::batch, e.what() );
   }
}

void SessionState::refuseWriter(
      std::uint32_t channel, Refusal reason, const std::string & text )
{
   const std::string path = writers_.at( channel ).mount->path();
   closeWriter( channel );
   refuse( channel, reason, text, path );
}

// A mount of which nothing was ever told goes with its writer.
void SessionState::closeWriter( std::uint32_t channel, bool remove )
{
   const auto at = writers_.find( channel );
   ServerMount & mount = *at->second.mount;
   mount.writerGone();
   writers_.erase( at );
   if ( remove ) {
      server_.unmount( mount );
   } else if ( mount.isEmpty() ) {
      server_.remove( mount );
   }
}

// ---- What it reads ----------------------------------------------------------------------------

void SessionState::on( const OpenReader & message )
{
   needFree( message.channel );
   if ( !mayHaveChannel( message.channel ) ) {
      return;
   }
   try {
      PathPattern text( message.pattern );
      if ( text.isPath() && !allows( Right::read, text.text() ) ) {
         refuse( message.channel, Refusal::access, user() + " may not read " + text.text(),
               text.text() );
         return;
      }
      Pattern & pattern =
            readers_.emplace( message.channel, Pattern{ std::move( text ), {} } ).first->second;
      std::map< std::string_view, StreamPosition > known;
      for ( const Known & one : message.known ) {
         known[ one.path ] = { one.stream, one.batch };
      }
      for ( const auto & [ path, mount ] : server_.mounts_ ) {
         const auto has = known.find( path );
         read( message.channel, pattern, *mount,
               has == known.end() ? StreamPosition() : has->second );
      }
   } catch ( const PathException & e ) {
      refuse( message.channel, Refusal::path, e.what() );
   }
}

void SessionState::appeared( ServerMount & mount )
{
   for ( auto & [ channel, pattern ] : readers_ ) {
      read( channel, pattern, mount, {} );
   }
}

void SessionState::read( std::uint32_t channel, Pattern & pattern, ServerMount & mount,
      const StreamPosition & has )
{
   if ( !pattern.pattern.matches( mount.path() ) || !allows( Right::read, mount.path() ) ) {
      return;
   }
   pattern.readers.push_back( std::make_unique< MountReader >( MountReader{
         .session = this, .channel = channel, .mount = &mount, .has = has } ) );
   mount.add( *pattern.readers.back() );
   mount.serve( *pattern.readers.back() );
}

void SessionState::gone( ServerMount & mount )
{
   for ( auto & entry : readers_ ) {
      const std::uint32_t channel = entry.first;
      std::erase_if( entry.second.readers, [ & ]( const auto & reader ) {
         if ( reader->mount != &mount ) {
            return false;
         }
         if ( reader->announced ) {
            link_.send( Unmounted{ channel, mount.number() } );
         }
         leave( *reader );
         return true;
      } );
   }
}

void SessionState::leave( MountReader & reader )
{
   reader.mount->remove( reader );
   if ( reader.behind ) {
      std::erase( behind_, &reader );
   }
}

void SessionState::closeReader( std::uint32_t channel )
{
   const auto at = readers_.find( channel );
   if ( at == readers_.end() ) {
      return; // refused meanwhile
   }
   for ( const auto & reader : at->second.readers ) {
      leave( *reader );
   }
   readers_.erase( at );
}

} // namespace Vok::Store::Detail
