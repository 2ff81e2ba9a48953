// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

namespace {
constexpr Vok::Enumerator collectorInactiveReasonWithAVeryLongNameEnumerators[] = {
   { 0, "collectorInactiveReasonThatNobodyKnowsAnythingAbout", "nobody knows" },
};
constexpr Vok::EnumTable collectorInactiveReasonWithAVeryLongNameTable{
   "FlowTracking::CollectorInactiveReasonWithAVeryLongName",
   collectorInactiveReasonWithAVeryLongNameEnumerators
};
constinit const Vok::TypeData collectorInactiveReasonWithAVeryLongNameType{ {
      .name = "FlowTracking::CollectorInactiveReasonWithAVeryLongName",
      .documentation =
            "Why a collector is inactive, in a sentence that goes on for longer than a line has "
            "room for, so that it has to be wrapped.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = collectorInactiveReasonWithAVeryLongNameEnumerators,
      .value = &Vok::Detail::valueOps< FlowTracking::CollectorInactiveReasonWithAVeryLongName >,
} };
} // namespace

const Vok::EnumTable & FlowTracking::vokEnumTable(
      FlowTracking::CollectorInactiveReasonWithAVeryLongName ) noexcept
{
   return collectorInactiveReasonWithAVeryLongNameTable;
}

struct FlowTracking::IntervalAroundCongestion::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "millisecondsBeforeIt",
            .documentation = "before",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "30",
            .lowerText = "1",
            .upperText = "300",
            .offset = VOK_OFFSET( IntervalAroundCongestion, millisecondsBeforeIt_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
            .check = &Vok::Detail::checked< &IntervalAroundCongestion::checkMillisecondsBeforeIt >,
      } },
      { {
            .id = 3,
            .name = "millisecondsAfterIt",
            .documentation = "after",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "30",
            .lowerText = "1",
            .upperText = "300",
            .offset = VOK_OFFSET( IntervalAroundCongestion, millisecondsAfterIt_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
            .check = &Vok::Detail::checked< &IntervalAroundCongestion::checkMillisecondsAfterIt >,
      } },
      { {
            .id = 4,
            .name = "leastIntervalOfCongestion",
            .documentation = "least",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u16",
            .defaultText = "1",
      } },
      { {
            .id = 5,
            .name = "mostIntervalOfCongestion",
            .documentation = "most",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u16",
            .defaultText = "300",
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "FlowTracking::IntervalAroundCongestion",
         .documentation = "Long names of fields.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< FlowTracking::IntervalAroundCongestion >,
   } };
};

struct FlowTracking::ExporterStatus::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 258,
            .name = "exporterNameInTheConfiguration",
            .documentation = "the identity",
            .kind = Vok::AttributeKind::constructorArgument,
            .identity = true,
            .typeName = "Corvo::String",
            .value = &Vok::Detail::valueOps< Corvo::String >,
      } },
      { {
            .id = 259,
            .name = "interval",
            .documentation = "an argument",
            .kind = Vok::AttributeKind::constructorArgument,
            .typeName = "FlowTracking::IntervalAroundCongestion",
            .offset = VOK_OFFSET( ExporterStatus, interval_ ),
            .value = &Vok::Detail::valueOps< FlowTracking::IntervalAroundCongestion >,
      } },
      { {
            .id = 260,
            .name = "reason",
            .documentation = "another one",
            .kind = Vok::AttributeKind::constructorArgument,
            .settable = true,
            .typeName = "FlowTracking::CollectorInactiveReasonWithAVeryLongName",
            .offset = VOK_OFFSET( ExporterStatus, reason_ ),
            .value =
                  &Vok::Detail::valueOps< FlowTracking::CollectorInactiveReasonWithAVeryLongName >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "FlowTracking::ExporterStatus",
         .documentation = "Arguments of long types.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 3,
         .identity = Vok::IdentityKind::argument,
         .make =
               &Vok::Detail::makeEntity< FlowTracking::ExporterStatus, Corvo::String,
                     FlowTracking::IntervalAroundCongestion,
                     FlowTracking::CollectorInactiveReasonWithAVeryLongName >,
         .live = &live,
   } };
};

