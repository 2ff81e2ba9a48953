// A stage of the checker: two members of one type must not be generated under one name.
#include "vokgen/Check.h"
#include "vokgen/NameTable.h"
#include "vokgen/Names.h"

#include <set>

namespace VokGen {
namespace {

using Model::AttributeKind;

struct Generated {
   std::string name;
   const char * what; ///< "the accessor of "
};

/// The names that an attribute makes in its type, but for those of a form that no declared name
/// has: its id, the nodes and the key functor of a collection.
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
   const bool checkedByFunction = attribute.textLimit ||
         ( attribute.bounds &&
               ( attribute.bounds->time == Model::CheckTime::always ||
                     attribute.bounds->time == Model::CheckTime::onSet ) );
   if ( checkedByFunction ) {
      names.push_back( { Names::boundsCheck( x ), "the check of " } );
   }
   if ( attribute.isCollection() ) {
      names.push_back( { Names::remover( x ), "the deletion of a member of " } );
      if ( attribute.kind != AttributeKind::child ) {
         names.push_back( { Names::clearer( x ), "the deletion of all of " } );
      }
      if ( attribute.collection->secondLookup != Model::SecondLookup::none ) {
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
      for ( const Model::EntityType * at = entity; at; at = at->base ) {
         if ( at->instantiates ) {
            table_.reserve( "instantiate", "the function that 'instantiate' declares" );
         }
      }
   }
   if ( const Model::ValueType * value = Model::asValue( &type ) ) {
      for ( const std::string_view name : Names::valueMembers() ) {
         table_.reserve( std::string( name ), "a function of every value" );
      }
      if ( value->logByHand ) {
         for ( const std::string_view name : Names::handLogMembers() ) {
            table_.reserve( std::string( name ), "a function that 'by hand log' declares" );
         }
      }
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

} // namespace

void Stages::checkTypeNames( const Scopes & scopes )
{
   InheritedNames inherited;
   for ( const auto & draft : scopes.module().types ) {
      if ( Model::asRecord( draft->type ) ) {
         TypeNames( scopes, *draft, inherited ).check();
      }
   }
}

} // namespace VokGen
