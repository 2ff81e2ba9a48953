// Writes down every change of a whole tree.
#pragma once

#include "Vok/Vok.h"

#include <algorithm>
#include <string>
#include <vector>

namespace DeriveTest {

/// Hears of a tree, children that come later included, and writes each change down as
/// "/path.attribute[key]". What a child holds when it comes is not heard.
class TreeRecorder {
 public:
   explicit TreeRecorder( const Vok::Entity & root )
         : follower_( root, [ this ]( const auto & change, const auto & attribute ) {
              hear( change, attribute );
           } )
   {
   }

   /// What was heard since the last call, in the order of the texts.
   std::vector< std::string > take()
   {
      std::vector< std::string > taken;
      taken.swap( heard_ );
      std::sort( taken.begin(), taken.end() );
      return taken;
   }

 private:
   void hear( const Corvo::Change & change, const Vok::AttributeData & attribute )
   {
      std::string text( Vok::pathOf( change.entity ).view() );
      text.append( text == "/" ? "" : "." ).append( attribute.name() );
      if ( change.hasKey() ) {
         text.append( "[" ).append( change.keyText().view() ).append( "]" );
      }
      heard_.push_back( text );
   }

   std::vector< std::string > heard_;
   Vok::TreeFollower follower_;
};

} // namespace DeriveTest