const Vok::TypeData & FlowTracking::ExporterStatus::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & FlowTracking::ExporterStatus::typeData() const noexcept
{
   return VokTable::type;
}

struct FlowTracking::HardwareConfiguration::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 154,
            .name = "nameString",
            .documentation = "The name, fixed for life.",
            .kind = Vok::AttributeKind::constructorArgument,
            .identity = true,
            .typeName = "Corvo::String",
            .value = &Vok::Detail::valueOps< Corvo::String >,
      } },
      { {
            .id = 258,
            .name = "collectorInactiveReasons",
            .documentation = "a map",
            .kind = Vok::AttributeKind::map,
            .settable = true,
            .typeName = "FlowTracking::IntervalAroundCongestion",
            .keyTypeName = "FlowTracking::CollectorInactiveReasonWithAVeryLongName",
            .offset = VOK_OFFSET( HardwareConfiguration, collectorInactiveReasons_ ),
            .value = &Vok::Detail::valueOps< FlowTracking::IntervalAroundCongestion >,
            .key = &Vok::Detail::valueOps< FlowTracking::CollectorInactiveReasonWithAVeryLongName >,
            .collection =
                  &Vok::Detail::mapOps<
                        decltype( HardwareConfiguration::collectorInactiveReasons_ ) >,
      } },
      { {
            .id = 259,
            .name = "exporterStatusByInterval",
            .documentation = "children",
            .kind = Vok::AttributeKind::children,
            .ordered = true,
            .settable = true,
            .typeName = "FlowTracking::ExporterStatus",
            .keyTypeName = "FlowTracking::IntervalAroundCongestion",
            .keyField = "interval",
            .offset = VOK_OFFSET( HardwareConfiguration, exporterStatusByInterval_ ),
            .key = &Vok::Detail::valueOps< FlowTracking::IntervalAroundCongestion >,
            .collection =
                  &Vok::Detail::childrenOps<
                        decltype( HardwareConfiguration::exporterStatusByInterval_ ) >,
      } },
      { {
            .id = 260,
            .name = "intervalAroundCongestionByDefault",
            .documentation = "a value",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "FlowTracking::IntervalAroundCongestion",
            .defaultText =
                  "FlowTracking::IntervalAroundCongestion[millisecondsBeforeIt=30,millisecondsAfte"
                  "rIt=30]",
            .offset = VOK_OFFSET( HardwareConfiguration, intervalAroundCongestionByDefault_ ),
            .value = &Vok::Detail::valueOps< FlowTracking::IntervalAroundCongestion >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "FlowTracking::HardwareConfiguration",
         .documentation = "Collections of long types.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< FlowTracking::HardwareConfiguration, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & FlowTracking::HardwareConfiguration::vokType() noexcept
{
   return VokTable::type;
}
const Vok::TypeData & FlowTracking::HardwareConfiguration::typeData() const noexcept
{
   return VokTable::type;
}

namespace {
constexpr const Vok::TypeData * types[] = {
   &collectorInactiveReasonWithAVeryLongNameType,
   &FlowTracking::IntervalAroundCongestion::VokTable::type,
   &FlowTracking::ExporterStatus::VokTable::type,
   &FlowTracking::HardwareConfiguration::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_1700223d63a3ef67_vokModule;
constinit const Corvo::ModuleInspectData _Sample_1700223d63a3ef67_vokModule( {
      .name = "Sample",
      .documentation = "Names so long that nothing fits on a line.",
      .fingerprint = 0x1700223d63a3ef67,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_1700223d63a3ef67_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_1700223d63a3ef67_vokModule );
} // namespace
