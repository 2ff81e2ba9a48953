// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

namespace {
constexpr Vok::Enumerator colourEnumerators[] = {
   { 0, "red", "the default" },
   { 7, "blue", "after a gap" },
};
constexpr Vok::EnumTable colourTable{
   "Test::Colour",
   colourEnumerators
};
constinit const Vok::TypeData colourType{ {
      .name = "Test::Colour",
      .documentation = "What a flow is painted in.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = colourEnumerators,
      .value = &Vok::Detail::valueOps< Test::Colour >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Colour ) noexcept
{
   return colourTable;
}

namespace {
constexpr Vok::Enumerator elementEnumerators[] = {
   { 0, "none", "nothing" },
   { 4294967295U, "enterprise",
         "the largest number that there is, described at such length that it stands on a "
         "line of its own" },
};
constexpr Vok::EnumTable elementTable{
   "Test::Element",
   elementEnumerators
};
constinit const Vok::TypeData elementType{ {
      .name = "Test::Element",
      .documentation = "Information elements by number.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = elementEnumerators,
      .value = &Vok::Detail::valueOps< Test::Element >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Element ) noexcept
{
   return elementTable;
}

namespace {
constexpr const Vok::TypeData * types[] = {
   &colourType,
   &elementType,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_e671a377ec6b8142_vokModule;
constinit const Corvo::ModuleInspectData _Sample_e671a377ec6b8142_vokModule( {
      .name = "Sample",
      .documentation = "An enumeration with a gap, and one whose codes need 32 bits.",
      .fingerprint = 0xe671a377ec6b8142,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_e671a377ec6b8142_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_e671a377ec6b8142_vokModule );
} // namespace
