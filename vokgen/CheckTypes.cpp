// A stage of the checker: which types there are.
#include "vokgen/Check.h"
#include "vokgen/Names.h"

#include <algorithm>
#include <map>
#include <set>

namespace VokGen {
namespace {

bool isUpper( char c ) { return c >= 'A' && c <= 'Z'; }

class TypeDeclarer {
 public:
   explicit TypeDeclarer( const Scopes & scopes ) : scopes_( scopes ) {}

   void declare();

 private:
   void checkNamespaces();
   void checkNamespace( const Ast::Name & name );
   void declareExternals();
   void declare( const Ast::Type & source );
   std::unique_ptr< Model::TypeDeclaration > create( const Ast::Type & source );
   TypeDraft & addDraft( const Ast::Type & source, Model::TypeDeclaration & type );
   bool describe( const Ast::Type & source, const std::string & scope,
         Model::TypeDeclaration & type );
   bool addSymbol( const std::string & fullName, const Ast::Name & name, Symbol symbol );
   void fillEnum( const Ast::Type & source, TypeDraft & draft, Model::EnumType & type );
   void fillEnumerators( const Ast::Type & source, TypeDraft & draft, Model::EnumType & type );
   void fillValue( const Ast::Type & source, Model::ValueType & type );
   void fillEntity( const Ast::Type & source, TypeDraft & draft, Model::EntityType & type );

