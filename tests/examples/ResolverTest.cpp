// Questions, and answers that come early, late and again.
#include "tools/derive/Resolver.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using Derive::Addresses;
using Derive::Resolver;
using Wyre::IpAddr;

const Addresses one{ IpAddr( "192.0.2.1" ), {} };
const Addresses two{ IpAddr( "192.0.2.2" ), {} };

class Asking : public Resolver {
 public:
   std::vector< std::string > heard;

 private:
   void asked( const Corvo::String & name ) override
   {
      heard.push_back( "? " + std::string( name ) );
   }
   void dropped( const Corvo::String & name ) override
   {
      heard.push_back( "! " + std::string( name ) );
      forget( name );
   }
};

TEST( ResolverTest, tellsWhoAsksOfEachChange )
{
   Resolver resolver;
   int told = 0;
   const Resolver::Question question( resolver, "a", [ & ] { ++told; } );
   EXPECT_FALSE( question.answer() );
   resolver.answerIs( "b", one );
   EXPECT_EQ( told, 0 );
   resolver.answerIs( "a", one );
   resolver.answerIs( "a", one );
   EXPECT_EQ( told, 1 );
   EXPECT_EQ( question.answer(), one );
   resolver.answerIs( "a", {} );
   EXPECT_EQ( told, 2 );
   EXPECT_TRUE( question.answer()->empty() );
}

TEST( ResolverTest, asksOnceForAllWhoAsk )
{
   Asking resolver;
   {
      std::optional< Resolver::Question > first;
      first.emplace( resolver, "a", [] {} );
      const Resolver::Question second( resolver, "a", [] {} );
      first.reset();
      EXPECT_EQ( resolver.heard, std::vector< std::string >{ "? a" } );
      resolver.answerIs( "a", two );
      EXPECT_EQ( second.answer(), two );
   }
   EXPECT_EQ( resolver.heard, ( std::vector< std::string >{ "? a", "! a" } ) );
   const Resolver::Question again( resolver, "a", [] {} );
   EXPECT_FALSE( again.answer() );
}

} // namespace
