#include "vokgen/Model.h"

#include "vokgen/Names.h"

#include <algorithm>
#include <limits>

namespace VokGen::Model {

bool Type::scalar() const
{
   return kind == TypeKind::boolean || kind == TypeKind::number || kind == TypeKind::real ||
         kind == TypeKind::enumeration;
}

bool Type::hashable() const { return kind != TypeKind::value || value->hashable; }
bool Type::ordered() const { return kind != TypeKind::value || value->ordered; }
bool Type::textable() const { return kind != TypeKind::value || value->textable; }

const Type * Type::innermost() const
{
   const Type * type = this;
   while ( type && type->kind == TypeKind::value ) {
      const Attribute * field = type->value->onlyField();
      type = field ? &field->type : nullptr;
   }
   return type;
}

std::uint64_t Type::largest() const
{
   if ( kind != TypeKind::number && kind != TypeKind::enumeration ) {
      return 0;
   }
   return std::numeric_limits< std::uint64_t >::max() >> ( 64U - bits );
}

const Attribute * Expression::namedConstant() const
{
   const bool name = terms.size() == 1 && terms.front().constant && text.front() != '(';
   return name ? terms.front().constant : nullptr;
}

std::string Attribute::fullName() const { return owner->fullName + "::" + name; }

std::string Attribute::reflectedName() const
{
   const bool plainName = isIdentity && name == "name";
   return plainName ? "nameString" : name;
}

bool Attribute::hasMutator() const
{
   const ValueType * holder = asValue( owner );
   switch ( kind ) {
   case AttributeKind::plain:
   case AttributeKind::flag:
      return !holder || !holder->fixed;
   case AttributeKind::optional:
      return true;
   case AttributeKind::constructorArgument:
      return settable;
   default:
      return false;
   }
}

std::string Enumerator::fullName() const { return type->fullName + "::" + name; }

const Enumerator * EnumType::find( std::string_view enumerator ) const
{
   for ( const auto & candidate : enumerators ) {
      if ( candidate->name == enumerator ) {
         return candidate.get();
      }
   }
   return nullptr;
}

const Enumerator * EnumType::withCode( std::uint64_t code ) const
{
   for ( const auto & candidate : enumerators ) {
      if ( candidate->code == code ) {
         return candidate.get();
      }
   }
   return nullptr;
}

const Attribute * RecordType::find( std::string_view attribute ) const
{
   for ( const auto & candidate : attributes ) {
      if ( candidate->name == attribute ) {
         return candidate.get();
      }
   }
   return nullptr;
}

std::vector< const Attribute * > RecordType::ofKind( AttributeKind wanted ) const
{
   std::vector< const Attribute * > result;
   for ( const auto & attribute : attributes ) {
      if ( attribute->kind == wanted ) {
         result.push_back( attribute.get() );
      }
   }
   return result;
}

std::vector< const Attribute * > ValueType::constructorArguments() const
{
   return ofKind( AttributeKind::constructorArgument );
}

std::vector< const Attribute * > ValueType::fields() const
{
   std::vector< const Attribute * > result = constructorArguments();
   const std::vector< const Attribute * > plain = ofKind( AttributeKind::plain );
   result.insert( result.end(), plain.begin(), plain.end() );
   return result;
}

std::vector< const Attribute * > ValueType::collections() const
{
   std::vector< const Attribute * > result;
   for ( const auto & attribute : attributes ) {
      if ( attribute->isCollection() ) {
         result.push_back( attribute.get() );
      }
   }
   return result;
}

const Attribute * ValueType::onlyField() const
{
   const Attribute * only = nullptr;
   for ( const auto & attribute : attributes ) {
      if ( attribute->isCollection() || attribute->kind == AttributeKind::constructorArgument ) {
         return nullptr;
      }
      if ( attribute->kind == AttributeKind::plain ) {
         if ( only ) {
            return nullptr;
         }
         only = attribute.get();
      }
   }
   return only;
}

bool ValueType::hasValidate() const
{
   return std::any_of( attributes.begin(), attributes.end(), []( const auto & attribute ) {
      return attribute->bounds && attribute->bounds->time == CheckTime::validated;
   } );
}

const std::vector< const Attribute * > & EntityType::constructorArguments() const
{
   const EntityType * type = this;
   while ( type->base ) {
      type = type->base;
   }
   return type->ownConstructorArguments;
}

const Attribute * EntityType::identityArgument() const
{
   for ( const Attribute * argument : constructorArguments() ) {
      if ( argument->isIdentity ) {
         return argument;
      }
   }
   return nullptr;
}

Identity EntityType::identity() const
{
   const Attribute * argument = identityArgument();
   if ( !argument ) {
      return Identity::none;
   }
   return argument->name == "name" ? Identity::name : Identity::argument;
}

const Attribute * EntityType::findWithBase( std::string_view attribute ) const
{
   for ( const EntityType * type = this; type; type = type->base ) {
      if ( type->nameArgument && attribute == "name" ) {
         return type->nameArgument.get();
      }
      if ( const Attribute * own = type->find( attribute ) ) {
         return own;
      }
   }
   return nullptr;
}

std::vector< const Attribute * > EntityType::allAttributes() const
{
   std::vector< const EntityType * > line;
   for ( const EntityType * type = this; type; type = type->base ) {
      line.push_back( type );
   }
   std::vector< const Attribute * > result;
   for ( auto type = line.rbegin(); type != line.rend(); ++type ) {
      for ( const auto & attribute : ( *type )->attributes ) {
         result.push_back( attribute.get() );
      }
   }
   return result;
}

std::vector< const TypeDeclaration * > Module::allTypes() const
{
   std::vector< const TypeDeclaration * > result;
   for ( const auto & type : types ) {
      result.push_back( type.get() );
      if ( const RecordType * record = asRecord( type.get() ) ) {
         for ( const auto & nested : record->enums ) {
            result.push_back( nested.get() );
         }
      }
   }
   return result;
}

std::string Module::fingerprintText() const { return Names::hexadecimal( fingerprint ); }

namespace {

template< class T >
const T * as( const TypeDeclaration * declaration, TypeDeclarationKind kind )
{
   const bool matches = declaration && declaration->kind == kind;
   return matches ? static_cast< const T * >( declaration ) : nullptr;
}

} // namespace

const EnumType * asEnum( const TypeDeclaration * declaration )
{
   return as< EnumType >( declaration, TypeDeclarationKind::enumeration );
}

const ConstantsType * asConstants( const TypeDeclaration * declaration )
{
   return as< ConstantsType >( declaration, TypeDeclarationKind::constants );
}

const ValueType * asValue( const TypeDeclaration * declaration )
{
   return as< ValueType >( declaration, TypeDeclarationKind::value );
}

const EntityType * asEntity( const TypeDeclaration * declaration )
{
   return as< EntityType >( declaration, TypeDeclarationKind::entity );
}

const RecordType * asRecord( const TypeDeclaration * declaration )
{
   const bool isEnum = !declaration || declaration->kind == TypeDeclarationKind::enumeration;
   return isEnum ? nullptr : static_cast< const RecordType * >( declaration );
}

} // namespace VokGen::Model