   const Scopes & scopes_;
};

void TypeDeclarer::declare()
{
   const Ast::Module & source = *scopes_.module().source;
   if ( !source.name.empty() ) {
      checkName( scopes_, source.name, "a module" );
   }
   checkNamespaces();
   declareExternals();
   for ( const Ast::Type & type : source.types ) {
      declare( type );
   }
}

void TypeDeclarer::checkNamespaces()
{
   std::set< std::string > seen;
   for ( const Ast::Name & name : scopes_.module().source->namespaces ) {
      std::size_t start = 0;
      while ( start < name.text.size() ) {
         const std::size_t end = std::min( name.text.find( "::", start ), name.text.size() );
         if ( seen.insert( name.text.substr( 0, end ) ).second ) {
            checkNamespace( { name.text.substr( start, end - start ), name.range } );
         }
         start = end + 2;
      }
   }
}

/// One of the names that a namespace is made of.
void TypeDeclarer::checkNamespace( const Ast::Name & name )
{
   if ( Names::isFrameworkNamespace( name.text ) ) {
      scopes_.error( name.range, Message::foreignNamespace, { name.text } );
   } else if ( checkName( scopes_, name, "a namespace" ) && !isUpper( name.text.front() ) ) {
      scopes_.error( name.range, Message::namespaceNotCapitalised,
            { name.text, Names::capitalised( name.text ) } );
   }
}

void TypeDeclarer::declareExternals()
{
   for ( const Ast::External & source : scopes_.module().source->externals ) {
      auto external = std::make_unique< Model::ExternalType >();
      external->fullName =
            ( source.nameSpace.empty() ? "" : source.nameSpace + "::" ) + source.name.text;
      external->header = source.header;
      external->documentation = source.documentation.text;
      if ( external->documentation.empty() ) {
         scopes_.error( source.name.range, Message::missingDocumentation, { source.name.text } );
      }
      const bool plain = !source.header.empty() &&
            source.header.find_first_of( "\"<>\\\n\t " ) == std::string::npos;
      if ( !plain ) {
         scopes_.error( source.headerRange, Message::badHeader, { source.header } );
      }
      Symbol symbol;
      symbol.external = external.get();
      if ( addSymbol( external->fullName, source.name, symbol ) ) {
         scopes_.module().module->externals.push_back( std::move( external ) );
      }
   }
}

bool TypeDeclarer::addSymbol( const std::string & fullName, const Ast::Name & name, Symbol symbol )
{
   symbol.module = &scopes_.module();
   symbol.where = scopes_.location( name.range );
   const auto [ place, added ] = scopes_.workspace().symbols.emplace( fullName, symbol );
   if ( !added ) {
      scopes_.error( name.range, Message::declaredTwice, { fullName } );
      scopes_.note( place->second.where, Message::firstDeclaredHere, { fullName } );
   }
   return added;
}

std::unique_ptr< Model::TypeDeclaration > TypeDeclarer::create( const Ast::Type & source )
{
   switch ( source.kind ) {
   case Ast::TypeKind::enumeration:
      return std::make_unique< Model::EnumType >();
   case Ast::TypeKind::constants:
      return std::make_unique< Model::ConstantsType >();
   case Ast::TypeKind::value:
      return std::make_unique< Model::ValueType >();
   default:
      return std::make_unique< Model::EntityType >();
   }
}

TypeDraft & TypeDeclarer::addDraft( const Ast::Type & source, Model::TypeDeclaration & type )
{
   auto draft = std::make_unique< TypeDraft >();
   draft->type = &type;
   draft->source = &source;
   draft->file = scopes_.module().source->file;
   draft->incomplete = source.incomplete;
   draft->flawed = source.broken;
   scopes_.workspace().drafts.emplace( &type, draft.get() );
   scopes_.module().types.push_back( std::move( draft ) );
   return *scopes_.module().types.back();
}

/// Sets what all types have. False where the name cannot be used.
bool TypeDeclarer::describe( const Ast::Type & source, const std::string & scope,
      Model::TypeDeclaration & type )
{
   type.name = source.name.text;
   type.nameSpace = source.nameSpace;
   type.fullName = scope + "::" + source.name.text;
   type.documentation = source.documentation.text;
   type.module = scopes_.module().module.get();
   if ( type.documentation.empty() && !source.broken ) {
      scopes_.error( source.name.range, Message::missingDocumentation, { type.name } );
   }
   if ( scope.empty() ) {
      scopes_.error( source.name.range, Message::outsideNamespace, { type.name } );
      return false;
   }
   if ( !isUpper( type.name.front() ) ) {
      scopes_.error( source.name.range, Message::typeNotCapitalised,
            { type.name, Names::capitalised( type.name ) } );
   } else {
      checkName( scopes_, source.name, "a type" );
   }
   return true;
}

void TypeDeclarer::declare( const Ast::Type & source )
{
   std::unique_ptr< Model::TypeDeclaration > owned = create( source );
   Model::TypeDeclaration & type = *owned;
   const bool usable = describe( source, source.nameSpace, type );
   TypeDraft & draft = addDraft( source, type );
   scopes_.module().module->types.push_back( std::move( owned ) );
   Symbol symbol;
   symbol.type = &draft;
   if ( !usable || !addSymbol( type.fullName, source.name, symbol ) ) {
      draft.flawed = true;
   }
   if ( source.kind == Ast::TypeKind::enumeration ) {
      fillEnum( source, draft, static_cast< Model::EnumType & >( type ) );
   } else if ( source.kind == Ast::TypeKind::value ) {
      fillValue( source, static_cast< Model::ValueType & >( type ) );
   } else if ( source.kind == Ast::TypeKind::entity ) {
      fillEntity( source, draft, static_cast< Model::EntityType & >( type ) );
   }
   for ( const Ast::Type & nestedSource : source.enums ) {
      auto & holder = static_cast< Model::RecordType & >( type );
      auto nested = std::make_unique< Model::EnumType >();
      describe( nestedSource, type.fullName, *nested );
      nested->nameSpace = type.nameSpace;
      nested->holder = &holder;
      TypeDraft & nestedDraft = addDraft( nestedSource, *nested );
      Symbol nestedSymbol;
      nestedSymbol.type = &nestedDraft;
      if ( !addSymbol( nested->fullName, nestedSource.name, nestedSymbol ) ) {
         nestedDraft.flawed = true;
      }
      fillEnum( nestedSource, nestedDraft, *nested );
      draft.enumerators.insert( nestedDraft.enumerators.begin(), nestedDraft.enumerators.end() );
      holder.enums.push_back( std::move( nested ) );
   }
}

void TypeDeclarer::fillEnum( const Ast::Type & source, TypeDraft & draft, Model::EnumType & type )
{
   const std::string & width = source.width.text;
   const std::optional< Model::Type > number = builtInType( width );
   if ( number && number->isNumber() && number->bits <= 32 ) {
      type.bits = number->bits;
   } else if ( !source.broken ) {
      scopes_.error( source.width.range, Message::badEnumWidth, { width } );
      type.bits = 32; // No code is refused because of a width that nobody knows.
   }
   fillEnumerators( source, draft, type );
   if ( type.enumerators.empty() && !source.incomplete ) {
      scopes_.error( source.name.range, Message::emptyEnum, { type.name } );
   }
   draft.flawed = draft.flawed || type.enumerators.empty();
}

void TypeDeclarer::fillEnumerators( const Ast::Type & source, TypeDraft & draft,
      Model::EnumType & type )
{
   std::unordered_map< std::string, Range > names;
   std::map< std::uint64_t, Range > codes;
   const std::uint64_t largest = ( std::uint64_t( 1 ) << type.bits ) - 1;
   for ( const Ast::Enumerator & from : source.enumerators ) {
      if ( from.documentation.text.empty() ) {
         scopes_.error( from.name.range, Message::missingDocumentation, { from.name.text } );
      }
      bool good = checkName( scopes_, from.name, "an enumerator" );
      const auto [ sameName, newName ] = names.emplace( from.name.text, from.name.range );
      if ( !newName ) {
         scopes_.error( from.name.range, Message::declaredTwice, { from.name.text } );
         scopes_.note( scopes_.location( sameName->second ), Message::firstDeclaredHere,
               { from.name.text } );
         good = false;
      }
      const auto [ sameCode, newCode ] = codes.emplace( from.code, from.codeRange );
      if ( from.code > largest ) {
         scopes_.error( from.codeRange, Message::codeTooLarge,
               { std::to_string( from.code ), source.width.text, std::to_string( largest ) } );
         good = false;
      } else if ( !newCode ) {
         scopes_.error( from.codeRange, Message::codeTwice, { std::to_string( from.code ) } );
         scopes_.note( scopes_.location( sameCode->second ), Message::firstUsedHere,
               { std::to_string( from.code ) } );
         good = false;
      }
      if ( newName ) {
         auto enumerator = std::make_unique< Model::Enumerator >();
         enumerator->name = from.name.text;
         enumerator->documentation = from.documentation.text;
         enumerator->code = static_cast< std::uint32_t >( from.code );
         enumerator->type = &type;
         draft.enumerators.emplace( enumerator->name, enumerator.get() );
         if ( from.code == 0 && !draft.zero ) {
            draft.zero = enumerator.get();
         }
         type.enumerators.push_back( std::move( enumerator ) );
      }
      draft.flawed = draft.flawed || !good;
   }
}

void TypeDeclarer::fillValue( const Ast::Type & source, Model::ValueType & type )
{
   std::unordered_map< std::string, Range > seen;
   for ( const Ast::Modifier & modifier : source.modifiers ) {
      if ( modifier.text ) {
         type.handDefault = modifier.text;
      }
      const auto [ first, added ] = seen.emplace( modifier.word, modifier.range );
      if ( !added ) {
         scopes_.error( modifier.range, Message::modifierTwice, { modifier.word } );
         scopes_.note(
               scopes_.location( first->second ), Message::firstUsedHere, { modifier.word } );
      }
   }
   type.ordered = seen.count( "ordered" ) != 0;
   type.fixed = seen.count( "fixed" ) != 0;
   type.truth = seen.count( "truth" ) != 0;
   type.hashable = seen.count( "unhashable" ) == 0;
   type.textable = seen.count( "untextable" ) == 0;
   type.textByHand = seen.count( "by hand text" ) != 0;
   type.logByHand = seen.count( "by hand log" ) != 0;
   type.constructorsByHand = seen.count( "by hand constructors" ) != 0;
   if ( !type.textable && type.textByHand ) {
      scopes_.error( seen[ "by hand text" ], Message::textByHandAndNone );
   }
}

void TypeDeclarer::fillEntity( const Ast::Type & source, TypeDraft & draft,
      Model::EntityType & type )
{
   for ( std::size_t i = 1; i < source.modifiers.size(); ++i ) {
      scopes_.error( source.modifiers[ i ].range, Message::modifierTwice,
            { source.modifiers[ i ].word } );
      scopes_.note( scopes_.location( source.modifiers.front().range ), Message::firstUsedHere,
            { source.modifiers.front().word } );
   }
   type.hasFactory = source.modifiers.empty();
   if ( source.base && source.hasArguments ) {
      scopes_.error( source.argumentsRange, Message::argumentsOfDerived,
            { type.name, source.base->text } );
      draft.flawed = true;
   } else if ( !source.base && !source.hasArguments && !source.broken ) {
      scopes_.error( source.name.range, Message::entityWithoutArguments, { type.name } );
      draft.flawed = true;
   }
}

} // namespace

bool checkName( const Scopes & scopes, const Ast::Name & name, const char * what )
{
   const std::string & text = name.text;
   if ( Names::isCppKeyword( text ) ) {
      scopes.error( name.range, Message::reservedByCpp, { text, what } );
      return false;
   }
   if ( Names::isGeneratedForm( text ) ) {
      scopes.error( name.range, Message::generatedForm, { text, what } );
      return false;
   }
   if ( text.front() == '_' || text.back() == '_' || text.find( "__" ) != std::string::npos ) {
      scopes.error( name.range, Message::badUnderscore, { text } );
      return false;
   }
   return true;
}

void Stages::declareTypes( const Scopes & scopes ) { TypeDeclarer( scopes ).declare(); }

} // namespace VokGen
