// Sessions of peers, which have a descriptor each: one loop for those of a process.
#pragma once

#include "bench/store/Subject.h"

#include <poll.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Bench {

/// A session has `connect()`, `disconnect()`, `descriptor()`; `take()`, which is called when
/// something has come and may read once; and `tell()`, which tells of marks.
template< class Session > class PollingReaders final : public Readers {
 public:
   PollingReaders( const std::string & address, std::vector< Sink > & sinks )
   {
      for ( Sink & sink : sinks ) {
         sessions_.push_back( std::make_unique< Session >( address, sink ) );
      }
   }

   void connect() override
   {
      for ( const auto & session : sessions_ ) {
         session->connect();
      }
   }
   void disconnect() override
   {
      for ( const auto & session : sessions_ ) {
         session->disconnect();
      }
   }
   void run( const std::function< bool() > & done ) override
   {
      std::vector< pollfd > waiting( sessions_.size() );
      while ( !done() ) {
         for ( std::size_t i = 0; i != sessions_.size(); ++i ) {
            waiting[ i ] = { sessions_[ i ]->descriptor(), POLLIN, 0 };
         }
         poll( waiting.data(), waiting.size(), static_cast< int >( pause.count() ) );
         for ( std::size_t i = 0; i != sessions_.size(); ++i ) {
            if ( waiting[ i ].revents != 0 ) {
               sessions_[ i ]->take();
            }
            sessions_[ i ]->tell();
         }
      }
   }

 private:
   std::vector< std::unique_ptr< Session > > sessions_;
};

} // namespace Bench
