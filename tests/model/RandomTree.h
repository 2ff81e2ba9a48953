// Random changes of a tree of the test module, through its typed mutators.
#pragma once

#include "tests/model/Everything.h"
#include "tests/support/DescribeTree.h"
#include "tests/support/Random.h"

#include "Vok/Vok.h"

#include <cstddef>
#include <string>

namespace TestSupport {

/// Changes a Test::Root in random ways through its typed mutators; every kind of attribute has
/// its turn.
class RandomTree {
 public:
   RandomTree( Test::Root & root, Random & random ) : root_( root ),
                                                      random_( random ) {}

   /// One random change, which may be none: a value that is there already, a key that is not.
   void change();
   void changes( std::size_t count );

 private:
   void changeScalar();
   void changeValue();
   void changeOptional();
   void changeMap();
   void changeOrdered();
   void changeSet();
   void changeChildren();
   void changeTree( Test::Tree & tree );
   void changeMembers( Test::Tree & tree );
   Corvo::Ptr< Test::Tree > somewhere();
   void changeGroup( Test::Group & group );
   void changeSingles();
   void changeReferences();

   Corvo::String name();
   Corvo::String text();
   Test::Pair pair();
   Test::Colour colour();
   Test::Narrow narrow();

   Test::Root & root_;
   Random & random_;
};

} // namespace TestSupport
