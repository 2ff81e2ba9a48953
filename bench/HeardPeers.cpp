// The setters of those that are listened to, out of the sight of those who call them.
#include "bench/HeardPeers.h"

#include <utility>

namespace Bench {
namespace {

// Stores another value, and hands the one before to `tell`.
template< class V, class Tell > void change( V & stored, const V & value, Tell tell )
{
   if ( stored != value ) {
      V next( value );
      std::swap( stored, next );
      tell( next );
   }
}

} // namespace

void VirtualObject::countIs( std::uint32_t count )
{
   change( count_, count, [ this ]( std::uint32_t oldValue ) {
      for ( Listener * const listener : listeners_ ) {
         listener->onCount( *this, oldValue );
      }
   } );
}

void VirtualObject::titleIs( const std::string & title )
{
   change( title_, title, [ this ]( const std::string & oldValue ) {
      for ( Listener * const listener : listeners_ ) {
         listener->onTitle( *this, oldValue );
      }
   } );
}

void BoostObject::countIs( std::uint32_t count )
{
   change( count_, count, [ this ]( std::uint32_t old ) { countChanged( *this, old ); } );
}

void BoostObject::titleIs( const std::string & title )
{
   change( title_, title, [ this ]( const std::string & old ) { titleChanged( *this, old ); } );
}

void SigcObject::countIs( std::uint32_t count )
{
   change( count_, count, [ this ]( std::uint32_t old ) { countChanged( *this, old ); } );
}

void SigcObject::titleIs( const std::string & title )
{
   change( title_, title, [ this ]( const std::string & old ) { titleChanged( *this, old ); } );
}

} // namespace Bench
