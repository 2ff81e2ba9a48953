// Checking the records of a batch.
#include "Vok/detail/BatchCheck.h"

#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/RecordCursor.h"

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

[[gnu::noinline]] void checkBounds( const ReadRow & row, In & payload )
{
   OwnedValue value( *row.own->value );
   readValue( row, payload, value.data() );
   needEnd( payload, "a value" );
   row.own->check( value.data() );
}

void checkValue( const ReadRow & row, In payload )
{
   if ( row.own->check ) {
      checkBounds( row, payload );
   } else if ( !row.isText ) {
      row.own->value->check( payload );
      needEnd( payload, "a value" );
   }
}

void checkArguments( const ReadType & type, In in )
{
   if ( !type.own ) {
      return; // their layout is not known here; nothing of them is used
   }
   eachArgument( in, type, []( const ReadArgument & argument, In & at ) {
      if ( argument.reference ) {
         at.getVarint();
      } else if ( argument.isName ) {
         readRest( at );
      } else {
         argument.own->value->check( at );
      }
   } );
   needEnd( in, "a list of arguments" );
}

const ReadType & memberType( const ReadRow & row, const ReadTypes & types )
{
   if ( row.memberType == 0 || row.memberType > types.size() ) {
      throw Exception( "a collection of children names a type that the batch does not describe" );
   }
   return *types[ row.memberType - 1 ];
}

void checkEntities(
      const ReadRow & row, In payload, const ReadTypes & types, Introduced & introduced )
{
   EntityMembers members( payload );
   std::size_t count = 0;
   while ( members.more() ) {
      if ( ++count > 1 && row.kind == AttributeKind::child ) {
         throw Exception( "a single child comes twice" );
      }
      const MemberOp op = members.op();
      if ( op == MemberOp::keep && ( !members.whole() || row.kind != AttributeKind::children ) ) {
         throw Exception( "a member is kept where none has to be" );
      }
      if ( op == MemberOp::del && members.whole() ) {
         throw Exception( "a whole collection deletes a member" );
      }
      if ( op != MemberOp::put ) {
         if ( row.kind == AttributeKind::child ) {
            continue;
         }
         if ( !row.own ) {
            return; // the key's layout is not known here
         }
         row.own->key->check( members.key() );
      } else if ( row.kind == AttributeKind::references ) {
         members.reference();
      } else {
         const ChildHead child = members.child();
         checkArguments( memberType( row, types ), child.arguments );
         introduced.add( child.number );
      }
   }
}

void checkCollection(
      const ReadRow & row, In payload, const ReadTypes & types, Introduced & introduced )
{
   if ( row.hasEntities() ) {
      checkEntities( row, payload, types, introduced );
   } else if ( row.own ) {
      const bool whole = readWhole( payload );
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
   for ( RecordHeads heads( types ); in.remaining() != 0; ) {
      const RecordHead head = heads.next( in );
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
            checkValue( row, payload );
         }
      } );
   }
   return introduced;
}

} // namespace Vok::Detail
