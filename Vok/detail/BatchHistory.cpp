// What a stream keeps for readers that stopped.
#include "Vok/detail/BatchHistory.h"

#include "Vok/detail/BatchNode.h"

#include <algorithm>

namespace Vok::Detail {

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
   for ( const Attribute & attribute : attributes_ ) {
      if ( attribute.whole ) {
         node_.writer->history_.remove( *attribute.whole );
      }
      if ( attribute.keys ) {
         for ( Keys::Cursor cursor( *attribute.keys ); !cursor.atEnd(); cursor.next() ) {
            node_.writer->history_.remove( *cursor.node()->value );
         }
      }
   }
}

NodeHistory::Attributes::iterator NodeHistory::find( std::uint32_t index ) noexcept
{
   return std::find_if( attributes_.begin(), attributes_.end(),
         [ index ]( const Attribute & attribute ) { return attribute.index == index; } );
}

std::unique_ptr< HistoryItem > NodeHistory::newItem( std::uint32_t index, std::string_view key )
{
   return std::make_unique< HistoryItem >( HistoryItem{ &node_, index, false, 0, key, {} } );
}

// What stands for the key, which is made where nothing does; with its attribute, so that none
// stays empty where memory ends.
HistoryItem & NodeHistory::item( std::uint32_t index, std::string_view key )
{
   auto at = find( index );
   if ( at != attributes_.end() && key.empty() && at->whole ) {
      return *at->whole;
   }
   if ( at != attributes_.end() && !key.empty() && at->keys ) {
      return *at->keys->findOrInsert( key, [ & ] { return Item{ newItem( index, key ) }; } )
                    .first->value;
   }
   Attribute fresh{ index, nullptr, nullptr };
   HistoryItem * made = nullptr;
   if ( key.empty() ) {
      fresh.whole = newItem( index, key );
      made = fresh.whole.get();
   } else {
      fresh.keys = std::make_unique< Keys >();
      made = fresh.keys->findOrInsert( key, [ & ] { return Item{ newItem( index, key ) }; } )
                   .first->value.get();
   }
   if ( at == attributes_.end() ) {
      attributes_.push_back( std::move( fresh ) );
   } else if ( fresh.whole ) {
      at->whole = std::move( fresh.whole );
   } else {
      at->keys = std::move( fresh.keys );
   }
   return *made;
}

void NodeHistory::note( std::uint64_t batch, std::uint32_t index, std::string_view key, bool gone )
{
   HistoryItem & noted = item( index, key );
   if ( noted.gone != gone ) {
      find( index )->gone += gone ? 1 : std::size_t( -1 );
      noted.gone = gone;
   }
   noted.batch = batch;
   node_.writer->history_.remove( noted );
   node_.writer->history_.push( noted );
}

std::size_t NodeHistory::gone( std::uint32_t index ) noexcept
{
   const auto at = find( index );
   return at == attributes_.end() ? 0 : at->gone;
}

void NodeHistory::noteWhole( std::uint64_t batch, std::uint32_t index )
{
   note( batch, index, {}, false );
   Attribute & attribute = *find( index );
   for ( Keys::Cursor cursor( *attribute.keys ); !cursor.atEnd(); cursor.next() ) {
      node_.writer->history_.remove( *cursor.node()->value );
   }
   attribute.keys.reset();
   attribute.gone = 0;
}

void NodeHistory::forget( const HistoryItem & item ) noexcept
{
   const auto at = find( item.index );
   node_.writer->history_.remove( const_cast< HistoryItem & >( item ) );
   if ( item.hasKey() ) {
      at->gone -= item.gone ? 1 : 0;
      at->keys->take( Corvo::String( item.key ) );
      if ( at->keys->empty() ) {
         at->keys.reset();
      }
   } else {
      at->whole.reset();
   }
   if ( !at->whole && !at->keys ) {
      attributes_.erase( at );
   }
}

} // namespace Vok::Detail
