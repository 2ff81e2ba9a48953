// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Leaf::VokTable {
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
         .name = "Test::Leaf",
         .documentation = "With a name.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Test::Leaf, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Leaf::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Leaf::typeData() const noexcept { return VokTable::type; }

struct Test::Bare::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Bare",
         .documentation = "Without one.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .make = &Vok::Detail::makeEntity< Test::Bare >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Bare::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Bare::typeData() const noexcept { return VokTable::type; }

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
            .name = "single",
            .documentation = "there or not",
            .kind = Vok::AttributeKind::child,
            .settable = true,
            .typeName = "Test::Leaf",
            .offset = VOK_OFFSET( Root, single_ ),
            .collection = &Vok::Detail::childOps< Test::Leaf >,
      } },
      { {
            .id = 259,
            .name = "only",
            .documentation = "made by the constructor",
            .kind = Vok::AttributeKind::child,
            .settable = true,
            .typeName = "Test::Bare",
            .offset = VOK_OFFSET( Root, only_ ),
            .collection = &Vok::Detail::childOps< Test::Bare >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "Single children.",
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
   &Test::Leaf::VokTable::type,
   &Test::Bare::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_bbad60f3c38d7b24_vokModule;
constinit const Corvo::ModuleInspectData _Sample_bbad60f3c38d7b24_vokModule( {
      .name = "Sample",
      .documentation = "Single children.",
      .fingerprint = 0xbbad60f3c38d7b24,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_bbad60f3c38d7b24_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_bbad60f3c38d7b24_vokModule );
} // namespace
