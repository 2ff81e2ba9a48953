// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

struct Test::Picture::VokTable {
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
            .name = "colour",
            .documentation = "an enumeration of another module",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Paint::Colour",
            .defaultText = "black",
            .offset = VOK_OFFSET( Picture, colour_ ),
            .value = &Vok::Detail::valueOps< Paint::Colour >,
      } },
      { {
            .id = 259,
            .name = "size",
            .documentation = "and its bounds",
            .kind = Vok::AttributeKind::plain,
            .settable = true,
            .typeName = "Shape::Size",
            .defaultText = "3",
            .lowerText = "1",
            .upperText = "9",
            .offset = VOK_OFFSET( Picture, size_ ),
            .value = &Vok::Detail::valueOps< Shape::Size >,
            .check = &Vok::Detail::checked< &Picture::checkSize >,
      } },
      { {
            .id = 260,
            .name = "shapes",
            .documentation = "entities of another module",
            .kind = Vok::AttributeKind::children,
            .settable = true,
            .typeName = "Shape::Square",
            .keyTypeName = "Corvo::String",
            .keyField = "name",
            .offset = VOK_OFFSET( Picture, shapes_ ),
            .key = &Vok::Detail::valueOps< Corvo::String >,
            .collection = &Vok::Detail::childrenOps< decltype( Picture::shapes_ ) >,
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Picture",
         .documentation = "Holds what other modules define.",
         .kind = Vok::TypeKind::entity,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
         .argumentCount = 1,
         .identity = Vok::IdentityKind::name,
         .make = &Vok::Detail::makeEntity< Test::Picture, Corvo::String >,
         .live = &live,
   } };
};

const Vok::TypeData & Test::Picture::vokType() noexcept { return VokTable::type; }
const Vok::TypeData & Test::Picture::typeData() const noexcept { return VokTable::type; }

namespace {
constexpr const Vok::TypeData * types[] = {
   &Test::Picture::VokTable::type,
};
constexpr Corvo::ModuleInspectData::Use uses[] = {
   &Vok::Modules::Shapes,
   &Vok::Modules::Colours,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_c7d119ff9714f80d_vokModule;
constinit const Corvo::ModuleInspectData _Sample_c7d119ff9714f80d_vokModule( {
      .name = "Sample",
      .documentation = "A module that uses two others.",
      .fingerprint = 0xc7d119ff9714f80d,
      .types = types,
      .uses = uses,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_c7d119ff9714f80d_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_c7d119ff9714f80d_vokModule );
} // namespace
