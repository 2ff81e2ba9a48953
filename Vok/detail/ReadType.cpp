// Reading descriptions of types.
#include "Vok/detail/ReadType.h"

#include "Vok/HashMap2018.h"
#include "Vok/MapNodes.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/StreamType.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <mutex>
#include <span>
#include <string>
#include <utility>

namespace Vok::Detail {

namespace {

// What a stream may describe at most. Descriptions are kept before the batch is known to be good,
// and each takes more memory than bytes: a hostile stream must not make that much.
constexpr std::size_t mostTypes = 256;
constexpr std::size_t mostUnknownRows = 256;

using NboAttrLog::Exception;
using NboAttrLog::In;

std::string_view getText( In & in )
{
   const std::uint64_t size = in.getVarint();
   if ( size > in.remaining() ) {
      throw Exception( "a name in a batch is cut short" );
   }
   const auto bytes = in.getBytes( static_cast< std::size_t >( size ) );
   return { reinterpret_cast< const char * >( bytes.data() ), bytes.size() };
}

[[noreturn]] void incompatible( std::string_view type, std::string_view member, const char * what )
{
   std::string message( type );
   if ( !member.empty() ) {
      message.append( "::" ).append( member );
   }
   throw Exception( message.append( ": " ).append( what ) );
}

std::uint32_t getNumber( In & in )
{
   const std::uint64_t number = in.getVarint();
   if ( number > std::numeric_limits< std::uint32_t >::max() ) {
      throw Exception( "a number in the description of a type is too large" );
   }
   return static_cast< std::uint32_t >( number );
}

void readArguments( In & in, ReadType & type )
{
   const std::uint32_t count = getNumber( in );
   if ( type.own && count != type.own->constructorArguments().size() ) {
      incompatible( type.name, {}, "the writer's constructor takes other arguments" );
   }
   for ( std::uint32_t i = 0; i != count; ++i ) {
      const std::string_view name = getText( in );
      const std::string_view typeName = getText( in );
      const auto flags = in.get< std::uint8_t >();
      const auto layout = in.get< std::uint64_t >();
      ReadArgument argument;
      argument.reference = ( flags & Batch::referenceArgument ) != 0;
      if ( type.own ) {
         argument.own = &type.own->constructorArguments()[ i ].row();
         const AttributeRow & own = *argument.own;
         const bool same = own.name == name && own.typeName == typeName &&
               own.reference == argument.reference &&
               ( own.reference ? layout == 0 : layout == layoutOf( typeName ) );
         if ( !same ) {
            incompatible( type.name, name, "the writer's constructor argument is another" );
         }
         argument.isName = isNameText( own );
         type.refers = type.refers || argument.reference;
         type.arguments.push_back( argument );
      }
   }
}

void reconcile( const ReadType & type, const ReadRow & row, std::string_view typeName,
      std::string_view keyTypeName, std::uint64_t layout, std::uint64_t keyLayout )
{
   const AttributeRow & own = *row.own;
   if ( own.kind != row.kind ) {
      incompatible( type.name, row.name, "the writer's attribute is of another kind" );
   }
   if ( own.typeName != typeName || ( !holdsEntities( own ) && layout != layoutOf( typeName ) ) ) {
      incompatible( type.name, row.name, "the writer's attribute is of another type" );
   }
   if ( own.keyTypeName != keyTypeName || keyLayout != keyLayoutOf( own ) ) {
      incompatible( type.name, row.name, "the writer's collection has another key" );
   }
   if ( !own.collection && row.fixedSize != own.value->fixedLogSize ) {
      incompatible( type.name, row.name, "the writer's attribute has another size" );
   }
}

void readInitial( In & in, ReadRow & row )
{
   const std::uint64_t size = in.getVarint();
   if ( size > in.remaining() ) {
      throw Exception( "a default in a batch is cut short" );
   }
   In initial( in.getBytes( static_cast< std::size_t >( size ) ) );
   const bool plain = row.kind == AttributeKind::plain || row.kind == AttributeKind::optional;
   if ( row.own && plain ) {
      row.initial.emplace( *row.own->value );
      row.own->value->decode( initial, row.initial->data() );
      if ( initial.remaining() != 0 ) {
         throw Exception( "a default in a batch is longer than its value" );
      }
      const void * const value = row.initial->data();
      const bool own = row.own->value->equal( value, defaultOf( *row.own ).data() );
      // A default of this side's own may lie beyond the bounds that its mutator checks; no other.
      if ( row.own->check && !own ) {
         row.own->check( value );
      }
      // That of a type without text is not in the table.
      row.initialIsOwn = own && row.own->value->read;
   }
}

ReadRow readRow( In & in, const ReadType & type )
{
   getNumber( in ); // the writer's attribute id: names are what both sides share
   ReadRow row;
   const auto kind = in.get< std::uint8_t >();
   if ( kind > static_cast< std::uint8_t >( AttributeKind::references ) ) {
      throw Exception( "the description of a type names no such kind of attribute" );
   }
   row.kind = static_cast< AttributeKind >( kind );
   row.name = Corvo::String( getText( in ) );
   const std::string_view typeName = getText( in );
   const std::string_view keyTypeName = getText( in );
   const auto layout = in.get< std::uint64_t >();
   const auto keyLayout = in.get< std::uint64_t >();
   row.fixedSize = getNumber( in );
   row.memberType = getNumber( in );
   const AttributeData * const own = type.own ? type.own->attribute( row.name.view() ) : nullptr;
   if ( own && isStreamed( own->row() ) ) {
      row.own = &own->row();
      reconcile( type, row, typeName, keyTypeName, layout, keyLayout );
      row.isText = isText( *row.own );
   }
   readInitial( in, row );
   return row;
}

// Reads the attributes of a type, each of which this side knows once: what is kept of a description
// has to be bounded by the types that there are.
void readRows( In & in, ReadType & type, std::size_t & unknownRows )
{
   for ( std::uint32_t rows = getNumber( in ); rows != 0; --rows ) {
      ReadRow row = readRow( in, type );
      if ( !row.own && ++unknownRows > mostUnknownRows ) {
         throw Exception( "a stream describes too many attributes that this side does not know" );
      }
      const auto same = [ &row ]( const ReadRow & before ) { return before.own == row.own; };
      if ( row.own && std::any_of( type.rows.begin(), type.rows.end(), same ) ) {
         incompatible( type.name, row.name, "a stream describes it twice" );
      }
      type.hasEntities = type.hasEntities || row.hasEntities();
      const bool otherDefault =
            row.kind == AttributeKind::child || ( row.initial && !row.initialIsOwn );
      if ( row.own && otherDefault ) {
         type.otherDefaults.push_back( static_cast< std::uint32_t >( type.rows.size() ) );
      }
      type.rows.push_back( std::move( row ) );
   }
}

std::shared_ptr< const ReadType > readType(
      In & in, std::string_view name, const TypeData * own, std::size_t & unknownRows )
{
   const auto type = std::make_shared< ReadType >();
   type->name = Corvo::String( name );
   type->own = own;
   getText( in ); // module and fingerprint: for whoever looks into a stream
   in.get< std::uint64_t >();
   readArguments( in, *type );
   readRows( in, *type, unknownRows );
   return type;
}

// What was understood before: of each type of this side the last description that had nothing
// unknown in it, and what it was read as. Most streams describe a type alike; a process reads its
// description once then.
class Understood {
 public:
   // What the bytes at which `in` stands were read as, which it passes over; null where they were
   // not read, or others since.
   std::shared_ptr< const ReadType > find( const TypeData & own, In & in )
   {
      const std::scoped_lock lock( mutex_ );
      const auto * const known = types_.find( &own );
      if ( !known ) {
         return nullptr;
      }
      const std::vector< std::byte > & bytes = known->value.bytes;
      if ( bytes.size() > in.remaining() ||
            std::memcmp( bytes.data(), in.position(), bytes.size() ) != 0 ) {
         return nullptr;
      }
      in.getBytes( bytes.size() );
      return known->value.type;
   }

