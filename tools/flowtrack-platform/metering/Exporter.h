// What one exporter of a tracker sends.
#pragma once

#include "tools/flowtrack-platform/metering/Plan.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace FlowtrackPlatform {

/// Sends messages to the collectors of an exporter.
class Sender {
 public:
   virtual ~Sender() = default;

   virtual void send( std::span< const std::uint8_t > message ) = 0;
};

using MakeSender = std::function< std::unique_ptr< Sender >( const DestinationPlan & to ) >;

/// Names of interfaces by their indexes.
using InterfaceNames = std::map< std::uint32_t, std::string >;

/// What collectors are told besides flows: an options record for each line.
struct Circumstances {
   std::string tracker; ///< the name that the observation domain stands for
   std::uint32_t sampleRate = 1;
   InterfaceNames interfaces;

   friend bool operator==( const Circumstances &, const Circumstances & ) = default;
};

/// Puts the records of flows, templates and options into messages of one observation domain. The
/// templates come before the first record, when they change, when they are asked for, and every
/// template interval; options come with them.
class Exporter {
 public:
   Exporter( std::uint32_t domain, const ExporterPlan & plan, const MakeSender & makeSender );
   Exporter( const Exporter & ) = delete;
   Exporter & operator=( const Exporter & ) = delete;

   /// From now on. Of another destination the messages begin with the templates.
   void planIs( const ExporterPlan & plan, const MakeSender & makeSender );

   /// Which records there are to come.
   void templatesAre( const std::vector< Template > & templates );
   void circumstancesAre( const Circumstances & circumstances );

   /// Sends a record, at a time; it may wait in a message until the next tick. One that fits in no
   /// message is lost, as is an option: a name of hundreds of bytes does not fit the smallest.
   void record( std::uint16_t templateId, std::span< const std::uint8_t > record, Time now );

   /// Sends what waits, and what is due.
   void tick( Time now );

 private:
   void connect( const MakeSender & makeSender );
   void tellTemplates( Time now );

   std::uint32_t domain_;
   ExporterPlan plan_;
   std::unique_ptr< Sender > sender_;
   std::unique_ptr< MessageWriter > writer_;
   std::vector< Template > templates_;
   Circumstances circumstances_;
   bool told_ = false; ///< the templates, as they are
   Time toldAt_ = 0;
};

} // namespace FlowtrackPlatform
