// Made by vokgen from Sample.vok. Do not edit.
//
// Names so long that nothing fits on a line.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace FlowTracking {

class ExporterStatus;
class HardwareConfiguration;

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
class VOK_EXPORT IntervalAroundCongestion {
 public:
   constexpr IntervalAroundCongestion() noexcept = default;
   /// Throws Corvo::RangeException unless millisecondsBeforeIt is in leastIntervalOfCongestion
   /// (1) to mostIntervalOfCongestion (300). Throws Corvo::RangeException unless
   /// millisecondsAfterIt is in leastIntervalOfCongestion (1) to mostIntervalOfCongestion
   /// (300).
   constexpr IntervalAroundCongestion(
         std::uint16_t millisecondsBeforeIt, std::uint16_t millisecondsAfterIt )
         : millisecondsBeforeIt_( millisecondsBeforeIt ),
           millisecondsAfterIt_( millisecondsAfterIt )
   {
      checkMillisecondsBeforeIt( millisecondsBeforeIt );
      checkMillisecondsAfterIt( millisecondsAfterIt );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit IntervalAroundCongestion( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit IntervalAroundCongestion( Log * log )
   {
      vokDecode( *log );
   }

   /// before
   constexpr std::uint16_t millisecondsBeforeIt() const noexcept { return millisecondsBeforeIt_; }
   /// Throws Corvo::RangeException unless v is in leastIntervalOfCongestion (1) to
   /// mostIntervalOfCongestion (300). It keeps its value then.
   void millisecondsBeforeItIs( std::uint16_t v )
   {
      if ( v != millisecondsBeforeIt_ ) {
         checkMillisecondsBeforeIt( v );
         millisecondsBeforeIt_ = v;
      }
   }
   /// after
   constexpr std::uint16_t millisecondsAfterIt() const noexcept { return millisecondsAfterIt_; }
   /// Throws Corvo::RangeException unless v is in leastIntervalOfCongestion (1) to
   /// mostIntervalOfCongestion (300). It keeps its value then.
   void millisecondsAfterItIs( std::uint16_t v )
   {
      if ( v != millisecondsAfterIt_ ) {
         checkMillisecondsAfterIt( v );
         millisecondsAfterIt_ = v;
      }
   }
   /// least
   static constexpr std::uint16_t leastIntervalOfCongestion() noexcept { return 1; }
   /// most
   static constexpr std::uint16_t mostIntervalOfCongestion() noexcept { return 300; }

   /// Whether all fields are equal.
   constexpr bool isEq( const IntervalAroundCongestion & other ) const;
   friend constexpr bool operator==(
         const IntervalAroundCongestion & a, const IntervalAroundCongestion & b )
   {
      return a.isEq( b );
   }
   /// Field by field, in declared order.
   friend constexpr bool operator<(
         const IntervalAroundCongestion & a, const IntervalAroundCongestion & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const IntervalAroundCongestion & v )
   {
      return Vok::ValueType< IntervalAroundCongestion >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "FlowTracking::IntervalAroundCongestion";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkMillisecondsBeforeIt( std::uint16_t v )
   {
      if ( v < 1 || v > 300 ) {
         Corvo::RangeException::throwException(
               "FlowTracking::IntervalAroundCongestion::millisecondsBeforeIt < "
               "FlowTracking::IntervalAroundCongestion::leastIntervalOfCongestion or > "
               "FlowTracking::IntervalAroundCongestion::mostIntervalOfCongestion not allowed" );
      }
   }
   static constexpr void checkMillisecondsAfterIt( std::uint16_t v )
   {
      if ( v < 1 || v > 300 ) {
         Corvo::RangeException::throwException(
               "FlowTracking::IntervalAroundCongestion::millisecondsAfterIt < "
               "FlowTracking::IntervalAroundCongestion::leastIntervalOfCongestion or > "
               "FlowTracking::IntervalAroundCongestion::mostIntervalOfCongestion not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< IntervalAroundCongestion, std::uint16_t >{ "millisecondsBeforeIt",
                  &IntervalAroundCongestion::millisecondsBeforeIt_,
                  &IntervalAroundCongestion::checkMillisecondsBeforeIt },
            Vok::Field< IntervalAroundCongestion, std::uint16_t >{ "millisecondsAfterIt",
                  &IntervalAroundCongestion::millisecondsAfterIt_,
                  &IntervalAroundCongestion::checkMillisecondsAfterIt } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t millisecondsBeforeIt_ = 30;
   std::uint16_t millisecondsAfterIt_ = 30;
};

constexpr bool IntervalAroundCongestion::isEq( const IntervalAroundCongestion & other ) const
{
   return Vok::equalFields( *this, other );
}
constexpr bool operator<( const IntervalAroundCongestion & a, const IntervalAroundCongestion & b )
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
         const IntervalAroundCongestion & interval,
         CollectorInactiveReasonWithAVeryLongName reason );

   /// the identity
   const Corvo::String & exporterNameInTheConfiguration() const noexcept;

   /// an argument
   const IntervalAroundCongestion & interval() const noexcept;

   /// another one
   CollectorInactiveReasonWithAVeryLongName reason() const noexcept;
   void reasonIs( CollectorInactiveReasonWithAVeryLongName v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   ExporterStatus( const Corvo::String & exporterNameInTheConfiguration,
         const IntervalAroundCongestion & interval,
         CollectorInactiveReasonWithAVeryLongName reason );
   ~ExporterStatus() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & exporterNameInTheConfiguration,
         const IntervalAroundCongestion & interval,
         CollectorInactiveReasonWithAVeryLongName reason );

   IntervalAroundCongestion interval_;
   CollectorInactiveReasonWithAVeryLongName reason_;
};

/// The same as ExporterStatus::ExporterStatusIs().
inline Corvo::Ptr< ExporterStatus > exporterStatusFactory(
      const Corvo::String & exporterNameInTheConfiguration,
      const IntervalAroundCongestion & interval, CollectorInactiveReasonWithAVeryLongName reason )
{
   return ExporterStatus::ExporterStatusIs( exporterNameInTheConfiguration, interval, reason );
}

/// Collections of long types.
class VOK_EXPORT HardwareConfiguration : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< HardwareConfiguration >;

   // Keys and nodes of the collections: for the framework.
   using HN_CollectorInactiveReasons = Vok::MapNode<
         CollectorInactiveReasonWithAVeryLongName, IntervalAroundCongestion, 0x5eb7c8d5 >;
   struct ExporterStatusByIntervalKeyFunktor {
      const IntervalAroundCongestion & operator()( const ExporterStatus & v ) const noexcept;
   };
   using VokExporterStatusByInterval =
         Vok::ChildNode< ExporterStatus, ExporterStatusByIntervalKeyFunktor, 0 >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId collectorInactiveReasonsAttrId = 258;
   static constexpr Vok::AttrId exporterStatusByIntervalAttrId = 259;
   static constexpr Vok::AttrId intervalAroundCongestionByDefaultAttrId = 260;

   /// A new HardwareConfiguration with this name, without a parent.
   static Corvo::Ptr< HardwareConfiguration > HardwareConfigurationIs( const Corvo::String & name );

   /// a map
   Vok::HashView< HN_CollectorInactiveReasons > collectorInactiveReasons() const noexcept;
   const IntervalAroundCongestion & collectorInactiveReasons(
         CollectorInactiveReasonWithAVeryLongName key ) const;
   /// The value under a key, or no value.
   Vok::Optional< IntervalAroundCongestion > collectorInactiveReasonsGet(
         CollectorInactiveReasonWithAVeryLongName key ) const;
   void collectorInactiveReasonsIs(
         CollectorInactiveReasonWithAVeryLongName key, const IntervalAroundCongestion & value );
   IntervalAroundCongestion collectorInactiveReasonsDel(
         CollectorInactiveReasonWithAVeryLongName key );
   void collectorInactiveReasonsDelAll();

   /// children. Key: interval() of the child.
   Vok::OrderedView< VokExporterStatusByInterval > exporterStatusByInterval() const noexcept;
   Corvo::Ptr< ExporterStatus > exporterStatusByInterval(
         const IntervalAroundCongestion & key ) const;
   /// Where the child exists, another exporterNameInTheConfiguration throws
   /// Corvo::ReinstantiationException, another reason is set.
   Corvo::Ptr< ExporterStatus > exporterStatusByIntervalIs(
         const Corvo::String & exporterNameInTheConfiguration,
         const IntervalAroundCongestion & interval,
         CollectorInactiveReasonWithAVeryLongName reason );
   Corvo::Ptr< ExporterStatus > exporterStatusByIntervalDel( const IntervalAroundCongestion & key );
   void exporterStatusByIntervalDelAll();

   /// a value
   const IntervalAroundCongestion & intervalAroundCongestionByDefault() const noexcept;
   void intervalAroundCongestionByDefaultIs( const IntervalAroundCongestion & v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit HardwareConfiguration( const Corvo::String & name );
   ~HardwareConfiguration() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Vok::HashMap2018< HN_CollectorInactiveReasons, CollectorInactiveReasonWithAVeryLongName,
         IntervalAroundCongestion >
         collectorInactiveReasons_;
   Vok::OrderedMap<
         VokExporterStatusByInterval, IntervalAroundCongestion, Corvo::Ptr< ExporterStatus > >
         exporterStatusByInterval_;
   IntervalAroundCongestion intervalAroundCongestionByDefault_;
};

/// The same as HardwareConfiguration::HardwareConfigurationIs().
inline Corvo::Ptr< HardwareConfiguration > hardwareConfigurationFactory(
      const Corvo::String & name )
{
   return HardwareConfiguration::HardwareConfigurationIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline const Corvo::String & ExporterStatus::exporterNameInTheConfiguration() const noexcept
{
   return name();
}

inline const IntervalAroundCongestion & ExporterStatus::interval() const noexcept
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

inline Vok::HashView< HardwareConfiguration::HN_CollectorInactiveReasons >
HardwareConfiguration::collectorInactiveReasons() const noexcept
{
   return Vok::HashView< HN_CollectorInactiveReasons >( collectorInactiveReasons_ );
}
inline const IntervalAroundCongestion & HardwareConfiguration::collectorInactiveReasons(
      CollectorInactiveReasonWithAVeryLongName key ) const
{
   return Vok::Collection::value( collectorInactiveReasons_, key );
}
inline Vok::Optional< IntervalAroundCongestion >
HardwareConfiguration::collectorInactiveReasonsGet(
      CollectorInactiveReasonWithAVeryLongName key ) const
{
   return Vok::Collection::optional( collectorInactiveReasons_, key );
}

inline const IntervalAroundCongestion &
HardwareConfiguration::ExporterStatusByIntervalKeyFunktor::operator()(
      const ExporterStatus & v ) const noexcept
{
   return v.interval();
}
inline Vok::OrderedView< HardwareConfiguration::VokExporterStatusByInterval >
HardwareConfiguration::exporterStatusByInterval() const noexcept
{
   return Vok::OrderedView< VokExporterStatusByInterval >( exporterStatusByInterval_ );
}
inline Corvo::Ptr< ExporterStatus > HardwareConfiguration::exporterStatusByInterval(
      const IntervalAroundCongestion & key ) const
{
   return Vok::Collection::pointer( exporterStatusByInterval_, key );
}

inline const IntervalAroundCongestion &
HardwareConfiguration::intervalAroundCongestionByDefault() const noexcept
{
   return intervalAroundCongestionByDefault_;
}
inline void HardwareConfiguration::intervalAroundCongestionByDefaultIs(
      const IntervalAroundCongestion & v )
{
   Vok::Attribute::plainIs(
         *this, intervalAroundCongestionByDefaultAttrId, intervalAroundCongestionByDefault_, v );
}

} // namespace FlowTracking

template<> struct std::hash< FlowTracking::IntervalAroundCongestion >
      : Vok::ValueHash< FlowTracking::IntervalAroundCongestion > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
