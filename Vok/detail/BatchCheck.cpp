// Checking the records of a batch.
#include "Vok/detail/BatchCheck.h"

#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/RecordCursor.h"
#include "Vok/detail/StreamOps.h"

#include <string>

namespace Vok::Detail {

namespace {

using NboAttrLog::Exception;
using NboAttrLog::In;

[[noreturn]] void tooLong( const char * what )
{
   throw Exception( std::string( what ) + " is longer than what it holds" );
}

void needEnd( const In & in, const char * what )
{
   if ( in.remaining() != 0 ) {
      tooLong( what );
   }
}

[[gnu::noinline]] void checkBounds( const AttributeRow & row, In & payload )
{
   OwnedValue value( *row.value );
   row.value->decode( payload, value.data() );
   row.check( value.data() );
}

void checkValue( const AttributeRow & row, In payload )
{
   if ( row.check ) {
      checkBounds( row, payload );
   } else {
      row.value->check( payload );
   }
   needEnd( payload, "a value" );
}

void checkArguments( const ReadType & type, In in )
{
   if ( !type.own ) {
      return; // their layout is not known here; nothing of them is used
   }
   for ( const ReadArgument & argument : type.arguments ) {
      if ( argument.reference ) {
         in.getVarint();
      } else {
         argument.own->value->check( in );
      }
   }
   needEnd( in, "a list of arguments" );
}

const ReadType & memberType( const ReadRow & row, const ReadTypes & types )
{
   if ( row.memberType == 0 || row.memberType > types.size() ) {
      throw Exception( "a collection of children names a type that the batch does not describe" );
   }
   return *types[ row.memberType - 1 ];
}

void checkEntities( const ReadRow & row, In payload, bool whole, const ReadTypes & types,
      Introduced & introduced )
{
   std::size_t members = 0;
   while ( payload.remaining() != 0 ) {
      if ( ++members > 1 && row.kind == AttributeKind::child ) {
         throw Exception( "a single child comes twice" );
      }
      const MemberOp op = readOp( payload );
      if ( op == MemberOp::keep && ( !whole || row.kind != AttributeKind::children ) ) {
         throw Exception( "a member is kept where none has to be" );
      }
      if ( op == MemberOp::del && whole ) {
         throw Exception( "a whole collection deletes a member" );
      }
      if ( op != MemberOp::put ) {
         if ( row.kind == AttributeKind::child ) {
            continue;
         }
         if ( !row.own ) {
            return; // the key's layout is not known here
         }
         row.own->key->check( payload );
      } else if ( row.kind == AttributeKind::references ) {
         payload.getVarint();
      } else {
         const ChildHead child = readChildHead( payload );
         checkArguments( memberType( row, types ), child.arguments );
         introduced.add( child.number );
      }
   }
}

void checkCollection(
      const ReadRow & row, In payload, const ReadTypes & types, Introduced & introduced )
{
   if ( row.hasEntities() ) {
      const bool whole = readMode( payload );
      checkEntities( row, payload, whole, types, introduced );
   } else if ( row.own ) {
      const bool whole = readMode( payload );
      row.own->collection->stream->check( payload, whole );
   }
}

} // namespace

Introduced checkRecords(
      const BatchFrame & frame, const ReadTypes & types, const TypeData & root )
{
   Introduced introduced;
   In in = frame.content;
   if ( frame.whole ) {
      if ( types.empty() || types.front()->own != &root ) {
         throw Exception( "the stream is of a tree of type " +
               ( types.empty() ? std::string( "none" )
                               : std::string( types.front()->name.view() ) ) +
               ", the replica's root is a " + std::string( root.name() ) );
      }
      checkArguments( *types.front(), readBlock( in ) );
      introduced.add( 0 ); // the root
   }
   while ( in.remaining() != 0 ) {
      const RecordHead head = readRecordHead( in, types );
      if ( head.kind == Batch::RecordKind::outside ) {
         checkArguments( *head.type, head.arguments );
         introduced.add( head.number );
      } else if ( frame.whole && !head.whole() ) {
         throw Exception( "a batch of the whole tree changes an entity" );
      }
      eachAttribute( in, *head.type, [ & ]( const ReadRow & row, In payload ) {
         if ( row.isCollection() ) {
            checkCollection( row, payload, types, introduced );
         } else if ( row.own ) {
            checkValue( *row.own, payload );
         }
      } );
   }
   return introduced;
}

} // namespace Vok::Detail
