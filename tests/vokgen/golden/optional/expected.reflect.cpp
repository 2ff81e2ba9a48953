// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Size::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "bytes",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "1024",
            .offset = VOK_OFFSET( Size, value_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Size",
         .documentation = "A number.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Size >,
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
            .name = "maybe",
            .documentation = "a value",
            .kind = Vok::AttributeKind::optional,
            .settable = true,
            .typeName = "Test::Size",
            .offset = VOK_OFFSET( Root, maybe_ ),
            .value = &Vok::Detail::valueOps< Vok::Optional< Test::Size > >,
      } },
      { {
            .id = 259,
            .name = "maybeInt",
            .documentation = "a number",
            .kind = Vok::AttributeKind::optional,
            .settable = true,
            .typeName = "u32",
            .offset = VOK_OFFSET( Root, maybeInt_ ),
            .value = &Vok::Detail::valueOps< Vok::Optional< std::uint32_t > >,
      } },
      { {
            .id = 260,
            .name = "maybeBit",
            .documentation = "one byte",
            .kind = Vok::AttributeKind::optional,
            .settable = true,
            .typeName = "bool",
            .offset = VOK_OFFSET( Root, maybeBit_ ),
            .value = &Vok::Detail::valueOps< Vok::Optional< bool > >,
      } },
      { {
            .id = 261,
            .name = "maybeWord",
            .documentation = "one word",
            .kind = Vok::AttributeKind::optional,
            .settable = true,
            .typeName = "Test::Size",
            .offset = VOK_OFFSET( Root, maybeWord_ ),
            .value = &Vok::Detail::valueOps< Vok::Optional< Test::Size > >,
            .storage = &Vok::Detail::wordStorage< Test::Size, 0 >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "Optionals.",
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
   &Test::Size::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_4e2862d4365c3ef7_vokModule;
constinit const Corvo::ModuleInspectData _Sample_4e2862d4365c3ef7_vokModule( {
      .name = "Sample",
      .documentation = "Optional attributes, however they are stored.",
      .fingerprint = 0x4e2862d4365c3ef7,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_4e2862d4365c3ef7_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_4e2862d4365c3ef7_vokModule );
} // namespace
