// Templates, options and records, and when they are sent.
#include "tools/flowtrack-platform/metering/Exporter.h"

#include "Ipfix/IpfixTypes.h"

#include <array>
#include <utility>

namespace FlowtrackPlatform {

namespace {

using Ft = FlowTracking::Constants;

std::uint16_t idOf( FlowTracking::StaticTemplateId id )
{
   return Ft::reservedTemplateId( id ).value();
}

/// How packets are sampled (RFC 5476): one packet, and then so many that are passed over.
Template samplingTemplate()
{
   return { Ft::unreservedTemplateIdBase().value(), 1,
      { { Ipfix::selectorId, 4 }, { Ipfix::selectorAlgorithm, 2 },
            { Ipfix::samplingPacketInterval, 4 }, { Ipfix::samplingPacketSpace, 4 } } };
}

/// The same as NetFlow version 9 had it, which is all that some collectors read: they pass over
/// options that name an algorithm.
Template oldSamplingTemplate()
{
   return { static_cast< std::uint16_t >( Ft::unreservedTemplateIdBase().value() + 1 ), 1,
      { { Ipfix::observationDomainId, 4 }, { Ipfix::samplingInterval, 4 } } };
}

Template trackerTemplate()
{
   return { idOf( FlowTracking::optionsTemplateFlowTrackerTable ), 1,
      { { Ipfix::observationDomainId, 4 },
            { Ipfix::observationDomainName, TemplateField::variable } } };
}

Template interfaceTemplate()
{
   return { idOf( FlowTracking::optionsTemplateIntfTable ), 1,
      { { Ipfix::ingressInterface, 4 }, { Ipfix::interfaceName, TemplateField::variable } } };
}

constexpr unsigned systematicCountBased = 1; ///< selectorAlgorithm

} // namespace

Exporter::Exporter(
      std::uint32_t domain, const ExporterPlan & plan, const MakeSender & makeSender )
      : domain_( domain ),
        plan_( plan )
{
   connect( makeSender );
}

void Exporter::connect( const MakeSender & makeSender )
{
   sender_ = makeSender( plan_.destination );
   writer_ = std::make_unique< MessageWriter >( domain_, plan_.destination.mostBytes,
         [ this ]( std::span< const std::uint8_t > message ) { sender_->send( message ); } );
   told_ = false;
}

void Exporter::planIs( const ExporterPlan & plan, const MakeSender & makeSender )
{
   const ExporterPlan before = std::exchange( plan_, plan );
   if ( !( before.destination == plan.destination ) ) {
      writer_->flush();
      connect( makeSender );
   } else if ( before.templateRequests != plan.templateRequests ) {
      told_ = false;
   }
}

void Exporter::templatesAre( const std::vector< Template > & templates )
{
   told_ = told_ && templates == templates_;
   templates_ = templates;
}

void Exporter::circumstancesAre( const Circumstances & circumstances )
{
   told_ = told_ && circumstances == circumstances_;
   circumstances_ = circumstances;
}

void Exporter::tellTemplates( Time now )
{
   writer_->timeIs( static_cast< std::uint32_t >( now / 1000 ) );
   for ( const Template & one : templates_ ) {
      writer_->add( one );
   }
   for ( const Template & one : { samplingTemplate(), oldSamplingTemplate(), trackerTemplate(),
               interfaceTemplate() } ) {
      writer_->add( one );
   }
   Bytes record;
   appendNumber( record, domain_, 4 );
   appendNumber( record, systematicCountBased, 2 );
   appendNumber( record, 1, 4 );
   appendNumber( record, circumstances_.sampleRate - 1, 4 );
   writer_->record( samplingTemplate().id, std::exchange( record, {} ) );
   appendNumber( record, domain_, 4 );
   appendNumber( record, circumstances_.sampleRate, 4 );
   writer_->record( oldSamplingTemplate().id, std::exchange( record, {} ) );
   appendNumber( record, domain_, 4 );
   appendText( record, circumstances_.tracker );
   writer_->record( trackerTemplate().id, std::exchange( record, {} ) );
   for ( const auto & [ index, name ] : circumstances_.interfaces ) {
      appendNumber( record, index, 4 );
      appendText( record, name );
      writer_->record( interfaceTemplate().id, std::exchange( record, {} ) );
   }
   told_ = true;
   toldAt_ = now;
}

void Exporter::record(
      std::uint16_t templateId, std::span< const std::uint8_t > record, Time now )
{
   if ( !told_ ) {
      tellTemplates( now );
   }
   writer_->timeIs( static_cast< std::uint32_t >( now / 1000 ) );
   writer_->record( templateId, record );
}

void Exporter::tick( Time now )
{
   if ( !told_ || now - toldAt_ >= plan_.templateInterval ) {
      tellTemplates( now );
   }
   writer_->flush();
}

} // namespace FlowtrackPlatform
