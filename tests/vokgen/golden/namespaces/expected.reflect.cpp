// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Hw::Status::VokTable {
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
            .name = "reason",
            .documentation = "why",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Sw::Reason",
            .defaultText = "unknown",
            .offset = VOK_OFFSET( Status, reason_ ),
            .value = &Vok::Detail::valueOps< Sw::Reason >,
      } },
      { {
            .id = 259,
            .name = "level",
            .documentation = "how much",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Sw::Level",
            .defaultText = "0",
            .offset = VOK_OFFSET( Status, level_ ),
            .value = &Vok::Detail::valueOps< Sw::Level >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Hw::Status",
         .documentation = "Refers to a type of the next namespace.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Hw::Status, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Hw::Status::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Hw::Status::typeData() const noexcept { return VokTable::type; }

namespace {
constexpr Vok::Enumerator reasonEnumerators[] = {
   { 0, "unknown", "nobody knows" },
};
constexpr Vok::EnumTable reasonTable{
   "Sw::Reason",
   reasonEnumerators
};
constinit const Vok::TypeData reasonType{ {
      .name = "Sw::Reason",
      .documentation = "Why.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = reasonEnumerators,
      .value = &Vok::Detail::valueOps< Sw::Reason >,
} };
} // namespace

const Vok::EnumTable & Sw::vokEnumTable( Sw::Reason ) noexcept
{
   return reasonTable;
}

struct Sw::Level::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "in steps",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u8",
            .defaultText = "0",
            .offset = VOK_OFFSET( Level, value_ ),
            .value = &Vok::Detail::valueOps< std::uint8_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Sw::Level",
         .documentation = "How much.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Sw::Level >,
   } };
};

struct Sw::Status::VokTable {
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
   };
   static constexpr Vok::TypeData type{ {
         .name = "Sw::Status",
         .documentation = "Of the same name.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Sw::Status, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Sw::Status::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Sw::Status::typeData() const noexcept { return VokTable::type; }

namespace {
constexpr Vok::Enumerator reason2Enumerators[] = {
   { 0, "unknown", "nobody knows" },
};
constexpr Vok::EnumTable reason2Table{
   "Hw::Deep::Reason",
   reason2Enumerators
};
constinit const Vok::TypeData reason2Type{ {
      .name = "Hw::Deep::Reason",
      .documentation = "Why, deep down.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = reason2Enumerators,
      .value = &Vok::Detail::valueOps< Hw::Deep::Reason >,
} };
} // namespace

const Vok::EnumTable & Hw::Deep::vokEnumTable( Hw::Deep::Reason ) noexcept
{
   return reason2Table;
}

struct Hw::Deep::Pair::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "mine",
            .documentation = "of this namespace",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Hw::Deep::Reason",
            .defaultText = "unknown",
            .offset = VOK_OFFSET( Pair, mine_ ),
            .value = &Vok::Detail::valueOps< Hw::Deep::Reason >,
      } },
      { {
            .id = 3,
            .name = "other",
            .documentation = "of another",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Sw::Reason",
            .defaultText = "unknown",
            .offset = VOK_OFFSET( Pair, other_ ),
            .value = &Vok::Detail::valueOps< Sw::Reason >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Hw::Deep::Pair",
         .documentation = "Both reasons.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Hw::Deep::Pair >,
   } };
};

namespace {
constexpr const Vok::TypeData * types[] = {
   &Hw::Status::VokTable::type,
   &reasonType,
   &Sw::Level::VokTable::type,
   &Sw::Status::VokTable::type,
   &reason2Type,
   &Hw::Deep::Pair::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_0fd68fed55444e97_vokModule;
constinit const Corvo::ModuleInspectData _Sample_0fd68fed55444e97_vokModule( {
      .name = "Sample",
      .documentation = "Types of several namespaces, among them one that waits for another.",
      .fingerprint = 0x0fd68fed55444e97,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_0fd68fed55444e97_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_0fd68fed55444e97_vokModule );
} // namespace
