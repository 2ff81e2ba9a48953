// Texts by {fmt}.
#include "bench/TextPeers.h"

#include <fmt/format.h>

namespace Bench {

/// A text that has quotes where it needs them.
struct Token {
   std::string_view text;
};

} // namespace Bench

template<> struct fmt::formatter< Bench::Token > {
   constexpr auto parse( format_parse_context & context ) { return context.begin(); }
   auto format( const Bench::Token & token, format_context & context ) const
   {
      return Bench::isBare( token.text ) ? format_to( context.out(), "{}", token.text )
                                         : format_to( context.out(), "{:?}", token.text );
   }
};

template<> struct fmt::formatter< Bench::PlainKind > : formatter< string_view > {
   auto format( Bench::PlainKind kind, format_context & context ) const
   {
      const std::string_view name = Bench::nameOf( kind );
      return formatter< string_view >::format( { name.data(), name.size() }, context );
   }
};

namespace Bench {

std::string Formatted::print( std::uint32_t value ) { return fmt::format( "{}", value ); }
std::string Formatted::print( double value ) { return fmt::format( "{}", value ); }
std::string Formatted::print( PlainKind value ) { return fmt::format( "{}", value ); }

std::string Formatted::print( const PlainRate & value )
{
   return fmt::format( "Bench::Rate[packets={},bytes={},kind={},exact={}]", value.packets,
         value.bytes, value.kind, value.exact );
}

std::string Formatted::print( const PlainService & value )
{
   return fmt::format( "Bench::Service[id={},name={},category={},kind={}]", value.id,
         Token{ value.name }, Token{ value.category }, value.kind );
}

} // namespace Bench
