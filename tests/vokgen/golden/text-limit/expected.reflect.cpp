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
            .typeName = "Corvo::String",
            .defaultText = "\"\"",
            .offset = VOK_OFFSET( Label, stringValue_ ),
            .value = &Vok::Detail::valueOps< Corvo::String >,
            .check = &Vok::Detail::checked< &Label::checkStringValue >,
      } },
      { {
            .id = 3,
            .name = "maxLength",
            .documentation = "most bytes",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u32",
            .defaultText = "20",
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Label",
         .documentation = "A short text.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Label >,
   } };
};

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Label::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_239894698550a54a_vokModule;
constinit const Corvo::ModuleInspectData _Sample_239894698550a54a_vokModule( {
      .name = "Sample",
      .documentation = "A text of limited length.",
      .fingerprint = 0x239894698550a54a,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_239894698550a54a_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_239894698550a54a_vokModule );
} // namespace
