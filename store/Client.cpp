// What clients of the store hold, and their connection.
#include "store/Client.h"

#include "store/detail/ClientState.h"

#include <algorithm>
#include <utility>

namespace Vok::Store {

// ---- What is handed out -----------------------------------------------------------------------

Writing::Writing( std::shared_ptr< Detail::WritingState > state ) : state_( std::move( state ) ) {}

Writing::~Writing()
{
   if ( state_->client ) {
      state_->client->remove( *state_ );
   }
}

bool Writing::open() const noexcept
{
   return state_->isOpen();
}

bool Writing::settled() const noexcept
{
   return state_->settled();
}

const std::string & Writing::refusal() const noexcept
{
   return state_->refusal();
}

void Writing::remove()
{
   state_->remove = true;
}

Reading::Reading( std::shared_ptr< Detail::ReadingState > state ) : state_( std::move( state ) ) {}

Reading::~Reading()
{
   if ( state_->client ) {
      state_->client->remove( *state_ );
   }
}

Corvo::Ptr< Entity > Reading::root( const std::string & path ) const
{
   return state_->root( path );
}

Client::Client( std::string program )
      : state_( std::make_unique< Detail::ClientState >( std::move( program ) ) )
{
}

Client::~Client() = default;

std::unique_ptr< Writing > Client::write(
      const std::string & path, const Corvo::Ptr< Entity > & root, bool takeOver )
{
   checkPath( path );
   auto state = std::make_shared< Detail::WritingState >(
         *state_, state_->newChannel(), path, root, takeOver );
   state_->add( state );
   return std::unique_ptr< Writing >( new Writing( std::move( state ) ) );
}

std::unique_ptr< Reading > Client::read( const std::string & pattern, MountListener & listener )
{
   auto state = std::make_shared< Detail::ReadingState >(
         *state_, state_->newChannel(), PathPattern( pattern ), listener );
   state_->add( state );
   return std::unique_ptr< Reading >( new Reading( std::move( state ) ) );
}

void Client::connected()
{
   state_->connected();
}

void Client::disconnected()
{
   state_->disconnected();
}

void Client::receive( std::span< const std::byte > piece )
{
   state_->receive( piece );
}

void Client::flush()
{
   state_->flush();
}

std::span< const std::byte > Client::output() const noexcept
{
   return state_->output();
}

void Client::sent( std::size_t count )
{
   state_->sent( count );
}

std::chrono::milliseconds Backoff::next() noexcept
{
   constexpr std::uint64_t first = 50;
   constexpr std::uint64_t most = 10000;
   random_ = random_ * 6364136223846793005U + 1442695040888963407U; // a congruential generator
   const std::uint64_t whole = std::min( most, first << std::min( attempts_, 16U ) );
   ++attempts_;
   return std::chrono::milliseconds( whole - ( random_ >> 33 ) % ( whole / 2 + 1 ) );
}

// ---- The connection ---------------------------------------------------------------------------

namespace Detail {

ClientState::~ClientState()
{
   for ( auto & [ channel, writing ] : writings_ ) {
      writing->client = nullptr;
      writing->disconnected();
   }
   for ( auto & [ channel, reading ] : readings_ ) {
      reading->client = nullptr;
   }
}

void ClientState::connected()
{
   if ( link_ ) {
      return;
   }
   link_ = std::make_unique< Link >();
   send( Hello{ protocolVersion, program_ } );
   for ( const auto & [ channel, writing ] : writings_ ) {
      writing->open();
   }
   for ( const auto & [ channel, reading ] : readings_ ) {
      reading->open();
   }
}

void ClientState::disconnected()
{
   if ( !link_ ) {
      return;
   }
   link_.reset();
   for ( const auto & [ channel, writing ] : writings_ ) {
      writing->disconnected();
   }
   const auto readings = readings_; // a listener may end one
   for ( const auto & [ channel, reading ] : readings ) {
      reading->disconnected();
   }
}

void ClientState::receive( std::span< const std::byte > piece )
{
   if ( link_ ) {
      link_->receive( piece, [ this ]( const Message & message ) { handle( message ); } );
   }
}

void ClientState::flush()
{
   for ( const auto & [ channel, writing ] : writings_ ) {
      writing->flush();
   }
}

std::span< const std::byte > ClientState::output() const noexcept
{
   return link_ ? link_->output() : std::span< const std::byte >();
}

void ClientState::sent( std::size_t count )
{
   if ( link_ ) {
      link_->sent( count );
      flush();
   }
}

void ClientState::send( const Message & message )
{
   if ( link_ ) {
      link_->send( message );
   }
}

void ClientState::sendBatch(
      std::uint32_t channel, const std::shared_ptr< const Bytes > & batch )
{
   if ( link_ ) {
      link_->sendBatch( channel, 0, batch );
   }
}

void ClientState::add( std::shared_ptr< WritingState > writing )
{
   writings_.emplace( writing->channel, writing );
   writing->open();
}

void ClientState::add( std::shared_ptr< ReadingState > reading )
{
   readings_.emplace( reading->channel, reading );
   reading->open();
}

void ClientState::remove( WritingState & writing )
{
   writing.flush();
   send( Close{ writing.channel, writing.remove } );
   writings_.erase( writing.channel );
}

void ClientState::remove( ReadingState & reading )
{
   send( Close{ reading.channel, false } );
   readings_.erase( reading.channel );
}

void ClientState::handle( const Message & message )
{
   std::visit( [ this ]( const auto & one ) { on( one ); }, message );
}

void ClientState::on( const Opened & message )
{
   if ( const auto at = writings_.find( message.channel ); at != writings_.end() ) {
      at->second->opened( message );
   }
}

void ClientState::on( const Acknowledged & message )
{
   if ( const auto at = writings_.find( message.channel ); at != writings_.end() ) {
      at->second->acknowledged( message );
   }
}

void ClientState::on( const Refused & message )
{
   if ( message.channel == 0 ) {
      throw ProtocolException( "the store ends the connection: " + message.text );
   }
   if ( const auto at = writings_.find( message.channel ); at != writings_.end() ) {
      at->second->refused( message );
   }
   if ( const auto at = readings_.find( message.channel ); at != readings_.end() ) {
      const std::shared_ptr< ReadingState > held = at->second;
      held->refused( message );
   }
}

// What is told of a mount. A channel that this side has closed may still be spoken on.
template< class M > void ClientState::on( const M & message )
{
   constexpr bool fromStore = std::is_same_v< M, Mounted > || std::is_same_v< M, MountState > ||
         std::is_same_v< M, BatchPiece > || std::is_same_v< M, Unmounted >;
   if constexpr ( !fromStore ) {
      throw ProtocolException( "the store sends what only clients send" );
   } else if ( const auto at = readings_.find( message.channel ); at != readings_.end() ) {
      const std::shared_ptr< ReadingState > held = at->second;
      if constexpr ( std::is_same_v< M, Mounted > ) {
         held->mounted( message );
      } else if constexpr ( std::is_same_v< M, MountState > ) {
         held->stateIs( message );
      } else if constexpr ( std::is_same_v< M, BatchPiece > ) {
         held->batch( message );
      } else {
         held->unmounted( message );
      }
   }
}

} // namespace Detail
} // namespace Vok::Store
