// The fingerprint of a module by its neighbours: fingerprint/base.vok, texts that mean the same,
// and texts that are one change away.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"

#include <gtest/gtest.h>
#include <map>

namespace VokGenTest {
namespace {

std::filesystem::path fingerprintFolder() { return testFolder() / "fingerprint"; }

std::string base() { return readFile( fingerprintFolder() / "base.vok" ); }

std::uint64_t fingerprintOf( const std::string & text )
{
   const VokGen::Compilation made =
         VokGen::compileText( "text.vok", text, { ( fingerprintFolder() / "imports" ).string() } );
   EXPECT_EQ( made.errors, "" );
   return made.module ? made.module->fingerprint : 0;
}

/// A change of the base: the first `before` becomes `after`.
struct Change {
   const char * name;
   const char * before;
   const char * after;
};

const Change changes[] = {
   { "module-name", "module Base", "module Basis" },
   { "use", "use Other", "use Another" },
   { "use-more", "use Other", "use Other, Another" },
   { "namespace", "namespace Test", "namespace Tests" },
   { "extern-name", "Client::Mode in", "Client::Kind in" },
   { "extern-header", "Client/Mode.h", "Client/Kind.h" },
   { "enum-width", "Colour : u8", "Colour : u16" },
   { "enumerator-name", "green", "greener" },
   { "enumerator-code", "green = 1", "green = 2" },
   { "enumerator-more", "   green = 1; ", "   blue = 2; /// sky\n   green = 1; " },
   { "constant-value", "most  : u32 = 10", "most  : u32 = 11" },
   { "constant-type", "most  : u32", "most  : u64" },
   { "constant-text", "label : string = \"x\"", "label : string = \"y\"" },
   { "constant-expression", "sum   : u32 = ( most + 1 )", "sum   : u32 = 11" },
   { "function-parameter", "twice( n : u32 )", "twice( n : u64 )" },
   { "function-parameter-name", "twice( n : u32 )", "twice( m : u32 )" },
   { "function-result", "twice( n : u32 ) -> u32", "twice( n : u32 ) -> u64" },
   { "value-unordered", "Level ordered", "Level" },
   { "value-fixed", "Level ordered", "Level ordered fixed" },
   { "value-unhashable", "Flags {", "Flags unhashable {" },
   { "value-untextable", "Flags {", "Flags untextable {" },
   { "value-text-by-hand", "Label {", "Label by hand text {" },
   { "value-default-by-hand", "Label {", "Label by hand text \"\" {" },
   { "value-log-by-hand", "Flags {", "Flags by hand log {" },
   { "value-all-but-constructors-by-hand", "Pair truth {",
         "Pair truth fixed untextable by hand log {" },
   { "value-constructors-by-hand", "Pair truth {",
         "Pair truth fixed untextable by hand constructors, log {" },
   { "value-truth", "Pair truth", "Pair" },
   { "default", "value : u32 = 5 in low..top", "value : u32 = 6 in low..top" },
   { "default-unstated", "id   : u32 = 0;", "id   : u32;" },
   { "lower-bound", "in low..top", "in 1..top" },
   { "upper-bound", "top : u32 = 10", "top : u32 = 12" },
   { "bounds-time", "in low..top", "in low..top on set" },
   { "bounds-unchecked", "in low..top", "in low..top unchecked" },
   { "validated-message", "\"out of bounds\"", "\"beyond bounds\"" },
   { "validated-except", " except 0", "" },
   { "validated-except-value", " except 0", " except 1" },
   { "from", "value : u16 from u32", "value : u16 from u64" },
   { "from-none", "value : u16 from u32", "value : u16" },
   { "flag-bit", "bit 0 of", "bit 1 of" },
   { "flag-name", "flag first", "flag lowest" },
   { "mask-name", "mask maskFirst", "mask firstMask" },
   { "mask-none", " mask maskFirst", "" },
   { "text-limit", "max 20", "max 21" },
   { "text-message", "\"too long\"", "\"too wide\"" },
   { "constructor", "constructor( number : u32 )", "constructor( number : u64 )" },
   { "method-static", "method half()", "static method half()" },
   { "method-name", "method half()", "method third()" },
   { "value-argument", "Recipe( id : Narrow )", "Recipe( id : Level )" },
   { "get", "get same", "get optional" },
   { "get-none", " get same", "" },
   { "unordered-map", "step : ordered map", "step : map" },
   { "nofactory", "entity Leaf( name )", "entity Leaf( name ) nofactory" },
   { "identity", "identity label", "label" },
   { "argument-type", "weight : u16", "weight : u32" },
   { "argument-settable", " settable", "" },
   { "reference", "target : reference Leaf", "target : reference Bare" },
   { "counter", " counter", "" },
   { "expression-as-number", "( Limits::most - 2 )", "8" },
   { "real-default", "1.5", "1.25" },
   { "validated", "lazy  : Lazy validated", "lazy  : Lazy" },
   { "optional", "maybe : optional Level empty 0", "maybe : Level" },
   { "optional-empty", "empty 0", "empty 11" },
   { "optional-no-empty", " empty 0", "" },
   { "derived", "derived total", "total" },
   { "map-key", "names : map u32", "names : map u16" },
   { "map-value", "map u32 -> string", "map u32 -> u32" },
   { "key-field", "map Pair by id", "map Pair by text" },
   { "set-element", "set string", "set u32" },
   { "set-ordered", "tags  : set", "tags  : ordered set" },
   { "child-constructed", " constructed", "" },
   { "mutating", "mutating function", "function" },
   { "instantiate-unnumbered", "instantiate;", "instantiate unnumbered;" },
   { "base", "Special : Root checks tiny", "Special : Leaf" },
   { "checks", " checks tiny", "" },
   { "free-function-name", "describe", "depict" },
   { "type-name", "entity Special", "entity Particular" },
   { "field-name", "text : string", "word : string" },
   { "references-ordered", "refs  : references", "refs  : ordered references" },
   { "argument-more", "entity Leaf( name )", "entity Leaf( name, id : u32 )" },
   { "nested-enum", "   path :",
         "   enum Kind : u8 { /// Its kind.\n   plain = 0; /// none\n   }\n   path :" },
   { "instantiate-none", "instantiate;", "sound : bool;" },
};

/// Two lines of the base, by their beginnings, that change places.
struct Exchange {
   const char * name;
   const char * first;
   const char * second;
};

const Exchange exchanges[] = {
   { "enumerator-order", "   red ", "   green " },
   { "field-order", "   id   :", "   text :" },
   { "constant-order", "   const low", "   const top" },
   { "attribute-order", "   ratio :", "   lazy " },
   { "argument-order", "   weight :", "   target :" },
   { "collection-order", "   names :", "   pairs :" },
};

std::string changed( const Change & change )
{
   std::string text = base();
   const std::size_t found = text.find( change.before );
   EXPECT_NE( found, std::string::npos ) << "the base has no " << change.before;
   return text.replace( found, std::string( change.before ).size(), change.after );
}

std::string exchanged( const Exchange & exchange )
{
   const std::string text = base();
   const auto lineAt = [ & ]( const char * start ) {
      const std::size_t found = text.find( std::string( "\n" ) + start ) + 1;
      EXPECT_NE( found, 0U ) << "the base has no line " << start;
      return std::pair( found, text.find( '\n', found ) + 1 );
   };
   const auto [ firstBegin, firstEnd ] = lineAt( exchange.first );
   const auto [ secondBegin, secondEnd ] = lineAt( exchange.second );
   EXPECT_LE( firstEnd, secondBegin ) << exchange.name;
   return text.substr( 0, firstBegin ) + text.substr( secondBegin, secondEnd - secondBegin ) +
         text.substr( firstEnd, secondBegin - firstEnd ) +
         text.substr( firstBegin, firstEnd - firstBegin ) + text.substr( secondEnd );
}

TEST( Fingerprint, isPinned )
{
   // Red means that every module's fingerprint changes with this version: did we mean that?
   EXPECT_EQ( fingerprintOf( base() ), 0x7b90822b6263ac82U );
}

TEST( Fingerprint, staysForTextsThatMeanTheSame )
{
   const std::uint64_t expected = fingerprintOf( base() );
   std::size_t seen = 0;
   for ( const auto & entry : std::filesystem::directory_iterator( fingerprintFolder() ) ) {
      const std::string name = entry.path().filename().string();
      if ( name.rfind( "equal-", 0 ) == 0 ) {
         EXPECT_EQ( fingerprintOf( readFile( entry.path() ) ), expected ) << name;
         ++seen;
      }
   }
   EXPECT_EQ( seen, 5U );
}

TEST( Fingerprint, differsForEveryChange )
{
   std::map< std::uint64_t, std::string > seen = { { fingerprintOf( base() ), "the base" } };
   const auto expectNew = [ & ]( const char * name, const std::string & text ) {
      const auto [ same, added ] = seen.emplace( fingerprintOf( text ), name );
      EXPECT_TRUE( added ) << name << " has the fingerprint of " << same->second;
   };
   for ( const Change & change : changes ) {
      SCOPED_TRACE( change.name );
      expectNew( change.name, changed( change ) );
   }
   for ( const Exchange & exchange : exchanges ) {
      SCOPED_TRACE( exchange.name );
      expectNew( exchange.name, exchanged( exchange ) );
   }
   expectNew( "type-order", readFile( fingerprintFolder() / "changed-type-order.vok" ) );
}

TEST( Fingerprint, changesWithConstantsOfOtherModules )
{
   const TemporaryFolder folder;
   const std::string user = "module User\nuse Used\nnamespace Test {\n"
                            "entity Leaf( name ) { /// A leaf.\n"
                            "   count : u32 = Limits::most; /// a number\n}\n}\n";
   const auto withMost = [ & ]( const std::string & most ) {
      folder.write( "Used.vok", "module Used\nnamespace Test {\nconstants Limits { /// Limits.\n"
                                "   const most : u32 = " +
                  most + "; /// most\n}\n}\n" );
      const VokGen::Compilation made =
            VokGen::compileText( "User.vok", user, { folder.path().string() } );
      EXPECT_EQ( made.errors, "" );
      return made.module ? made.module->fingerprint : 0;
   };
   EXPECT_EQ( withMost( "1" ), withMost( "1" ) );
   EXPECT_NE( withMost( "1" ), withMost( "2" ) );
}

} // namespace
} // namespace VokGenTest
