// Where reflection does not say whether bounds are held, a number beyond them is tried.
#include "tools/flowtrack/json/Shape.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <map>
#include <stdexcept>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;
using Vok::TypeKind;

namespace {

using Try = std::function< void( const std::string & text ) >;

bool refuses( const Try & take, std::uint64_t number )
{
   try {
      take( std::to_string( number ) );
      return false;
   } catch ( const Corvo::RangeException & ) {
      return true;
   }
}

/// Takes over those of an attribute's bounds that are held.
void narrow( Shape & shape, const AttributeData & attribute, const Try & take )
{
   if ( attribute.lowerText().empty() ) {
      return;
   }
   const std::uint64_t lower = std::stoull( std::string( attribute.lowerText() ) );
   const std::uint64_t upper = std::stoull( std::string( attribute.upperText() ) );
   if ( lower > shape.least && refuses( take, lower - 1 ) ) {
      shape.least = lower;
   }
   if ( upper < shape.most && refuses( take, upper + 1 ) ) {
      shape.most = upper;
   }
}

Shape builtIn( std::string_view name )
{
   static const std::map< std::string_view, Shape > shapes = {
      { "bool", { .form = Form::truth } },
      { "u8", { .form = Form::number, .most = 0xFF } },
      { "u16", { .form = Form::number, .most = 0xFFFF } },
      { "u32", { .form = Form::number, .most = 0xFFFFFFFF } },
      { "u64", { .form = Form::bigNumber, .most = 0xFFFFFFFFFFFFFFFF } },
      { "double", { .form = Form::real } },
      { "Vok::Seconds", { .form = Form::real } },
      { "Corvo::Duration", { .form = Form::real } },
      { "Corvo::String", { .form = Form::text } },
   };
   const auto found = shapes.find( name );
   if ( found == shapes.end() ) {
      throw std::invalid_argument( std::string( name ) + " is no type of values" );
   }
   Shape shape = found->second;
   shape.typeName = found->first;
   return shape;
}

bool isCollection( const AttributeData & a )
{
   return a.kind() == AttributeKind::map || a.kind() == AttributeKind::set;
}

bool isFlag( const AttributeData & field ) { return field.row().mask != 0; }

/// The bits of a word that flags name, and the others.
std::vector< Flag > flagsOf( const TypeData & type, const AttributeData & word, std::uint64_t most )
{
   std::map< unsigned, Flag > named;
   for ( const AttributeData & a : type.attributes() ) {
      if ( isFlag( a ) && a.row().offset == word.row().offset ) {
         const auto bit = static_cast< unsigned >( std::countr_zero( a.row().mask ) );
         named[ bit ] = { std::string( a.name() ), a.documentation(), bit };
      }
   }
   std::vector< Flag > flags;
   for ( unsigned bit = 0; !named.empty() && bit != 64 && most >> bit != 0; ++bit ) {
      const auto found = named.find( bit );
      flags.push_back( found == named.end()
                  ? Flag{ "bit" + std::to_string( bit ), "has no name", bit }
                  : found->second );
   }
   return flags;
}

Shape ofField( const TypeData & owner, const AttributeData & field )
{
   Shape shape = shapeOf( field.typeName() );
   if ( shape.form != Form::number && shape.form != Form::bigNumber ) {
      return shape;
   }
   shape.flags = flagsOf( owner, field, shape.most );
   if ( !shape.flags.empty() ) {
      shape.form = Form::flags;
      return shape;
   }
   narrow( shape, field, [ & ]( const std::string & text ) {
      Vok::Value value = owner.make();
      if ( field.settable() ) {
         owner.fieldSet( value.data(), field.name(), text );
         return;
      }
      std::vector< Corvo::String > args;
      for ( const AttributeData * const other : fieldsOf( owner ) ) {
         args.emplace_back( other == &field ? Corvo::String( text )
                                            : owner.fieldGet( value.data(), other->name() ) );
      }
      (void)owner.make( args );
   } );
   shape.holder = owner.name();
   return shape;
}

Shape ofAttribute( const TypeData & owner, const AttributeData & attribute )
{
   Shape shape = shapeOf( attribute.typeName() );
   Vok::Entity * const fresh = attribute.settable() ? freshOf( owner ) : nullptr;
   if ( fresh && shape.form == Form::number ) {
      const Corvo::String before = attribute.get( *fresh );
      narrow( shape, attribute,
            [ & ]( const std::string & text ) { attribute.set( *fresh, text ); } );
      attribute.set( *fresh, before );
   }
   return shape;
}

/// Finds out once what stays for the life of the program.
const Shape & kept( const AttributeData & a, const std::function< Shape() > & find )
{
   static std::map< const AttributeData *, Shape > shapes;
   const auto found = shapes.find( &a );
   return found != shapes.end() ? found->second : shapes.emplace( &a, find() ).first->second;
}

/// A type of one field stands as its field does, unless it has a text of its own.
Shape ofValueType( const TypeData & type )
{
   const Vok::Value preset = type.make();
   const std::string text( type.valueToStrep( preset.data() ) );
   const auto fields = fieldsOf( type );
   const bool composite = fields.size() != 1 || isCollection( *fields[ 0 ] );
   Shape shape;
   if ( composite ? !text.starts_with( std::string( type.name() ) + "[" )
                  : type.fieldGet( preset.data(), fields[ 0 ]->name() ) != text ) {
      shape.hand = true;
   } else if ( composite ) {
      shape.form = Form::object;
   } else {
      shape = shapeOf( type, *fields[ 0 ] );
   }
   shape.type = &type;
   shape.typeName = type.name();
   return shape;
}

Shape makeShape( std::string_view typeName )
{
   const TypeData * const type = Corvo::ModuleInspectData::findType( typeName );
   if ( !type ) {
      return builtIn( typeName );
   }
   if ( type->kind() == TypeKind::enumeration ) {
      return { .form = Form::choice, .typeName = type->name(), .type = type, .choices = type };
   }
   return ofValueType( *type );
}

} // namespace

