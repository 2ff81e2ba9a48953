// The texts of the values in PlainValues.h, which are those of BenchModel.vok: by hand, and by
// {fmt}.
#pragma once

#include "bench/PlainValues.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Bench {

/// With std::to_chars and std::from_chars. Texts are taken to be ASCII.
struct ByHand {
   static std::string print( std::uint32_t value );
   static std::string print( double value );
   static std::string print( PlainKind value );
   static std::string print( const PlainRate & value );
   static std::string print( const PlainService & value );

   /// False where a text is not exactly what print() writes.
   static bool parse( std::string_view text, std::uint32_t & value );
   static bool parse( std::string_view text, double & value );
   static bool parse( std::string_view text, PlainKind & value );
   static bool parse( std::string_view text, PlainRate & value );
   static bool parse( std::string_view text, PlainService & value );
};

/// With fmt::format.
struct Formatted {
   static std::string print( std::uint32_t value );
   static std::string print( double value );
   static std::string print( PlainKind value );
   static std::string print( const PlainRate & value );
   static std::string print( const PlainService & value );
};

/// The name of an enumerator; empty where there is none.
std::string_view nameOf( PlainKind kind );

/// Whether a text stands without quotes.
bool isBare( std::string_view text );

} // namespace Bench
