// The table that the store keeps, in both ways in which a model may have it.
#pragma once

#include "bench/store/BenchTables.h"
#include "bench/store/Model.h"
#include "bench/store/Subject.h"

#include <array>
#include <cstdint>
#include <string>

namespace Bench {

/// The member that marks are written to.
inline const Corvo::String & markName()
{
   static const Corvo::String name( memberName( 0 ) );
   return name;
}

/// A table of entities: a change is one of its attributes. Its writer holds the entities.
struct Entities {
   using Table = EntityTable;
   using Member = Corvo::Ptr< Flow >;
   static constexpr const char * subject = "Vok";

   static Corvo::Ptr< Table > make() { return Table::EntityTableIs( "flows" ); }

   static Member add( Table & table, const std::string & name, const Row & row )
   {
      const auto flow = table.flowIs( name );
      for ( std::uint32_t column = 0; column != columns; ++column ) {
         set( *flow, column, row[ column ] );
      }
      return flow;
   }
   static void change( Table &, const Member & flow, const Change & change )
   {
      set( *flow, change.column, change.value );
   }
   static std::uint64_t digest( const Table & table )
   {
      std::uint64_t sum = 0;
      for ( const auto & flow : table.flow() ) {
         sum += rowDigest( flow->name(), rowOf( *flow ) );
      }
      return sum;
   }
   static void listen( Table & table, Corvo::Notifiee & ear, bool hears )
   {
      if ( hears ) {
         for ( const auto & flow : table.flow() ) {
            flow->publisher().notifieeIs( &ear );
         }
      } else {
         table.flow( markName() )->publisher().notifieeIs( &ear );
      }
   }
   static std::uint64_t mark( const Table & table )
   {
      return table.flow( markName() )->stamp();
   }

   static void told( const Corvo::Change & change, Sink & sink )
   {
      const auto & flow = static_cast< const Flow & >( change.entity );
      const std::uint32_t column = change.attrId - Flow::packetsAttrId;
      sink.changed( column, rowOf( flow )[ column ], flow.name() == markName() );
   }

 private:
   static Row rowOf( const Flow & flow ) noexcept
   {
      return { flow.packets(), flow.bytes(), flow.drops(), flow.stamp() };
   }
   static void set( Flow & flow, std::uint32_t column, std::uint64_t value )
   {
      using Mutator = void ( Flow::* )( std::uint64_t );
      static constexpr std::array< Mutator, columns > mutators{
         &Flow::packetsIs, &Flow::bytesIs, &Flow::dropsIs, &Flow::stampIs
      };
      ( flow.*mutators[ column ] )( value );
   }
};

/// A table of values: a change is a value with all its fields. Its writer holds the names.
struct Values {
   using Table = ValueTable;
   using Member = Corvo::String;
   static constexpr const char * subject = "Vok-values";

   static Corvo::Ptr< Table > make() { return Table::ValueTableIs( "flows" ); }

   static Member add( Table & table, const Corvo::String & name, const Row & row )
   {
      table.flowIs( name, Counters( row[ 0 ], row[ 1 ], row[ 2 ], row[ 3 ] ) );
      return name;
   }
   static void change( Table & table, const Member & name, const Change & change )
   {
      Row row = rowOf( table.flow( name ) );
      row[ change.column ] = change.value;
      add( table, name, row );
   }
   static std::uint64_t digest( const Table & table )
   {
      std::uint64_t sum = 0;
      for ( const auto & [ name, counters ] : table.flow() ) {
         sum += rowDigest( name, rowOf( counters ) );
      }
      return sum;
   }
   static void listen( Table & table, Corvo::Notifiee & ear, bool )
   {
      table.publisher().notifieeIs( &ear );
   }
   static std::uint64_t mark( const Table & table )
   {
      return table.flow( markName() ).stamp();
   }

   // Which of the fields has changed is seen by the value that was.
   static void told( const Corvo::Change & change, Sink & sink )
   {
      const auto & table = static_cast< const Table & >( change.entity );
      const auto & name = *change.key< Corvo::String >();
      const Row now = rowOf( table.flow( name ) );
      const auto * const old = change.oldValue< Counters >();
      const Row before = old ? rowOf( *old ) : Row{};
      for ( std::uint32_t column = 0; column != columns; ++column ) {
         if ( now[ column ] != before[ column ] ) {
            sink.changed( column, now[ column ], name == markName() );
         }
      }
   }

 private:
   static Row rowOf( const Counters & counters ) noexcept
   {
      return { counters.packets(), counters.bytes(), counters.drops(), counters.stamp() };
   }
};

} // namespace Bench