   void keep( std::span< const std::byte > bytes, const std::shared_ptr< const ReadType > & type )
   {
      if ( bytes.size() > longest ) {
         return;
      }
      Description description{ { bytes.begin(), bytes.end() }, type };
      const std::scoped_lock lock( mutex_ );
      const auto [ known, made ] = types_.findOrInsert( type->own, [ & ] {
         return Entry{ type->own, {} };
      } );
      std::swap( known->value, description );
   }

 private:
   // A hostile stream may put what it likes into a default.
   static constexpr std::size_t longest = 16384;

   struct Description {
      std::vector< std::byte > bytes;
      std::shared_ptr< const ReadType > type;
   };
   using Entry = MapNode< const TypeData *, Description >;

   std::mutex mutex_;
   HashMap2018< Entry, const TypeData *, Description > types_;
};

bool describes( const ReadTypes & types, std::string_view name )
{
   return std::any_of( types.begin(), types.end(),
         [ name ]( const auto & type ) { return type->name == name; } );
}

} // namespace

std::optional< ReadTypes > readTypes( In & in, const ReadTypes & before )
{
   const std::uint64_t count = in.getVarint();
   if ( count == 0 ) {
      return std::nullopt;
   }
   ReadTypes types = before;
   std::size_t unknownRows = 0;
   if ( count > mostTypes - std::min( types.size(), mostTypes ) ) {
      throw Exception( "a stream describes more than " + std::to_string( mostTypes ) + " types" );
   }
   static Understood & understood = *new Understood; // never ends, as readers may live on
   for ( std::uint64_t i = 0; i != count; ++i ) {
      const In start = in;
      const std::string_view name = getText( in );
      if ( describes( types, name ) ) {
         incompatible( name, {}, "a stream describes it twice" );
      }
      const TypeData * const found = Corvo::ModuleInspectData::findType( name );
      const TypeData * const own = found && found->kind() == TypeKind::entity ? found : nullptr;
      In whole = start;
      if ( auto known = own ? understood.find( *own, whole ) : nullptr ) {
         types.push_back( std::move( known ) );
         in = whole;
         continue;
      }
      const std::size_t unknownBefore = unknownRows;
      types.push_back( readType( in, name, own, unknownRows ) );
      if ( own && unknownRows == unknownBefore ) {
         understood.keep( { start.position(), in.position() }, types.back() );
      }
   }
   return types;
}

} // namespace Vok::Detail
