// Designated initialisers of the records of reflection.
#pragma once

#include <cstddef>
#include <string>

namespace VokGen {

/// Lines of the form `.field = value,`; what is empty or false is left out. A value that is too
/// wide stands on lines of its own.
class Initialisers {
 public:
   /// `indentation` is that of the place where the lines will stand.
   explicit Initialisers( std::size_t indentation );

   void flag( const std::string & field, bool value );
   void text( const std::string & field, const std::string & value );
   void code( const std::string & field, const std::string & value );

   const std::string & lines() const { return lines_; }

 private:
   void add( const std::string & field, const std::string & value );

   std::size_t room_;
   std::string lines_;
};

} // namespace VokGen
