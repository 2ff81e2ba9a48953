// What a stream keeps for readers that stopped.
#include "Vok/detail/BatchHistory.h"

#include "Vok/detail/BatchNode.h"

#include <algorithm>

namespace Vok::Detail {

namespace {

// Most significant byte first: the order of the texts is that of the attributes.
Corvo::String placeOf( std::uint32_t index, std::string_view key )
{
   std::string place;
   place.reserve( HistoryItem::headSize + key.size() );
   for ( int shift = 24; shift >= 0; shift -= 8 ) {
      place.push_back( static_cast< char >( index >> shift & 0xff ) );
   }
   return Corvo::String( place.append( key ) );
}

} // namespace

std::uint32_t HistoryItem::index() const noexcept
{
   std::uint32_t index = 0;
   for ( std::size_t i = 0; i != headSize; ++i ) {
      index = index << 8 | static_cast< unsigned char >( place.view()[ i ] );
   }
   return index;
}

BatchPlace::BatchPlace( BatchWriter & stream ) : writer( &stream )
{
   writer->enter( *this );
}

BatchPlace::~BatchPlace()
{
   if ( writer ) {
      writer->leave( *this );
   }
}

NodeHistory::~NodeHistory()
{
   for ( decltype( items_ )::Cursor cursor( items_ ); !cursor.atEnd(); cursor.next() ) {
      node_.writer->history_.remove( *cursor.node()->value );
   }
}

void NodeHistory::note( std::uint64_t batch, std::uint32_t index, std::string_view key, bool gone )
{
   const Corvo::String place = placeOf( index, key );
   const auto [ at, inserted ] = items_.findOrInsert( place, [ & ] {
      auto item = std::make_unique< HistoryItem >();
      item->node = &node_;
      item->place = place;
      return Item{ std::move( item ) };
   } );
   HistoryItem & item = *at->value;
   if ( item.gone != gone ) {
      count( item, gone );
      item.gone = gone;
   }
   item.batch = batch;
   node_.writer->history_.remove( item );
   node_.writer->history_.push( item );
}

void NodeHistory::count( const HistoryItem & item, bool gone )
{
   const std::uint32_t index = item.index();
   auto at = std::find_if(
         gone_.begin(), gone_.end(), [ & ]( const auto & entry ) { return entry.first == index; } );
   if ( at == gone_.end() ) {
      at = gone_.insert( at, { index, 0 } );
   }
   at->second += gone ? 1 : std::size_t( -1 );
}

std::size_t NodeHistory::gone( std::uint32_t index ) const noexcept
{
   for ( const auto & [ attribute, count ] : gone_ ) {
      if ( attribute == index ) {
         return count;
      }
   }
   return 0;
}

void NodeHistory::noteWhole( std::uint64_t batch, std::uint32_t index )
{
   note( batch, index, {}, false );
   for ( decltype( items_ )::Cursor cursor( items_ ); !cursor.atEnd(); cursor.next() ) {
      if ( HistoryItem & item = *cursor.node()->value; item.hasKey() && item.index() == index ) {
         forget( item );
      }
   }
}

void NodeHistory::forget( const HistoryItem & item ) noexcept
{
   if ( item.gone ) {
      count( item, false ); // has an entry: takes no memory
   }
   node_.writer->history_.remove( const_cast< HistoryItem & >( item ) );
   items_.take( Corvo::String( item.place ) );
}

} // namespace Vok::Detail
