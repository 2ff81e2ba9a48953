// Made by vokgen from Sample.vok. Do not edit.
//
// Names so long that nothing fits on a line.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace FlowTracking {

class ExporterStatus;
class HardwareFlowTrackingConfiguration;

// ---- Enumerations -------------------------------------------------------------------------------

/// Why a collector is inactive, in a sentence that goes on for longer than a line has room
/// for, so that it has to be wrapped.
enum class CollectorInactiveReasonWithAVeryLongName : std::uint8_t {
   collectorInactiveReasonThatNobodyKnowsAnythingAbout = 0, ///< nobody knows
};
using enum CollectorInactiveReasonWithAVeryLongName;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( CollectorInactiveReasonWithAVeryLongName ) noexcept;
constexpr std::string_view vokEnumName( CollectorInactiveReasonWithAVeryLongName ) noexcept
{
   return "FlowTracking::CollectorInactiveReasonWithAVeryLongName";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( CollectorInactiveReasonWithAVeryLongName e )
{
   return Vok::Enumeration::name( e );
}
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue(
      Vok::CharRange & range, CollectorInactiveReasonWithAVeryLongName * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, CollectorInactiveReasonWithAVeryLongName e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline CollectorInactiveReasonWithAVeryLongName CollectorInactiveReasonWithAVeryLongNameInstance(
      unsigned code )
{
   return Vok::Enumeration::ofCode< CollectorInactiveReasonWithAVeryLongName >( code );
}
inline CollectorInactiveReasonWithAVeryLongName CollectorInactiveReasonWithAVeryLongNameInstance(
      std::string_view name )
{
   return Vok::Enumeration::ofName< CollectorInactiveReasonWithAVeryLongName >( name );
}

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// Long names of fields.
class VOK_EXPORT CongestionIntervalBeforeAndAfterTheEvent {
 public:
   constexpr CongestionIntervalBeforeAndAfterTheEvent() noexcept = default;
   /// Throws Corvo::RangeException unless millisecondsBeforeTheCongestionEvent is in
   /// leastIntervalOfCongestion (1) to mostIntervalOfCongestion (300). Throws
   /// Corvo::RangeException unless millisecondsAfterTheCongestionEvent is in
   /// leastIntervalOfCongestion (1) to mostIntervalOfCongestion (300).
   constexpr CongestionIntervalBeforeAndAfterTheEvent(
         std::uint16_t millisecondsBeforeTheCongestionEvent,
         std::uint16_t millisecondsAfterTheCongestionEvent )
         : millisecondsBeforeTheCongestionEvent_( millisecondsBeforeTheCongestionEvent ),
           millisecondsAfterTheCongestionEvent_( millisecondsAfterTheCongestionEvent )
   {
      checkMillisecondsBeforeTheCongestionEvent( millisecondsBeforeTheCongestionEvent );
      checkMillisecondsAfterTheCongestionEvent( millisecondsAfterTheCongestionEvent );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit CongestionIntervalBeforeAndAfterTheEvent( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit CongestionIntervalBeforeAndAfterTheEvent( Log * log )
   {
      vokDecode( *log );
   }

   /// before
   constexpr std::uint16_t millisecondsBeforeTheCongestionEvent() const noexcept
   {
      return millisecondsBeforeTheCongestionEvent_;
   }
   /// Throws Corvo::RangeException unless v is in leastIntervalOfCongestion (1) to
   /// mostIntervalOfCongestion (300). It keeps its value then.
   void millisecondsBeforeTheCongestionEventIs( std::uint16_t v )
   {
      if ( v != millisecondsBeforeTheCongestionEvent_ ) {
         checkMillisecondsBeforeTheCongestionEvent( v );
         millisecondsBeforeTheCongestionEvent_ = v;
      }
   }
   /// after
   constexpr std::uint16_t millisecondsAfterTheCongestionEvent() const noexcept
   {
      return millisecondsAfterTheCongestionEvent_;
   }
   /// Throws Corvo::RangeException unless v is in leastIntervalOfCongestion (1) to
   /// mostIntervalOfCongestion (300). It keeps its value then.
   void millisecondsAfterTheCongestionEventIs( std::uint16_t v )
   {
      if ( v != millisecondsAfterTheCongestionEvent_ ) {
         checkMillisecondsAfterTheCongestionEvent( v );
         millisecondsAfterTheCongestionEvent_ = v;
      }
   }
   /// least
   static constexpr std::uint16_t leastIntervalOfCongestion() noexcept { return 1; }
   /// most
   static constexpr std::uint16_t mostIntervalOfCongestion() noexcept { return 300; }

   /// Whether all fields are equal.
   constexpr bool isEq( const CongestionIntervalBeforeAndAfterTheEvent & other ) const;
   friend constexpr bool operator==( const CongestionIntervalBeforeAndAfterTheEvent & a,
         const CongestionIntervalBeforeAndAfterTheEvent & b )
   {
      return a.isEq( b );
   }
   /// Field by field, in declared order.
   friend constexpr bool operator<( const CongestionIntervalBeforeAndAfterTheEvent & a,
         const CongestionIntervalBeforeAndAfterTheEvent & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const CongestionIntervalBeforeAndAfterTheEvent & v )
   {
      return Vok::ValueType< CongestionIntervalBeforeAndAfterTheEvent >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName =
         "FlowTracking::CongestionIntervalBeforeAndAfterTheEvent";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkMillisecondsBeforeTheCongestionEvent( std::uint16_t v )
   {
      if ( v < 1 || v > 300 ) {
         Corvo::RangeException::throwException(
               "FlowTracking::CongestionIntervalBeforeAndAfterTheEvent::millisecondsBeforeTheC"
               "ongestionEvent < "
               "FlowTracking::CongestionIntervalBeforeAndAfterTheEvent::leastIntervalOfCongest"
               "ion or > "
               "FlowTracking::CongestionIntervalBeforeAndAfterTheEvent::mostIntervalOfCongesti"
               "on not allowed" );
      }
   }
   static constexpr void checkMillisecondsAfterTheCongestionEvent( std::uint16_t v )
   {
      if ( v < 1 || v > 300 ) {
         Corvo::RangeException::throwException(
               "FlowTracking::CongestionIntervalBeforeAndAfterTheEvent::millisecondsAfterTheCo"
               "ngestionEvent < "
               "FlowTracking::CongestionIntervalBeforeAndAfterTheEvent::leastIntervalOfCongest"
               "ion or > "
               "FlowTracking::CongestionIntervalBeforeAndAfterTheEvent::mostIntervalOfCongesti"
               "on not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< CongestionIntervalBeforeAndAfterTheEvent, std::uint16_t >{
                  "millisecondsBeforeTheCongestionEvent",
                  &CongestionIntervalBeforeAndAfterTheEvent::millisecondsBeforeTheCongestionEvent_,
                  &CongestionIntervalBeforeAndAfterTheEvent::checkMillisecondsBeforeTheCongestionEvent },
            Vok::Field< CongestionIntervalBeforeAndAfterTheEvent, std::uint16_t >{
                  "millisecondsAfterTheCongestionEvent",
                  &CongestionIntervalBeforeAndAfterTheEvent::millisecondsAfterTheCongestionEvent_,
                  &CongestionIntervalBeforeAndAfterTheEvent::checkMillisecondsAfterTheCongestionEvent } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t millisecondsBeforeTheCongestionEvent_ = 30;
   std::uint16_t millisecondsAfterTheCongestionEvent_ = 30;
};

constexpr bool CongestionIntervalBeforeAndAfterTheEvent::isEq(
      const CongestionIntervalBeforeAndAfterTheEvent & other ) const
{
   return Vok::equalFields( *this, other );
}
constexpr bool operator<( const CongestionIntervalBeforeAndAfterTheEvent & a,
      const CongestionIntervalBeforeAndAfterTheEvent & b )
{
   return Vok::lessFields( a, b );
}

// ---- Entities -----------------------------------------------------------------------------------

// Entities are made by their factories and held through Corvo::Ptr. Of an attribute x, x() reads
// it and xIs( v ) stores it and tells the notifiees of the entity; where v equals what is stored
// it does nothing. Texts and values are given by reference, which holds until that attribute, of a
// map that member, changes; an optional is given as a copy.
//
// Of a collection, x() is a live view of it, valid as long as the entity, and the collection may
// be changed while it is iterated. x( key ) is the member: of a map the type's default where there
// is none, of a set whether it holds the key, of children and references the pointer or null.
// xDel( key ) deletes a member and returns it, of a set nothing; deleting what is not there is
// silent. xDelAll() deletes all and gives the memory back. Of children, xIs() makes the child or
// returns the one that exists under that key.

/// Arguments of long types.
class VOK_EXPORT ExporterStatus : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< ExporterStatus >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId exporterNameInTheConfigurationAttrId = 258;
   static constexpr Vok::AttrId intervalAttrId = 259;
   static constexpr Vok::AttrId reasonAttrId = 260;

   /// A new ExporterStatus with this exporterNameInTheConfiguration, interval and reason,
   /// without a parent.
   static Corvo::Ptr< ExporterStatus > ExporterStatusIs(
         const Corvo::String & exporterNameInTheConfiguration,
         const CongestionIntervalBeforeAndAfterTheEvent & interval,
         CollectorInactiveReasonWithAVeryLongName reason );

   /// the identity
   const Corvo::String & exporterNameInTheConfiguration() const noexcept;

   /// an argument
   const CongestionIntervalBeforeAndAfterTheEvent & interval() const noexcept;

   /// another one
   CollectorInactiveReasonWithAVeryLongName reason() const noexcept;
   void reasonIs( CollectorInactiveReasonWithAVeryLongName v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   ExporterStatus( const Corvo::String & exporterNameInTheConfiguration,
         const CongestionIntervalBeforeAndAfterTheEvent & interval,
         CollectorInactiveReasonWithAVeryLongName reason );
   ~ExporterStatus() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & exporterNameInTheConfiguration,
         const CongestionIntervalBeforeAndAfterTheEvent & interval,
         CollectorInactiveReasonWithAVeryLongName reason );

   CongestionIntervalBeforeAndAfterTheEvent interval_;
   CollectorInactiveReasonWithAVeryLongName reason_;
};

/// The same as ExporterStatus::ExporterStatusIs().
inline Corvo::Ptr< ExporterStatus > exporterStatusFactory(
      const Corvo::String & exporterNameInTheConfiguration,
      const CongestionIntervalBeforeAndAfterTheEvent & interval,
      CollectorInactiveReasonWithAVeryLongName reason )
{
   return ExporterStatus::ExporterStatusIs( exporterNameInTheConfiguration, interval, reason );
}

/// Collections of long types.
class VOK_EXPORT HardwareFlowTrackingConfiguration : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< HardwareFlowTrackingConfiguration >;

   // Keys and nodes of the collections: for the framework.
   using HN_CollectorInactiveReasons = Vok::MapNode< CollectorInactiveReasonWithAVeryLongName,
         CongestionIntervalBeforeAndAfterTheEvent, 0xe3cfce22 >;
   struct ExporterStatusByIntervalKeyFunktor {
      const CongestionIntervalBeforeAndAfterTheEvent & operator()(
            const ExporterStatus & v ) const noexcept;
   };
   using VokExporterStatusByInterval =
         Vok::ChildNode< ExporterStatus, ExporterStatusByIntervalKeyFunktor, 0 >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId collectorInactiveReasonsAttrId = 258;
   static constexpr Vok::AttrId exporterStatusByIntervalAttrId = 259;
   static constexpr Vok::AttrId intervalOfCongestionWithALongNameAttrId = 260;

   /// A new HardwareFlowTrackingConfiguration with this name, without a parent.
   static Corvo::Ptr< HardwareFlowTrackingConfiguration > HardwareFlowTrackingConfigurationIs(
         const Corvo::String & name );

   /// a map
   Vok::HashView< HN_CollectorInactiveReasons > collectorInactiveReasons() const noexcept;
   const CongestionIntervalBeforeAndAfterTheEvent & collectorInactiveReasons(
         CollectorInactiveReasonWithAVeryLongName key ) const;
   /// The value under a key, or no value.
   Vok::Optional< CongestionIntervalBeforeAndAfterTheEvent > collectorInactiveReasonsGet(
         CollectorInactiveReasonWithAVeryLongName key ) const;
   void collectorInactiveReasonsIs( CollectorInactiveReasonWithAVeryLongName key,
         const CongestionIntervalBeforeAndAfterTheEvent & value );
   CongestionIntervalBeforeAndAfterTheEvent collectorInactiveReasonsDel(
         CollectorInactiveReasonWithAVeryLongName key );
   void collectorInactiveReasonsDelAll();

   /// children. Key: interval() of the child.
   Vok::OrderedView< VokExporterStatusByInterval > exporterStatusByInterval() const noexcept;
   Corvo::Ptr< ExporterStatus > exporterStatusByInterval(
         const CongestionIntervalBeforeAndAfterTheEvent & key ) const;
   /// Where the child exists, another exporterNameInTheConfiguration throws
   /// Corvo::ReinstantiationException, another reason is set.
   Corvo::Ptr< ExporterStatus > exporterStatusByIntervalIs(
         const Corvo::String & exporterNameInTheConfiguration,
         const CongestionIntervalBeforeAndAfterTheEvent & interval,
         CollectorInactiveReasonWithAVeryLongName reason );
   Corvo::Ptr< ExporterStatus > exporterStatusByIntervalDel(
         const CongestionIntervalBeforeAndAfterTheEvent & key );
   void exporterStatusByIntervalDelAll();

   /// a value
   const CongestionIntervalBeforeAndAfterTheEvent &
   intervalOfCongestionWithALongName() const noexcept;
   void intervalOfCongestionWithALongNameIs( const CongestionIntervalBeforeAndAfterTheEvent & v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit HardwareFlowTrackingConfiguration( const Corvo::String & name );
   ~HardwareFlowTrackingConfiguration() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Vok::HashMap2018< HN_CollectorInactiveReasons, CollectorInactiveReasonWithAVeryLongName,
         CongestionIntervalBeforeAndAfterTheEvent >
         collectorInactiveReasons_;
   Vok::OrderedMap< VokExporterStatusByInterval, CongestionIntervalBeforeAndAfterTheEvent,
         Corvo::Ptr< ExporterStatus > >
         exporterStatusByInterval_;
   CongestionIntervalBeforeAndAfterTheEvent intervalOfCongestionWithALongName_;
};

/// The same as HardwareFlowTrackingConfiguration::HardwareFlowTrackingConfigurationIs().
inline Corvo::Ptr< HardwareFlowTrackingConfiguration > hardwareFlowTrackingConfigurationFactory(
      const Corvo::String & name )
{
   return HardwareFlowTrackingConfiguration::HardwareFlowTrackingConfigurationIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline const Corvo::String & ExporterStatus::exporterNameInTheConfiguration() const noexcept
{
   return name();
}

inline const CongestionIntervalBeforeAndAfterTheEvent & ExporterStatus::interval() const noexcept
{
   return interval_;
}

inline CollectorInactiveReasonWithAVeryLongName ExporterStatus::reason() const noexcept
{
   return reason_;
}
inline void ExporterStatus::reasonIs( CollectorInactiveReasonWithAVeryLongName v )
{
   Vok::Attribute::plainIs( *this, reasonAttrId, reason_, v );
}

inline Vok::HashView< HardwareFlowTrackingConfiguration::HN_CollectorInactiveReasons >
HardwareFlowTrackingConfiguration::collectorInactiveReasons() const noexcept
{
   return Vok::HashView< HN_CollectorInactiveReasons >( collectorInactiveReasons_ );
}
inline const CongestionIntervalBeforeAndAfterTheEvent &
HardwareFlowTrackingConfiguration::collectorInactiveReasons(
      CollectorInactiveReasonWithAVeryLongName key ) const
{
   return Vok::Collection::value( collectorInactiveReasons_, key );
}
inline Vok::Optional< CongestionIntervalBeforeAndAfterTheEvent >
HardwareFlowTrackingConfiguration::collectorInactiveReasonsGet(
      CollectorInactiveReasonWithAVeryLongName key ) const
{
   return Vok::Collection::optional( collectorInactiveReasons_, key );
}

inline const CongestionIntervalBeforeAndAfterTheEvent &
HardwareFlowTrackingConfiguration::ExporterStatusByIntervalKeyFunktor::operator()(
      const ExporterStatus & v ) const noexcept
{
   return v.interval();
}
inline Vok::OrderedView< HardwareFlowTrackingConfiguration::VokExporterStatusByInterval >
HardwareFlowTrackingConfiguration::exporterStatusByInterval() const noexcept
{
   return Vok::OrderedView< VokExporterStatusByInterval >( exporterStatusByInterval_ );
}
inline Corvo::Ptr< ExporterStatus > HardwareFlowTrackingConfiguration::exporterStatusByInterval(
      const CongestionIntervalBeforeAndAfterTheEvent & key ) const
{
   return Vok::Collection::pointer( exporterStatusByInterval_, key );
}

inline const CongestionIntervalBeforeAndAfterTheEvent &
HardwareFlowTrackingConfiguration::intervalOfCongestionWithALongName() const noexcept
{
   return intervalOfCongestionWithALongName_;
}
inline void HardwareFlowTrackingConfiguration::intervalOfCongestionWithALongNameIs(
      const CongestionIntervalBeforeAndAfterTheEvent & v )
{
   Vok::Attribute::plainIs(
         *this, intervalOfCongestionWithALongNameAttrId, intervalOfCongestionWithALongName_, v );
}

} // namespace FlowTracking

template<> struct std::hash< FlowTracking::CongestionIntervalBeforeAndAfterTheEvent >
      : Vok::ValueHash< FlowTracking::CongestionIntervalBeforeAndAfterTheEvent > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
