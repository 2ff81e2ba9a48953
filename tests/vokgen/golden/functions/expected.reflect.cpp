// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

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
            .name = "total",
            .documentation = "computed",
            .kind = Vok::AttributeKind::derived,
            .typeName = "u32",
            .call = &Vok::Detail::callMember< &Root::total >,
      } },
      { {
            .id = 259,
            .name = "path",
            .documentation = "reads",
            .kind = Vok::AttributeKind::function,
            .call = &Vok::Detail::callMember< &Root::path >,
      } },
      { {
            .id = 260,
            .name = "reset",
            .documentation = "changes",
            .kind = Vok::AttributeKind::function,
            .call = &Vok::Detail::callMember< &Root::reset >,
      } },
      { {
            .id = 261,
            .name = "motto",
            .documentation = "gives a text",
            .kind = Vok::AttributeKind::function,
            .call = &Vok::Detail::callMember< &Root::motto >,
      } },
      { {
            .id = 262,
            .name = "select",
            .documentation = "cannot be called with texts",
            .kind = Vok::AttributeKind::function,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "Functions of every kind.",
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
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_533a06374b7cf4e6_vokModule;
constinit const Corvo::ModuleInspectData _Sample_533a06374b7cf4e6_vokModule( {
      .name = "Sample",
      .documentation = "Derived attributes and functions, which are written by hand.",
      .fingerprint = 0x533a06374b7cf4e6,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_533a06374b7cf4e6_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_533a06374b7cf4e6_vokModule );
} // namespace
