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
            .defaultText = "5",
            .offset = VOK_OFFSET( Level, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Level",
         .documentation = "A number.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Level >,
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
            .name = "enabled",
            .documentation = "a truth value",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "bool",
            .defaultText = "false",
            .offset = VOK_OFFSET( Root, enabled_ ),
            .value = &Vok::Detail::valueOps< bool >,
      } },
      { {
            .id = 259,
            .name = "count",
            .documentation = "a counter",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "0",
            .offset = VOK_OFFSET( Root, count_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
      { {
            .id = 260,
            .name = "big",
            .documentation = "64 bits",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u64",
            .defaultText = "18446744073709551615",
            .offset = VOK_OFFSET( Root, big_ ),
            .value = &Vok::Detail::valueOps< std::uint64_t >,
      } },
      { {
            .id = 261,
            .name = "ratio",
            .documentation = "double precision",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "double",
            .defaultText = "inf",
            .offset = VOK_OFFSET( Root, ratio_ ),
            .value = &Vok::Detail::valueOps< double >,
      } },
      { {
            .id = 262,
            .name = "title",
            .documentation = "a text",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Corvo::String",
            .defaultText = "\"no title\"",
            .offset = VOK_OFFSET( Root, title_ ),
            .value = &Vok::Detail::valueOps< Corvo::String >,
      } },
      { {
            .id = 263,
            .name = "colour",
            .documentation = "an enumeration",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Colour",
            .defaultText = "green",
            .offset = VOK_OFFSET( Root, colour_ ),
            .value = &Vok::Detail::valueOps< Test::Colour >,
      } },
      { {
            .id = 264,
            .name = "level",
            .documentation = "a default that overrides the type's own",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Level",
            .defaultText = "3",
            .offset = VOK_OFFSET( Root, level_ ),
            .value = &Vok::Detail::valueOps< Test::Level >,
      } },
      { {
            .id = 265,
            .name = "start",
            .documentation = "a clock time",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Vok::Seconds",
            .defaultText = "0",
            .offset = VOK_OFFSET( Root, start_ ),
            .value = &Vok::Detail::valueOps< Vok::Seconds >,
      } },
      { {
            .id = 266,
            .name = "end",
            .documentation = "a duration",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Corvo::Duration",
            .defaultText = "inf",
            .offset = VOK_OFFSET( Root, end_ ),
            .value = &Vok::Detail::valueOps< Corvo::Duration >,
      } },
      { {
            .id = 267,
            .name = "bare",
            .documentation = "nothing stated",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "double",
            .defaultText = "0",
            .offset = VOK_OFFSET( Root, bare_ ),
            .value = &Vok::Detail::valueOps< double >,
      } },
      { {
            .id = 268,
            .name = "first",
            .documentation = "nothing stated",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Vok::Seconds",
            .defaultText = "0",
            .offset = VOK_OFFSET( Root, first_ ),
            .value = &Vok::Detail::valueOps< Vok::Seconds >,
      } },
      { {
            .id = 269,
            .name = "span",
            .documentation = "nothing stated",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Corvo::Duration",
            .defaultText = "0",
            .offset = VOK_OFFSET( Root, span_ ),
            .value = &Vok::Detail::valueOps< Corvo::Duration >,
      } },
      { {
            .id = 270,
            .name = "most",
            .documentation = "a constant takes an id",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u32",
            .defaultText = "7",
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "One attribute of each type.",
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
   &colourType,
   &Test::Level::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_af53cdd21e3c34d1_vokModule;
constinit const Corvo::ModuleInspectData _Sample_af53cdd21e3c34d1_vokModule( {
      .name = "Sample",
      .documentation = "Plain attributes of every type, and counters.",
      .fingerprint = 0xaf53cdd21e3c34d1,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_af53cdd21e3c34d1_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_af53cdd21e3c34d1_vokModule );
} // namespace
