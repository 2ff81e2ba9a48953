// The paths at which trees are mounted, and patterns of them.
#pragma once

#include "Vok/Export.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Vok::Store {

/// A text is no path, or no pattern; what() says where and what was expected.
class VOK_EXPORT PathException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// The bytes of the longest path.
inline constexpr std::size_t longestPath = 255;

/// A path is one or more names with `/` between them, such as
/// `flowtracking/input/config/sampled/cli`. A name has letters, digits, `_`, `-`, `.` and `:`, one
/// at least. Throws PathException for anything else.
VOK_EXPORT void checkPath( std::string_view path );

/// Which paths: a path in which any name may be `*`, which stands for any one name:
/// `flowtracking/input/config/*/cli`. The last one may be `**`, for one name or more:
/// `flowtracking/**`. A path is the pattern of itself.
class VOK_EXPORT PathPattern {
 public:
   /// Throws PathException.
   explicit PathPattern( std::string_view text );

   const std::string & text() const noexcept { return text_; }

   /// Whether it is a path, and matches no other.
   bool isPath() const noexcept { return text_.find( '*' ) == std::string::npos; }

   bool matches( std::string_view path ) const noexcept;

 private:
   std::string text_;
};

} // namespace Vok::Store
