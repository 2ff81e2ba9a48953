// Cells of the tables on a reference page, as Markdown.
#pragma once

#include "vokgen/Model.h"

#include <string>
#include <string_view>

namespace VokGen {

/// A type's name, linked to its place on this page or on that of another module.
std::string typeLink( const Model::Type & type, const Model::Module & page );
std::string typeLink( const Model::TypeDeclaration & type, const Model::Module & page );

/// The place of a type on its page: "Test.Holder.Status".
std::string anchor( const Model::TypeDeclaration & type );

/// The page of another module, as a link from this one leads there.
std::string pageOf( const Model::Module & module, const Model::Module & from );

/// Names and calls in the type of code: "`colour`", "`colourIs( v )`".
std::string code( std::string_view text );
std::string call( std::string_view function, std::string_view arguments );

/// A default or the value of a constant; empty where none can be written down.
std::string defaultCell( const Model::Attribute & attribute );

/// The bounds of an attribute, those that its type has included, and when they are checked.
std::string boundsCell( const Model::Attribute & attribute );

} // namespace VokGen
