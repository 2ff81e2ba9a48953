// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Id::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "the number",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "0",
            .offset = VOK_OFFSET( Id, value_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Id",
         .documentation = "One number.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Id >,
   } };
};

struct Test::Pair::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "id",
            .documentation = "a value inside a value",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Test::Id",
            .defaultText = "0",
            .offset = VOK_OFFSET( Pair, id_ ),
            .value = &Vok::Detail::valueOps< Test::Id >,
      } },
      { {
            .id = 3,
            .name = "text",
            .documentation = "a text",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Corvo::String",
            .defaultText = "none",
            .offset = VOK_OFFSET( Pair, text_ ),
            .value = &Vok::Detail::valueOps< Corvo::String >,
      } },
      { {
            .id = 4,
            .name = "on",
            .documentation = "a truth value",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "bool",
            .defaultText = "true",
            .offset = VOK_OFFSET( Pair, on_ ),
            .value = &Vok::Detail::valueOps< bool >,
      } },
      { {
            .id = 5,
            .name = "at",
            .documentation = "a clock time",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Vok::Seconds",
            .defaultText = "0",
            .offset = VOK_OFFSET( Pair, at_ ),
            .value = &Vok::Detail::valueOps< Vok::Seconds >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Pair",
         .documentation = "Several fields, one of them a text.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Pair >,
   } };
};

struct Test::Point::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "x",
            .documentation = "to the right",
            .kind = Vok::AttributeKind::plain,
            .typeName = "double",
            .defaultText = "0.5",
            .offset = VOK_OFFSET( Point, x_ ),
            .value = &Vok::Detail::valueOps< double >,
      } },
      { {
            .id = 3,
            .name = "y",
            .documentation = "upwards",
            .kind = Vok::AttributeKind::plain,
            .typeName = "double",
            .defaultText = "-1.5",
            .offset = VOK_OFFSET( Point, y_ ),
            .value = &Vok::Detail::valueOps< double >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Point",
         .documentation = "Without hash and mutators. Its axes have no unit.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Point >,
   } };
};

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Id::VokTable::type,
   &Test::Pair::VokTable::type,
   &Test::Point::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_e6de5b185de031a4_vokModule;
constinit const Corvo::ModuleInspectData _Sample_e6de5b185de031a4_vokModule( {
      .name = "Sample",
      .documentation = "Values of several fields and of one.",
      .fingerprint = 0xe6de5b185de031a4,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_e6de5b185de031a4_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_e6de5b185de031a4_vokModule );
} // namespace
