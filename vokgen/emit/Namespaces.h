// Declarations of several namespaces in one file.
#pragma once

#include "vokgen/Printer.h"

#include <string>
#include <string_view>

namespace VokGen {

/// Collects paragraphs, opening and closing namespaces where they change.
class Namespaces {
 public:
   /// A ruled heading before the next paragraph, and what is to be said about all that follows. It
   /// is left out where nothing follows before the next one.
   void section( std::string_view title, std::string_view comment = "" );

   /// A paragraph of a namespace; an empty one leaves no trace.
   void add( const std::string & nameSpace, std::string_view text );

   /// The whole text, all namespaces closed.
   std::string finish();

 private:
   void close();

   Paragraphs text_;
   std::string open_;
   std::string heading_;
};

} // namespace VokGen