const Shape & shapeOf( std::string_view typeName )
{
   static std::map< std::string, Shape, std::less<> > shapes;
   auto found = shapes.find( typeName );
   if ( found == shapes.end() ) {
      found = shapes.emplace( typeName, makeShape( typeName ) ).first;
   }
   return found->second;
}

const Shape & shapeOf( const TypeData & owner, const AttributeData & field )
{
   return kept( field, [ & ] { return ofField( owner, field ); } );
}

const Shape & shapeOfAttribute( const TypeData & owner, const AttributeData & attribute )
{
   return kept( attribute, [ & ] { return ofAttribute( owner, attribute ); } );
}

std::vector< const AttributeData * > fieldsOf( const TypeData & type )
{
   std::vector< const AttributeData * > fields;
   for ( const AttributeData & a : type.attributes() ) {
      if ( isContent( a ) && !isFlag( a ) ) {
         fields.push_back( &a );
      }
   }
   return fields;
}

bool isContent( const AttributeData & attribute )
{
   return attribute.kind() != AttributeKind::constant &&
         attribute.kind() != AttributeKind::derived &&
         attribute.kind() != AttributeKind::function;
}

std::string_view jsonName( const AttributeData & attribute )
{
   return attribute.name() == "nameString" ? std::string_view( "name" ) : attribute.name();
}

const AttributeData * attributeOf( const TypeData & type, std::string_view name )
{
   return type.attribute( name == "name" && type.attribute( "nameString" ) ? "nameString" : name );
}

const TypeData & entityType( std::string_view name )
{
   const TypeData * const type = Corvo::ModuleInspectData::findType( name );
   if ( !type || type->kind() != TypeKind::entity ) {
      throw std::invalid_argument( std::string( name ) + " is no type of entities" );
   }
   return *type;
}

std::vector< const AttributeData * > argumentsBeside(
      const TypeData & type, std::string_view keyField )
{
   std::vector< const AttributeData * > arguments;
   for ( const AttributeData & a : type.constructorArguments() ) {
      if ( jsonName( a ) != keyField ) {
         arguments.push_back( &a );
      }
   }
   return arguments;
}

const AttributeData * identityOf( const TypeData & type )
{
   const auto arguments = type.constructorArguments();
   const auto found = std::find_if( arguments.begin(), arguments.end(),
         []( const AttributeData & a ) { return a.row().identity; } );
   return found == arguments.end() ? nullptr : &*found;
}

bool isReference( const AttributeData & argument )
{
   const TypeData * const type = Corvo::ModuleInspectData::findType( argument.typeName() );
   return argument.kind() == AttributeKind::constructorArgument && type &&
         type->kind() == TypeKind::entity;
}

Vok::Entity * freshOf( const TypeData & type )
{
   static std::map< const TypeData *, Corvo::Ptr< Vok::Entity > > made;
   const auto [ at, isNew ] = made.try_emplace( &type );
   if ( isNew ) {
      std::vector< Corvo::String > args;
      for ( const AttributeData & a : type.constructorArguments() ) {
         if ( isReference( a ) ) {
            return nullptr;
         }
         if ( !a.row().identity ) {
            args.emplace_back( defaultTextOf( shapeOf( a.typeName() ) ) );
         }
      }
      at->second = type.instantiate( "", args );
   }
   return at->second.get();
}

std::string defaultTextOf( const Shape & shape )
{
   if ( shape.type && shape.type->kind() == TypeKind::enumeration ) {
      return std::string( shape.type->enumerators().front().second );
   }
   if ( shape.type ) {
      return std::string( shape.type->valueToStrep( shape.type->make().data() ) );
   }
   switch ( shape.form ) {
   case Form::truth:
      return "false";
   case Form::text:
      return "\"\"";
   default:
      return "0";
   }
}

bool keyLess( std::string_view a, std::string_view b )
{
   const auto isNumber = []( std::string_view text ) {
      return !text.empty() && text.find_first_not_of( "0123456789" ) == std::string_view::npos;
   };
   if ( isNumber( a ) && isNumber( b ) && a.size() != b.size() ) {
      return a.size() < b.size();
   }
   return a < b;
}

} // namespace FlowtrackJson
