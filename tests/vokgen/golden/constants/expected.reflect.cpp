// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

namespace {
constexpr Vok::Enumerator colourEnumerators[] = {
   { 0, "red", "red" },
   { 1, "green", "green" },
};
constexpr Vok::EnumTable colourTable{
   "Test::Colour",
   colourEnumerators
};
constinit const Vok::TypeData colourType{ {
      .name = "Test::Colour",
      .documentation = "A colour.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = colourEnumerators,
      .value = &Vok::Detail::valueOps< Test::Colour >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Colour ) noexcept
{
   return colourTable;
}

struct Test::Level::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "steps",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "1",
            .lowerText = "1",
            .upperText = "10",
            .offset = VOK_OFFSET( Level, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
            .check = &Vok::Detail::checked< &Level::checkValue >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Level",
         .documentation = "A bounded number.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Level >,
   } };
};

struct Test::Limits::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "most",
            .documentation = "the largest number",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u32",
            .defaultText = "4294967295",
      } },
      { {
            .id = 3,
            .name = "next",
            .documentation = "computed",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u16",
            .defaultText = "256",
      } },
      { {
            .id = 4,
            .name = "low",
            .documentation = "a number",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u16",
            .defaultText = "255",
      } },
      { {
            .id = 5,
            .name = "truth",
            .documentation = "a truth value",
            .kind = Vok::AttributeKind::constant,
            .typeName = "bool",
            .defaultText = "true",
      } },
      { {
            .id = 6,
            .name = "ratio",
            .documentation = "a double without a fraction",
            .kind = Vok::AttributeKind::constant,
            .typeName = "double",
            .defaultText = "2",
      } },
      { {
            .id = 7,
            .name = "name",
            .documentation = "a text",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "Ethernet",
      } },
      { {
            .id = 8,
            .name = "nothing",
            .documentation = "the empty text",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "\"\"",
      } },
      { {
            .id = 9,
            .name = "colour",
            .documentation = "an enumerator",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Test::Colour",
            .defaultText = "green",
      } },
      { {
            .id = 10,
            .name = "level",
            .documentation = "a value",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Test::Level",
            .defaultText = "7",
      } },
      { {
            .id = 11,
            .name = "forever",
            .documentation = "a duration",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::Duration",
            .defaultText = "inf",
      } },
      { {
            .id = 12,
            .name = "epoch",
            .documentation = "a time",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Vok::Seconds",
            .defaultText = "1.5",
      } },
      { {
            .id = 13,
            .name = "twice",
            .documentation = "written by hand",
            .kind = Vok::AttributeKind::function,
      } },
      { {
            .id = 14,
            .name = "report",
            .documentation = "gives nothing",
            .kind = Vok::AttributeKind::function,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Limits",
         .documentation = "What holds everywhere.",
         .kind = Vok::TypeKind::constants,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
   } };
};

namespace {
constexpr const Vok::TypeData * types[] = {
   &colourType,
   &Test::Level::VokTable::type,
   &Test::Limits::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_4ff7526cc71f355b_vokModule;
constinit const Corvo::ModuleInspectData _Sample_4ff7526cc71f355b_vokModule( {
      .name = "Sample",
      .documentation = "Constants of every kind, and static functions.",
      .fingerprint = 0x4ff7526cc71f355b,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_4ff7526cc71f355b_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_4ff7526cc71f355b_vokModule );
} // namespace
