// What schemas and modules say of bounds, defaults, keys, enumerators and meaning. That they hold
// is for validators to say.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/JsonSchema.h"
#include "tools/flowtrack/json/Yang.h"

#include <gtest/gtest.h>

using FlowtrackJson::Json;

namespace {

Json schemaOf( std::string_view type )
{
   return FlowtrackJson::jsonSchema( FlowtrackJson::entityType( type ) );
}

std::string moduleOf( std::string_view type )
{
   return FlowtrackJson::yangModule( FlowtrackJson::entityType( type ) );
}

bool has( const std::string & text, std::string_view part )
{
   return text.find( part ) != std::string::npos;
}

TEST( SchemaTest, BoundsDefaultsAndMeaning )
{
   const Json schema = schemaOf( "FlowTracking::Config" );
   EXPECT_EQ( schema[ "properties" ][ "sftAgentCount" ].dump(),
         R"({"type":"integer","minimum":1,"maximum":8,"default":1,)"
         R"x("description":"agents of software flow tracking (SFT)"})x" );
   EXPECT_EQ( schema[ "properties" ][ "sampleRate" ].dump(),
         R"({"$ref":"#/$defs/FlowTracking::SampleRate","default":1048576,)"
         R"("description":"one packet in this many is sampled"})" );
   EXPECT_EQ( schema[ "$defs" ][ "FlowTracking::SampleRate" ].dump(),
         R"({"type":"integer","minimum":1,"maximum":4294967295,)"
         R"("description":"How sparsely packets are sampled."})" );
   const std::string module = moduleOf( "FlowTracking::Config" );
   EXPECT_TRUE( has( module, "    leaf sft-agent-count {\n"
                             "      type uint32 {\n"
                             "        range \"1..8\";\n"
                             "      }\n"
                             "      default \"1\";\n"
                             "      description \"agents of software flow tracking (SFT)\";\n"
                             "    }\n" ) )
         << module;
   EXPECT_TRUE( has( module, "  typedef flow-tracking.sample-rate {\n"
                             "    type uint32 {\n"
                             "      range \"1..4294967295\";\n" ) );
}

TEST( SchemaTest, BoundsThatNobodyHoldsAreNotThere )
{
   const Json schema = schemaOf( "FlowTracking::Config" );
   const Json & interval = schema[ "$defs" ][ "FlowTracking::ActiveInterval" ];
   EXPECT_EQ( interval[ "maximum" ], Json( 4294967295U ) );
   const Json hardware = schemaOf( "HwFlowTracking::Config" );
   EXPECT_EQ( hardware[ "$defs" ][ "Wyre::DscpValue" ][ "maximum" ], Json( 255 ) );
   EXPECT_EQ( schema[ "$defs" ][ "FlowTracking::ExporterConfig-by-name" ][ "properties" ]
                    [ "dscpValue" ][ "maximum" ],
         Json( 63 ) );
}

TEST( SchemaTest, KeysAndEnumerators )
{
   const Json schema = schemaOf( "FlowTracking::Status" );
   const Json & map = schema[ "properties" ][ "pktDropResp" ];
   EXPECT_EQ( map[ "propertyNames" ][ "oneOf" ][ 1 ].dump(),
         R"({"const":"ftFullDrops","description":"the flow table was full"})" );
   EXPECT_EQ( map[ "additionalProperties" ][ "$ref" ],
         Json( "#/$defs/FlowTracking::PktDropCounterUpdateResponse-by-pktDropReason" ) );
   const std::string module = moduleOf( "FlowTracking::Status" );
   EXPECT_TRUE( has( module, "    list pkt-drop-resp {\n      key pkt-drop-reason;\n" ) ) << module;
   EXPECT_TRUE( has( module, "      enum \"ftFullDrops\" {\n"
                             "        value 1;\n"
                             "        description \"the flow table was full\";\n" ) );
}

TEST( SchemaTest, ArgumentsAreRequired )
{
   const Json schema = schemaOf( "FlowTracking::Config" );
   EXPECT_EQ( schema[ "$defs" ][ "FlowTracking::FlowGroup-by-name" ][ "required" ].dump(),
         R"(["seqno"])" );
   EXPECT_FALSE( schema.contains( "required" ) ); // the root's name is not in its document
   const Json hardware = schemaOf( "HwFlowTracking::Config" );
   EXPECT_EQ( hardware[ "$defs" ][ "HwFlowTracking::FgConfig" ][ "required" ].dump(),
         R"(["fgName","seqno"])" );
}

/// Every attribute of a type has its place and its words in both.
TEST( SchemaTest, NothingIsMissing )
{
   std::size_t count = 0;
   for ( const std::string & type : rootTypes() ) {
      const Json schema = schemaOf( type );
      const std::string module = moduleOf( type );
      for ( const Vok::AttributeData & a : FlowtrackJson::entityType( type ).attributes() ) {
         if ( !FlowtrackJson::isContent( a ) || a.name() == "nameString" ) {
            continue;
         }
         const Json & said = schema[ "properties" ][ std::string( a.name() ) ];
         EXPECT_EQ( said[ "description" ], Json( a.documentation() ) ) << type << a.name();
         EXPECT_TRUE( has( module, " " + FlowtrackJson::yangName( a.name() ) + " {\n" ) );
         EXPECT_TRUE( has( module, a.documentation() ) ) << type << a.name();
         ++count;
      }
   }
   EXPECT_GT( count, 100U );
}

} // namespace
