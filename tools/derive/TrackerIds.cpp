// Numbers of trackers: those that stay, then those that hardware knows, then new ones.
#include "tools/derive/TrackerIds.h"

#include "tools/derive/Bring.h"

namespace Derive {

using FlowTracking::FtId;

std::optional< FtId > TrackerIds::idOf( const Corvo::String & name ) const
{
   return status_->ftNameToFtId().contains( name )
         ? std::optional< FtId >( status_->ftNameToFtId( name ) )
         : std::nullopt;
}

// The two maps are independent: where they disagree, a number is its who has it in both.
TrackerIds::Owners TrackerIds::kept( const Names & names, const Ids & used ) const
{
   Owners owners;
   for ( const auto & [ id, name ] : status_->ftIdToFtName() ) {
      if ( names.contains( name ) && idOf( name ) == id ) {
         owners.emplace( id.value(), name );
      }
   }
   std::set< Corvo::String > have;
   for ( const auto & [ id, name ] : owners ) {
      have.insert( name );
   }
   for ( const Corvo::String & name : names ) {
      if ( have.contains( name ) ) {
         continue;
      }
      const auto id = idOf( name );
      const auto known = used.find( name );
      if ( id && !owners.contains( id->value() ) ) {
         owners.emplace( id->value(), name );
      } else if ( known != used.end() ) {
         owners.emplace( known->second.value(), name ); // where nobody has it
      }
   }
   return owners;
}

std::optional< std::uint32_t > TrackerIds::nextFree( const Owners & owners ) const
{
   if ( owners.size() > FtId::maxFtId() ) {
      return std::nullopt;
   }
   std::uint32_t id = status_->nextFtId();
   while ( id > FtId::maxFtId() || owners.contains( id ) ) {
      id = id >= FtId::maxFtId() ? FtId::minFtId() : id + 1;
   }
   return id;
}

void TrackerIds::assign( const Names & names, const Ids & used )
{
   Owners owners = kept( names, used );
   std::set< Corvo::String > have;
   for ( const auto & [ id, name ] : owners ) {
      have.insert( name );
      // What hardware brought is not given out next when it becomes free.
      if ( !idOf( name ) && id >= status_->nextFtId() ) {
         status_->nextFtIdIs( id + 1 );
      }
   }
   for ( const Corvo::String & name : names ) {
      if ( have.contains( name ) ) {
         continue;
      }
      const auto id = nextFree( owners );
      if ( !id ) {
         break;
      }
      owners.emplace( *id, name );
      status_->nextFtIdIs( *id + 1 );
   }
   store( owners );
}

void TrackerIds::store( const Owners & owners )
{
   auto & status = *status_;
   Ids ids;
   for ( const auto & [ id, name ] : owners ) {
      ids.emplace( name, FtId( id ) );
      status.ftIdToFtNameIs( FtId( id ), name );
   }
   for ( const auto & [ id, name ] : status.ftIdToFtName() ) {
      if ( !owners.contains( id.value() ) ) {
         status.ftIdToFtNameDel( id );
      }
   }
   bringMap(
         status.ftNameToFtId(), ids,
         [ & ]( const auto & name, const FtId & id ) { status.ftNameToFtIdIs( name, id ); },
         [ & ]( const auto & name ) { status.ftNameToFtIdDel( name ); } );
}

} // namespace Derive
