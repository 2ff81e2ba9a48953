// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Address::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "high",
            .documentation = "upper half",
            .kind = Vok::AttributeKind::plain,
            .typeName = "u16",
            .defaultText = "0",
            .offset = VOK_OFFSET( Address, high_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
      { {
            .id = 3,
            .name = "low",
            .documentation = "lower half",
            .kind = Vok::AttributeKind::plain,
            .typeName = "u16",
            .defaultText = "0",
            .offset = VOK_OFFSET( Address, low_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Address",
         .documentation = "An address.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Address >,
   } };
};

struct Test::Range::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "first",
            .documentation = "the first number",
            .kind = Vok::AttributeKind::plain,
            .typeName = "u16",
            .defaultText = "0",
            .offset = VOK_OFFSET( Range, first_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
            .check = &Vok::Detail::noField< Test::Range >,
      } },
      { {
            .id = 3,
            .name = "last",
            .documentation = "the last one, which is not below the first",
            .kind = Vok::AttributeKind::plain,
            .typeName = "u16",
            .defaultText = "0",
            .offset = VOK_OFFSET( Range, last_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
            .check = &Vok::Detail::noField< Test::Range >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Range",
         .documentation = "Its fields have to fit together, so that it is not made from them.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Range >,
   } };
};

struct Test::Host::VokTable {
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
            .name = "address",
            .documentation = "its default is the text that the type states",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Address",
            .defaultText = "0-0",
            .offset = VOK_OFFSET( Host, address_ ),
            .value = &Vok::Detail::valueOps< Test::Address >,
      } },
      { {
            .id = 259,
            .name = "range",
            .documentation = "its default has no text that is known here",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Range",
            .offset = VOK_OFFSET( Host, range_ ),
            .value = &Vok::Detail::valueOps< Test::Range >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Host",
         .documentation = "Holds both.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Test::Host, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Host::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Host::typeData() const noexcept { return VokTable::type; }

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Address::VokTable::type,
   &Test::Range::VokTable::type,
   &Test::Host::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_cd2763dcea8e3fb1_vokModule;
constinit const Corvo::ModuleInspectData _Sample_cd2763dcea8e3fb1_vokModule( {
      .name = "Sample",
      .documentation = "Values with parts that are written by hand.",
      .fingerprint = 0xcd2763dcea8e3fb1,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_cd2763dcea8e3fb1_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_cd2763dcea8e3fb1_vokModule );
} // namespace
