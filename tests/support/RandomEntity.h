// Random changes of a tree of any type, through reflection alone.
#pragma once

#include "tests/support/Random.h"

#include "Vok/Vok.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

/// Random values, of any type but one whose text is written by hand.
class RandomValue {
 public:
   explicit RandomValue( Random & random ) : random_( random ) {}

   /// A text of a type; between the bounds where there are any. Keys are few, so that they meet
   /// again.
   std::string text( std::string_view type, std::string_view lower = {},
         std::string_view upper = {} );
   std::string key( std::string_view type );

   /// A value of a type, with some members where it holds collections.
   Vok::Value value( const Vok::TypeData & type );

   /// A name, bare as constructors of entities take it, and as the text of a string all the same.
   std::string name();

 private:
   std::string number( std::uint64_t lower, std::uint64_t upper );
   std::string string();
   void addMembers( Vok::Value & value );

   Random & random_;
   bool few_ = false;
};

/// Changes a tree in random ways: every attribute of every entity below the root has its turn, but
/// for references, for children that refer to entities, and for attributes whose value has no text.
/// Its draws are those of `random` alone, one after the other: a seed means the same changes with
/// every compiler.
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
   std::vector< Corvo::String > arguments( const Vok::AttributeData & attribute );

   Vok::Entity & root_;
   Random & random_;
   RandomValue values_;
};

} // namespace TestSupport
