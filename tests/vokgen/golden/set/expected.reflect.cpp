// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Port::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "its number",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "0",
            .offset = VOK_OFFSET( Port, value_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Port",
         .documentation = "A port.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Port >,
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
            .name = "numbers",
            .documentation = "of numbers",
            .kind = Vok::AttributeKind::set,
            .settable = true,
            .typeName = "u32",
            .keyTypeName = "u32",
            .offset = VOK_OFFSET( Root, numbers_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::setOps< decltype( Root::numbers_ ) >,
      } },
      { {
            .id = 259,
            .name = "words",
            .documentation = "of texts",
            .kind = Vok::AttributeKind::set,
            .settable = true,
            .typeName = "Corvo::String",
            .keyTypeName = "Corvo::String",
            .offset = VOK_OFFSET( Root, words_ ),
            .value = &Vok::Detail::valueOps< Corvo::String >,
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::setOps< decltype( Root::words_ ) >,
      } },
      { {
            .id = 260,
            .name = "ports",
            .documentation = "of values, in order",
            .kind = Vok::AttributeKind::set,
            .ordered = true,
            .settable = true,
            .typeName = "Test::Port",
            .keyTypeName = "Test::Port",
            .offset = VOK_OFFSET( Root, ports_ ),
            .value = &Vok::Detail::valueOps< Test::Port >,
            .key = &Vok::Detail::valueOps< Test::Port >,
            .collection = &Vok::Detail::setOps< decltype( Root::ports_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "Sets.",
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
   &Test::Port::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_c445c8826bf4bd19_vokModule;
constinit const Corvo::ModuleInspectData _Sample_c445c8826bf4bd19_vokModule( {
      .name = "Sample",
      .documentation = "Sets.",
      .fingerprint = 0xc445c8826bf4bd19,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_c445c8826bf4bd19_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_c445c8826bf4bd19_vokModule );
} // namespace
