// What the kinds of collections have in common: nodes, views, lookups, and how their functions are
// put together.
#pragma once

#include "vokgen/Model.h"
#include "vokgen/emit/Row.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

#include <string>

namespace VokGen {

/// The member type that the collection is declared with: "Pair", "Corvo::Ptr< Tree >".
std::string memberType( const Model::Attribute & collection );

/// Node type and, where the key is read out of the member, key functor, as they stand in the class.
/// `node` is the template of Vok that the node is: "MapNode".
std::string nodeDeclaration( const Model::Attribute & collection );

/// The body of the key functor; empty where there is none.
std::string keyFunctorDefinition( const Model::Attribute & collection );

/// The data member.
std::string collectionMember( const Model::Attribute & collection );

/// One function of a collection; in the class it is only declared.
struct CollectionFunction {
   std::string result;
   std::string name;
   std::string parameters;
   std::string suffix; ///< Behind the parameters: " const".
   std::string statement; ///< Its body.
};

/// A call of a function of Vok::Attribute, or in a value of Vok::Collection: what is given before
/// and behind the collection itself.
struct CollectionCall {
   std::string function;
   std::string before;
   std::string behind;
};

/// Puts functions together: declarations in the class, definitions of accessors inline, those of
/// mutators in the .cpp.
class CollectionWriter {
 public:
   explicit CollectionWriter( const Model::Attribute & collection );

   /// The view and the lookup, which calls the function `lookup` of Vok::Collection and gives
   /// `result`.
   void accessors( const std::string & result, const std::string & lookup );

   /// An accessor beside these: it calls `lookup` with the key.
   void accessor(
         const std::string & name, const std::string & result, const std::string & lookup );

   /// A mutator, and what it calls.
   void mutator( const std::string & name, const std::string & result,
         const std::string & parameters, const CollectionCall & call );

   /// The mutator that stores under a key, which stands first in its parameters: `function` does.
   /// A key that is looked up by any text is also given as one. `value` is the parameter behind it,
   /// if any: "std::uint32_t value".
   void storer( const std::string & function, const std::string & value = "" );

   /// A comment before the functions that are added next.
   void say( const std::string & comment ) { out_.members += comment; }

   /// The owner, as code in its definitions names it: "Root::".
   const std::string & qualifier() const { return qualifier_; }

   Fragments finish();

 private:
   void declare( const CollectionFunction & function );
   void define( const CollectionFunction & function );
   std::string statement( const std::string & result, const CollectionCall & call ) const;
   std::string head( const CollectionFunction & function, bool inDefinition ) const;

   const Model::Attribute & collection_;
   std::string qualifier_;
   Fragments out_;
};

/// What the rows of all collections say. `operations` is the template of Vok::Detail that knows
/// them.
void fillCollectionRow(
      const Model::Attribute & collection, const std::string & operations, Row & row );

/// How the key of a collection is named in prose: "by `name`", "from `u32`".
std::string keyNote( const Model::Attribute & collection );

/// "ordered " or nothing.
std::string orderNote( const Model::Attribute & collection );

} // namespace VokGen
