// Constants: static functions of a type that give the same value always.
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

using Model::Attribute;

namespace {

/// Numbers, enumerators and the like cannot fail to be made; a value may be out of its bounds.
std::string head( const Attribute & attribute )
{
   const std::string type = Scope( *attribute.owner ).type( attribute.type );
   const bool literalType = isLiteral( attribute.type );
   return std::string( "static " ) + ( literalType ? "constexpr " : "" ) + type + " " +
         attribute.name + "()" + ( attribute.type.scalar() ? " noexcept" : "" );
}

class Constant final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & attribute ) const override
   {
      Fragments out;
      const std::string value =
            literal( attribute.value.value, attribute.type, Scope( *attribute.owner ) );
      out.members = comment( { attribute.documentation } ) +
            shortFunction( head( attribute ), "return " + value + ";", 3 );
      return out;
   }

   void fillRow( const Attribute & attribute, Row & row ) const override
   {
      row.kind = "constant";
      row.typeName = attribute.type.fullName;
      describeValue( attribute, row );
   }

   Summary summary( const Attribute & attribute, const Model::Module & page ) const override
   {
      return { typeLink( attribute.type, page ), defaultCell( attribute ), "", "constant" };
   }
};

} // namespace

const AttributeEmitter & constantEmitter()
{
   static const Constant emitter;
   return emitter;
}

} // namespace VokGen
