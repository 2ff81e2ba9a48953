// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

#include "Vok/GeneratedTables.h"

namespace {
constexpr Vok::Enumerator codeEnumerators[] = {
   { 0, "zero", "ends with a backslash \\" },
   { 1, "one", "ends with a trigraph ?\?/" },
   { 2, "two", "/* opens no comment, // nor does this" },
};
constexpr Vok::EnumTable codeTable{
   "Test::Code",
   codeEnumerators
};
constinit const Vok::TypeData codeType{ {
      .name = "Test::Code",
      .documentation =
            "# Not a heading | not a cell `code <b>` ``no code`` `no | code` <b>not bold</b> */",
      .kind = Vok::TypeKind::enumeration,
      .module = &Vok::Modules::Sample,
      .enumerators = codeEnumerators,
      .value = &Vok::Detail::valueOps< Test::Code >,
} };
} // namespace

const Vok::EnumTable & Test::vokEnumTable( Test::Code ) noexcept
{
   return codeTable;
}

struct Test::Texts::VokTable {
   static constexpr Vok::AttributeData attributes[] = {
      { {
            .id = 2,
            .name = "quotes",
            .documentation = "\"quotes\" and \\ backslashes",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "\"a \\\"b\\\" \\\\ c\"",
      } },
      { {
            .id = 3,
            .name = "controls",
            .documentation = "control characters, NUL among them",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "\"\\n\\t\\x00\\x01\\x7f\"",
      } },
      { {
            .id = 4,
            .name = "digits",
            .documentation = "escapes followed by digits",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "\"\\x1f123\\x00abc\"",
      } },
      { {
            .id = 5,
            .name = "trigraph",
            .documentation = "question marks",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "\"what?\?/ ?\?\?\"",
      } },
      { {
            .id = 6,
            .name = "foreign",
            .documentation = "bytes that are not ASCII",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "\"\303\244 \\xff\"",
      } },
      { {
            .id = 7,
            .name = "dollar",
            .documentation = "$name$ is no variable",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText = "\"$name$ $\"",
      } },
      { {
            .id = 8,
            .name = "many",
            .documentation = "1. long",
            .kind = Vok::AttributeKind::constant,
            .typeName = "Corvo::String",
            .defaultText =
                  "\"a text that is so long that its literal does not fit on one line, and is "
                  "split at a blank into several\"",
      } },
   };
   static constexpr Vok::TypeData type{ {
         .name = "Test::Texts",
         .documentation = "- Not a list; *not* _emphasis_, [not](a link) &amp;",
         .kind = Vok::TypeKind::constants,
         .module = &Vok::Modules::Sample,
         .attributes = Vok::Detail::tableOf< attributes >(),
   } };
};

namespace {
constexpr const Vok::TypeData * types[] = {
   &codeType,
   &Test::Texts::VokTable::type,
};
} // namespace

/// The reflection object of the module: its types in declared order.
extern const Corvo::ModuleInspectData _Sample_81f776306ef87bc6_vokModule;
constinit const Corvo::ModuleInspectData _Sample_81f776306ef87bc6_vokModule( {
      .name = "Sample",
      .documentation = "Texts that try to leave their place: */ // \\",
      .fingerprint = 0x81f776306ef87bc6,
      .types = types,
} );
const Corvo::ModuleInspectData & Vok::Modules::Sample() noexcept
{
   return _Sample_81f776306ef87bc6_vokModule;
}

namespace {
// The one initialiser of the module: the standard streams first, then the registration.
const std::ios_base::Init streams;
const Vok::Detail::ModuleRegistration registration( _Sample_81f776306ef87bc6_vokModule );
} // namespace
