// What stored attributes have in common: accessor, mutator, check of bounds, data member.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// The type of the data member, as it is spelled in the class.
std::string storedType( const Model::Attribute & attribute );

/// The data member with its default: "std::uint32_t value_ = 5;" and a line break.
std::string dataMember( const Model::Attribute & attribute );

// ---- Fields of values: defined in the class ---------------------------------------------------

std::string fieldAccessor( const Model::Attribute & field );

/// The function that checks the bounds of a field; nothing where it has none.
std::string fieldCheck( const Model::Attribute & field );

// ---- Attributes of entities: declared in the class, defined behind all classes ----------------

/// A head without its semicolon; `qualifier` is "Root::" for the definition, empty in the class.
std::string accessorHead( const Model::Attribute & attribute, const std::string & qualifier );
std::string mutatorHead( const Model::Attribute & attribute, const std::string & qualifier );

std::string accessorDefinition( const Model::Attribute & attribute );
std::string mutatorDefinition( const Model::Attribute & attribute );

std::string entityCheckDeclaration( const Model::Attribute & attribute );
std::string entityCheckDefinition( const Model::Attribute & attribute );

/// How reflection checks what it stores; empty where anything is taken, and where reflectedOps()
/// check.
std::string checkedBy( const Model::Attribute & attribute );

/// The operations with which reflection reads and writes the value of a plain attribute or field.
std::string reflectedOps( const Model::Attribute & attribute );

} // namespace VokGen
