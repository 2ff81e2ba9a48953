// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Id::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "the number",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "0",
            .offset = VOK_OFFSET( Id, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Id",
         .documentation = "A number.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Id >,
   } };
};

struct Test::Tree::VokTable {
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
         .name = "Test::Tree",
         .documentation = "Known by name.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Test::Tree, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Tree::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Tree::typeData() const noexcept { return VokTable::type; }

struct Test::Numbered::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 258,
            .name = "id",
            .documentation = "Known by number.",
            .kind = Vok::AttributeKind::constructorArgument,
            .typeName = "Test::Id",
            .offset = VOK_OFFSET( Numbered, id_ ),
            .value = &Vok::Detail::valueOps< Test::Id >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Numbered",
         .documentation = "Known by number.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .make = &Vok::Detail::makeEntity< Test::Numbered, Test::Id >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Numbered::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Numbered::typeData() const noexcept { return VokTable::type; }

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
            .name = "trees",
            .documentation = "by name",
            .kind = Vok::AttributeKind::references,
            .settable = true,
            .typeName = "Test::Tree",
            .keyTypeName = "Corvo::String",
            .keyField = "name",
            .offset = VOK_OFFSET( Root, trees_ ),
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::referencesOps< decltype( Root::trees_ ) >,
      } },
      { {
            .id = 259,
            .name = "numbers",
            .documentation = "in order",
            .kind = Vok::AttributeKind::references,
            .ordered = true,
            .settable = true,
            .typeName = "Test::Numbered",
            .keyTypeName = "Test::Id",
            .keyField = "id",
            .offset = VOK_OFFSET( Root, numbers_ ),
            .key = &Vok::Detail::valueOps< Test::Id >,
            .collection = &Vok::Detail::referencesOps< decltype( Root::numbers_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "References.",
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
   &Test::Id::VokTable::type,
   &Test::Tree::VokTable::type,
   &Test::Numbered::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_2cbd4d5694b27f9c_vokModule;
constinit const Corvo::ModuleInspectData _Sample_2cbd4d5694b27f9c_vokModule( {
      .name = "Sample",
      .documentation = "References to entities that are owned elsewhere.",
      .fingerprint = 0x2cbd4d5694b27f9c,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_2cbd4d5694b27f9c_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_2cbd4d5694b27f9c_vokModule );
} // namespace
