// What a configuration file says, and what is said of one that is wrong.
#include "tools/flowtrackd/Config.h"

#include <gtest/gtest.h>

#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Flowtrackd::Config;
using Flowtrackd::ConfigException;
using Flowtrackd::parseConfig;
using Vok::Store::Peer;
using Vok::Store::Right;

std::string mistakes( const std::string & text )
{
   try {
      parseConfig( text, "f.toml" );
   } catch ( const ConfigException & e ) {
      return e.what();
   }
   return "";
}

TEST( ConfigTest, anEmptyFileSaysNothing )
{
   const Config config = parseConfig( "", "f.toml" );
   EXPECT_TRUE( config.listen.empty() );
   EXPECT_FALSE( config.metrics );
   EXPECT_FALSE( config.tls );
   EXPECT_EQ( config.socketMode, 0600U );
   EXPECT_TRUE( config.kept.empty() );
   EXPECT_TRUE( config.access.empty() );
   EXPECT_EQ( config.limits.sessions, 4096U );
}

TEST( ConfigTest, everyKeyIsTaken )
{
   const Config config = parseConfig( R"(
listen = [ "unix:/run/s.sock", "tcp:127.0.0.1:4040", "tcp:[::1]:4041", "tls:0.0.0.0:4042" ]
metrics = "tcp:127.0.0.1:9000"
[socket]
mode = "0660"
group = "0"
[tls]
certificate = "c.pem"
key = "k.pem"
authority = "a.pem"
[kept]
folder = "/var/lib/x"
paths = [ "a/*", "b/**" ]
[[access]]
path = "a/*"
read = [ "anyone" ]
write = [ "user:root", "group:0", "certificate:agent 1" ]
take-over = [ "user:7" ]
[limits]
sessions = 1
sessions-of-user = 2
mounts = 3
channels = 4
greeting-bytes = 5
greeting-milliseconds = 6
batch-bytes = 7
tree-bytes = 9
unfinished-bytes = 8
)",
         "f.toml" );
   ASSERT_EQ( config.listen.size(), 4U );
   EXPECT_EQ( config.listen[ 0 ].text(), "unix:/run/s.sock" );
   EXPECT_EQ( config.listen[ 3 ].text(), "tls:0.0.0.0:4042" );
   EXPECT_EQ( config.metrics->text(), "tcp:127.0.0.1:9000" );
   EXPECT_EQ( config.socketMode, 0660U );
   EXPECT_EQ( config.socketGroup, 0U );
   EXPECT_EQ( config.tls->certificate, "c.pem" );
   EXPECT_EQ( config.tls->key, "k.pem" );
   EXPECT_EQ( config.tls->authority, "a.pem" );
   EXPECT_EQ( config.keptFolder, "/var/lib/x" );
   ASSERT_EQ( config.kept.size(), 2U );
   EXPECT_EQ( config.kept[ 1 ].text(), "b/**" );
   ASSERT_EQ( config.access.size(), 1U );
   const Flowtrackd::AccessRule & rule = config.access.front();
   EXPECT_TRUE( rule.read.anyone );
   EXPECT_EQ( rule.write.users, std::set< std::uint32_t >{ 0 } );
   EXPECT_EQ( rule.write.groups, std::set< std::uint32_t >{ 0 } );
   EXPECT_EQ( rule.write.certificates, std::set< std::string >{ "agent 1" } );
   EXPECT_EQ( rule.takeOver.users, std::set< std::uint32_t >{ 7 } );
   EXPECT_EQ( config.limits.sessions, 1U );
   EXPECT_EQ( config.limits.sessionsOfUser, 2U );
   EXPECT_EQ( config.limits.mounts, 3U );
   EXPECT_EQ( config.limits.channels, 4U );
   EXPECT_EQ( config.limits.greeting, 5U );
   EXPECT_EQ( config.limits.greetingTime, std::chrono::milliseconds( 6 ) );
   EXPECT_EQ( config.limits.batch, 7U );
   EXPECT_EQ( config.limits.tree, 9U );
   EXPECT_EQ( config.limits.unfinished, 8U );
}

