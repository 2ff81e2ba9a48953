#include "vokgen/MemberRules.h"

#include <algorithm>
#include <array>

namespace VokGen::MemberRules {

using Ast::MemberKind;
using Ast::OptionKind;
using Model::TypeDeclarationKind;

namespace {

struct MemberRule {
   TypeDeclarationKind type;
   MemberKind member;
};

constexpr auto members = std::to_array< MemberRule >( {
      { TypeDeclarationKind::constants, MemberKind::constant },
      { TypeDeclarationKind::constants, MemberKind::function },
      { TypeDeclarationKind::value, MemberKind::argument },
      { TypeDeclarationKind::value, MemberKind::plain },
      { TypeDeclarationKind::value, MemberKind::map },
      { TypeDeclarationKind::value, MemberKind::set },
      { TypeDeclarationKind::value, MemberKind::constant },
      { TypeDeclarationKind::value, MemberKind::flag },
      { TypeDeclarationKind::value, MemberKind::method },
      { TypeDeclarationKind::value, MemberKind::constructor },
      { TypeDeclarationKind::entity, MemberKind::argument },
      { TypeDeclarationKind::entity, MemberKind::plain },
      { TypeDeclarationKind::entity, MemberKind::optional },
      { TypeDeclarationKind::entity, MemberKind::derived },
      { TypeDeclarationKind::entity, MemberKind::map },
      { TypeDeclarationKind::entity, MemberKind::set },
      { TypeDeclarationKind::entity, MemberKind::children },
      { TypeDeclarationKind::entity, MemberKind::child },
      { TypeDeclarationKind::entity, MemberKind::references },
      { TypeDeclarationKind::entity, MemberKind::constant },
      { TypeDeclarationKind::entity, MemberKind::function },
      { TypeDeclarationKind::entity, MemberKind::instantiate },
} );

struct OptionRule {
   TypeDeclarationKind type;
   MemberKind member;
   OptionKind option;
};

constexpr auto options = std::to_array< OptionRule >( {
      { TypeDeclarationKind::constants, MemberKind::constant, OptionKind::defaultValue },
      { TypeDeclarationKind::value, MemberKind::constant, OptionKind::defaultValue },
      { TypeDeclarationKind::entity, MemberKind::constant, OptionKind::defaultValue },
      { TypeDeclarationKind::value, MemberKind::plain, OptionKind::defaultValue },
      { TypeDeclarationKind::value, MemberKind::plain, OptionKind::from },
      { TypeDeclarationKind::value, MemberKind::plain, OptionKind::bounds },
      { TypeDeclarationKind::value, MemberKind::plain, OptionKind::most },
      { TypeDeclarationKind::value, MemberKind::map, OptionKind::get },
      { TypeDeclarationKind::entity, MemberKind::plain, OptionKind::defaultValue },
      { TypeDeclarationKind::entity, MemberKind::plain, OptionKind::bounds },
      { TypeDeclarationKind::entity, MemberKind::plain, OptionKind::counter },
      { TypeDeclarationKind::entity, MemberKind::plain, OptionKind::validated },
      { TypeDeclarationKind::entity, MemberKind::optional, OptionKind::empty },
      { TypeDeclarationKind::entity, MemberKind::map, OptionKind::get },
      { TypeDeclarationKind::entity, MemberKind::child, OptionKind::constructed },
      { TypeDeclarationKind::entity, MemberKind::instantiate, OptionKind::unnumbered },
      { TypeDeclarationKind::entity, MemberKind::argument, OptionKind::settable },
} );

} // namespace

bool allowed( TypeDeclarationKind type, MemberKind member )
{
   return std::any_of( members.begin(), members.end(),
         [ = ]( const MemberRule & rule ) { return rule.type == type && rule.member == member; } );
}

bool allowed( TypeDeclarationKind type, MemberKind member, OptionKind option )
{
   return std::any_of( options.begin(), options.end(), [ = ]( const OptionRule & rule ) {
      return rule.type == type && rule.member == member && rule.option == option;
   } );
}

const char * nameOf( TypeDeclarationKind type )
{
   switch ( type ) {
   case TypeDeclarationKind::enumeration:
      return "an enumeration";
   case TypeDeclarationKind::constants:
      return "a constants type";
   case TypeDeclarationKind::value:
      return "a value type";
   default:
      return "an entity type";
   }
}

const char * nameOf( TypeDeclarationKind type, MemberKind member )
{
   switch ( member ) {
   case MemberKind::plain:
      return type == TypeDeclarationKind::entity ? "a plain attribute" : "a field";
   case MemberKind::optional:
      return "an optional attribute";
   case MemberKind::derived:
      return "a derived attribute";
   case MemberKind::map:
      return "a map";
   case MemberKind::set:
      return "a set";
   case MemberKind::children:
      return "a collection of children";
   case MemberKind::child:
      return "a single child";
   case MemberKind::references:
      return "a collection of references";
   case MemberKind::constant:
      return "a constant";
   case MemberKind::flag:
      return "a flag";
   case MemberKind::function:
      return "a function";
   case MemberKind::method:
      return "a method";
   case MemberKind::constructor:
      return "a constructor";
   case MemberKind::instantiate:
      return "'instantiate'";
   default:
      return "a constructor argument";
   }
}

const char * nameOf( OptionKind option )
{
   switch ( option ) {
   case OptionKind::defaultValue:
      return "'='";
   case OptionKind::from:
      return "'from'";
   case OptionKind::bounds:
      return "'in'";
   case OptionKind::most:
      return "'max'";
   case OptionKind::counter:
      return "'counter'";
   case OptionKind::validated:
      return "'validated'";
   case OptionKind::settable:
      return "'settable'";
   case OptionKind::empty:
      return "'empty'";
   case OptionKind::get:
      return "'get'";
   case OptionKind::constructed:
      return "'constructed'";
   default:
      return "'unnumbered'";
   }
}

} // namespace VokGen::MemberRules
