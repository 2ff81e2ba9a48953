// Random values of any type, through reflection alone.
#pragma once

#include "tests/support/Random.h"

#include "Vok/Vok.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace TestSupport {

/// Random values. Of a type that is not made from its fields they are a few known ones.
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

} // namespace TestSupport
