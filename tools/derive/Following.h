// Hearing of whole entities, and of the children of one collection.
#pragma once

#include "Vok/Vok.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace Derive {

/// Hears of every change of one entity, not of its children, from construction to destruction.
class EntityFollower final : public Corvo::Notifiee {
 public:
   using Told = std::function< void( const Corvo::Change & change ) >;

   EntityFollower( const Vok::Entity & entity, Told told ) : told_( std::move( told ) )
   {
      entity.publisher().notifieeIs( this );
   }

   void onChange( const Corvo::Change & change ) override { told_( change ); }

 private:
   Told told_;
};

/// One object for each child of a collection, made for the child and gone when the child is no
/// longer there. A child that was deleted and made again is another child.
///
/// It keeps a reference to each child, so that another one cannot stand at its address.
template< class Child, class Work > class PerChild {
 public:
   /// Brings the objects to the children that there are now: `make` gives a
   /// std::unique_ptr< Work > for a child that has none.
   template< class View, class Make > void follow( View children, Make make )
   {
      std::map< const Child *, One > now;
      for ( const Corvo::Ptr< Child > & child : children ) {
         if ( auto known = works_.extract( child.get() ) ) {
            now.insert( std::move( known ) );
         } else {
            now.emplace( child.get(), One{ child, make( child ) } );
         }
      }
      works_.swap( now );
   }

   template< class Do > void each( Do act )
   {
      for ( auto & [ child, one ] : works_ ) {
         act( *one.work );
      }
   }

 private:
   struct One {
      Corvo::Ptr< const Child > child;
      std::unique_ptr< Work > work;
   };
   std::map< const Child *, One > works_;
};

} // namespace Derive
