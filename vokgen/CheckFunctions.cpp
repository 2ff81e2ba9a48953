// Functions, in types and outside: what they take and give.
#include "vokgen/Check.h"

#include <set>

namespace VokGen {

bool resolveFunction( const Scopes & scopes, const std::string & scope, const Ast::Member & member,
      Model::Function & into )
{
   into.name = member.name.text;
   into.documentation = member.documentation.text;
   into.isStatic = member.isStatic;
   into.mutating = member.mutating;
   std::set< std::string > names;
   bool good = true;
   for ( const Ast::Parameter & parameter : member.parameters ) {
      const char first = parameter.name.text.front();
      if ( first >= 'A' && first <= 'Z' ) {
         scopes.error( parameter.name.range, Message::memberCapitalised, { parameter.name.text } );
      } else {
         checkName( scopes, parameter.name, "a parameter" );
      }
      if ( !names.insert( parameter.name.text ).second ) {
         scopes.error( parameter.name.range, Message::parameterTwice, { parameter.name.text } );
      }
      const auto type = scopes.resolve( scope, parameter.type, TypeUse::parameter );
      good = good && type;
      if ( type ) {
         into.parameters.push_back( { parameter.name.text, *type } );
      }
   }
   if ( !member.type.empty() ) {
      into.result = scopes.resolve( scope, member.type, TypeUse::parameter );
      good = good && into.result;
   }
   into.text = member.text;
   return good;
}

void checkText( const Scopes & scopes, const Ast::Member & member, const Model::Function & function,
      bool ofType )
{
   const bool plain = ofType && !function.mutating && function.parameters.empty() &&
         function.result && function.result->fullName == "Corvo::String";
   if ( function.text && !plain ) {
      scopes.error( member.textRange, Message::textOfFunction, { member.name.text } );
   }
}

void Stages::declareFunctions( const Scopes & scopes )
{
   for ( const Ast::FreeFunction & source : scopes.module().source->functions ) {
      const Ast::Member & member = source.function;
      auto function = std::make_unique< Model::FreeFunction >();
      function->nameSpace = source.nameSpace;
      if ( source.nameSpace.empty() ) {
         scopes.error( member.name.range, Message::outsideNamespace, { member.name.text } );
      }
      if ( member.documentation.text.empty() ) {
         scopes.error( member.name.range, Message::missingDocumentation, { member.name.text } );
      }
      checkName( scopes, member.name, "a function" );
      resolveFunction( scopes, source.nameSpace, member, *function );
      checkText( scopes, member, *function, false );
      scopes.module().module->functions.push_back( std::move( function ) );
   }
}

} // namespace VokGen