TEST( ConfigTest, aMistakeIsToldWithItsPlace )
{
   struct Case {
      const char * text;
      const char * mistake;
   };
   const Case cases[] = {
      { "listen = [ \"unix:/a\", \"here\" ]",
            "f.toml:1:23: \"here\" is no address: unix:/path/of/a/socket, tcp:127.0.0.1:4040 or "
            "tls:[::1]:4041 is one" },
      { "listen = \"unix:/a\"", "f.toml:1:10: listen is no list" },
      { "listen = [ 7 ]", "f.toml:1:12: listen is a list of texts in quotes" },
      { "listen = [ \"tcp:10.0.0.1:4040\" ]",
            "f.toml:1:12: tcp:10.0.0.1:4040 is reached from other machines; expected tls:, or a "
            "loopback address" },
      { "listen = [ \"tls:10.0.0.1:4040\" ]", "f.toml:1:12: tls:10.0.0.1:4040 needs a table tls" },
      { "metrics = \"tcp:10.0.0.1:4040\"",
            "f.toml:1:11: metrics are told on loopback or a Unix socket only; expected unix:/PATH "
            "or tcp:127.0.0.1:PORT" },
      { "[socket]\nmode = \"0999\"",
            "f.toml:2:8: \"0999\" is no mode; expected \"0600\" to \"0777\"" },
      { "[socket]\nmode = \"1000\"",
            "f.toml:2:8: \"1000\" is no mode; expected \"0600\" to \"0777\"" },
      { "[socket]\nmode = 0o600", "f.toml:2:8: mode is no text in quotes" },
      { "[socket]\ngroup = \"no-such-group\"", "f.toml:2:9: there is no group no-such-group" },
      { "[tls]\ncertificate = \"c\"\nkey = \"k\"", "f.toml:1:1: there is no \"authority\" here" },
      { "[kept]\npaths = [ \"a//b\" ]\nfolder = \"f\"",
            "f.toml:2:11: the pattern \"a//b\" has an empty name at byte 2" },
      { "[[access]]\nread = [ \"anyone\" ]", "f.toml:1:1: there is no \"path\" here" },
      { "[[access]]\npath = \"a\"\nread = [ \"someone\" ]",
            "f.toml:3:10: \"someone\" is nobody; expected anyone, user:NAME, group:NAME or "
            "certificate:NAME" },
      { "[[access]]\npath = \"a\"\nwrite = [ \"user:\" ]",
            "f.toml:3:11: \"user:\" is nobody; expected anyone, user:NAME, group:NAME or "
            "certificate:NAME" },
      { "[[access]]\npath = \"a\"\nwrite = [ \"user:no-such-user\" ]",
            "f.toml:3:11: there is no user no-such-user" },
      { "[limits]\nsessions = 0", "f.toml:2:12: sessions is 0; expected 1 to 2147483647" },
      { "[limits]\nsessions = \"many\"", "f.toml:2:12: sessions is no whole number" },
      { "limits = 5", "f.toml:1:10: limits is no table" },
      { "[access]\npath = \"a\"", "f.toml:1:1: access is no list of tables" },
      { "[limit]\nsessions = 5",
            "f.toml:1:2: there is no \"limit\" here; expected listen, metrics, socket, tls, kept, "
            "access, limits" },
   };
   for ( const Case & one : cases ) {
      EXPECT_EQ( mistakes( one.text ), one.mistake ) << one.text;
   }
}

TEST( ConfigTest, whatIsNoTomlIsToldWithItsPlace )
{
   EXPECT_EQ( mistakes( "listen = [\n\"unix:/a\"\n" ).substr( 0, 9 ), "f.toml:2:" );
}

TEST( ConfigTest, allMistakesAreToldAtOnce )
{
   EXPECT_EQ( mistakes( "metrics = 1\n[limits]\nmounts = -1\nchanels = 1\n[kept]\nfolder = \"f\"" ),
         "f.toml:1:11: metrics is no text in quotes\n"
         "f.toml:3:10: mounts is -1; expected 1 to 2147483647\n"
         "f.toml:4:1: there is no \"chanels\" here; expected sessions, sessions-of-user, mounts, "
         "channels, greeting-bytes, greeting-milliseconds, batch-bytes, tree-bytes, "
         "unfinished-bytes" );
}

TEST( ConfigTest, aFileThatIsNotThereIsNamed )
{
   EXPECT_THROW( Flowtrackd::readConfig( "/nowhere/f.toml" ), ConfigException );
}

TEST( ConfigTest, theInstalledFileHolds )
{
   const Config config = Flowtrackd::readConfig( FLOWTRACKD_TOML );
   EXPECT_EQ( config.listen.size(), 1U );
   EXPECT_EQ( config.access.size(), 1U );
}

/// The rules of one path for different peers.
TEST( AccessRulesTest, whoeverARuleNamesHasTheRightAndNobodyElse )
{
   const Config config = parseConfig( R"(
[[access]]
path = "a/*"
read = [ "anyone" ]
write = [ "user:1", "group:5", "certificate:agent" ]
take-over = [ "group:5" ]
[[access]]
path = "a/b"
write = [ "user:2" ]
)",
         "f.toml" );
   const Flowtrackd::AccessRules rules( config.access );
   const Peer nobody;
   const Peer user1{ "", 1, { 7 }, {} };
   const Peer user2{ "", 2, { 7, 8 }, {} };
   const Peer group5{ "", 3, { 4, 5 }, {} };
   const Peer agent{ "", {}, {}, "agent" };
   for ( const Peer * const peer : { &nobody, &user1, &user2, &group5, &agent } ) {
      EXPECT_TRUE( rules.allows( *peer, Right::read, "a/x" ) );
      EXPECT_TRUE( rules.allows( *peer, Right::write, "other" ) );
      EXPECT_TRUE( rules.allows( *peer, Right::takeOver, "a/x/y" ) );
      EXPECT_EQ( rules.allows( *peer, Right::takeOver, "a/x" ), peer == &group5 );
      EXPECT_EQ( rules.allows( *peer, Right::write, "a/x" ),
            peer == &user1 || peer == &group5 || peer == &agent );
   }
   EXPECT_TRUE( rules.allows( user2, Right::write, "a/b" ) );
   EXPECT_TRUE( rules.allows( user1, Right::write, "a/b" ) );
   EXPECT_FALSE( rules.allows( nobody, Right::write, "a/b" ) );
}

} // namespace
