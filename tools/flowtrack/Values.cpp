// Reading values, and changing parts of them.
#include "tools/flowtrack/Values.h"

#include "tools/flowtrack/Errors.h"
#include "tools/flowtrack/Place.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Hint.h"

#include <algorithm>
#include <functional>

namespace Flowtrack {

using Vok::AttributeData;
using Vok::AttributeKind;

namespace {

/// Where the `=` of FIELD=VALUE is; npos where there is none.
std::size_t assignment( const std::string & word )
{
   const std::size_t end = memberEnd( word );
   return end != 0 && end < word.size() && word[ end ] == '=' ? end : std::string::npos;
}

const std::string & oneOf( const std::vector< std::string > & words )
{
   if ( words.size() != 1 ) {
      throw CommandError(
            wrongUsage, "expected one VALUE, or FIELD=VALUE any number of times" );
   }
   return words.front();
}

const Vok::TypeData & valueType( const AttributeData & attribute )
{
   const Vok::TypeData * const type =
         Corvo::ModuleInspectData::findType( attribute.typeName() );
   if ( !type || type->kind() != Vok::TypeKind::value ) {
      throw CommandError( wrongUsage,
            std::string( attribute.name() ) + " has no fields: it is of type " +
                  std::string( attribute.typeName() ) );
   }
   return *type;
}

void readWhole( Vok::Value & value, std::string_view text )
{
   Vok::CharRange range( text );
   value.typeData().strepToValue( range, value.data() );
}

/// Calls what reads a text of a type, and adds hints to what it throws.
void parsed( std::string_view typeName, const std::string & text,
      const std::function< void() > & read )
{
   try {
      read();
   } catch ( const Corvo::EnumRangeException & e ) {
      std::vector< std::string > names;
      if ( const auto * const type = Corvo::ModuleInspectData::findType( typeName ) ) {
         for ( const auto & [ code, name ] : type->enumerators() ) {
            names.emplace_back( name );
         }
      }
      throw CommandError( invalidData, e.what(), FlowtrackJson::didYouMean( text, names ) );
   } catch ( const Corvo::ParseException & e ) {
      const bool quoted = !text.empty() && text.front() == '"';
      throw CommandError( invalidData, e.what(),
            typeName == "Corvo::String" && !quoted
                  ? "a text with blanks or signs is quoted: '\"" + text + "\"'"
                  : "" );
   }
}

bool hasMember(
      const Vok::Entity & entity, const AttributeData & attribute, const std::string & key )
{
   const auto keys = attribute.keys( entity );
   return std::any_of( keys.begin(), keys.end(),
         [ & ]( const Corvo::String & one ) { return one.view() == key; } );
}

/// Sets a field; a value that is fixed is made anew with it.
void setField( Vok::Value & value, const AttributeData & field, const std::string & text )
{
   const Vok::TypeData & type = value.typeData();
   if ( field.settable() ) {
      type.fieldSet( value.data(), field.name(), text );
      return;
   }
   const auto declared = type.constructorArguments();
   std::vector< Corvo::String > arguments;
   for ( const AttributeData & one : declared.empty() ? type.attributes() : declared ) {
      if ( isSingle( one ) && one.kind() != AttributeKind::constant ) {
         arguments.push_back( one.name() == field.name()
                     ? Corvo::String( text )
                     : type.fieldGet( value.data(), one.name() ) );
      }
   }
   value = type.make( arguments );
}

/// A value for a new member: the default one, with its key where that is a field of it.
Vok::Value newValue( const AttributeData & attribute, const std::string & key )
{
   Vok::Value value = valueType( attribute ).make();
   if ( !attribute.keyField().empty() ) {
      setField( value, *value.typeData().attribute( attribute.keyField() ), key );
   }
   return value;
}

} // namespace

bool areFields( const std::vector< std::string > & words )
{
   return !words.empty() &&
         std::all_of( words.begin(), words.end(), []( const std::string & word ) {
            return assignment( word ) != std::string::npos;
         } );
}

void assignFields( Vok::Value & value, const std::vector< std::string > & words )
{
   for ( const std::string & word : words ) {
      const std::size_t equals = assignment( word );
      const Member field = Member::parse( word.substr( 0, equals ) );
      const std::string text = word.substr( equals + 1 );
      const AttributeData & attribute = attributeOf( value.typeData(), field.attribute );
      parsed( attribute.typeName(), text, [ & ] {
         if ( field.key ) {
            value.typeData().fieldMemberIs( value.data(), field.attribute, *field.key, text );
         } else {
            setField( value, attribute, text );
         }
      } );
   }
}

void setAttribute( Vok::Entity & entity, const AttributeData & attribute,
      const std::vector< std::string > & words )
{
   if ( !attribute.settable() || !isSingle( attribute ) ) {
      throw CommandError( wrongUsage,
            std::string( attribute.name() ) + " of " + std::string( entity.typeData().name() ) +
                  " cannot be set: it is " + stringValue( attribute.kind() ) );
   }
   if ( !areFields( words ) ) {
      const std::string & text = oneOf( words );
      parsed( attribute.typeName(), text, [ & ] { attribute.set( entity, text ); } );
      return;
   }
   Vok::Value value = valueType( attribute ).make();
   if ( const Corvo::String now = attribute.get( entity ); !now.empty() ) {
      readWhole( value, now );
   }
   assignFields( value, words );
   attribute.set( entity, value.typeData().valueToStrep( value.data() ) );
}

void setMember( Vok::Entity & entity, const AttributeData & attribute, const std::string & key,
      const std::vector< std::string > & words )
{
   if ( attribute.kind() == AttributeKind::set ) {
      if ( !words.empty() ) {
         throw CommandError( wrongUsage,
               std::string( attribute.name() ) + " is a set; expected a KEY and no VALUE" );
      }
      parsed( attribute.typeName(), key, [ & ] { attribute.memberIs( entity, key, "" ); } );
      return;
   }
   const bool byField = !attribute.keyField().empty();
   if ( !areFields( words ) && !( words.empty() && byField ) ) {
      const std::string & text = oneOf( words );
      parsed( attribute.typeName(), text, [ & ] { attribute.memberIs( entity, key, text ); } );
      return;
   }
   Vok::Value value = hasMember( entity, attribute, key ) ? attribute.memberValue( entity, key )
                                                          : newValue( attribute, key );
   assignFields( value, words );
   attribute.memberValueIs( entity, key, value );
}

} // namespace Flowtrack
