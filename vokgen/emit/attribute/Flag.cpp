// Flags: single bits of a field of the same value.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

using Model::Attribute;

namespace {

/// Whether the bit is set in the word's default.
bool isSet( const Attribute & flag )
{
   return ( numberOf( flag.flag->word->value.value ) & flag.flag->maskValue() ) != 0;
}

/// "0x80", with two digits for each byte of the word.
std::string mask( const Attribute & flag )
{
   const std::string digits = Names::hexadecimal( flag.flag->maskValue() );
   return "0x" + digits.substr( digits.size() - flag.flag->word->type.bits / 4 );
}

class Flag final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & flag ) const override
   {
      const std::string word = Names::dataMember( flag.flag->word->name );
      const std::string place = word + ", " + std::to_string( flag.flag->bit );
      Fragments out;
      out.members = comment( { flag.documentation } ) +
            shortFunction( "constexpr bool " + flag.name + "() const noexcept",
                  "return Vok::bit( " + place + " );", 3 );
      if ( flag.hasMutator() ) {
         out.members +=
               shortFunction( "void " + Names::mutator( flag.name ) + "( bool v ) noexcept",
                     "Vok::bitIs( " + place + ", v );", 3 );
      }
      return out;
   }

   void fillRow( const Attribute & flag, Row & row ) const override
   {
      row.kind = "plain";
      row.settable = flag.hasMutator();
      row.typeName = "bool";
      row.defaultText = isSet( flag ) ? "true" : "false";
      row.offset = offsetOf( *flag.flag->word );
      row.mask = mask( flag );
      row.maskWidth = std::to_string( flag.flag->word->type.bits / 8 );
      row.value = valueOps( "bool" );
   }

   Summary summary( const Attribute & flag, const Model::Module & ) const override
   {
      const std::string named = flag.flag->mask ? ", mask " + code( flag.flag->mask->name ) : "";
      const std::string mutator =
            flag.hasMutator() ? call( Names::mutator( flag.name ), "v" ) : std::string();
      return { "bit " + std::to_string( flag.flag->bit ) + " of " + code( flag.flag->word->name ) +
               named,
         isSet( flag ) ? "true" : "false", "", mutator };
   }
};

} // namespace

const AttributeEmitter & flagEmitter()
{
   static const Flag emitter;
   return emitter;
}

} // namespace VokGen
