// The forms of a value: its text and its attribute log.
#pragma once

#include "tests/support/NumberTable.h"

#include "Vok/Vok.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace TestSupport {

/// The text and the log of a value, and both ways back.
template< class V >
void expectForms( const V & value, std::string_view text, const std::string & hex )
{
   EXPECT_EQ( Corvo::valueToStrep( value ), text );
   EXPECT_EQ( Corvo::strepToValue< V >( text ), value );
   Vok::NboAttrLog::Out out;
   out << value;
   EXPECT_EQ( hexOf( out ), hex );
   EXPECT_EQ( attrLogSize( value ), out.size() );
   Vok::NboAttrLog::In in( out.data(), out.size() );
   EXPECT_EQ( V( &in ), value );
   EXPECT_EQ( in.remaining(), 0U );
}

} // namespace TestSupport
