// Walking the records of a batch whose lengths have been checked, and the checking itself: one
// reader of the grammar for both passes.
#pragma once

#include "Vok/NboAttrLog.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/ReadType.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace Vok::Detail {

/// One record's head; `in` goes on with its attributes.
struct RecordHead {
   std::uint64_t number = 0;
   Batch::RecordKind kind = Batch::RecordKind::change;

   /// Whether the record describes an entity that the batch introduces, rather than changes of one.
   bool whole() const noexcept
   {
      return kind == Batch::RecordKind::whole || kind == Batch::RecordKind::outside;
   }

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

inline RecordHead readRecordHead( NboAttrLog::In & in, const ReadTypes & types )
{
   RecordHead head;
   const std::uint64_t first = in.getVarint();
   head.number = first / 4;
   head.kind = static_cast< Batch::RecordKind >( first % 4 );
   const std::uint64_t type = in.getVarint();
   if ( type >= types.size() ) {
      throw NboAttrLog::Exception( "a batch names a type that it does not describe" );
   }
   head.typeNumber = static_cast< std::uint32_t >( type );
   head.type = types[ head.typeNumber ].get();
   if ( head.kind == Batch::RecordKind::outside ) {
      head.birth = in.getVarint();
      head.arguments = readBlock( in );
   }
   return head;
}

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
      if ( row.isCollection() ) {
         const auto size = in.get< std::uint32_t >();
         f( row, NboAttrLog::In( in.getBytes( size ) ) );
      } else if ( row.fixedSize != 0 ) {
         f( row, NboAttrLog::In( in.getBytes( row.fixedSize ) ) );
      } else {
         f( row, readBlock( in ) );
      }
   }
}

inline bool readMode( NboAttrLog::In & payload )
{
   const auto mode = payload.get< std::uint8_t >();
   if ( mode > Batch::wholeMode ) {
      throw NboAttrLog::Exception( "the payload of a collection is of an unknown mode" );
   }
   return mode == Batch::wholeMode;
}

/// One child that a payload introduces.
struct ChildHead {
   std::uint64_t number = 0;
   std::uint64_t birth = 0;
   NboAttrLog::In arguments{ nullptr, 0 };
};

inline ChildHead readChildHead( NboAttrLog::In & payload )
{
   ChildHead head;
   head.number = payload.getVarint();
   head.birth = payload.getVarint();
   head.arguments = readBlock( payload );
   return head;
}

} // namespace Vok::Detail
