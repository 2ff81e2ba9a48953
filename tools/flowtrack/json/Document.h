// A JSON document whose values know where they stand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace FlowtrackJson {

struct Member;

/// A value of a document.
struct Node {
   enum class Kind : std::uint8_t {
      null,
      truth,
      number,
      text,
      array,
      object
   };

   Node() noexcept;
   explicit Node( Kind ofKind, std::string ofText = {}, std::size_t at = 0 );
   Node( const Node & );
   Node( Node && ) noexcept;
   Node & operator=( const Node & );
   Node & operator=( Node && ) noexcept;
   ~Node();

   Kind kind = Kind::null;
   std::string text; ///< of a text what it stands for, of a number or truth as it is written
   std::size_t offset = 0; ///< of its first byte
   std::vector< Node > elements;
   std::vector< Member > members; ///< as they stand; names differ
};

/// A member of an object.
struct Member {
   std::string name;
   std::size_t offset; ///< of the name's first byte
   Node value;
};

/// A place as editors show it.
struct Place {
   std::size_t line; ///< from 1
   std::size_t column; ///< from 1, in characters
};

/// A whole document.
class Document {
 public:
   /// Throws DocumentError for what is no JSON (RFC 8259), for a name that stands twice in an
   /// object, and beyond a depth of 256.
   explicit Document( std::string_view text );

   const Node & root() const noexcept { return root_; }
   Place placeOf( std::size_t offset ) const;

 private:
   std::string text_;
   Node root_;
};

/// A node in the words of a message: what it is, and for a single value how it is written.
std::string described( const Node & node );

/// A name as a step of a JSON pointer, slash included.
std::string pointerStep( std::string_view name );

} // namespace FlowtrackJson
