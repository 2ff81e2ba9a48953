// A stage of the checker: which attributes the types have, and of what type they are.
#include "vokgen/Check.h"
#include "vokgen/MemberRules.h"

#include <algorithm>
#include <set>

namespace VokGen {
namespace {

using Ast::MemberKind;
using Model::AttributeKind;

/// Constructor arguments of one type. Every collection of an entity repeats those of its members.
constexpr std::size_t argumentLimit = 64;

AttributeKind kindOf( MemberKind kind )
{
   switch ( kind ) {
   case MemberKind::optional:
      return AttributeKind::optional;
   case MemberKind::derived:
      return AttributeKind::derived;
   case MemberKind::map:
      return AttributeKind::map;
   case MemberKind::set:
      return AttributeKind::set;
   case MemberKind::children:
      return AttributeKind::children;
   case MemberKind::child:
      return AttributeKind::child;
   case MemberKind::references:
      return AttributeKind::references;
   case MemberKind::constant:
      return AttributeKind::constant;
   case MemberKind::flag:
      return AttributeKind::flag;
   case MemberKind::function:
      return AttributeKind::function;
   case MemberKind::instantiate:
      return AttributeKind::instantiate;
   case MemberKind::argument:
      return AttributeKind::constructorArgument;
   default:
      return AttributeKind::plain;
   }
}

TypeUse useOf( MemberKind kind )
{
   const bool entity = kind == MemberKind::children || kind == MemberKind::child ||
         kind == MemberKind::references;
   return entity ? TypeUse::entity : TypeUse::value;
}

/// Declares the members of one type.
class MemberDeclarer {
 public:
   MemberDeclarer( const Scopes & scopes, TypeDraft & draft )
         : scopes_( scopes ),
           draft_( draft ),
           type_( static_cast< Model::RecordType & >( *draft.type ) ),
           source_( *draft.source )
   {
   }

   void declare();

 private:
   void declareBase();
   void declare( const Ast::Member & member );
   bool isMember( const Ast::Member & member );
   bool enterName( const Ast::Member & member );
   std::unique_ptr< Model::Attribute > create( const Ast::Member & member );
   void resolveTypes( const Ast::Member & member, AttributeDraft & added );
   void applyOptions( const Ast::Member & member, Model::Attribute & attribute );
   void applyCollection( const Ast::Member & member, AttributeDraft & added );
   void addArgument( const Ast::Member & member, std::unique_ptr< Model::Attribute > owned );
   void addMask( const Ast::Member & flag, AttributeDraft & flagDraft );
   void addMethod( const Ast::Member & member );
   AttributeDraft & add( const Ast::Member & member, std::unique_ptr< Model::Attribute > owned );
   void lose( const Ast::Member & member );

