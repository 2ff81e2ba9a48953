// How entities come and go.
#include "Vok/Entity.h"

#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Slab.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/Threads.h"

namespace Vok {

namespace {

// Entities whose last reference is gone, linked through their parents. While one is destroyed,
// those that die with it wait here: the stack stays flat however deep the tree is.
struct Dying {
   Entity * first = nullptr;
   bool running = false;
};

// Found at a fixed distance from the thread's own address, where the compiler would else have a
// function called for every use.
[[gnu::tls_model( "initial-exec" )]] constinit thread_local Dying dying;

void countLive( const TypeData & type, bool made ) noexcept
{
   Detail::LiveCount * const live = type.row().live;
   if ( live && made ) {
      Detail::incrementCount( *live );
   } else if ( live ) {
      Detail::decrementCount( *live );
   }
}

void orphanChildren( Entity & entity, const TypeData & type ) noexcept
{
   for ( const AttributeData & attribute : type.attributes() ) {
      const Detail::AttributeRow & row = attribute.row();
      if ( row.collection && row.collection->leaveAll ) {
         row.collection->leaveAll( Detail::storageOf( entity, row ) );
      }
   }
}

} // namespace

Entity::~Entity() = default;

void Entity::handleParent( const Corvo::Ptr< Entity > & parent ) noexcept
{
   parent_ = parent.get();
}

void * Entity::operator new( std::size_t size )
{
   return Detail::slabAllocate( size );
}

void Entity::operator delete( void * memory, std::size_t size ) noexcept
{
   Detail::slabFree( memory, size );
}

void Detail::EntityAccess::counted( const Entity & made ) noexcept
{
   countLive( made.typeData(), true );
}

void Detail::EntityAccess::destroy( const Entity * entity ) noexcept
{
   Entity * const last = const_cast< Entity * >( entity );
   Dying & mine = dying;
   last->parent_ = mine.first;
   mine.first = last;
   if ( mine.running ) {
      return;
   }
   mine.running = true;
   while ( Entity * const next = mine.first ) {
      mine.first = next->parent_;
      next->parent_ = nullptr;
      const TypeData & type = next->typeData();
      countLive( type, false );
      if ( type.row().attributes.owns ) {
         orphanChildren( *next, type );
      }
      delete next;
   }
   mine.running = false;
}

} // namespace Vok
