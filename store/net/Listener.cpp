// How a store takes connections.
#include "store/net/Listener.h"

#include "store/net/uv/Accepted.h"
#include "store/net/uv/Acceptor.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Vok::Store {

namespace Detail {

namespace {

// Connections beyond those of the limit, which are told that they are too many.
constexpr std::size_t spareConnections = 128;

const Address & checked( const Address & address, const TlsContext * tls )
{
   if ( address.kind == Address::Kind::tls && !tls ) {
      throw std::invalid_argument( address.text() + " needs a TLS context" );
   }
   if ( address.kind == Address::Kind::tcp && !address.isLoopback() ) {
      throw std::invalid_argument(
            address.text() + " cannot be listened at: TCP without TLS is for loopback addresses" );
   }
   return address;
}

} // namespace

class ListenerState final : public LoopUser, public AcceptedOwner {
 public:
   ListenerState( Loop & loop, Server & server, const Address & where, const TlsContext * tls )
         : loop_( loop.state() ),
           server_( server ),
           tls_( where.kind == Address::Kind::tls && tls ? &tls->state() : nullptr ),
           acceptor_( loop_, checked( where, tls ),
                 [ this ]( Socket socket, const SocketAddress & from ) {
                    accept( std::move( socket ), from );
                 } )
   {
      loop_.users.push_back( this );
   }
   ListenerState( const ListenerState & ) = delete;
   ListenerState & operator=( const ListenerState & ) = delete;
   ~ListenerState() override
   {
      std::erase( loop_.users, this );
      closing_ = true; // what goes is told to those that go next
   }

   const Address & address() const noexcept { return acceptor_.address(); }
   std::size_t connections() const noexcept { return accepted_.size(); }
   const ThreadCheck & thread() const noexcept { return loop_.thread; }

   // LoopUser
   void work() override
   {
      do {
         server_.publish();
         sendReady();
      } while ( removeOver() ); // their mounts are stale, which is told
   }
   bool hasWork() const noexcept override { return !ready_.empty(); }

   // AcceptedOwner. There is room in both lists for each connection once.
   void hasOutput( Accepted & one ) noexcept override
   {
      if ( !closing_ ) {
         ready_.push_back( &one );
      }
   }
   void isOver( Accepted & one ) noexcept override { over_.push_back( &one ); }

 private:
   void accept( Socket socket, const SocketAddress & from )
   {
      const Limits & limits = server_.limits();
      if ( accepted_.size() >= limits.sessions + spareConnections ||
            ( tls_ && unidentified() >= limits.sessionsOfUser ) ) {
         return; // it is closed
      }
      Peer peer;
      if ( address().kind == Address::Kind::unixSocket ) {
         peer = socket.unixPeer();
      } else {
         peer.name = from.text();
         socket.tuneTcp();
      }
      try {
         add( std::make_unique< Accepted >(
               loop_, server_, *this, std::move( socket ), std::move( peer ), tls_ ) );
      } catch ( const std::exception & ) {
         // The system has not what it takes: it is closed, and may come again.
      }
   }

   void add( std::unique_ptr< Accepted > made )
   {
      if ( accepted_.size() == accepted_.capacity() ) {
         const std::size_t room = 2 * accepted_.size() + 16;
         ready_.reserve( room );
         over_.reserve( room );
         accepted_.reserve( room );
      }
      made->place = accepted_.size();
      accepted_.push_back( std::move( made ) );
      accepted_.back()->start();
   }

   std::size_t unidentified() const
   {
      return static_cast< std::size_t >( std::count_if( accepted_.begin(), accepted_.end(),
            []( const auto & one ) { return !one->identified(); } ) );
   }

   void sendReady()
   {
      while ( !ready_.empty() ) {
         Accepted & one = *ready_.back();
         ready_.pop_back();
         one.send();
      }
   }

   /// Whether there was one.
   bool removeOver()
   {
      const bool any = !over_.empty();
      while ( !over_.empty() ) {
         const std::size_t place = over_.back()->place;
         over_.pop_back();
         const std::unique_ptr< Accepted > held = std::move( accepted_[ place ] );
         if ( place + 1 != accepted_.size() ) {
            accepted_[ place ] = std::move( accepted_.back() );
            accepted_[ place ]->place = place;
         }
         accepted_.pop_back();
      }
      return any;
   }

   LoopState & loop_;
   Server & server_;
   const TlsState * tls_; // null where connections are plain
   bool closing_ = false;
   std::vector< Accepted * > ready_; // that have something to send
   std::vector< Accepted * > over_; // that are to be removed
   std::vector< std::unique_ptr< Accepted > > accepted_;
   Acceptor acceptor_;
};

} // namespace Detail

Listener::Listener( Loop & loop, Server & server, const Address & address, const TlsContext * tls )
{
   loop.state().thread.check( "Listener::Listener" );
   state_ = std::make_unique< Detail::ListenerState >( loop, server, address, tls );
}

Listener::~Listener()
{
   state_->thread().check( "Listener::~Listener" );
}

const Address & Listener::address() const noexcept
{
   return state_->address();
}

std::size_t Listener::connections() const noexcept
{
   state_->thread().check( "Listener::connections" );
   return state_->connections();
}

} // namespace Vok::Store
