// A stage of the checker: two things must not be generated under one name.
#include "vokgen/Check.h"
#include "vokgen/Names.h"

#include <set>

namespace VokGen {
namespace {

using Model::AttributeKind;

/// Generated names of one scope, with what they stand for.
class NameTable {
 public:
   struct Entry {
      std::string what;
      Location where; ///< Nowhere for what the framework declares.
   };

   /// Enters a name that nothing here may clash with, of the framework or of another module.
   void reserve( const std::string & name, std::string what, Location where = {} )
   {
      entries_.emplace( name, Entry{ std::move( what ), where } );
   }

   /// Names in `base` are taken here too. It must outlive this table.
   void addBase( const NameTable & base ) { bases_.push_back( &base ); }

   /// Enters a name of this module; false, and reported, where it is taken.
   bool add( const Scopes & scopes, const std::string & name, const std::string & what,
         Location where )
   {
      const Entry * taken = find( name );
      if ( !taken ) {
         entries_.emplace( name, Entry{ what, where } );
         return true;
      }
      scopes.workspace().diagnostics.error( where, Message::nameTaken,
            { what, name, taken->what } );
      if ( taken->where.file ) {
         scopes.note( taken->where, Message::takenHere, { taken->what } );
      }
      return false;
   }

   const Entry * find( const std::string & name ) const
   {
      const auto own = entries_.find( name );
      if ( own != entries_.end() ) {
         return &own->second;
      }
      for ( const NameTable * base : bases_ ) {
         const auto inherited = base->entries_.find( name );
         if ( inherited != base->entries_.end() ) {
            return &inherited->second;
         }
      }
      return nullptr;
   }

 private:
   std::unordered_map< std::string, Entry > entries_;
   std::vector< const NameTable * > bases_;
};

struct Generated {
   std::string name;
   const char * what; ///< "the accessor of "
};

/// The names that an attribute makes in its type.
std::vector< Generated > namesOf( const Model::Attribute & attribute )
{
   const std::string & x = attribute.name;
   if ( attribute.kind == AttributeKind::function || attribute.kind == AttributeKind::constant ) {
      return { { x, "" } };
   }
   std::vector< Generated > names = { { x, "the accessor of " } };
   if ( attribute.hasMutator() || attribute.isCollection() ) {
      names.push_back( { Names::mutator( x ), "the mutator of " } );
   }
   if ( attribute.counter ) {
      names.push_back( { Names::incrementer( x ), "the increment of " } );
   }
   if ( attribute.isCollection() ) {
      const Model::Collection & collection = *attribute.collection;
      names.push_back( { Names::remover( x ), "the deletion of a member of " } );
      if ( attribute.kind != AttributeKind::child ) {
         names.push_back( { Names::clearer( x ), "the deletion of all of " } );
         names.push_back( { collection.ordered ? Names::orderedNode( x ) : Names::hashNode( x ),
               "the node type of " } );
      }
      if ( collection.origin == Model::KeyOrigin::member ) {
         names.push_back( { Names::keyFunctor( x ), "the key functor of " } );
      }
      if ( collection.secondLookup != Model::SecondLookup::none ) {
         names.push_back( { Names::secondLookup( x ), "the second lookup of " } );
      }
   }
   return names;
}

/// The names that attributes of entities make, for types that derive from them: collected once.
class InheritedNames {
 public:
   const NameTable & of( const TypeDraft & base );

 private:
   std::unordered_map< const TypeDraft *, std::unique_ptr< NameTable > > tables_;
};

const NameTable & InheritedNames::of( const TypeDraft & base )
{
   std::unique_ptr< NameTable > & table = tables_[ &base ];
   if ( table ) {
      return *table;
   }
   table = std::make_unique< NameTable >();
   for ( const auto & attribute : base.attributes ) {
      if ( !attribute->attribute || attribute->source->isBareName ) {
         continue;
      }
      for ( const Generated & generated : namesOf( *attribute->attribute ) ) {
         table->reserve( generated.name, generated.what + attribute->attribute->fullName(),
               { base.file, attribute->source->name.range } );
      }
   }
   return *table;
}

class TypeNames {
 public:
   TypeNames( const Scopes & scopes, const TypeDraft & draft, InheritedNames & inherited )
         : scopes_( scopes ),
           draft_( draft ),
           inherited_( inherited )
   {
   }

   void check();

