// The grammar in docs/store.md is that of the messages.
#include "tests/store/Samples.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using TestSupport::bytesOf;
using TestSupport::samples;
using Words = std::vector< std::string >;

Words wordsOf( const std::string & text )
{
   std::istringstream in( text );
   Words words;
   for ( std::string word; in >> word && !word.starts_with( '"' ); ) {
      words.push_back( word );
   }
   return words;
}

/// The rules of the page: a name, and what it stands for.
std::map< std::string, Words > readGrammar()
{
   std::ifstream page( TEST_SOURCE_DIR "/../../docs/store.md" );
   std::map< std::string, Words > rules;
   bool inside = false;
   for ( std::string line; std::getline( page, line ); ) {
      const std::size_t sign = line.find( '=' );
      if ( line.starts_with( "```" ) ) {
         inside = line == "```grammar";
      } else if ( inside && sign != std::string::npos ) {
         for ( const std::string & name : wordsOf( line.substr( 0, sign ) ) ) {
            rules[ name ] = wordsOf( line.substr( sign + 1 ) );
         }
      }
   }
   return rules;
}

/// Takes the bytes of one message apart by the grammar.
class Walk {
 public:
   Walk( const std::map< std::string, Words > & rules, const Vok::Store::Bytes & bytes )
         : rules_( rules ),
           bytes_( bytes )
   {
   }

   /// Throws std::out_of_range where the bytes or the grammar end too early.
   void take( const Words & rule )
   {
      for ( std::size_t i = 0; i != rule.size(); ++i ) {
         if ( rule[ i ] == "{" ) {
            const std::string & member = rule.at( i + 1 );
            for ( std::uint64_t count = number( 4 ); count != 0; --count ) {
               takeOne( member );
            }
            i += 2;
         } else {
            takeOne( rule[ i ] );
         }
      }
   }

   bool atEnd() const { return at_ == bytes_.size(); }

 private:
   void takeOne( const std::string & word )
   {
      if ( word == "u8" || word == "bool" ) {
         number( 1 );
      } else if ( word == "u32" ) {
         number( 4 );
      } else if ( word == "u64" ) {
         number( 8 );
      } else if ( word == "text" || word == "bytes" ) {
         for ( std::uint64_t size = number( 4 ); size != 0; --size ) {
            number( 1 );
         }
      } else {
         take( rules_.at( word ) );
      }
   }

   std::uint64_t number( std::size_t size )
   {
      std::uint64_t value = 0;
      for ( ; size != 0; --size ) {
         value = value << 8U | std::to_integer< std::uint64_t >( bytes_.at( at_++ ) );
      }
      return value;
   }

   const std::map< std::string, Words > & rules_;
   const Vok::Store::Bytes & bytes_;
   std::size_t at_ = 0;
};

TEST( StoreDocumentTest, everyMessageIsAsItsGrammarSays )
{
   const auto rules = readGrammar();
   std::map< std::string, std::string > byFirst; // byte of a message to its name
   for ( const auto & [ name, rule ] : rules ) {
      if ( name[ 0 ] >= 'A' && name[ 0 ] <= 'Z' ) {
         byFirst[ rule.at( 0 ) ] = name;
      }
   }
   ASSERT_EQ( byFirst.size(), samples().size() );
   for ( const Vok::Store::Message & sample : samples() ) {
      const Vok::Store::Bytes whole = bytesOf( sample );
      std::ostringstream first;
      first << std::hex << std::setw( 2 ) << std::setfill( '0' )
            << std::to_integer< int >( whole.front() );
      const std::string & name = byFirst.at( first.str() );
      const Words & rule = rules.at( name );
      const Vok::Store::Bytes rest( whole.begin() + 1, whole.end() );
      Walk walk( rules, rest );
      ASSERT_NO_THROW( walk.take( Words( rule.begin() + 1, rule.end() ) ) ) << name;
      EXPECT_TRUE( walk.atEnd() ) << name;
   }
}

} // namespace
