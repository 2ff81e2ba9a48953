// Writes down every change of a whole tree.
#pragma once

#include "Vok/Vok.h"

#include <algorithm>
#include <string>
#include <vector>

namespace DeriveTest {

/// Hears of a tree, children that come later included, and writes each change down as
/// "/path.attribute[key]". What a child holds when it comes is not heard.
class TreeRecorder : public Corvo::Notifiee {
 public:
   explicit TreeRecorder( const Vok::Entity & root ) { attach( root ); }

   void onChange( const Corvo::Change & change ) override
   {
      const Vok::AttributeData & attribute = attributeOf( change );
      std::string text( Vok::pathOf( change.entity ).view() );
      text.append( text == "/" ? "" : "." ).append( attribute.name() );
      if ( change.hasKey() ) {
         text.append( "[" ).append( change.keyText().view() ).append( "]" );
      }
      heard_.push_back( text );
      if ( isChild( attribute ) ) {
         if ( const auto child = attribute.child( change.entity, change.keyText() ) ) {
            attach( *child );
         }
      }
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
   static bool isChild( const Vok::AttributeData & attribute )
   {
      return attribute.kind() == Vok::AttributeKind::child ||
            attribute.kind() == Vok::AttributeKind::children;
   }

   static const Vok::AttributeData & attributeOf( const Corvo::Change & change )
   {
      const auto attributes = change.entity.typeData().attributes();
      return *std::find_if( attributes.begin(), attributes.end(),
            [ & ]( const Vok::AttributeData & a ) { return a.id() == change.attrId; } );
   }

   void attach( const Vok::Entity & entity )
   {
      entity.publisher().notifieeIs( this );
      for ( const Vok::AttributeData & attribute : entity.typeData().attributes() ) {
         if ( attribute.kind() == Vok::AttributeKind::children ) {
            for ( const Corvo::String & key : attribute.keys( entity ) ) {
               attach( *attribute.child( entity, key ) );
            }
         } else if ( attribute.kind() == Vok::AttributeKind::child ) {
            if ( const auto child = attribute.child( entity, "" ) ) {
               attach( *child );
            }
         }
      }
   }

   std::vector< std::string > heard_;
};

} // namespace DeriveTest
