// What can be said of a member without knowing any other.
#include "vokgen/Check.h"
#include "vokgen/MemberRules.h"

#include <set>

namespace VokGen {

using Ast::MemberKind;
using Model::TypeDeclarationKind;

namespace {

void checkOptions( const Scopes & scopes, TypeDeclarationKind type, const Ast::Member & member )
{
   std::set< Ast::OptionKind > seen;
   for ( const Ast::Option & option : member.options ) {
      const std::string name = MemberRules::nameOf( option.kind );
      if ( !MemberRules::allowed( type, member.kind, option.kind ) ) {
         scopes.error( option.range, Message::misplacedOption,
               { name, MemberRules::nameOf( type, member.kind ),
                     MemberRules::nameOf( type ) } );
      } else if ( !seen.insert( option.kind ).second ) {
         scopes.error( option.range, Message::optionTwice, { name } );
      }
   }
}

} // namespace

void checkMemberName( const Scopes & scopes, TypeDeclarationKind type, const Ast::Member & member )
{
   if ( member.name.empty() || member.isBareName || member.kind == MemberKind::instantiate ) {
      return;
   }
   const std::string & name = member.name.text;
   const bool capital = name.front() >= 'A' && name.front() <= 'Z';
   if ( capital ) {
      scopes.error( member.name.range, Message::memberCapitalised, { name } );
   } else {
      checkName( scopes, member.name, MemberRules::nameOf( type, member.kind ) );
   }
}

bool checkMember( const Scopes & scopes, TypeDeclarationKind type, const Ast::Member & member )
{
   if ( !MemberRules::allowed( type, member.kind ) ) {
      scopes.error( member.kindRange, Message::misplacedMember,
            { MemberRules::nameOf( type, member.kind ), MemberRules::nameOf( type ) } );
      return false;
   }
   checkOptions( scopes, type, member );
   const bool valueArgument =
         type == TypeDeclarationKind::value && member.kind == MemberKind::argument;
   if ( valueArgument && ( member.isIdentity || member.isReference || member.isBareName ) ) {
      scopes.error( member.range, Message::badValueArgument );
      return false;
   }
   if ( member.ordered && member.kind == MemberKind::child ) {
      scopes.error( member.kindRange, Message::orderedChild );
   }
   if ( member.mutating && type != TypeDeclarationKind::entity ) {
      scopes.error( member.kindRange, Message::mutatingOutsideEntity );
   }
   const bool documented = !member.documentation.text.empty() || member.inheritsDocumentation ||
         member.isBareName;
   if ( !documented ) {
      const bool named = !member.name.empty();
      scopes.error( named ? member.name.range : member.kindRange, Message::missingDocumentation,
            { named ? member.name.text : "constructor" } );
   }
   checkMemberName( scopes, type, member );
   return true;
}

} // namespace VokGen
