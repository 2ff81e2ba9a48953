// What is wrong in a document.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace FlowtrackJson {

/// One mistake: where it stands, what stands there, what may, and who says so.
struct Problem {
   std::string pointer; ///< RFC 6901; empty is the whole document
   std::size_t line; ///< from 1
   std::size_t column; ///< from 1, in characters
   std::string found;
   std::string allowed;
   std::string definition; ///< type and attribute; empty where JSON itself is broken
};

using Problems = std::vector< Problem >;

/// A problem on one line, with the name of the file in front.
std::string textOf( const Problem & problem, const std::string & file );

/// A document cannot be taken. what() is all of its problems, a line each, for a file without a
/// name.
class DocumentError : public std::runtime_error {
 public:
   explicit DocumentError( Problems problems );

   /// At least one; in the order of their places.
   const Problems & problems() const noexcept { return problems_; }

 private:
   Problems problems_;
};

} // namespace FlowtrackJson
