// Shapes of functions and data members, and the function that checks bounds.
#pragma once

#include "vokgen/Model.h"

#include <cstddef>
#include <string>

namespace VokGen {

/// A function of one statement: on one line where it fits, `indentation` included, else with its
/// body below.
std::string shortFunction( const std::string & head, const std::string & statement,
      std::size_t indentation = 0 );

/// The same, its body always below, as functions in a .cpp stand.
std::string longFunction( const std::string & head, const std::string & statement );

/// The declaration of a data member; its name stands on a line of its own where one is too short.
std::string dataMember( const std::string & type, const std::string & name,
      const std::string & initialiser = "" );

/// "checkTiny", the function that throws where a bound is violated.
std::string checkName( const Model::Attribute & attribute );

/// Its declaration without a semicolon, named `name`: "static void checkTiny( std::uint8_t v )".
std::string checkHead( const Model::Attribute & attribute, const std::string & name );

/// Its body, braces included: one comparison for each bound that can be violated at all.
std::string checkBody( const Model::Attribute & attribute );

/// Throwing a message, as a statement.
std::string throwStatement( const std::string & message );

/// The comparison that says that a value lies outside its bounds: "v < 1 || v > 10".
std::string outside( const Model::Attribute & attribute, const std::string & value );

/// The type that a constructor or mutator takes a field as: the wider one of `from`, where stated.
const Model::Type & takenAs( const Model::Attribute & field );

} // namespace VokGen
