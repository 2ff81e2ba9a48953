// A client's end of a connection to a store.
#include "store/Wire.h"

namespace Vok::Store {

Wire::Wire( std::string program ) : program_( std::move( program ) ) {}

void Wire::connected()
{
   if ( link_ ) {
      return;
   }
   link_ = std::make_shared< Link >();
   link_->send( Hello{ protocolVersion, program_ } );
   if ( user_ ) {
      user_->connected();
   }
}

void Wire::disconnected()
{
   if ( !link_ ) {
      return;
   }
   link_.reset();
   assemblies_.clear();
   if ( user_ ) {
      user_->disconnected();
   }
}

void Wire::receive( std::span< const std::byte > piece )
{
   if ( const auto held = link_ ) { // a listener may end the connection
      held->receive( piece, [ & ]( const Message & message ) {
         if ( link_ == held ) {
            handle( message );
         }
      } );
   }
}

void Wire::handle( const Message & message )
{
   if ( const auto * const batch = std::get_if< BatchPiece >( &message ) ) {
      piece( *batch );
      return;
   }
   if ( const auto * const refused = std::get_if< Refused >( &message );
         refused && refused->channel == 0 ) {
      throw ProtocolException( "the store ends the connection: " + refused->text );
   }
   if ( user_ && !std::holds_alternative< Welcome >( message ) ) {
      user_->received( message );
   }
}

void Wire::piece( const BatchPiece & message )
{
   const std::pair key( message.channel, message.mount );
   const auto at = assemblies_.try_emplace( key, batchLimit ).first;
   const auto batch = at->second.add( message );
   if ( !batch ) {
      return;
   }
   const BatchAssembly held = std::move( at->second ); // has the bytes
   assemblies_.erase( at );
   if ( user_ ) {
      user_->received( message.channel, message.mount, *batch );
   }
}

std::span< const std::byte > Wire::output() const noexcept
{
   return link_ ? link_->output() : std::span< const std::byte >();
}

std::size_t Wire::outputs( std::span< std::span< const std::byte > > into ) const noexcept
{
   return link_ ? link_->outputs( into ) : 0;
}

void Wire::sent( std::size_t count )
{
   if ( link_ ) {
      link_->sent( count );
      flush();
   }
}

void Wire::flush()
{
   if ( user_ ) {
      user_->flush();
   }
}

void Wire::send( const Message & message )
{
   if ( link_ ) {
      link_->send( message );
   }
}

void Wire::sendBatch( std::uint32_t channel, const std::shared_ptr< const Bytes > & batch )
{
   if ( link_ ) {
      link_->sendBatch( channel, 0, batch );
   }
}

} // namespace Vok::Store
