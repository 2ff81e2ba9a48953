// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Buffer::VokTable {
   static constexpr Vok::TypeData type{ {
         .name = "Test::Buffer",
         .documentation = "Only holds an enumeration.",
         .kind = Vok::TypeKind::constants,
         .module = &Vok::Modules::Sample,
   } };
};

namespace {
constexpr Vok::Enumerator bufferStatusEnumerators[] = {
   { 0, "disabled", "not asked for" },
   { 1, "enabled", "in use" },
};
constexpr Vok::EnumTable bufferStatusTable{
   "Test::Buffer::Status",
   bufferStatusEnumerators
};
constinit const Vok::TypeData bufferStatusType{ {
      .name = "Test::Buffer::Status",
      .documentation = "What became of the buffer.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = bufferStatusEnumerators,
      .value = &Vok::Detail::valueOps< Test::Buffer::Status >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Buffer::Status ) noexcept
{
   return bufferStatusTable;
}

namespace {
constexpr Vok::Enumerator kindEnumerators[] = {
   { 0, "outer", "the only one" },
};
constexpr Vok::EnumTable kindTable{
   "Test::Kind",
   kindEnumerators
};
constinit const Vok::TypeData kindType{ {
      .name = "Test::Kind",
      .documentation = "Hidden inside Mode by a nested one.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = kindEnumerators,
      .value = &Vok::Detail::valueOps< Test::Kind >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Kind ) noexcept
{
   return kindTable;
}

struct Test::Mode::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "kind",
            .documentation = "its own",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Mode::Kind",
            .defaultText = "unknown",
            .offset = VOK_OFFSET( Mode, kind_ ),
            .value = &Vok::Detail::valueOps< Test::Mode::Kind >,
      } },
      { {
            .id = 3,
            .name = "status",
            .documentation = "another type's",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Buffer::Status",
            .defaultText = "disabled",
            .offset = VOK_OFFSET( Mode, status_ ),
            .value = &Vok::Detail::valueOps< Test::Buffer::Status >,
      } },
      { {
            .id = 4,
            .name = "other",
            .documentation = "of the namespace",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Kind",
            .defaultText = "outer",
            .offset = VOK_OFFSET( Mode, other_ ),
            .value = &Vok::Detail::valueOps< Test::Kind >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Mode",
         .documentation = "Uses its own Kind, another type's, and the outer one.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Mode >,
   } };
};

namespace {
constexpr Vok::Enumerator modeKindEnumerators[] = {
   { 0, "unknown", "not known" },
};
constexpr Vok::EnumTable modeKindTable{
   "Test::Mode::Kind",
   modeKindEnumerators
};
constinit const Vok::TypeData modeKindType{ {
      .name = "Test::Mode::Kind",
      .documentation = "What kind.",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = modeKindEnumerators,
      .value = &Vok::Detail::valueOps< Test::Mode::Kind >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Mode::Kind ) noexcept
{
   return modeKindTable;
}

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Buffer::VokTable::type,
   &bufferStatusType,
   &kindType,
   &Test::Mode::VokTable::type,
   &modeKindType,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_a22cb6d5f55aa437_vokModule;
constinit const Corvo::ModuleInspectData _Sample_a22cb6d5f55aa437_vokModule( {
      .name = "Sample",
      .documentation = "An enumeration that belongs to a type.",
      .fingerprint = 0xa22cb6d5f55aa437,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_a22cb6d5f55aa437_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_a22cb6d5f55aa437_vokModule );
} // namespace
