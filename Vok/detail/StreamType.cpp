// Describing types at the start of a stream.
#include "Vok/detail/StreamType.h"

#include "Vok/Entity.h"
#include "Vok/HashMap2018.h"
#include "Vok/MapNodes.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/RowAccess.h"
#include "Vok/detail/Storage.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <mutex>
#include <typeinfo>
#include <utility>

namespace Vok::Detail {

namespace {

std::uint64_t mixed( std::uint64_t a, std::uint64_t b ) noexcept
{
   return multiplyFold( a ^ hashWords[ 4 ], b ^ hashWords[ 5 ] );
}

std::uint64_t hashed( std::string_view text ) noexcept
{
   return checksum64( reinterpret_cast< const std::byte * >( text.data() ), text.size() );
}

void putText( NboAttrLog::Out & out, std::string_view text )
{
   out.putVarint( text.size() );
   out.putBytes( text.data(), text.size() );
}

// Whether a log has what is stored, a number without sign, at the width that is its own there: of
// numbers, truth values, enumerators, and value types that are one of these.
bool isNumber( const ValueOps & ops )
{
   const std::type_info & type = *ops.type;
   if ( type == typeid( bool ) || type == typeid( std::uint8_t ) ||
         type == typeid( std::uint16_t ) || type == typeid( std::uint32_t ) ||
         type == typeid( std::uint64_t ) ) {
      return true;
   }
   const TypeData * const described = Corvo::ModuleInspectData::findType( ops.name );
   if ( !described || described->kind() == TypeKind::enumeration ) {
      return described != nullptr;
   }
   const AttributeRow * only = nullptr; // where there is another, the value is larger
   for ( const AttributeData & field : described->attributes() ) {
      const AttributeRow & row = field.row();
      if ( row.kind != AttributeKind::constant ) {
         if ( row.kind != AttributeKind::plain || row.mask != 0 || row.storage ) {
            return false;
         }
         only = &row;
      }
   }
   return only && only->offset == 0 && only->value->size == ops.size &&
         only->value->fixedLogSize == ops.fixedLogSize && isNumber( *only->value );
}

} // namespace

bool isStreamed( const AttributeRow & row ) noexcept
{
   switch ( row.kind ) {
   case AttributeKind::constant:
   case AttributeKind::derived:
   case AttributeKind::function:
      return false;
   case AttributeKind::constructorArgument:
      return row.settable;
   default:
      return true;
   }
}

bool isNameText( const AttributeRow & argument ) noexcept
{
   return argument.identity && !argument.fromName;
}

bool isText( const AttributeRow & row ) noexcept
{
   return !row.collection && !row.reference && !row.storage &&
         *row.value->type == typeid( Corvo::String );
}

bool holdsEntities( const AttributeRow & row ) noexcept
{
   return row.collection && row.collection->entity;
}

std::uint64_t layoutOf( std::string_view typeName )
{
   const TypeData * const type = Corvo::ModuleInspectData::findType( typeName );
   std::uint64_t layout = hashed( typeName );
   if ( type && type->kind() == TypeKind::value ) {
      for ( const AttributeData & field : type->attributes() ) {
         const AttributeRow & row = field.row();
         if ( row.kind != AttributeKind::constant && row.mask == 0 ) {
            layout = mixed( layout, hashed( row.name ) );
            layout =
                  mixed( layout, layoutOf( row.typeName ) + static_cast< unsigned >( row.kind ) );
            layout = mixed( layout, keyLayoutOf( row ) );
         }
      }
   }
   return layout;
}

std::uint64_t keyLayoutOf( const AttributeRow & row )
{
   if ( row.keyTypeName.empty() ) {
      return 0;
   }
   const std::uint64_t layout = layoutOf( row.keyTypeName );
   return row.keyField.empty() ? layout : mixed( layout, hashed( row.keyField ) );
}

OwnedValue defaultOf( const AttributeRow & row )
{
   if ( row.kind == AttributeKind::plain && !row.defaultText.empty() && row.value->read ) {
      return fromText( *row.value, row.defaultText );
   }
   return OwnedValue( *row.value );
}

// A reference argument is stored as a Corvo::Ptr, which is the address that it points to; entity
// types derive from Vok::Entity alone, so that theirs is its address.
const Entity * referred( const Entity & entity, const AttributeRow & row )
{
   return *static_cast< const Entity * const * >( storageOf( entity, row ) );
}

WrittenRow::WrittenRow(
      const AttributeRow & attribute, std::size_t inTable, std::size_t inRecords )
      : row( &attribute ),
        offset( attribute.offset ),
        index( static_cast< std::uint16_t >( inTable ) ),
        number( static_cast< std::uint16_t >( inRecords ) ),
        isName( isNameText( attribute ) )
{
   if ( row->collection || row->reference ) {
      return;
   }
   const ValueOps & ops = *row->value;
   if ( !row->storage && row->mask == 0 && isNumber( ops ) ) {
      coding = Coding::number;
      stored = static_cast< std::uint8_t >( ops.size );
      logged = static_cast< std::uint8_t >( ops.fixedLogSize );
   } else if ( isText( *row ) ) {
      coding = Coding::text;
   }
   if ( row->kind == AttributeKind::plain || row->kind == AttributeKind::optional ) {
      initial.emplace( defaultOf( *row ) );
      if ( coding == Coding::number ) {
         initialNumber = numberAt( initial->data() );
      }
   }
}

WrittenType::WrittenType( const TypeData & described ) : type( &described )
{
   const auto attributes = described.attributes();
   for ( std::size_t i = 0; i != attributes.size(); ++i ) {
      const AttributeRow & row = attributes[ i ].row();
      if ( row.kind == AttributeKind::constructorArgument ) {
         arguments.emplace_back( row, i, 0 );
      }
      if ( isStreamed( row ) ) {
         rows.emplace_back( row, i, rows.size() + 1 );
      }
   }
   nameAlone = arguments.size() == 1 && arguments.front().isName;
   addParts();
   putText( description_, type->name() );
   putText( description_, type->module().name() );
   description_.put( type->module().fingerprint() );
   describeArguments();
   description_.putVarint( rows.size() );
   for ( const WrittenRow & written : rows ) {
      describeRow( written );
   }
}

void WrittenType::addParts()
{
   constexpr std::size_t most = 64;
   for ( std::size_t first = 0; first < rows.size(); first += most ) {
      Part part;
      part.first = &rows[ first ];
      for ( std::size_t i = 0; i != std::min( most, rows.size() - first ); ++i ) {
         part.add( i );
      }
      parts_.push_back( std::move( part ) );
   }
}

// A collection is one pointer, null until it is filled, as `neverFilled` looks.
void WrittenType::Part::add( std::size_t place )
{
   const WrittenRow & row = first[ place ];
   const std::uint64_t bit = std::uint64_t{ 1 } << place;
   const std::size_t size = row.row->collection ? sizeof( void * ) : row.row->value->size;
   const bool told = row.row->collection ||
         ( row.initial && !row.row->storage && std::has_single_bit( size ) && size <= 16 );
   if ( !told ) {
      always |= bit;
      return;
   }
   const auto * const initial =
         row.initial ? static_cast< const std::byte * >( row.initial->data() ) : nullptr;
   for ( std::size_t i = 0; i != size; ++i ) {
      const std::size_t at = row.offset + i;
      const auto offset = static_cast< std::uint32_t >( at - at % sizeof( std::uintptr_t ) );
      const auto word = std::find_if( words.begin(), words.end(),
            [ offset ]( const Word & other ) { return other.offset == offset; } );
      Word & covers = word != words.end() ? *word : words.emplace_back( Word{ .offset = offset } );
      covers.rows |= bit;
      reinterpret_cast< std::byte * >( &covers.mask )[ at - offset ] = std::byte{ 0xff };
      reinterpret_cast< std::byte * >( &covers.bytes )[ at - offset ] =
            initial ? initial[ i ] : std::byte{ 0 };
   }
}

void WrittenType::describeArguments()
{
   NboAttrLog::Out & out = description_;
   out.putVarint( arguments.size() );
   for ( const WrittenRow & argument : arguments ) {
      const AttributeRow & row = *argument.row;
      putText( out, row.name );
      putText( out, row.typeName );
      out.put( static_cast< std::uint8_t >( ( row.reference ? Batch::referenceArgument : 0 ) |
            ( row.identity ? Batch::identityArgument : 0 ) ) );
      out.put( row.reference ? 0 : layoutOf( row.typeName ) );
   }
}

void WrittenType::describeRow( const WrittenRow & written )
{
   NboAttrLog::Out & out = description_;
   const AttributeRow & row = *written.row;
   out.putVarint( row.id );
   out.put( static_cast< std::uint8_t >( row.kind ) );
   putText( out, row.name );
   putText( out, row.typeName );
   putText( out, row.keyTypeName );
   out.put( holdsEntities( row ) ? 0 : layoutOf( row.typeName ) );
   out.put( keyLayoutOf( row ) );
   out.putVarint( row.collection ? 0 : row.value->fixedLogSize );
   if ( row.kind == AttributeKind::children || row.kind == AttributeKind::child ) {
      members_.push_back( { out.size(), &row.collection->memberType() } );
   } else {
      out.putVarint( 0 );
   }
   NboAttrLog::Out initial;
   if ( written.initial ) {
      row.value->encode( initial, written.initial->data() );
   }
   out.putVarint( initial.size() );
   out.putBytes( initial.data(), initial.size() );
}

void WrittenType::describe( NboAttrLog::Out & out,
      FunctionRef< std::uint64_t( const TypeData & ) > typeIndex ) const
{
   std::size_t from = 0;
   for ( const Member & member : members_ ) {
      out.putBytes( description_.data() + from, member.at - from );
      out.putVarint( typeIndex( *member.type ) + 1 );
      from = member.at;
   }
   out.putBytes( description_.data() + from, description_.size() - from );
}

const WrittenType & writtenType( const TypeData & type )
{
   using Entry = MapNode< const TypeData *, std::unique_ptr< const WrittenType > >;
   struct Known {
      std::mutex mutex;
      HashMap2018< Entry, const TypeData *, std::unique_ptr< const WrittenType > > types;
   };
   static Known & known = *new Known; // never ends, as writers may live on when static objects end
   const std::scoped_lock lock( known.mutex );
   const auto [ entry, made ] = known.types.findOrInsert( &type, [ &type ] {
      return Entry{ &type, std::make_unique< const WrittenType >( type ) };
   } );
   return *entry->value;
}

} // namespace Vok::Detail