   const Scopes & scopes_;
   TypeDraft & draft_;
   Model::RecordType & type_;
   const Ast::Type & source_;
   std::unordered_map< std::string, Range > names_;
   std::size_t argumentCount_ = 0;
};

void MemberDeclarer::declare()
{
   declareBase();
   for ( const Ast::Member & member : source_.members ) {
      declare( member );
   }
   const bool hasMembers = !source_.members.empty() || !source_.enums.empty();
   if ( !hasMembers && !draft_.incomplete &&
         type_.kind != Model::TypeDeclarationKind::entity ) {
      scopes_.error( source_.name.range, Message::emptyType,
            { MemberRules::nameOf( type_.kind ), type_.name } );
   }
}

void MemberDeclarer::declareBase()
{
   if ( !source_.base ) {
      return;
   }
   const auto base = scopes_.resolve( type_.fullName, *source_.base, TypeUse::entity );
   const bool foreign = base && base->entity->module != type_.module;
   if ( foreign ) {
      scopes_.error( source_.base->range, Message::baseOfOtherModule,
            { base->fullName, base->entity->module->name } );
   }
   if ( base && !foreign ) {
      static_cast< Model::EntityType & >( type_ ).base = base->entity;
   } else {
      draft_.flawed = true;
      draft_.incomplete = true;
   }
}

/// A member that cannot be used: what refers to its name is not reported.
void MemberDeclarer::lose( const Ast::Member & member )
{
   draft_.incomplete = draft_.incomplete || member.name.empty();
   draft_.flawed = true;
   if ( !member.name.empty() && !draft_.find( member.name.text ) ) {
      auto lost = std::make_unique< AttributeDraft >();
      lost->source = &member;
      lost->flawed = true;
      draft_.byName.emplace( member.name.text, lost.get() );
      draft_.attributes.push_back( std::move( lost ) );
   }
}

void MemberDeclarer::declare( const Ast::Member & member )
{
   if ( member.broken || !isMember( member ) ) {
      lose( member );
      return;
   }
   if ( member.kind == MemberKind::method || member.kind == MemberKind::constructor ) {
      addMethod( member );
      return;
   }
   std::unique_ptr< Model::Attribute > owned = create( member );
   if ( member.kind == MemberKind::argument ) {
      addArgument( member, std::move( owned ) );
      return;
   }
   if ( member.kind == MemberKind::instantiate ) {
      static_cast< Model::EntityType & >( type_ ).instantiates = true;
      if ( !member.options.empty() ) {
         return; // Unnumbered: it is there, but not among the attributes.
      }
      owned->type = typeOf( type_ );
      add( member, std::move( owned ) );
      return;
   }
   AttributeDraft & added = add( member, std::move( owned ) );
   if ( member.kind == MemberKind::function ) {
      added.attribute->function.emplace();
      Model::Function & function = *added.attribute->function;
      added.flawed = !resolveFunction( scopes_, type_.fullName, member, function );
      checkText( scopes_, member, function, true );
      function.isStatic = type_.kind == Model::TypeDeclarationKind::constants;
      if ( function.result ) {
         added.attribute->type = *function.result;
      }
   } else {
      resolveTypes( member, added );
      applyOptions( member, *added.attribute );
      applyCollection( member, added );
   }
   if ( member.mask ) {
      addMask( member, added );
   }
   draft_.flawed = draft_.flawed || added.flawed;
}

bool MemberDeclarer::isMember( const Ast::Member & member )
{
   return checkMember( scopes_, type_.kind, member ) &&
         ( member.name.empty() || enterName( member ) );
}

bool MemberDeclarer::enterName( const Ast::Member & member )
{
   const auto [ first, added ] = names_.emplace( member.name.text, member.name.range );
   if ( !added ) {
      scopes_.error( member.name.range, Message::declaredTwice, { member.name.text } );
      scopes_.note( scopes_.location( first->second ), Message::firstDeclaredHere,
            { member.name.text } );
   }
   return added;
}

std::unique_ptr< Model::Attribute > MemberDeclarer::create( const Ast::Member & member )
{
   auto attribute = std::make_unique< Model::Attribute >();
   attribute->kind = kindOf( member.kind );
   attribute->name = member.name.text;
   attribute->owner = &type_;
   attribute->documentation =
         member.inheritsDocumentation ? type_.documentation : member.documentation.text;
   return attribute;
}

AttributeDraft & MemberDeclarer::add( const Ast::Member & member,
      std::unique_ptr< Model::Attribute > owned )
{
   auto draft = std::make_unique< AttributeDraft >();
   draft->attribute = owned.get();
   draft->source = &member;
   draft_.byName.emplace( owned->name, draft.get() );
   type_.attributes.push_back( std::move( owned ) );
   draft_.attributes.push_back( std::move( draft ) );
   return *draft_.attributes.back();
}

void MemberDeclarer::resolveTypes( const Ast::Member & member, AttributeDraft & added )
{
   Model::Attribute & attribute = *added.attribute;
   if ( member.kind == MemberKind::flag ) {
      attribute.type = *builtInType( "bool" );
      attribute.flag.emplace();
      attribute.flag->bit = static_cast< unsigned >( std::min< std::uint64_t >( member.bit, 64 ) );
      return;
   }
   const TypeUse use = member.isReference ? TypeUse::entity : useOf( member.kind );
   const auto type = scopes_.resolve( type_.fullName, member.type, use );
   added.flawed = !type;
   if ( type ) {
      attribute.type = *type;
   }
}

void MemberDeclarer::applyOptions( const Ast::Member & member, Model::Attribute & attribute )
{
   for ( const Ast::Option & option : member.options ) {
      attribute.counter = attribute.counter || option.kind == Ast::OptionKind::counter;
      attribute.validated = attribute.validated || option.kind == Ast::OptionKind::validated;
      attribute.settable = attribute.settable || option.kind == Ast::OptionKind::settable;
      if ( option.kind == Ast::OptionKind::from ) {
         attribute.builtFrom = scopes_.resolve( type_.fullName, option.type, TypeUse::value );
      }
   }
}

void MemberDeclarer::applyCollection( const Ast::Member & member, AttributeDraft & added )
{
   const bool collection = member.kind == MemberKind::map || member.kind == MemberKind::set ||
         useOf( member.kind ) == TypeUse::entity;
   if ( !collection ) {
      return;
   }
   Model::Collection & made = added.attribute->collection.emplace();
   made.ordered = member.ordered;
   made.origin = member.by ? Model::KeyOrigin::member : Model::KeyOrigin::external;
   if ( member.kind == MemberKind::set ) {
      made.origin = Model::KeyOrigin::element;
      made.key = added.attribute->type;
   }
   if ( member.key ) {
      const auto key = scopes_.resolve( type_.fullName, *member.key, TypeUse::value );
      added.flawed = added.flawed || !key;
      made.key = key.value_or( Model::Type() );
   }
   for ( const Ast::Option & option : member.options ) {
      made.constructed = made.constructed || option.kind == Ast::OptionKind::constructed;
      if ( option.kind == Ast::OptionKind::get ) {
         using Lookup = Model::SecondLookup;
         made.secondLookup = option.optionalLookup ? Lookup::optional : Lookup::same;
      }
   }
}

void MemberDeclarer::addArgument( const Ast::Member & member,
      std::unique_ptr< Model::Attribute > owned )
{
   auto * entity = type_.kind == Model::TypeDeclarationKind::entity
         ? static_cast< Model::EntityType * >( &type_ )
         : nullptr;
   owned->isIdentity = member.isIdentity || member.isBareName;
   owned->isReference = member.isReference;
   if ( ++argumentCount_ == argumentLimit + 1 ) {
      scopes_.error( member.range, Message::tooManyArguments,
            { type_.name, std::to_string( argumentLimit ) } );
   }
   if ( entity ) {
      entity->ownConstructorArguments.push_back( owned.get() );
   }
   if ( member.isBareName ) {
      owned->type = *builtInType( "string" );
      owned->documentation = "The name, fixed for life.";
      auto draft = std::make_unique< AttributeDraft >();
      draft->attribute = owned.get();
      draft->source = &member;
      draft_.byName.emplace( owned->name, draft.get() );
      draft_.attributes.push_back( std::move( draft ) );
      entity->nameArgument = std::move( owned );
      return;
   }
   AttributeDraft & added = add( member, std::move( owned ) );
   resolveTypes( member, added );
   applyOptions( member, *added.attribute );
   draft_.flawed = draft_.flawed || added.flawed;
}

/// The constant that `mask` declares: a bit of the word, where the flag stands.
void MemberDeclarer::addMask( const Ast::Member & flag, AttributeDraft & flagDraft )
{
   Ast::Member member;
   member.name = *flag.mask;
   checkMemberName( scopes_, type_.kind, member );
   if ( !enterName( member ) ) {
      draft_.flawed = true;
      return;
   }
   auto owned = std::make_unique< Model::Attribute >();
   owned->kind = AttributeKind::constant;
   owned->name = flag.mask->text;
   owned->owner = &type_;
   owned->documentation = "The mask of " + flag.name.text + ".";
   AttributeDraft & mask = add( flag, std::move( owned ) );
   flagDraft.attribute->flag->mask = mask.attribute;
}

void MemberDeclarer::addMethod( const Ast::Member & member )
{
   auto & value = static_cast< Model::ValueType & >( type_ );
   auto method = std::make_unique< Model::Function >();
   const bool good = resolveFunction( scopes_, type_.fullName, member, *method );
   checkText( scopes_, member, *method, false );
   draft_.flawed = draft_.flawed || !good;
   if ( member.kind == MemberKind::method ) {
      value.methods.push_back( std::move( method ) );
   } else {
      value.constructors.push_back( { method->documentation, method->parameters } );
   }
}

} // namespace

void Stages::declareMembers( const Scopes & scopes )
{
   for ( const auto & draft : scopes.module().types ) {
      if ( draft->type->kind != Model::TypeDeclarationKind::enumeration ) {
         MemberDeclarer( scopes, *draft ).declare();
      }
   }
}

} // namespace VokGen
