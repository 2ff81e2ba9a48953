// A command line as a shell reads it up to the cursor, and words as it has to be given them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Flowtrack {

class ShellLine {
 public:
   /// `breaks`: the characters behind which the shell begins what it puts a completed word in place
   /// of, where they are not quoted; it does so behind blanks, too.
   ShellLine( std::string_view line, std::string_view breaks );

   /// The words as a program gets them; the last one is what is typed now, perhaps nothing.
   const std::vector< std::string > & words() const noexcept { return words_; }

   /// What the shell puts in the place of what is typed, to become a word that begins with the last
   /// one: in the quotes that are open, and with their end; or with backslashes.
   std::string completed( const std::string & word ) const;

 private:
   std::vector< std::string > words_;
   std::string typed_; ///< as it stands, from the last break on
   char quote_ = 0; ///< that is open
};

} // namespace Flowtrack
