// Texts of values: Corvo::valueToStrep and Corvo::strepToValue. The grammar is in docs/text.md.
#pragma once

#include "Vok/CharRange.h"
#include "Vok/String.h"
#include "Vok/TextOut.h"
#include "Vok/ValueType.h"

#include <string_view>

namespace Corvo {

/// The text of a value: of a value type, enumeration, number, bool, string or optional. A value
/// has one text, and strepToValue reads it back.
template< class V > String valueToStrep( const V & v )
{
   Vok::TextOut out;
   Vok::ValueType< V >::print( out, v );
   return out.text();
}

/// The value of a text, which has to be exactly what valueToStrep writes, white space between
/// tokens apart. Throws ParseException where it does not match the grammar, RangeException (with
/// its kinds) where a bound or an enumerator does.
template< class V > V strepToValue( std::string_view text )
{
   Vok::CharRange range( text );
   if constexpr ( Vok::Detail::Generated< V > ) {
      V v( range );
      range.needEnd();
      return v;
   } else {
      V v{};
      Vok::ValueType< V >::read( range, v );
      range.needEnd();
      return v;
   }
}

} // namespace Corvo
