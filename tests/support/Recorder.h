// Notifiees that write down or count what they hear.
#pragma once

#include "Vok/Vok.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace TestSupport {

/// Writes down each change as "id", "id[key]", with " was old" where there is an old value, and
/// then does what it was told to do.
class Recorder : public Corvo::Notifiee {
 public:
   Recorder() = default;
   explicit Recorder( const Vok::Entity & entity ) { entity.publisher().notifieeIs( this ); }

   void onChange( const Corvo::Change & change ) override
   {
      std::string text = std::to_string( change.attrId );
      if ( change.hasKey() ) {
         text.append( "[" ).append( change.keyText().view() ).append( "]" );
      }
      if ( change.hasOldValue() ) {
         text.append( " was " ).append( change.oldValueText().view() );
      }
      heard.push_back( text );
      if ( then ) {
         then( change );
      }
   }

   /// What was heard since the last call.
   std::vector< std::string > take()
   {
      std::vector< std::string > taken;
      taken.swap( heard );
      return taken;
   }

   std::vector< std::string > heard;
   std::function< void( const Corvo::Change & ) > then;
};

using Heard = std::vector< std::string >;

/// Counts what it hears, and allocates nothing for it.
class Counter : public Corvo::Notifiee {
 public:
   Counter() = default;
   explicit Counter( const Vok::Entity & entity ) { entity.publisher().notifieeIs( this ); }

   void onChange( const Corvo::Change & ) override { ++heard; }

   std::size_t heard = 0;
};

} // namespace TestSupport
