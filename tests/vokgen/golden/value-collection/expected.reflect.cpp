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
            .typeName = "u16",
            .defaultText = "0",
            .offset = VOK_OFFSET( Id, value_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Id",
         .documentation = "A number.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Id >,
   } };
};

struct Test::Field::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "id",
            .documentation = "what it is",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u32",
            .defaultText = "0",
            .offset = VOK_OFFSET( Field, id_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
      } },
      { {
            .id = 3,
            .name = "length",
            .documentation = "bytes",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "4",
            .offset = VOK_OFFSET( Field, length_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Field",
         .documentation = "A field of a template.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Field >,
   } };
};

struct Test::Template::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "id",
            .documentation = "A value with a constructor argument and a collection.",
            .kind = Vok::AttributeKind::constructorArgument,
            .typeName = "Test::Id",
            .defaultText = "0",
            .offset = VOK_OFFSET( Template, id_ ),
            .value = &Vok::Detail::valueOps< Test::Id >,
      } },
      { {
            .id = 3,
            .name = "field",
            .documentation = "the fields by position",
            .kind = Vok::AttributeKind::map,
            .ordered = true,
            .settable = true,
            .typeName = "Test::Field",
            .keyTypeName = "u32",
            .offset = VOK_OFFSET( Template, field_ ),
            .value = &Vok::Detail::valueOps< Test::Field >,
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::mapOps< decltype( Template::field_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Template",
         .documentation = "A value with a constructor argument and a collection.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .value = &Vok::Detail::valueOps< Test::Template >,
         .notext = "No String constructor for Template - has collection",
   } };
};

struct Test::Shelf::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "box",
            .documentation = "by name",
            .kind = Vok::AttributeKind::map,
            .settable = true,
            .typeName = "u32",
            .keyTypeName = "Corvo::String",
            .offset = VOK_OFFSET( Shelf, box_ ),
            .value = &Vok::Detail::valueOps< std::uint32_t >,
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::mapOps< decltype( Shelf::box_ ) >,
      } },
      { {
            .id = 3,
            .name = "tags",
            .documentation = "tags",
            .kind = Vok::AttributeKind::set,
            .settable = true,
            .typeName = "u16",
            .keyTypeName = "u16",
            .offset = VOK_OFFSET( Shelf, tags_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
            .key = &Vok::Detail::valueOps< std::uint16_t >,
            .collection = &Vok::Detail::setOps< decltype( Shelf::tags_ ) >,
      } },
      { {
            .id = 4,
            .name = "parts",
            .documentation = "by a field of the value",
            .kind = Vok::AttributeKind::map,
            .settable = true,
            .typeName = "Test::Field",
            .keyTypeName = "u32",
            .keyField = "id",
            .offset = VOK_OFFSET( Shelf, parts_ ),
            .value = &Vok::Detail::valueOps< Test::Field >,
            .key = &Vok::Detail::valueOps< std::uint32_t >,
            .collection = &Vok::Detail::mapOps< decltype( Shelf::parts_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Shelf",
         .documentation = "Hashed collections.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Shelf >,
         .notext = "No String constructor for Shelf - has collection",
   } };
};

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Id::VokTable::type,
   &Test::Field::VokTable::type,
   &Test::Template::VokTable::type,
   &Test::Shelf::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_2363d73023142b97_vokModule;
constinit const Corvo::ModuleInspectData _Sample_2363d73023142b97_vokModule( {
      .name = "Sample",
      .documentation = "Collections inside values.",
      .fingerprint = 0x2363d73023142b97,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_2363d73023142b97_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_2363d73023142b97_vokModule );
} // namespace
