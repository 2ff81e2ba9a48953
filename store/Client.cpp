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

const std::string & Writing::problem() const noexcept
{
   return state_->problem();
}

const std::vector< std::string > & Writing::passedOver() const noexcept
{
   return state_->passedOver();
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

Client::Client( Carrier & carrier ) : state_( std::make_unique< Detail::ClientState >( carrier ) )
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

void Client::list( const std::string & pattern, bool trees,
      std::function< void( const std::vector< MountEntry > & ) > answer )
{
   state_->ask( { state_->newChannel(), PathPattern( pattern ).text(), trees },
         std::move( answer ) );
}

std::uint64_t Client::connections() const noexcept
{
   return state_->connections();
}

void Client::flush()
{
   state_->flush();
}

// ---- The connection ---------------------------------------------------------------------------

namespace Detail {

ClientState::ClientState( Carrier & carrier ) : carrier_( carrier )
{
   carrier_.userIs( this );
}

ClientState::~ClientState()
{
   carrier_.userIs( nullptr );
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
   ++connections_;
   for ( const auto & [ channel, writing ] : writings_ ) {
      writing->open();
   }
   for ( const auto & [ channel, reading ] : readings_ ) {
      reading->open();
   }
   for ( auto & [ channel, question ] : questions_ ) {
      question.mounts.clear();
      carrier_.send( question.message );
   }
}

void ClientState::disconnected()
{
   for ( const auto & [ channel, writing ] : writings_ ) {
      writing->disconnected();
   }
   const auto readings = readings_; // a listener may end one
   for ( const auto & [ channel, reading ] : readings ) {
      reading->disconnected();
   }
}

void ClientState::flush()
{
   for ( const auto & [ channel, writing ] : writings_ ) {
      writing->flush();
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
   carrier_.send( Close{ writing.channel, writing.remove } );
   writings_.erase( writing.channel );
}

void ClientState::remove( ReadingState & reading )
{
   carrier_.send( Close{ reading.channel, false } );
   readings_.erase( reading.channel );
}

void ClientState::ask( ListMounts message, Answer answer )
{
   const Question & question =
         questions_.emplace( message.channel, Question{ message, std::move( answer ), {} } )
               .first->second;
   carrier_.send( question.message );
}

void ClientState::received( const Message & message )
{
   std::visit( [ this ]( const auto & one ) { on( one ); }, message );
}

void ClientState::received(
      std::uint32_t channel, std::uint32_t mount, std::span< const std::byte > batch )
{
   if ( const auto at = readings_.find( channel ); at != readings_.end() ) {
      const std::shared_ptr< ReadingState > held = at->second;
      held->batch( mount, batch );
   }
}

void ClientState::on( const Refused & message )
{
   tell( message );
   if ( questions_.contains( message.channel ) ) {
      on( MountList{ message.channel, true, {} } );
   }
}

void ClientState::on( const MountList & message )
{
   const auto at = questions_.find( message.channel );
   if ( at == questions_.end() ) {
      return;
   }
   auto & mounts = at->second.mounts;
   mounts.insert( mounts.end(), message.mounts.begin(), message.mounts.end() );
   if ( message.last ) {
      const Question question = std::move( at->second );
      questions_.erase( at );
      question.answer( question.mounts );
   }
}

template< class M > void ClientState::on( const M & message )
{
   if constexpr ( ToWriter< M > || ToReader< M > ) {
      tell( message );
   } else {
      throw ProtocolException( "a client is sent what it does not read" );
   }
}

// What is told of a mount. A channel that this side has closed may still be spoken on.
template< class M > void ClientState::tell( const M & message )
{
   if constexpr ( ToWriter< M > ) {
      if ( const auto at = writings_.find( message.channel ); at != writings_.end() ) {
         at->second->on( message );
      }
   }
   if constexpr ( ToReader< M > ) {
      if ( const auto at = readings_.find( message.channel ); at != readings_.end() ) {
         const std::shared_ptr< ReadingState > held = at->second;
         held->on( message );
      }
   }
}

} // namespace Detail
} // namespace Vok::Store
