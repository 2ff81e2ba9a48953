// One row of a type's reflection table.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// What reflection says of one attribute, besides its id, name and documentation. Texts are as they
/// are meant, all else is C++; what is empty or false is left out.
struct Row {
   std::string kind; ///< An enumerator of Vok::AttributeKind.
   bool ordered = false;
   bool settable = false;
   bool identity = false;
   bool reference = false;

   // Texts.
   std::string typeName;
   std::string keyTypeName;
   std::string keyField;
   std::string defaultText;
   std::string lowerText;
   std::string upperText;

   // Expressions.
   std::string offset;
   std::string mask;
   std::string maskWidth;
   std::string value;
   std::string key;
   std::string check;
   std::string storage;
   std::string collection;
   std::string call;
   std::string fromName;
};

// Rows stand among the members of their type's VokTable, so that they name its members by its own
// name, private ones too; all else is named in full.

/// The place of an attribute's data member in its object.
std::string offsetOf( const Model::Attribute & attribute );

/// The operations of a value type, given its full C++ spelling.
std::string valueOps( const std::string & cppName );

/// Fills in default and bounds.
void describeValue( const Model::Attribute & attribute, Row & row );

/// How reflection calls a function of an entity with arguments given as texts; empty for a function
/// that takes or gives what has no text.
std::string callOf( const Model::Attribute & attribute );

/// The row as an initialiser of Vok::AttributeData.
std::string rowText( const Model::Attribute & attribute );

} // namespace VokGen
