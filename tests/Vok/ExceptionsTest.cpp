// The exceptions: kinds, messages, and that client code can build each.
#include "Vok/Exceptions.h"

#include <gtest/gtest.h>

#include <concepts>
#include <exception>
#include <string>
#include <typeinfo>

namespace {

static_assert( std::derived_from< Corvo::RangeException, std::exception > );
static_assert( std::derived_from< Corvo::EnumRangeException, Corvo::RangeException > );
static_assert( std::derived_from< Corvo::DeserializationException, Corvo::RangeException > );
static_assert( std::derived_from< Corvo::ParseException, std::exception > );
static_assert( !std::derived_from< Corvo::ParseException, Corvo::RangeException > );
static_assert( !std::derived_from< Vok::NboAttrLog::Exception, Corvo::RangeException > );

template< class E > void expectMessage()
{
   const E fromLiteral( "the whole message" );
   const E fromString( std::string( "the whole message" ) );
   EXPECT_STREQ( fromLiteral.what(), "the whole message" );
   EXPECT_STREQ( fromString.what(), "the whole message" );
   try {
      throw E( fromLiteral );
   } catch ( const std::exception & e ) {
      EXPECT_STREQ( e.what(), "the whole message" );
   }
}

TEST( ExceptionsTest, eachIsBuiltFromItsMessage )
{
   expectMessage< Corvo::RangeException >();
   expectMessage< Corvo::EnumRangeException >();
   expectMessage< Corvo::DeserializationException >();
   expectMessage< Corvo::ParseException >();
   expectMessage< Corvo::ReinstantiationException >();
   expectMessage< Corvo::ConstructorArgsException >();
   expectMessage< Corvo::NullPointerException >();
   expectMessage< Corvo::NotHashableException >();
   expectMessage< Vok::NboAttrLog::Exception >();
}

TEST( ExceptionsTest, throwExceptionBuildsAndThrows )
{
   try {
      Corvo::RangeException::throwException( "a < b not allowed" );
      FAIL();
   } catch ( const Corvo::RangeException & e ) {
      EXPECT_STREQ( e.what(), "a < b not allowed" );
      EXPECT_EQ( typeid( e ), typeid( Corvo::RangeException ) );
   }
}

TEST( ExceptionsTest, aFieldsErrorHoldsItsNameAndItsMessage )
{
   const Corvo::DeserializationException e( "level", "too high" );
   EXPECT_EQ( e.attribute(), "level" );
   EXPECT_STREQ( e.what(), "attribute level: too high" );
   EXPECT_EQ( Corvo::DeserializationException( "message" ).attribute(), "" );
}

TEST( ExceptionsTest, aParseErrorKnowsItsPlace )
{
   EXPECT_EQ( Corvo::ParseException( "message", 7 ).offset(), 7U );
   EXPECT_EQ( Corvo::ParseException( "message" ).offset(), 0U );
}

} // namespace
