// Walking the records of a batch whose lengths have been checked, and the checking itself: one
// reader of the grammar for both passes.
#pragma once

#include "Vok/NboAttrLog.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/ReadType.h"
#include "Vok/detail/StreamOps.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace Vok::Detail {

/// One record's head; `in` goes on with its attributes.
struct RecordHead {
   std::uint64_t number = 0;
   Batch::RecordKind kind = Batch::RecordKind::change;

   /// Whether the record describes an entity that the batch introduces, rather than changes of one.
   bool whole() const noexcept { return Batch::introduces( kind ); }

   std::uint32_t typeNumber = 0;
   const ReadType * type = nullptr; ///< the one of that number
   std::uint64_t birth = 0; ///< of an outside record
   NboAttrLog::In arguments{ nullptr, 0 }; ///< of an outside record
};

inline NboAttrLog::In readBlock( NboAttrLog::In & in )
{
   const std::uint64_t size = in.getVarint();
   if ( size > in.remaining() ) {
      throw NboAttrLog::Exception( "a block of a batch is cut short" );
   }
   return NboAttrLog::In( in.getBytes( static_cast< std::size_t >( size ) ) );
}

/// The heads of a batch's records, from the first on.
class RecordHeads {
 public:
   explicit RecordHeads( const ReadTypes & types ) noexcept : types_( types ) {}

   /// The next one; `in` goes on with its attributes.
   RecordHead next( NboAttrLog::In & in )
   {
      RecordHead head;
      const std::uint64_t first = in.getVarint();
      head.kind = static_cast< Batch::RecordKind >( first % 4 );
      head.number = head.whole() ? introduced_.number( first / 4 ) : first / 4;
      const std::uint64_t type = in.getVarint();
      if ( type >= types_.size() ) {
         throw NboAttrLog::Exception( "a batch names a type that it does not describe" );
      }
      head.typeNumber = static_cast< std::uint32_t >( type );
      head.type = types_[ head.typeNumber ].get();
      if ( head.kind == Batch::RecordKind::outside ) {
         head.birth = in.getVarint();
         head.arguments = readBlock( in );
      }
      return head;
   }

 private:
   const ReadTypes & types_;
   Batch::Successive introduced_;
};

/// Calls f( row, payload ) for each attribute of a record. The payload of a collection begins
/// with its mode.
template< class F > void eachAttribute( NboAttrLog::In & in, const ReadType & type, F && f )
{
   const std::span< const ReadRow > rows = type.rows; // counted once, for all attributes
   std::uint64_t last = 0;
   while ( const std::uint64_t number = in.getVarint() ) {
      if ( number <= last || number > rows.size() ) {
         throw NboAttrLog::Exception( "a record names its attributes out of order" );
      }
      last = number;
      const ReadRow & row = rows[ static_cast< std::size_t >( number - 1 ) ];
      if ( row.fixedSize != 0 && !row.isCollection() ) {
         f( row, NboAttrLog::In( in.getBytes( row.fixedSize ) ) );
      } else {
         f( row, readBlock( in ) );
      }
   }
}

/// Calls f( argument, in ) for each argument of an entity, `in` where its value stands. The name, a
/// text to the end, comes last.
template< class F > void eachArgument( NboAttrLog::In & in, const ReadType & type, F && f )
{
   const ReadArgument * name = nullptr;
   for ( const ReadArgument & argument : type.arguments ) {
      if ( argument.isName ) {
         name = &argument;
      } else {
         f( argument, in );
      }
   }
   if ( name ) {
      f( *name, in );
   }
}

/// All that is left, as a text.
inline std::string_view readRest( NboAttrLog::In & in )
{
   const std::span< const std::byte > rest = in.getBytes( in.remaining() );
   return { reinterpret_cast< const char * >( rest.data() ), rest.size() };
}

/// The value of a known attribute that has no members.
inline void readValue( const ReadRow & row, NboAttrLog::In & payload, void * into )
{
   if ( row.isText ) {
      *static_cast< Corvo::String * >( into ) = Corvo::String( readRest( payload ) );
   } else {
      row.own->value->decode( payload, into );
   }
}

inline std::uint8_t readMode( NboAttrLog::In & payload, std::uint8_t last )
{
   const auto mode = payload.get< std::uint8_t >();
   if ( mode > last ) {
      throw NboAttrLog::Exception( "the payload of a collection is of an unknown mode" );
   }
   return mode;
}

/// Whether the payload of a map or set has all members.
inline bool readWhole( NboAttrLog::In & payload )
{
   return readMode( payload, Batch::wholeMode ) == Batch::wholeMode;
}

/// One child that a payload introduces.
struct ChildHead {
   std::uint64_t number = 0;
   std::uint64_t birth = 0;
   NboAttrLog::In arguments{ nullptr, 0 };
};

/// What a payload does to children or references, one after the other.
class EntityMembers {
 public:
   explicit EntityMembers( NboAttrLog::In payload )
         : in_( payload ),
           mode_( readMode( in_, Batch::keepMode ) )
   {
   }

   /// Whether it has all members.
   bool whole() const noexcept { return mode_ != Batch::deltaMode; }
   bool more() const noexcept { return in_.remaining() != 0; }

   /// The next operation. Behind it stands the child or the reference that is put, else the key.
   MemberOp op() { return mode_ == Batch::wholeMode ? MemberOp::put : readOp( in_ ); }
   ChildHead child()
   {
      ChildHead head;
      const std::uint64_t first = in_.getVarint();
      head.number = numbers_.number( first / 2 );
      if ( first % 2 != 0 ) {
         birth_ = in_.getVarint();
      }
      head.birth = birth_;
      head.arguments = readBlock( in_ );
      return head;
   }
   std::uint64_t reference() { return in_.getVarint(); }
   NboAttrLog::In & key() noexcept { return in_; }

 private:
   NboAttrLog::In in_;
   std::uint8_t mode_;
   Batch::Successive numbers_;
   std::uint64_t birth_ = 0; ///< of the child before
};

} // namespace Vok::Detail
