// Which members and options stand where: the tables behind "'counter' does not belong here".
#pragma once

#include "vokgen/Ast.h"
#include "vokgen/Model.h"

namespace VokGen::MemberRules {

/// Whether a type of that kind has members of this kind.
bool allowed( Model::TypeDeclarationKind type, Ast::MemberKind member );

/// Whether such a member takes such an option.
bool allowed( Model::TypeDeclarationKind type, Ast::MemberKind member, Ast::OptionKind option );

/// "a value type", "an entity type", "a constants type".
const char * nameOf( Model::TypeDeclarationKind type );
/// How messages call a member of such a type: "a field", "a map", "a constructor argument".
const char * nameOf( Model::TypeDeclarationKind type, Ast::MemberKind member );
/// How an option is written: "'in'", "'='".
const char * nameOf( Ast::OptionKind option );

} // namespace VokGen::MemberRules
