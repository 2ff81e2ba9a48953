// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Pair::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "id",
            .documentation = "its key",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "0",
            .offset = VOK_OFFSET( Pair, id_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
      { {
            .id = 3,
            .name = "text",
            .documentation = "a text",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Corvo::String",
            .defaultText = "\"\"",
            .offset = VOK_OFFSET( Pair, text_ ),
            .value = &Vok::Detail::valueOps< Corvo::String >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Pair",
         .documentation = "A value.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Pair >,
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
            .name = "names",
            .documentation = "external key",
            .kind = Vok::AttributeKind::map,
            .settable = true,
            .typeName = "Corvo::String",
            .keyTypeName = "u32",
            .offset = VOK_OFFSET( Root, names_ ),
            .value = &Vok::Detail::valueOps< Corvo::String >,
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::mapOps< decltype( Root::names_ ) >,
      } },
      { {
            .id = 259,
            .name = "byName",
            .documentation = "external text key",
            .kind = Vok::AttributeKind::map,
            .settable = true,
            .typeName = "Test::Pair",
            .keyTypeName = "Corvo::String",
            .offset = VOK_OFFSET( Root, byName_ ),
            .value = &Vok::Detail::valueOps< Test::Pair >,
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::mapOps< decltype( Root::byName_ ) >,
      } },
      { {
            .id = 260,
            .name = "pairs",
            .documentation = "the key is a field",
            .kind = Vok::AttributeKind::map,
            .settable = true,
            .typeName = "Test::Pair",
            .keyTypeName = "u32",
            .keyField = "id",
            .offset = VOK_OFFSET( Root, pairs_ ),
            .value = &Vok::Detail::valueOps< Test::Pair >,
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::mapOps< decltype( Root::pairs_ ) >,
      } },
      { {
            .id = 261,
            .name = "texts",
            .documentation = "the key is a text",
            .kind = Vok::AttributeKind::map,
            .settable = true,
            .typeName = "Test::Pair",
            .keyTypeName = "Corvo::String",
            .keyField = "text",
            .offset = VOK_OFFSET( Root, texts_ ),
            .value = &Vok::Detail::valueOps< Test::Pair >,
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::mapOps< decltype( Root::texts_ ) >,
      } },
      { {
            .id = 262,
            .name = "sorted",
            .documentation = "in order of the key",
            .kind = Vok::AttributeKind::map,
            .ordered = true,
            .settable = true,
            .typeName = "Test::Pair",
            .keyTypeName = "u32",
            .keyField = "id",
            .offset = VOK_OFFSET( Root, sorted_ ),
            .value = &Vok::Detail::valueOps< Test::Pair >,
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::mapOps< decltype( Root::sorted_ ) >,
      } },
      { {
            .id = 263,
            .name = "steps",
            .documentation = "in order of an external key",
            .kind = Vok::AttributeKind::map,
            .ordered = true,
            .settable = true,
            .typeName = "bool",
            .keyTypeName = "Test::Pair",
            .offset = VOK_OFFSET( Root, steps_ ),
            .value = &Vok::Detail::valueOps< bool >,
            .key = &Vok::Detail::valueOps< Test::Pair >,
            .collection = &Vok::Detail::mapOps< decltype( Root::steps_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "Maps.",
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
   &Test::Pair::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_72bcd5d34eb6045b_vokModule;
constinit const Corvo::ModuleInspectData _Sample_72bcd5d34eb6045b_vokModule( {
      .name = "Sample",
      .documentation = "Maps with external keys and with keys that are fields.",
      .fingerprint = 0x72bcd5d34eb6045b,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_72bcd5d34eb6045b_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_72bcd5d34eb6045b_vokModule );
} // namespace
