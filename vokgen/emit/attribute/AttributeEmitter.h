// What each kind of attribute contributes to the generated files. A kind is a class of its own in a
// file of its own; Table.cpp lists them.
#pragma once

#include "vokgen/Model.h"
#include "vokgen/emit/Row.h"

#include <string>

namespace VokGen {

/// What one attribute adds to its class and to what stands around it. Each text ends with a line
/// break, or is empty.
struct Fragments {
   std::string nodes; ///< Key functor and node type of a collection: public, before all else.
   std::string members; ///< Public declarations, with their comments.
   std::string checks; ///< The function that checks bounds: hidden from clients.
   std::string functions = {}; ///< Private declarations of what public templates call.
   std::string data; ///< The data member.
   std::string inlines; ///< Definitions behind all classes of the header.
   std::string definitions; ///< Definitions in the .cpp.
};

/// What the reference page says of an attribute besides its id, name and documentation, in
/// Markdown.
struct Summary {
   std::string type;
   std::string value; ///< Its default, or of a constant its value.
   std::string bounds;
   std::string settableBy;
   std::string note = {}; ///< A sentence that follows the documentation.
};

class AttributeEmitter {
 public:
   AttributeEmitter() = default;
   AttributeEmitter( const AttributeEmitter & ) = delete;
   AttributeEmitter & operator=( const AttributeEmitter & ) = delete;

   virtual Fragments fragments( const Model::Attribute & attribute ) const = 0;
   virtual void fillRow( const Model::Attribute & attribute, Row & row ) const = 0;
   /// `page` is the module on whose page the text stands: links are written from there.
   virtual Summary summary(
         const Model::Attribute & attribute, const Model::Module & page ) const = 0;

 protected:
   ~AttributeEmitter() = default;
};

/// The emitter of an attribute's kind.
const AttributeEmitter & emitterOf( const Model::Attribute & attribute );

// The kinds.
const AttributeEmitter & plainEmitter();
const AttributeEmitter & optionalEmitter();
const AttributeEmitter & constantEmitter();
const AttributeEmitter & argumentEmitter();
const AttributeEmitter & derivedEmitter();
const AttributeEmitter & flagEmitter();
const AttributeEmitter & functionEmitter();
const AttributeEmitter & instantiateEmitter();
const AttributeEmitter & mapEmitter();
const AttributeEmitter & setEmitter();
const AttributeEmitter & childrenEmitter();
const AttributeEmitter & childEmitter();
const AttributeEmitter & referencesEmitter();

} // namespace VokGen
