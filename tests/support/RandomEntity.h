// Random changes of a tree of any type, through reflection alone.
#pragma once

#include "tests/support/Random.h"
#include "tests/support/RandomValue.h"

#include "Vok/Vok.h"

#include <cstddef>
#include <string_view>

namespace TestSupport {

/// Changes a tree in random ways: every attribute of every entity below the root has its turn, but
/// for those whose value has no text. References lead into the tree, to what has left it, and to
/// what was never in it, which changes as well. Its draws are those of `random` alone, one after
/// the other: a seed means the same changes with every compiler.
class RandomEntity {
 public:
   RandomEntity( Vok::Entity & root, Random & random ) : root_( root ),
                                                         random_( random ),
                                                         values_( random )
   {
   }

   /// One random change, which may be none: a value that is there already, a key that is not.
   void change();
   void changes( std::size_t count );

 private:
   void change( Vok::Entity & entity );
   void change( Vok::Entity & entity, const Vok::AttributeData & attribute );
   void changeValue( Vok::Entity & entity, const Vok::AttributeData & attribute );
   void changeMap( Vok::Entity & entity, const Vok::AttributeData & attribute );
   void changeSet( Vok::Entity & entity, const Vok::AttributeData & attribute );
   void changeChildren( Vok::Entity & entity, const Vok::AttributeData & attribute );
   void changeChild( Vok::Entity & entity, const Vok::AttributeData & attribute );
   void changeReferences( Vok::Entity & entity, const Vok::AttributeData & attribute );
   Corvo::Ptr< Vok::Entity > childIs(
         Vok::Entity & entity, const Vok::AttributeData & attribute, std::string_view key );
   Corvo::Ptr< Vok::Entity > anyOf( const Vok::TypeData & type );
   Corvo::Ptr< Vok::Entity > stranger( const Vok::TypeData & type );

   Vok::Entity & root_;
   Random & random_;
   RandomValue values_;
};

} // namespace TestSupport
