// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Flags::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "the whole word",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "u16",
            .defaultText = "2",
            .offset = VOK_OFFSET( Flags, value_ ),
            .value = &Vok::Detail::valueOps< std::uint16_t >,
      } },
      { {
            .id = 3,
            .name = "first",
            .documentation = "the lowest bit",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "bool",
            .defaultText = "false",
            .offset = VOK_OFFSET( Flags, value_ ),
            .mask = 0x0001,
            .maskWidth = 2,
            .value = &Vok::Detail::valueOps< bool >,
      } },
      { {
            .id = 4,
            .name = "second",
            .documentation = "set by default",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "bool",
            .defaultText = "true",
            .offset = VOK_OFFSET( Flags, value_ ),
            .mask = 0x0002,
            .maskWidth = 2,
            .value = &Vok::Detail::valueOps< bool >,
      } },
      { {
            .id = 5,
            .name = "maskFirst",
            .documentation = "The mask of first.",
            .kind = Vok::AttributeKind::constant,
            .typeName = "u16",
            .defaultText = "1",
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Flags",
         .documentation = "Bits of one word.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Flags >,
   } };
};

struct Test::Fixed::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "value",
            .documentation = "the whole word",
            .kind = Vok::AttributeKind::plain,
            .typeName = "u8",
            .defaultText = "0",
            .offset = VOK_OFFSET( Fixed, value_ ),
            .value = &Vok::Detail::valueOps< std::uint8_t >,
      } },
      { {
            .id = 3,
            .name = "top",
            .documentation = "the highest bit",
            .kind = Vok::AttributeKind::plain,
            .typeName = "bool",
            .defaultText = "false",
            .offset = VOK_OFFSET( Fixed, value_ ),
            .mask = 0x80,
            .maskWidth = 1,
            .value = &Vok::Detail::valueOps< bool >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Fixed",
         .documentation = "Cannot be changed.",
         .kind = Vok::TypeKind::value,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .value = &Vok::Detail::valueOps< Test::Fixed >,
   } };
};

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Flags::VokTable::type,
   &Test::Fixed::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_2bcb489cccdb04f2_vokModule;
constinit const Corvo::ModuleInspectData _Sample_2bcb489cccdb04f2_vokModule( {
      .name = "Sample",
      .documentation = "Bit sets.",
      .fingerprint = 0x2bcb489cccdb04f2,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_2bcb489cccdb04f2_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_2bcb489cccdb04f2_vokModule );
} // namespace
