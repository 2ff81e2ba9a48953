// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Level::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "the level, in steps",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "5",
            .lowerText = "1",
            .upperText = "10",
            .offset = VOK_OFFSET( Level, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
            .check = &Vok::Detail::checked< &Level::checkValue >,
      } },
      { {
            .id = 3,
            .name = "low",
            .documentation = "lower bound",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u32",
            .defaultText = "1",
      } },
      { {
            .id = 4,
            .name = "top",
            .documentation = "upper bound",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u32",
            .defaultText = "10",
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Level",
         .documentation = "Checked always.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Level >,
   } };
};

struct Test::Rate::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "one in so many",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "1",
            .lowerText = "1",
            .upperText = "4294967295",
            .offset = VOK_OFFSET( Rate, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
            .check = &Vok::Detail::checked< &Rate::checkValue >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Rate",
         .documentation = "Only the lower bound can be violated.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Rate >,
   } };
};

struct Test::TemplateId::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "the number",
            .kind = Vok::AttributeKind::plain,
            .typeName = "u16",
            .defaultText = "65535",
            .lowerText = "256",
            .upperText = "65535",
            .offset = VOK_OFFSET( TemplateId, value_ ),
            .value = &Vok::Detail::narrowedOps< &TemplateId::checkValue, std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::TemplateId",
         .documentation = "Built from a wider number.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::TemplateId >,
   } };
};

struct Test::Weight::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "grams",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "1",
            .lowerText = "1",
            .upperText = "40000",
            .offset = VOK_OFFSET( Weight, value_ ),
            .value = &Vok::Detail::narrowedOps< &Weight::checkValue, std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Weight",
         .documentation = "Built from a wider number, and set from one.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Weight >,
   } };
};

struct Test::Timeout::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "milliseconds",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "300",
            .lowerText = "100",
            .upperText = "1000",
            .offset = VOK_OFFSET( Timeout, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Timeout",
         .documentation = "Checked by validate() only.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Timeout >,
   } };
};

struct Test::Size::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "bytes",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "0",
            .lowerText = "0",
            .upperText = "65535",
            .offset = VOK_OFFSET( Size, value_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Size",
         .documentation = "Never checked.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Size >,
   } };
};

struct Test::Interval::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "before",
            .documentation = "seconds before",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "30",
            .lowerText = "1",
            .upperText = "300",
            .offset = VOK_OFFSET( Interval, before_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
            .check = &Vok::Detail::checked< &Interval::checkBefore >,
      } },
      { {
            .id = 3,
            .name = "after",
            .documentation = "seconds after",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "30",
            .lowerText = "1",
            .upperText = "299",
            .offset = VOK_OFFSET( Interval, after_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
            .check = &Vok::Detail::checked< &Interval::checkAfter >,
      } },
      { {
            .id = 4,
            .name = "least",
            .documentation = "lower bound",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u16",
            .defaultText = "1",
      } },
      { {
            .id = 5,
            .name = "most",
            .documentation = "upper bound",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u16",
            .defaultText = "300",
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Interval",
         .documentation = "Two fields, each with a message of its own.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Interval >,
   } };
};

struct Test::Root::VokTable {
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
            .name = "agents",
            .documentation = "a number",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u8",
            .defaultText = "1",
            .lowerText = "1",
            .upperText = "8",
            .offset = VOK_OFFSET( Root, agents_ ),
            .value = &Vok::Detail::valueOps< std::uint8_t >,
            .check = &Vok::Detail::checked< &Root::checkAgents >,
      } },
      { {
            .id = 259,
            .name = "pattern",
            .documentation = "the number inside a value",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::TemplateId",
            .defaultText = "300",
            .lowerText = "256",
            .upperText = "400",
            .offset = VOK_OFFSET( Root, pattern_ ),
            .value = &Vok::Detail::valueOps< Test::TemplateId >,
            .check = &Vok::Detail::checked< &Root::checkPattern >,
      } },
      { {
            .id = 260,
            .name = "timeout",
            .documentation = "the default is validated",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Timeout",
            .defaultText = "300",
            .offset = VOK_OFFSET( Root, timeout_ ),
            .value = &Vok::Detail::valueOps< Test::Timeout >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "Bounds in mutators.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Test::Root, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Root::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Root::typeData() const noexcept { return VokTable::type; }

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Level::VokTable::type,
   &Test::Rate::VokTable::type,
   &Test::TemplateId::VokTable::type,
   &Test::Weight::VokTable::type,
   &Test::Timeout::VokTable::type,
   &Test::Size::VokTable::type,
   &Test::Interval::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_a6272e158e72f9ad_vokModule;
constinit const Corvo::ModuleInspectData _Sample_a6272e158e72f9ad_vokModule( {
      .name = "Sample",
      .documentation = "Bounds that are checked always, in mutators, by validate(), and never.",
      .fingerprint = 0xa6272e158e72f9ad,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_a6272e158e72f9ad_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_a6272e158e72f9ad_vokModule );
} // namespace
