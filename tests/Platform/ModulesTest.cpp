// The platform's modules as reflection has them.
#include "Vok/Vok.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

namespace {

// Names of all registered modules, in order of registration.
std::vector< std::string_view > registered()
{
   std::vector< std::string_view > names;
   for ( const Corvo::ModuleInspectData & module : Corvo::ModuleInspectData::modules() ) {
      names.push_back( module.name() );
   }
   return names;
}

std::ptrdiff_t placeOf( std::string_view module )
{
   const std::vector< std::string_view > names = registered();
   return std::find( names.begin(), names.end(), module ) - names.begin();
}

TEST( ModulesTest, AreRegisteredOnceWithTheirTypes )
{
   const std::map< std::string_view, std::vector< std::string_view > > modules = {
      { "IntfId", { "Wyre::IntfId" } },
      { "HostAndPort", { "Wyre::HostAndPort" } },
      { "IpAddr", { "Wyre::IpAddr" } },
      { "Ip6Addr", { "Wyre::Ip6Addr" } },
      { "IpGenAddr", { "Wyre::IpGenAddr" } },
      { "Ip", { "Wyre::AddressFamily", "Wyre::IpAndPort", "Wyre::Ip6AndPort" } },
      { "QosTypes", { "Wyre::DscpValue" } },
      { "VrfName", { "L3::VrfName" } },
      { "IpfixTypes", { "Ipfix::RecordType", "Ipfix::TemplateId", "Ipfix::TemplateStatus" } },
      { "AclTypes", { "Acl::AclType" } },
      { "SflowTypes", { "Sflow::SampleTruncateSizeType" } },
   };
   const std::vector< std::string_view > names = registered();
   for ( const auto & [ module, types ] : modules ) {
      EXPECT_EQ( std::count( names.begin(), names.end(), module ), 1 ) << module;
      for ( const std::string_view name : types ) {
         const Vok::TypeData * const type = Corvo::ModuleInspectData::findType( name );
         ASSERT_NE( type, nullptr ) << name;
         EXPECT_EQ( type->module().name(), module );
         EXPECT_FALSE( type->documentation().empty() ) << name;
      }
   }
}

TEST( ModulesTest, AreRegisteredAfterThoseTheyUse )
{
   EXPECT_LT( placeOf( "IpAddr" ), placeOf( "Ip" ) );
   EXPECT_LT( placeOf( "Ip6Addr" ), placeOf( "Ip" ) );
   EXPECT_LT( placeOf( "Ip" ), placeOf( "IpGenAddr" ) );
}

TEST( ModulesTest, ValuesAreMadeAndReadByReflection )
{
   const auto make = []( std::string_view name, Vok::TextList args ) {
      const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( name );
      const Vok::Value value = type.make( args );
      return type.valueToStrep( value.data() );
   };
   EXPECT_EQ( make( "Wyre::IntfId", { "Ethernet3/1" } ), "Ethernet3/1" );
   EXPECT_EQ( make( "Wyre::IpGenAddr", {} ), "\"\"" );
   EXPECT_EQ( make( "Wyre::IpAndPort", { "10.0.0.1", "80" } ),
         "Wyre::IpAndPort[ip=10.0.0.1,port=80]" );
   EXPECT_EQ( make( "Ipfix::TemplateId", {} ), "65535" );
}

} // namespace
