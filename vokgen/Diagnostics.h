// Errors found in definition files: collected by every stage, printed once, in order of position.
#pragma once

#include "vokgen/Messages.h"
#include "vokgen/Source.h"

#include <string>
#include <vector>

namespace VokGen {

/// Collects errors with their notes. A stage that reports one goes on with the next declaration,
/// and is silent about whatever follows from what it reported.
class Diagnostics {
 public:
   /// More than these are counted, not kept: a file that is no definition file at all says enough.
   static constexpr std::size_t errorLimit = 100;

   /// Reports an error. `arguments` replace {0}, {1}, … in the text of the message; bytes of them
   /// that are not printable are shown escaped.
   void error( Location where, Message message, const std::vector< std::string > & arguments = {} );
   /// Adds a related place to the error reported last.
   void note( Location where, Message message, const std::vector< std::string > & arguments = {} );

   bool hasErrors() const { return !errors_.empty(); }
   /// No further error will be kept: there is no need to find good words for one.
   bool isFull() const { return errors_.size() == errorLimit; }

   /// All errors as they are printed: by file in the order in which files were first reported on
   /// unless `first` names one that goes before all others, then by position. Each is
   /// "path:line:column: error: text", the source line, and a caret under its range.
   std::string text( const SourceFile * first = nullptr ) const;

 private:
   struct Entry {
      Location where;
      std::string text;
   };
   struct Error {
      Entry entry;
      std::vector< Entry > notes;
      std::size_t fileOrder = 0;
   };

   std::size_t orderOf( const SourceFile * file );

   std::vector< Error > errors_;
   std::vector< const SourceFile * > files_;
   std::size_t dropped_ = 0;
};

/// The text of a message with its arguments in place of {0}, {1}, ….
std::string fillMessage( std::string_view text, const std::vector< std::string > & arguments );

} // namespace VokGen
