// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

namespace {
constexpr Vok::Enumerator modeEnumerators[] = {
   { 0, "slow", "the default" },
};
constexpr Vok::EnumTable modeTable{
   "Test::Mode",
   modeEnumerators
};
constinit const Vok::TypeData modeType{ {
      .name = "Test::Mode",
      .documentation = "How.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = modeEnumerators,
      .value = &Vok::Detail::valueOps< Test::Mode >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Mode ) noexcept
{
   return modeTable;
}

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

struct Test::Number::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "the number",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "0",
            .offset = VOK_OFFSET( Number, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Number",
         .documentation = "An identity whose text is computed.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Number >,
   } };
};

struct Test::Nothing::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Nothing",
         .documentation = "No argument, no name.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .make = &Vok::Detail::makeEntity< Test::Nothing >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Nothing::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Nothing::typeData() const noexcept { return VokTable::type; }

struct Test::Host::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 258,
            .name = "hostname",
            .documentation = "the identity, under another name",
            .kind = Vok::AttributeKind::constructorArgument,
            .identity = true,
            .typeName = "Corvo::String",
            .value = &Vok::Detail::valueOps< Corvo::String >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Host",
         .documentation = "An identity that is a text.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::argument,
         .make = &Vok::Detail::makeEntity< Test::Host, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Host::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Host::typeData() const noexcept { return VokTable::type; }

struct Test::Slot::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 258,
            .name = "label",
            .documentation = "the identity",
            .kind = Vok::AttributeKind::constructorArgument,
            .identity = true,
            .typeName = "Test::Label",
            .offset = VOK_OFFSET( Slot, label_ ),
            .value = &Vok::Detail::valueOps< Test::Label >,
            .fromName = &Vok::Detail::fromName< Test::Label >,
      } },
      { {
            .id = 259,
            .name = "weight",
            .documentation = "can be changed",
            .kind = Vok::AttributeKind::constructorArgument,
            .settable = true,
            .typeName = "u16",
            .offset = VOK_OFFSET( Slot, weight_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Slot",
         .documentation = "An identity that is a value with a text.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 2,
         .identity = Vok::IdentityKind::argument,
         .make = &Vok::Detail::makeEntity< Test::Slot, Test::Label, std::uint16_t >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Slot::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Slot::typeData() const noexcept { return VokTable::type; }

struct Test::Line::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 258,
            .name = "number",
            .documentation = "An identity that is a number.",
            .kind = Vok::AttributeKind::constructorArgument,
            .identity = true,
            .typeName = "Test::Number",
            .offset = VOK_OFFSET( Line, number_ ),
            .value = &Vok::Detail::valueOps< Test::Number >,
            .fromName = &Vok::Detail::fromName< Test::Number >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Line",
         .documentation = "An identity that is a number.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::argument,
         .make = &Vok::Detail::makeEntity< Test::Line, Test::Number >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Line::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Line::typeData() const noexcept { return VokTable::type; }

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
            .documentation = "A name, a constant argument, no factory.",
            .kind = Vok::AttributeKind::constructorArgument,
            .typeName = "u32",
            .offset = VOK_OFFSET( Group, seqno_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
      { {
            .id = 259,
            .name = "instantiate",
            .documentation = "a fresh one",
            .kind = Vok::AttributeKind::function,
            .call = &Vok::Detail::callMember< &Group::instantiate >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Group",
         .documentation = "A name, a constant argument, no factory.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 2,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Test::Group, Corvo::String, std::uint32_t >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Group::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Group::typeData() const noexcept { return VokTable::type; }

struct Test::Binding::VokTable {
   static inline constinit Vok::Detail::LiveCount live{ 0 };
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 258,
            .name = "mode",
            .documentation = "how",
            .kind = Vok::AttributeKind::constructorArgument,
            .typeName = "Test::Mode",
            .offset = VOK_OFFSET( Binding, mode_ ),
            .value = &Vok::Detail::valueOps< Test::Mode >,
      } },
      { {
            .id = 259,
            .name = "target",
            .documentation = "counted, not owned",
            .kind = Vok::AttributeKind::constructorArgument,
            .reference = true,
            .typeName = "Test::Group",
            .offset = VOK_OFFSET( Binding, target_ ),
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Binding",
         .documentation = "No identity, a reference.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 2,
         .make =
               &Vok::Detail::makeEntity<
                     Test::Binding, Test::Mode, Corvo::Ptr< const Test::Group > >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Binding::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Binding::typeData() const noexcept { return VokTable::type; }

namespace {
constexpr const Vok::TypeData * types[] = {
   &modeType,
   &Test::Label::VokTable::type,
   &Test::Number::VokTable::type,
   &Test::Nothing::VokTable::type,
   &Test::Host::VokTable::type,
   &Test::Slot::VokTable::type,
   &Test::Line::VokTable::type,
   &Test::Group::VokTable::type,
   &Test::Binding::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_a234d53d7e9bca4b_vokModule;
constinit const Corvo::ModuleInspectData _Sample_a234d53d7e9bca4b_vokModule( {
      .name = "Sample",
      .documentation = "Constructor arguments and identities.",
      .fingerprint = 0xa234d53d7e9bca4b,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_a234d53d7e9bca4b_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_a234d53d7e9bca4b_vokModule );
} // namespace
