// A stage of the checker: two things in one namespace must not be generated under one name.
#include "vokgen/Check.h"
#include "vokgen/NameTable.h"
#include "vokgen/Names.h"

#include <functional>
#include <set>

namespace VokGen {
namespace {

/// The names that a module makes in its namespaces.
class ModuleNames {
 public:
   explicit ModuleNames( const Scopes & scopes ) : scopes_( scopes ) {}

   void check();

 private:
   using Enter = std::function< bool( const std::string &, const std::string &, Location ) >;

   void reserveUsed();
   void enter( const TypeDraft & draft, const Enter & enter );
   void enter( const Ast::Module & source, const Enter & enter );
   void checkNamespaces();
   void checkFunctions();
   void collectOutermost( const Ast::Module & source );
   void checkHiding();
   void checkHiding( const std::string & name, const std::string & what, Range range );

   const Scopes & scopes_;
   NameTable table_;
   /// Namespaces of this module and of all that come with it that stand in no other: generated code
   /// starts full names with them.
   std::set< std::string > outermost_;
   std::set< std::string > usedNamespaces_; ///< Of other modules, full names.
};

void ModuleNames::check()
{
   reserveUsed();
   const Enter add = [ this ]( const std::string & name, const std::string & what,
                           Location where ) {
      return table_.add( scopes_, name, what, where );
   };
   for ( const auto & draft : scopes_.module().types ) {
      enter( *draft, add );
   }
   enter( *scopes_.module().source, add );
   checkNamespaces();
   checkFunctions();
   checkHiding();
}

/// All modules that come with this one, those used by used ones included.
void ModuleNames::reserveUsed()
{
   const Enter reserve = [ this ]( const std::string & name, const std::string & what,
                               Location where ) {
      table_.reserve( name, what, where );
      return true;
   };
   std::set< const ModuleDraft * > seen;
   std::vector< const ModuleDraft * > pending( scopes_.module().uses.begin(),
         scopes_.module().uses.end() );
   while ( !pending.empty() ) {
      const ModuleDraft * module = pending.back();
      pending.pop_back();
      if ( !seen.insert( module ).second ) {
         continue;
      }
      for ( const auto & draft : module->types ) {
         enter( *draft, reserve );
      }
      enter( *module->source, reserve );
      collectOutermost( *module->source );
      for ( const Ast::Name & name : module->source->namespaces ) {
         usedNamespaces_.insert( name.text );
      }
      pending.insert( pending.end(), module->uses.begin(), module->uses.end() );
   }
}

void ModuleNames::enter( const TypeDraft & draft, const Enter & enter )
{
   const Model::TypeDeclaration & type = *draft.type;
   const auto symbol = scopes_.workspace().symbols.find( type.fullName );
   const bool known = symbol != scopes_.workspace().symbols.end() && symbol->second.type == &draft;
   const Model::EnumType * enumeration = Model::asEnum( &type );
   if ( !known || ( enumeration && enumeration->holder ) ) {
      return;
   }
   const Location where = { draft.file, draft.source->name.range };
   const std::string scope = type.nameSpace + "::";
   enter( type.fullName, "the type " + type.fullName, where );
   const Model::EntityType * entity = Model::asEntity( &type );
   if ( entity && entity->hasFactory ) {
      enter( scope + Names::factory( type.name ), "the factory of " + type.fullName, where );
   }
   if ( !enumeration ) {
      return;
   }
   enter( scope + Names::instance( type.name ), "the lookup of " + type.fullName, where );
   std::set< std::string > own;
   for ( const Ast::Enumerator & enumerator : draft.source->enumerators ) {
      if ( own.insert( enumerator.name.text ).second ) {
         enter( scope + enumerator.name.text, "an enumerator of " + type.fullName,
               { draft.file, enumerator.name.range } );
      }
   }
}

void ModuleNames::enter( const Ast::Module & source, const Enter & enter )
{
   for ( const Ast::FreeFunction & function : source.functions ) {
      enter( function.nameSpace + "::" + function.function.name.text,
            "the function " + function.function.name.text,
            { source.file, function.function.name.range } );
   }
}

void ModuleNames::checkNamespaces()
{
   for ( const Ast::Name & name : scopes_.module().source->namespaces ) {
      if ( const NameTable::Entry * taken = table_.find( name.text ) ) {
         scopes_.error( name.range, Message::nameTaken,
               { "the namespace " + name.text, name.text, taken->what } );
      }
   }
   for ( const auto & draft : scopes_.module().types ) {
      const std::string & name = draft->type->fullName;
      if ( usedNamespaces_.count( name ) != 0 ) {
         scopes_.error( draft->source->name.range, Message::nameTaken,
               { "the type " + name, name, "a namespace of another module" } );
      }
   }
}

void ModuleNames::checkFunctions()
{
   for ( const Ast::FreeFunction & function : scopes_.module().source->functions ) {
      const Ast::Name & name = function.function.name;
      for ( const std::string_view taken : Names::freeFunctions() ) {
         if ( name.text == taken ) {
            scopes_.error( name.range, Message::nameTaken,
                  { "the function " + name.text, name.text,
                        "a function of every enumeration or value" } );
         }
      }
   }
}

// ---- Namespaces that are looked into ----------------------------------------------------------

void ModuleNames::collectOutermost( const Ast::Module & source )
{
   for ( const Ast::Name & name : source.namespaces ) {
      outermost_.insert( name.text.substr( 0, name.text.find( "::" ) ) );
   }
}

/// A full name means nothing where something nearer has the name of its first namespace.
void ModuleNames::checkHiding()
{
   collectOutermost( *scopes_.module().source );
   for ( const auto & draft : scopes_.module().types ) {
      checkHiding( draft->type->name, "the type " + draft->type->fullName,
            draft->source->name.range );
   }
   std::set< std::string > seen;
   for ( const Ast::Name & name : scopes_.module().source->namespaces ) {
      for ( std::size_t at = name.text.find( "::" ); at != std::string::npos; ) {
         const std::size_t next = name.text.find( "::", at + 2 );
         const std::string upTo = name.text.substr( 0, next );
         const std::string last = upTo.substr( at + 2 );
         if ( seen.insert( upTo ).second && !Names::isFrameworkNamespace( last ) ) {
            checkHiding( last, "the namespace " + upTo, name.range );
         }
         at = next;
      }
   }
}

void ModuleNames::checkHiding( const std::string & name, const std::string & what, Range range )
{
   if ( Names::isFrameworkNamespace( name ) || outermost_.count( name ) != 0 ) {
      scopes_.error( range, Message::hidesNamespace, { what, name } );
   }
}

} // namespace

void Stages::checkNames( const Scopes & scopes )
{
   ModuleNames( scopes ).check();
   checkTypeNames( scopes );
}

} // namespace VokGen
