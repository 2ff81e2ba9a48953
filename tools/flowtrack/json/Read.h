// Values of a document as texts of the framework, with all that is wrong in them.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/json/Document.h"
#include "tools/flowtrack/json/Problem.h"
#include "tools/flowtrack/json/Shape.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace FlowtrackJson {

/// Where a value stands in a document, and what it is by the definition.
struct Spot {
   std::string pointer;
   std::string definition;
};

/// A member of a collection that is written as an array, with its key beside the value.
struct Entry {
   const Node * key = nullptr;
   const Node * value = nullptr;
};

/// The place of a member or an element of what stands at a place.
Spot below( const Spot & spot, std::string_view step, std::string definition );

/// Reads values of one document and notes what is wrong.
class Reading {
 public:
   explicit Reading( const Document & document ) : document_( document ) {}

   /// The text of a value, or none where the document has none of that shape.
   std::optional< std::string > text( const Node & node, const Shape & shape, const Spot & spot );

   /// A value of a value type. Where one field stands outside as its key, `keyField` and `key`,
   /// a text, say so. Fields that the node lacks are as in a new value.
   std::optional< Vok::Value > value( const Node & node, const Shape & shape, const Spot & spot,
         std::string_view keyField = {}, std::string_view key = {} );

   /// The text of a key that is the name of a member.
   std::optional< std::string > key(
         const Member & member, const Shape & shape, const Spot & spot );

   /// The two members of an object { "key": …, "value": … }; null where there is none.
   Entry entry( const Node & node, const Spot & spot );

   /// Whether a node is of that kind; a problem where it is not.
   bool is( Node::Kind kind, const Node & node, const Spot & spot, std::string_view allowed );

   /// Does what may throw as the framework refuses a value; a problem where it does.
   bool done( const Node & node, const Spot & spot, const std::function< void() > & what );

   void wrong( std::size_t offset, const Spot & spot, std::string found, std::string allowed );
   void wrong( const Node & node, const Spot & spot, std::string allowed );

   /// A member that a type has not.
   void unknown( const Member & member, const Spot & spot, const Vok::TypeData & type,
         const std::vector< std::string > & offered );

   Problems problems;

 private:
   std::optional< std::string > number( const Node & node, const Shape & shape, const Spot & spot );
   std::optional< std::string > real( const Node & node, const Spot & spot );
   std::optional< std::string > choice( const Node & node, const Shape & shape, const Spot & spot );
   std::optional< std::string > flags( const Node & node, const Shape & shape, const Spot & spot );
   std::optional< Vok::Value > object( const Node & node, Vok::Value made, const Spot & spot,
         std::string_view keyField );
   bool field( Vok::Value & value, const Node & node, const Vok::AttributeData & field,
         const Spot & spot );
   bool fieldCollection( Vok::Value & value, const Node & node, const Vok::AttributeData & field,
         const Spot & spot );
   bool fieldMember( Vok::Value & value, const Node & node, const Vok::AttributeData & field,
         const std::string & key, const Spot & spot );

   const Document & document_;
};

/// A text as the type prints it; throws as the framework does where the type does not read it.
std::string printed( const Shape & shape, const std::string & text );

} // namespace FlowtrackJson