 private:
   void reserveFramework();
   void addBases();
   void addNested( const Model::RecordType & type );
   void addAttribute( const AttributeDraft & draft );
   void addMethods( const Model::ValueType & type );
   bool add( const std::string & name, const std::string & what, Location where )
   {
      return table_.add( scopes_, name, what, where );
   }

   const Scopes & scopes_;
   const TypeDraft & draft_;
   InheritedNames & inherited_;
   NameTable table_;
};

void TypeNames::check()
{
   const Model::RecordType & type = *Model::asRecord( draft_.type );
   reserveFramework();
   addBases();
   addNested( type );
   for ( const auto & attribute : draft_.attributes ) {
      const bool named = attribute->attribute && !attribute->source->isBareName;
      if ( named ) {
         addAttribute( *attribute );
      }
   }
   if ( const Model::ValueType * value = Model::asValue( &type ) ) {
      addMethods( *value );
   }
}

void TypeNames::reserveFramework()
{
   const Model::TypeDeclaration & type = *draft_.type;
   table_.reserve( type.name, "the type itself" );
   if ( const Model::EntityType * entity = Model::asEntity( &type ) ) {
      for ( const std::string_view name : Names::entityMembers() ) {
         table_.reserve( std::string( name ), "a member of every entity" );
      }
      table_.reserve( Names::creator( type.name ), "the function that makes a " + type.name );
      if ( entity->instantiates ) {
         table_.reserve( "instantiate", "the function that 'instantiate' declares" );
      }
   }
   if ( const Model::ValueType * value = Model::asValue( &type ) ) {
      table_.reserve( "isEq", "a member of every value" );
      if ( value->hasValidate() ) {
         table_.reserve( "validate", "the function that 'validated' declares" );
      }
   }
}

void TypeNames::addBases()
{
   const Model::EntityType * at = Model::asEntity( draft_.type );
   for ( at = at ? at->base : nullptr; at; at = at->base ) {
      if ( const TypeDraft * base = scopes_.workspace().draftOf( at ) ) {
         table_.addBase( inherited_.of( *base ) );
      }
   }
}

void TypeNames::addNested( const Model::RecordType & type )
{
   for ( std::size_t i = 0; i < type.enums.size(); ++i ) {
      const Model::EnumType & nested = *type.enums[ i ];
      const Ast::Type & source = draft_.source->enums[ i ];
      const Location where = scopes_.location( source.name.range );
      add( nested.name, "the enumeration " + nested.name, where );
      add( Names::instance( nested.name ), "the lookup of " + nested.name, where );
      std::set< std::string > own; // One declared twice has been reported.
      for ( const Ast::Enumerator & enumerator : source.enumerators ) {
         if ( own.insert( enumerator.name.text ).second ) {
            add( enumerator.name.text, "an enumerator of " + nested.name,
                  scopes_.location( enumerator.name.range ) );
         }
      }
   }
}

void TypeNames::addAttribute( const AttributeDraft & draft )
{
   const bool mask = draft.source->kind == Ast::MemberKind::flag &&
         draft.attribute->kind == AttributeKind::constant;
   const Location where =
         scopes_.location( mask ? draft.source->mask->range : draft.source->name.range );
   if ( draft.attribute->kind == AttributeKind::instantiate ) {
      return;
   }
   for ( const Generated & generated : namesOf( *draft.attribute ) ) {
      if ( !add( generated.name, generated.what + draft.attribute->name, where ) ) {
         return;
      }
   }
   if ( draft.attribute->owner->kind == Model::TypeDeclarationKind::entity ) {
      add( Names::attributeId( draft.attribute->name ), "the id of " + draft.attribute->name,
            where );
   }
}

void TypeNames::addMethods( const Model::ValueType & type )
{
   std::size_t next = 0;
   for ( const Ast::Member & member : draft_.source->members ) {
      const bool method = member.kind == Ast::MemberKind::method && !member.broken &&
            next < type.methods.size() && type.methods[ next ]->name == member.name.text;
      if ( method ) {
         ++next;
         add( member.name.text, "the method " + member.name.text,
               scopes_.location( member.name.range ) );
      }
   }
}

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

   const Scopes & scopes_;
   NameTable table_;
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
}

} // namespace

void Stages::checkNames( const Scopes & scopes )
{
   ModuleNames( scopes ).check();
   InheritedNames inherited;
   for ( const auto & draft : scopes.module().types ) {
      if ( Model::asRecord( draft->type ) ) {
         TypeNames( scopes, *draft, inherited ).check();
      }
   }
}

} // namespace VokGen
