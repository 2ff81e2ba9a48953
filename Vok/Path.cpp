// Reading and writing paths.
#include "Vok/Path.h"

#include "Vok/CharRange.h"
#include "Vok/Entity.h"
#include "Vok/TextOut.h"
#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/RowAccess.h"
#include "Vok/detail/Storage.h"

#include <vector>

namespace Vok {

void Detail::putStep( TextOut & out, const Entity & parent, const Entity & child )
{
   for ( const AttributeData & attribute : parent.typeData().attributes() ) {
      const Detail::AttributeRow & row = attribute.row();
      if ( row.kind != AttributeKind::children && row.kind != AttributeKind::child ) {
         continue;
      }
      TextOut key;
      if ( row.collection->keyText( Detail::storageOf( parent, row ), child, key ) ) {
         out.put( '/' );
         out.put( row.name );
         if ( row.kind == AttributeKind::children ) {
            out.put( '[' );
            out.put( key.view() );
            out.put( ']' );
         }
         return;
      }
   }
}

const Entity & rootOf( const Entity & entity ) noexcept
{
   const Entity * root = &entity;
   while ( root->parent() ) {
      root = root->parent();
   }
   return *root;
}

Corvo::String pathOf( const Entity & entity )
{
   std::vector< const Entity * > line;
   for ( const Entity * e = &entity; e; e = e->parent() ) {
      line.push_back( e );
   }
   TextOut out;
   for ( std::size_t i = line.size() - 1; i != 0; --i ) {
      Detail::putStep( out, *line[ i ], *line[ i - 1 ] );
   }
   return out.size() == 0 ? Corvo::String( "/" ) : out.text();
}

Entity * entityAt( Entity & root, std::string_view path )
{
   CharRange range( path );
   if ( path == "/" ) {
      return &root;
   }
   Entity * at = &root;
   do {
      if ( !range.accept( '/' ) ) {
         range.fail( "/" );
      }
      const std::size_t start = range.offset();
      const AttributeData * const attribute = at->typeData().attribute( range.word() );
      const Detail::AttributeRow * const row = attribute ? &attribute->row() : nullptr;
      if ( !row || ( row->kind != AttributeKind::children && row->kind != AttributeKind::child ) ) {
         range.backTo( start );
         range.fail( "a collection of children or a single child of " +
               std::string( at->typeData().name() ) );
      }
      if ( row->kind == AttributeKind::child ) {
         at = row->collection->entity( Detail::storageOf( *at, *row ), nullptr );
         continue;
      }
      range.need( '[' );
      Detail::OwnedValue key( *row->key );
      row->key->read( range, key.data() );
      range.need( ']' );
      at = row->collection->entity( Detail::storageOf( *at, *row ), key.data() );
   } while ( at && !range.empty() );
   return at;
}

} // namespace Vok
