// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Config::VokTable {
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
            .documentation = "how many",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u8",
            .defaultText = "1",
            .lowerText = "1",
            .upperText = "8",
            .offset = VOK_OFFSET( Config, agents_ ),
            .value = &Vok::Detail::valueOps< std::uint8_t >,
            .check = &Vok::Detail::checked< &Config::checkAgents >,
      } },
      { {
            .id = 259,
            .name = "tags",
            .documentation = "marks",
            .kind = Vok::AttributeKind::set,
            .settable = true,
            .typeName = "u32",
            .keyTypeName = "u32",
            .offset = VOK_OFFSET( Config, tags_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::setOps< decltype( Config::tags_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Config",
         .documentation = "The base.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Test::Config, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Config::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Config::typeData() const noexcept { return VokTable::type; }

struct Test::MirrorConfig::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      Test::Config::VokTable::attributes[ 0 ],
      Test::Config::VokTable::attributes[ 1 ],
      Test::Config::VokTable::attributes[ 2 ],
      { {
            .id = 260,
            .name = "extra",
            .documentation = "its ids go on",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "bool",
            .defaultText = "false",
            .offset = VOK_OFFSET( MirrorConfig, extra_ ),
            .value = &Vok::Detail::valueOps< bool >,
      } },
      { {
            .id = 261,
            .name = "fill",
            .documentation = "written by hand",
            .kind = Vok::AttributeKind::function,
            .call = &Vok::Detail::callMember< &MirrorConfig::fill >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::MirrorConfig",
         .documentation = "Checks when it is made.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .base = &Test::Config::vokType,
         .make = &Vok::Detail::makeEntity< Test::MirrorConfig, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::MirrorConfig::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::MirrorConfig::typeData() const noexcept { return VokTable::type; }

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Config::VokTable::type,
   &Test::MirrorConfig::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_56e2afda3e5c3b2e_vokModule;
constinit const Corvo::ModuleInspectData _Sample_56e2afda3e5c3b2e_vokModule( {
      .name = "Sample",
      .documentation = "An entity type that derives from another.",
      .fingerprint = 0x56e2afda3e5c3b2e,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_56e2afda3e5c3b2e_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_56e2afda3e5c3b2e_vokModule );
} // namespace
