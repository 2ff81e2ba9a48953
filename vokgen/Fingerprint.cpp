#include "vokgen/Fingerprint.h"

#include <bit>

namespace VokGen {
namespace {

/// Feeds a model to the hash. Every declaration starts with a tag of its own, so that what follows
/// it cannot be taken for something else.
class Hasher {
 public:
   void module( const Model::Module & module );
   std::uint64_t result() const;

 private:
   void number( std::uint64_t value );
   void text( std::string_view value );
   void tag( std::string_view name ) { text( name ); }
   void types( const Model::Module & module );
   void enumeration( const Model::EnumType & type );
   void record( const Model::RecordType & type );
   void value( const Model::ValueType & type );
   void entity( const Model::EntityType & type );
   void attribute( const Model::Attribute & attribute );
   void collection( const Model::Collection & collection );
   void expression( const Model::Expression & expression );
   void bounds( const Model::Bounds & bounds );
   void function( const Model::Function & function );
   void parameters( const std::vector< Model::Parameter > & parameters );

   std::uint64_t hash_ = 14695981039346656037U;
};

void Hasher::number( std::uint64_t value )
{
   for ( unsigned i = 0; i < 8; ++i ) {
      hash_ = ( hash_ ^ ( value & 0xFFU ) ) * 1099511628211U;
      value >>= 8U;
   }
}

void Hasher::text( std::string_view value )
{
   number( value.size() );
   for ( const char c : value ) {
      hash_ = ( hash_ ^ static_cast< unsigned char >( c ) ) * 1099511628211U;
   }
}

std::uint64_t Hasher::result() const
{
   std::uint64_t x = hash_;
   x ^= x >> 32U;
   x *= 0xd6e8feb86659fd93U;
   x ^= x >> 32U;
   return x;
}

void Hasher::module( const Model::Module & module )
{
   tag( "module" );
   text( module.name );
   number( module.uses.size() );
   for ( const auto & used : module.uses ) {
      text( used->name );
   }
   number( module.externals.size() );
   for ( const auto & external : module.externals ) {
      tag( "extern" );
      text( external->fullName );
      text( external->header );
   }
   types( module );
   number( module.functions.size() );
   for ( const auto & free : module.functions ) {
      tag( "function" );
      text( free->nameSpace );
      function( *free );
   }
}

void Hasher::types( const Model::Module & module )
{
   number( module.types.size() );
   for ( const auto & type : module.types ) {
      text( type->fullName );
      number( static_cast< std::uint64_t >( type->kind ) );
      if ( const Model::EnumType * isEnum = Model::asEnum( type.get() ) ) {
         enumeration( *isEnum );
         continue;
      }
      if ( const Model::ValueType * isValue = Model::asValue( type.get() ) ) {
         value( *isValue );
      }
      if ( const Model::EntityType * isEntity = Model::asEntity( type.get() ) ) {
         entity( *isEntity );
      }
      record( *Model::asRecord( type.get() ) );
   }
}

void Hasher::enumeration( const Model::EnumType & type )
{
   number( type.bits );
   number( type.enumerators.size() );
   for ( const auto & enumerator : type.enumerators ) {
      text( enumerator->name );
      number( enumerator->code );
   }
}

void Hasher::record( const Model::RecordType & type )
{
   number( type.enums.size() );
   for ( const auto & nested : type.enums ) {
      tag( "enum" );
      text( nested->name );
      enumeration( *nested );
   }
   number( type.attributes.size() );
   for ( const auto & own : type.attributes ) {
      attribute( *own );
   }
   number( type.methods.size() );
   for ( const auto & method : type.methods ) {
      tag( "method" );
      function( *method );
   }
}

void Hasher::value( const Model::ValueType & type )
{
   for ( const bool modifier : { type.ordered, type.fixed, type.truth, type.hashable, type.textable,
               type.textByHand, type.logByHand, type.constructorsByHand } ) {
      number( modifier ? 1 : 0 );
   }
   if ( type.handDefault ) {
      tag( "default" );
      text( *type.handDefault );
   }
   number( type.constructors.size() );
   for ( const Model::ByHandConstructor & constructor : type.constructors ) {
      parameters( constructor.parameters );
   }
}

void Hasher::entity( const Model::EntityType & type )
{
   text( type.base ? type.base->fullName : std::string() );
   number( type.hasFactory ? 1 : 0 );
   number( type.instantiates ? 1 : 0 );
   number( type.ownConstructorArguments.size() );
   for ( const Model::Attribute * argument : type.ownConstructorArguments ) {
      text( argument->name );
   }
   number( type.checks.size() );
   for ( const Model::Attribute * checked : type.checks ) {
      text( checked->fullName() );
   }
}

void Hasher::attribute( const Model::Attribute & attribute )
{
   tag( "attribute" );
   number( static_cast< std::uint64_t >( attribute.kind ) );
   number( attribute.id );
   text( attribute.name );
   text( attribute.type.fullName );
   number( attribute.defaultStated ? 1 : 0 );
   expression( attribute.value );
   for ( const bool flag : { attribute.counter, attribute.validated, attribute.settable,
               attribute.isIdentity, attribute.isReference } ) {
      number( flag ? 1 : 0 );
   }
   text( attribute.builtFrom ? attribute.builtFrom->fullName : std::string() );
   number( attribute.emptyWord ? 1 : 0 );
   number( attribute.emptyWord.value_or( 0 ) );
   number( attribute.bounds ? 1 : 0 );
   if ( attribute.bounds ) {
      bounds( *attribute.bounds );
   }
   number( attribute.textLimit ? 1 : 0 );
   if ( attribute.textLimit ) {
      expression( attribute.textLimit->most );
      text( attribute.textLimit->message );
   }
   number( attribute.flag ? 1 : 0 );
   if ( attribute.flag ) {
      text( attribute.flag->word->name );
      number( attribute.flag->bit );
      text( attribute.flag->mask ? attribute.flag->mask->name : std::string() );
   }
   number( attribute.collection ? 1 : 0 );
   if ( attribute.collection ) {
      collection( *attribute.collection );
   }
   number( attribute.function ? 1 : 0 );
   if ( attribute.function ) {
      function( *attribute.function );
   }
}

void Hasher::collection( const Model::Collection & collection )
{
   number( collection.ordered ? 1 : 0 );
   number( static_cast< std::uint64_t >( collection.origin ) );
   text( collection.key.fullName );
   text( collection.keyAttribute ? collection.keyAttribute->name : std::string() );
   number( static_cast< std::uint64_t >( collection.secondLookup ) );
   number( collection.constructed ? 1 : 0 );
}

void Hasher::expression( const Model::Expression & expression )
{
   const Model::Constant & constant = expression.value;
   text( expression.text );
   number( static_cast< std::uint64_t >( constant.kind ) );
   number( constant.boolean ? 1 : 0 );
   number( constant.integer );
   number( std::bit_cast< std::uint64_t >( constant.real ) );
   text( constant.text );
   text( constant.enumerator ? constant.enumerator->fullName() : std::string() );
   number( constant.enumerator ? constant.enumerator->code : 0 );
}

void Hasher::bounds( const Model::Bounds & bounds )
{
   number( static_cast< std::uint64_t >( bounds.time ) );
   expression( bounds.lower );
   expression( bounds.upper );
   text( bounds.message );
   number( bounds.except ? 1 : 0 );
   number( bounds.except.value_or( 0 ) );
}

void Hasher::function( const Model::Function & function )
{
   text( function.name );
   number( function.isStatic ? 1 : 0 );
   number( function.mutating ? 1 : 0 );
   text( function.result ? function.result->fullName : std::string() );
   parameters( function.parameters );
   if ( function.text ) {
      text( *function.text );
   }
}

void Hasher::parameters( const std::vector< Model::Parameter > & parameters )
{
   number( parameters.size() );
   for ( const Model::Parameter & parameter : parameters ) {
      text( parameter.name );
      text( parameter.type.fullName );
   }
}

} // namespace

std::uint64_t fingerprint( const Model::Module & module )
{
   Hasher hasher;
   hasher.module( module );
   return hasher.result();
}

} // namespace VokGen
