// The first sentence of a documentation, as the overview of a reference page shows it.
#include "vokgen/emit/Documentation.h"

#include <gtest/gtest.h>

namespace VokGen {
namespace {

TEST( FirstSentence, endsWhereTheNextBegins )
{
   const std::vector< std::pair< std::string, std::string > > cases = {
      { "", "" },
      { "A level.", "A level." },
      { "no mark at all", "no mark at all" },
      { "One. Two. Three.", "One." },
      { "Is it? It is.", "Is it?" },
      { "One, i.e. the first, of 1.5 sorts. Two.", "One, i.e. the first, of 1.5 sorts." },
      { "Of RFC 7011. 16 bits.", "Of RFC 7011." },
      { "One\nTwo. Three.", "One" },
      { "Ends with a blank. ", "Ends with a blank. " },
   };
   for ( const auto & [ documentation, sentence ] : cases ) {
      EXPECT_EQ( firstSentence( documentation ), sentence );
   }
}

} // namespace
} // namespace VokGen
