// The comments of generated code: what the definition says of a thing, and its constraints in
// words.
#pragma once

#include "vokgen/Model.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace VokGen {

/// These texts as one comment of `///` lines, each with a line break; nothing where all are empty.
/// Texts follow one another as sentences do; an empty line in one begins a paragraph.
std::string comment( std::initializer_list< std::string_view > texts );

/// The same as a comment of `//` lines, for what documents no declaration.
std::string plainComment( std::initializer_list< std::string_view > texts );

/// A comment of one line behind its declaration: " ///< the default". Nothing where the line would
/// become too wide: then `comment` goes before it.
std::string trailingComment( std::string_view declaration, std::string_view text );

/// Documentation up to the end of its first sentence: where the next one does not go on with a
/// small letter, as behind "i.e.", or else with the first paragraph.
std::string_view firstSentence( std::string_view documentation );

/// The bounds of a value as a reader of the type needs them: "low (1) to top (10)".
std::string boundsInWords( const Model::Attribute & attribute );

/// What a function that is given the value refuses, as a sentence: "Throws Corvo::RangeException
/// unless value is in low (1) to top (10)."; nothing where it takes everything. Bounds that only
/// validate() or nobody checks are not among it.
std::string refusalInWords( const Model::Attribute & attribute, std::string_view what );

/// What validate() of a value refuses, likewise.
std::string validationInWords( const Model::Attribute & attribute );

/// How long a text may be: "at most maxLength (20) bytes"; nothing without a limit.
std::string textLimitInWords( const Model::Attribute & attribute );

/// Whether a function that checks bounds is generated for this attribute or field.
bool hasCheck( const Model::Attribute & attribute );

/// Whether constructors and readers of a value call it, rather than mutators alone.
bool isCheckedAlways( const Model::Attribute & field );

} // namespace VokGen
