// What the vocabulary says in words, and how reserved numbers are computed.
#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include "Vok/Assert.h"

#include <string>

namespace FlowTracking {

namespace {

constexpr const char * source = "FlowTracker/FlowTrackingOrreryTypes";

Corvo::String milliseconds( std::uint32_t value )
{
   return Corvo::String( std::to_string( value ) + " ms" );
}

[[noreturn]] void unknownCode(
      int line, const char * function, const char * what, unsigned code )
{
   Vok::assertionFailed( source, line, function, "false", what + std::to_string( code ) );
}

} // namespace

double InactiveTimeout::seconds() const
{
   return value() / 1000.0;
}

Corvo::String InactiveTimeout::stringValue() const
{
   return milliseconds( value() );
}

double ActiveInterval::seconds() const
{
   return value() / 1000.0;
}

Corvo::String ActiveInterval::stringValue() const
{
   return value() == 0 ? Corvo::String( "disabled" ) : milliseconds( value() );
}

Corvo::String TemplateInterval::stringValue() const
{
   return milliseconds( value() );
}

Corvo::String CongestionInterval::stringValue() const
{
   return Corvo::String(
         "[-" + std::to_string( before() ) + "," + std::to_string( after() ) + "]" );
}

InstanceId InstanceId::fromString( const Corvo::String & text )
{
   if ( text.empty() ) {
      return InstanceId( 0 );
   }
   const unsigned long v = std::stoul( std::string( text ) );
   if ( v == 0 || v > max() ) {
      Vok::assertionFailed( source, 105,
            "static FlowTracking::InstanceId FlowTracking::InstanceId::fromString(const String&)",
            "v > 0 && v <= InstanceId::max()" );
   }
   return InstanceId( static_cast< std::uint8_t >( v ) );
}

Corvo::String trackingTypeString( FlowTrackingType type )
{
   switch ( type ) {
   case FlowTrackingType::sampled:
      return "Sampled";
   case FlowTrackingType::hardware:
      return "Hardware";
   case FlowTrackingType::inbandTelemetry:
      return "Inband Telemetry";
   case FlowTrackingType::mirrorOnDrop:
      return "Mirror-On-Drop";
   case FlowTrackingType::cpuQueue:
      return "Cpu-Queue";
   case FlowTrackingType::dfw:
      return "Distributed Firewall";
   case FlowTrackingType::none:
      break;
   }
   unknownCode( 24,
         "Corvo::String FlowTracking::trackingTypeString(FlowTracking::FlowTrackingType)",
         "Unknown flow tracking type ", static_cast< unsigned >( type ) );
}

Corvo::String formatTypeString( ExportFormat format )
{
   switch ( format ) {
   case ExportFormat::formatDefault:
      return "Default";
   case ExportFormat::formatNone:
      return "None";
   case ExportFormat::formatDropReport:
      return "Drop report";
   case ExportFormat::formatSflow:
      return "sFlow";
   case ExportFormat::formatIpfix:
      return "IPFIX";
   case ExportFormat::formatPcap:
      return "Pcap";
   }
   unknownCode( 43, "Corvo::String FlowTracking::formatTypeString(FlowTracking::ExportFormat)",
         "Unknown export format ", static_cast< unsigned >( format ) );
}

std::uint32_t Constants::reservedTemplateIdValue( StaticTemplateId id )
{
   return templateIdBase() + static_cast< std::uint32_t >( id );
}

Ipfix::TemplateId Constants::reservedTemplateId( StaticTemplateId id )
{
   return Ipfix::TemplateId( reservedTemplateIdValue( id ) );
}

GroupSeqnoOffset Constants::groupSeqnoOffset( StaticGroupSeqnoOffset offset )
{
   return GroupSeqnoOffset( static_cast< std::uint8_t >( offset ) );
}

std::uint32_t Constants::reservedGroupSeqno( StaticGroupSeqnoOffset offset )
{
   return reservedFgSeqnoBase() + static_cast< std::uint32_t >( offset );
}

} // namespace FlowTracking
