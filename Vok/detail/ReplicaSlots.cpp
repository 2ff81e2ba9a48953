// The pages of a reader's table.
#include "Vok/detail/ReplicaSlots.h"

#include "Vok/Entity.h"
#include "Vok/detail/Slab.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Vok::Detail {

// ---- SlotPage ---------------------------------------------------------------------------------

SlotPage::SlotPage( std::uint64_t & shapeChanges ) noexcept : shapeChanges_( &shapeChanges )
{
   isPage = true;
}

SlotPage::~SlotPage()
{
   for ( const Entity * const entity : entities_ ) {
      if ( entity ) {
         entity->publisher().linkDel( *this );
      }
   }
}

void * SlotPage::operator new( std::size_t size )
{
   return slabAllocate( size );
}

void SlotPage::operator delete( void * memory, std::size_t size ) noexcept
{
   slabFree( memory, size );
}

void SlotPage::verify( std::size_t slot ) noexcept
{
   if ( verifiedAt_ != *shapeChanges_ ) {
      verifiedAt_ = *shapeChanges_;
      verified_ = 0;
   }
   verified_ |= std::uint32_t{ 1 } << slot;
}

void SlotPage::enlarge( std::size_t places )
{
   if ( room_ == slots || ( changed_ && places == used_ + 1U && freeNumber() <= used_ ) ) {
      return;
   }
   const std::size_t room = std::min( std::max( places, 4 * std::size_t{ room_ } ), slots );
   auto others = std::make_unique< SlotPlace[] >( room - 1 );
   std::copy_n( others_.get(), room_ - 1, others.get() );
   others_ = std::move( others );
   room_ = static_cast< std::uint8_t >( room );
}

// The first number of a place that no slot has.
std::size_t SlotPage::freeNumber() const noexcept
{
   std::uint64_t taken = 1; // a bit for each number; 0 is none of a place
   for ( const std::uint8_t number : placeOf_ ) {
      taken |= std::uint64_t{ 1 } << number;
   }
   return static_cast< std::size_t >( std::countr_one( taken ) );
}

// The number of a place: that of an equal one among so many of the last, or a new one, or that of
// one that no slot has any more.
std::size_t SlotPage::numberOf( const SlotPlace & place, std::size_t looks ) noexcept
{
   const std::size_t before = used_ - std::min< std::size_t >( looks, used_ );
   for ( std::size_t number = used_; number != before; --number ) {
      if ( placeNumber( number ) == place ) {
         return number;
      }
   }
   const std::size_t number = used_ < room_ ? ++used_ : freeNumber();
   ( number == 1 ? first_ : others_[ number - 2 ] ) = place;
   return number;
}

void SlotPage::putInto( std::size_t slot, const SlotPlace & place, std::size_t looks ) noexcept
{
   const SlotPlace copy = place; // it may be the one that goes
   changed_ = changed_ || placeOf_[ slot ] != 0;
   placeOf_[ slot ] = 0;
   placeOf_[ slot ] = static_cast< std::uint8_t >( numberOf( copy, looks ) );
   verified_ &= ~( std::uint32_t{ 1 } << slot );
}

void SlotPage::fill( std::size_t slot, const SlotPlace & place, Entity * entity )
{
   if ( entity ) {
      entity->publisher().linkIs( *this );
   }
   entities_[ slot ] = entity;
   constexpr std::size_t looks = 4; // siblings follow each other, or those of a few parents
   putInto( slot, place, looks );
}

bool SlotPage::links( const Entity & entity ) const noexcept
{
   return std::find( entities_, entities_ + slots, &entity ) != entities_ + slots;
}

void SlotPage::takeAll( SlotPage & other ) noexcept
{
   for ( std::size_t slot = 0; slot != slots; ++slot ) {
      if ( !other.has( slot ) ) {
         continue;
      }
      Entity * const entity = std::exchange( other.entities_[ slot ], nullptr );
      Entity * const before = std::exchange( entities_[ slot ], entity );
      if ( entity ) {
         entity->publisher().linkMoves( other, *this );
      }
      if ( before && !links( *before ) ) {
         before->publisher().linkDel( *this );
      }
      placeIs( slot, other.place( slot ) );
   }
}

void SlotPage::gone( const Corvo::Publisher & publisher ) noexcept
{
   for ( Entity *& entity : entities_ ) {
      if ( entity && &entity->publisher() == &publisher ) {
         entity = nullptr;
      }
   }
}

// ---- The table --------------------------------------------------------------------------------

void ReplicaSlot::becomeOutside() const noexcept
{
   SlotPlace outside = place();
   outside.outside = true;
   page_->placeIs( at_, outside );
}

ReplicaSlot ReplicaSlots::find( std::uint64_t number ) const noexcept
{
   const auto * const found = pages_.find( number / SlotPage::slots );
   const std::size_t at = number % SlotPage::slots;
   return found && found->value->has( at ) ? ReplicaSlot( *found->value, at ) : ReplicaSlot();
}

void ReplicaSlots::insert( std::uint64_t number, const SlotPlace & place, Entity * entity )
{
   const std::uint64_t pageNumber = number / SlotPage::slots;
   if ( !lastPage_ || lastNumber_ != pageNumber ) { // numbers mostly come in order
      const auto [ at, inserted ] = pages_.findOrInsert( pageNumber, [ & ] {
         return Node{ pageNumber, std::make_unique< SlotPage >( *shapeChanges_ ) };
      } );
      lastPage_ = at->value.get();
      lastNumber_ = pageNumber;
   }
   lastPage_->reserve( lastPage_->places() + 1 );
   lastPage_->fill( number % SlotPage::slots, place, entity );
}

void ReplicaSlots::reserve( const ReplicaSlots & other )
{
   std::size_t fresh = 0;
   for ( Pages::Cursor cursor( other.pages_ ); !cursor.atEnd(); cursor.next() ) {
      if ( const Node * const own = pages_.find( cursor.node()->key ) ) {
         own->value->reserve( own->value->places() + cursor.node()->value->places() );
      } else {
         ++fresh;
      }
   }
   pages_.reserve( pages_.size() + fresh );
}

void ReplicaSlots::takeAll( ReplicaSlots & other ) noexcept
{
   for ( Pages::Cursor cursor( other.pages_ ); !cursor.atEnd(); cursor.next() ) {
      auto & page = const_cast< std::unique_ptr< SlotPage > & >( cursor.node()->value );
      const auto [ own, fresh ] = pages_.findOrInsert( cursor.node()->key,
            [ & ] { return Node{ cursor.node()->key, std::move( page ) }; } );
      if ( !fresh ) {
         own->value->takeAll( *page );
      }
   }
   other.clear();
}

} // namespace Vok::Detail
