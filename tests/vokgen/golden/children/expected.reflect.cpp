// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Label::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "stringValue",
            .documentation = "the text",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Corvo::String",
            .defaultText = "\"\"",
            .offset = VOK_OFFSET( Label, stringValue_ ),
            .value = &Vok::Detail::valueOps< Corvo::String >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Label",
         .documentation = "A name.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Label >,
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
      { {
            .id = 258,
            .name = "kids",
            .documentation = "below it",
            .kind = Vok::AttributeKind::children,
            .settable = true,
            .typeName = "Test::Tree",
            .keyTypeName = "Corvo::String",
            .keyField = "name",
            .offset = VOK_OFFSET( Tree, kids_ ),
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::childrenOps< decltype( Tree::kids_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Tree",
         .documentation = "A recursive type.",
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

struct Test::Group::VokTable {
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
            .name = "seqno",
            .documentation = "its number",
            .kind = Vok::AttributeKind::constructorArgument,
            .typeName = "u32",
            .offset = VOK_OFFSET( Group, seqno_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
      { {
            .id = 259,
            .name = "weight",
            .documentation = "can be changed",
            .kind = Vok::AttributeKind::constructorArgument,
            .settable = true,
            .typeName = "u16",
            .offset = VOK_OFFSET( Group, weight_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Group",
         .documentation = "A child with further arguments.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 3,
         .identity = Vok::IdentityKind::name,
         .make =
               &Vok::Detail::makeEntity< Test::Group, Corvo::String, std::uint32_t, std::uint16_t >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Group::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Group::typeData() const noexcept { return VokTable::type; }

struct Test::Slot::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 258,
            .name = "label",
            .documentation = "Known by a value.",
            .kind = Vok::AttributeKind::constructorArgument,
            .identity = true,
            .typeName = "Test::Label",
            .offset = VOK_OFFSET( Slot, label_ ),
            .value = &Vok::Detail::valueOps< Test::Label >,
            .fromName = &Vok::Detail::fromName< Test::Label >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Slot",
         .documentation = "Known by a value.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::argument,
         .make = &Vok::Detail::makeEntity< Test::Slot, Test::Label >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Slot::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Slot::typeData() const noexcept { return VokTable::type; }

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
            .name = "groups",
            .documentation = "in order of their number",
            .kind = Vok::AttributeKind::children,
            .ordered = true,
            .settable = true,
            .typeName = "Test::Group",
            .keyTypeName = "u32",
            .keyField = "seqno",
            .offset = VOK_OFFSET( Root, groups_ ),
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::childrenOps< decltype( Root::groups_ ) >,
      } },
      { {
            .id = 259,
            .name = "named",
            .documentation = "by name",
            .kind = Vok::AttributeKind::children,
            .settable = true,
            .typeName = "Test::Group",
            .keyTypeName = "Corvo::String",
            .keyField = "name",
            .offset = VOK_OFFSET( Root, named_ ),
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::childrenOps< decltype( Root::named_ ) >,
      } },
      { {
            .id = 260,
            .name = "slots",
            .documentation = "by a value",
            .kind = Vok::AttributeKind::children,
            .settable = true,
            .typeName = "Test::Slot",
            .keyTypeName = "Test::Label",
            .keyField = "label",
            .offset = VOK_OFFSET( Root, slots_ ),
            .key = &Vok::Detail::valueOps< Test::Label >,
            .collection = &Vok::Detail::childrenOps< decltype( Root::slots_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Root",
         .documentation = "Every kind of key.",
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
   &Test::Label::VokTable::type,
   &Test::Tree::VokTable::type,
   &Test::Group::VokTable::type,
   &Test::Slot::VokTable::type,
   &Test::Root::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_92d4390adebc8dca_vokModule;
constinit const Corvo::ModuleInspectData _Sample_92d4390adebc8dca_vokModule( {
      .name = "Sample",
      .documentation = "Collections of children.",
      .fingerprint = 0x92d4390adebc8dca,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_92d4390adebc8dca_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_92d4390adebc8dca_vokModule );
} // namespace
