// The checker: tree to model. Its stages run one after the other over all types of a module; each
// relies on what those before it have settled, and is silent about what they have reported.
#pragma once

#include "vokgen/Scopes.h"

namespace VokGen {

class Evaluator;

/// Runs all stages. `draft` has its source and uses; afterwards its module is complete, provided
/// that nothing has been reported.
void checkModule( Workspace & workspace, ModuleDraft & draft );

namespace Stages {

/// Types, their names, modifiers and enumerators.
void declareTypes( const Scopes & scopes );
/// Attributes with their types and kinds; bases of entities.
void declareMembers( const Scopes & scopes );
/// Functions outside types.
void declareFunctions( const Scopes & scopes );
/// Types that contain or derive from themselves, or nest too deeply.
void checkCycles( const Scopes & scopes );
/// Flags, constants, bounds: all but defaults. A part of evaluate().
void evaluateNumbers( const Scopes & scopes, Evaluator & evaluator );
/// Constants, bounds and defaults.
void evaluate( const Scopes & scopes );
/// Keys of collections and arguments of children.
void checkCollections( const Scopes & scopes );
/// What values and entities demand of their parts.
void checkRecords( const Scopes & scopes );
/// Names that would be generated twice in a namespace, or in a type.
void checkNames( const Scopes & scopes );
/// Those in types. A part of checkNames().
void checkTypeNames( const Scopes & scopes );
/// Ids, hash salts, and the order in which C++ can define the types.
void number( const Scopes & scopes );

} // namespace Stages

/// Reports a text that a function cannot be written as; `ofType`: it is an attribute.
void checkText( const Scopes & scopes, const Ast::Member & member, const Model::Function & function,
      bool ofType );

/// Resolves what a function takes and gives, inside `scope`; false where some of it means nothing.
bool resolveFunction( const Scopes & scopes, const std::string & scope, const Ast::Member & member,
      Model::Function & into );

/// Reports what is wrong with a member of a type of that kind by itself: its options, its name, its
/// documentation. False where it does not belong there.
bool checkMember( const Scopes & scopes, Model::TypeDeclarationKind type,
      const Ast::Member & member );
/// The part of it that is about the name.
void checkMemberName( const Scopes & scopes, Model::TypeDeclarationKind type,
      const Ast::Member & member );

/// Whether a name is one that the language lets people declare; reports it otherwise.
/// `what` says what it would name: "an attribute".
bool checkName( const Scopes & scopes, const Ast::Name & name, const char * what );

} // namespace VokGen
