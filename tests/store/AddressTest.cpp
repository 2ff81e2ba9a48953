// The text form of addresses.
#include "store/net/Address.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Vok::Store::Address;
using Vok::Store::AddressException;

TEST( AddressTest, textsComeBack )
{
   for ( const char * const text : { "unix:/run/flowtrackd.sock", "tcp:127.0.0.1:4040",
               "tcp:[::1]:0", "tcp:0.0.0.0:65535", "tls:127.0.0.1:4041", "tls:[::1]:4041" } ) {
      EXPECT_EQ( Address::parse( text ).text(), text );
   }
}

TEST( AddressTest, whatIsNoAddressIsRefused )
{
   for ( const char * const text : { "", "unix:", "unix:relative", "tcp:", "tcp:localhost:1",
               "tcp:127.0.0.1", "tcp:127.0.0.1:", "tcp:127.0.0.1:65536", "tcp:127.0.0.1:1x",
               "tls:", "tls:store:1", "/run/socket" } ) {
      EXPECT_THROW( Address::parse( text ), AddressException ) << text;
   }
   EXPECT_THROW( Address::parse( "unix:/" + std::string( 107, 'x' ) ), AddressException );
   EXPECT_NO_THROW( Address::parse( "unix:/" + std::string( 106, 'x' ) ) );
}

} // namespace
