// Random values. Two draws never stand in one list of call arguments, whose order is the
// compiler's: a seed means the same values everywhere.
#include "tests/support/RandomValue.h"

#include "tests/support/TypeNamed.h"

#include <algorithm>
#include <map>
#include <utility>

namespace TestSupport {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;
using Vok::TypeKind;

namespace {

/// What a number type holds at most; 0 for what is no number.
std::uint64_t mostOf( std::string_view type )
{
   static const std::map< std::string_view, std::uint64_t > mosts = { { "u8", 0xff },
      { "u16", 0xffff }, { "u32", 0xffffffff }, { "u64", 0xffffffffffffffff } };
   const auto most = mosts.find( type );
   return most == mosts.end() ? 0 : most->second;
}

/// Some texts of a type whose values are not made from their fields.
std::vector< std::string_view > samplesOf( std::string_view type )
{
   static const std::map< std::string_view, std::vector< std::string_view > > samples = {
      { "Wyre::IpGenAddr", { "\"\"", "0.0.0.0", "10.0.0.1", "::", "fd00::1" } },
   };
   const auto found = samples.find( type );
   return found == samples.end() ? std::vector< std::string_view >() : found->second;
}

bool isCollection( AttributeKind kind )
{
   return kind == AttributeKind::map || kind == AttributeKind::set;
}

/// The fields of a value that hold it, in constructor order: those that are no constants.
std::vector< const AttributeData * > fieldsOf( const TypeData & type )
{
   std::vector< const AttributeData * > fields;
   for ( const AttributeData & a : type.attributes() ) {
      if ( a.kind() == AttributeKind::plain || a.kind() == AttributeKind::constructorArgument ) {
         fields.push_back( &a );
      }
   }
   return fields;
}

} // namespace

std::string RandomValue::number( std::uint64_t lower, std::uint64_t upper )
{
   const std::uint64_t span = upper - lower;
   const std::uint32_t how = random_.below( 4 );
   if ( few_ || how == 0 ) {
      const std::uint64_t few = std::min< std::uint64_t >( span, 5 );
      return std::to_string( lower + random_.below( static_cast< std::uint32_t >( few ) + 1 ) );
   }
   if ( how == 1 ) {
      return std::to_string( upper );
   }
   const std::uint64_t word = random_.word();
   return std::to_string( lower + ( span + 1 == 0 ? word : word % ( span + 1 ) ) );
}

std::string RandomValue::name()
{
   return std::string( 1, static_cast< char >( 'a' + random_.below( 6 ) ) );
}

std::string RandomValue::string()
{
   if ( few_ ) {
      return name();
   }
   std::string bytes;
   for ( std::uint32_t size = random_.below( 21 ); size != 0; --size ) {
      bytes += static_cast< char >( random_.below( 256 ) );
   }
   return std::string( Corvo::valueToStrep( Corvo::String( bytes ) ) );
}

std::string RandomValue::key( std::string_view type )
{
   const bool before = std::exchange( few_, true );
   std::string drawn = text( type );
   few_ = before;
   return drawn;
}

std::string RandomValue::text( std::string_view type, std::string_view lower,
      std::string_view upper )
{
   if ( !lower.empty() ) {
      const std::uint64_t least = std::stoull( std::string( lower ) );
      return number( least, std::stoull( std::string( upper ) ) );
   }
   if ( const std::uint64_t most = mostOf( type ) ) {
      return number( 0, most );
   }
   if ( type == "bool" ) {
      return random_.oneIn( 2 ) ? "true" : "false";
   }
   if ( type == "double" || type == "Vok::Seconds" || type == "Corvo::Duration" ) {
      return std::string( Corvo::valueToStrep( random_.below( 1000 ) / 8.0 ) );
   }
   if ( type == "Corvo::String" ) {
      return string();
   }
   if ( const auto samples = samplesOf( type ); !samples.empty() ) {
      const auto count = static_cast< std::uint32_t >( samples.size() );
      return std::string( samples[ random_.below( count ) ] );
   }
   const TypeData & record = typeNamed( type );
   if ( record.kind() == TypeKind::enumeration ) {
      const auto enumerators = record.enumerators();
      const auto count = static_cast< std::uint32_t >( enumerators.size() );
      const auto which = random_.below( few_ ? std::min( count, 6U ) : count );
      return std::string( enumerators[ which ].second );
   }
   const Vok::Value made = value( record );
   return std::string( record.valueToStrep( made.data() ) );
}

Vok::Value RandomValue::value( const TypeData & type )
{
   const auto fields = fieldsOf( type );
   const bool fixed = std::none_of( fields.begin(), fields.end(),
         []( const AttributeData * field ) { return field->settable(); } );
   std::vector< Corvo::String > args;
   Vok::Value made = type.make();
   for ( const AttributeData * field : fields ) {
      const std::string drawn = text( field->typeName(), field->lowerText(), field->upperText() );
      if ( fixed ) {
         args.emplace_back( drawn );
      } else {
         type.fieldSet( made.data(), field->name(), drawn );
      }
   }
   if ( fixed ) {
      made = type.make( args );
   }
   addMembers( made );
   return made;
}

void RandomValue::addMembers( Vok::Value & value )
{
   const TypeData & type = value.typeData();
   for ( const AttributeData & a : type.attributes() ) {
      if ( isCollection( a.kind() ) ) {
         for ( std::uint32_t count = random_.below( 4 ); count != 0; --count ) {
            const std::string where = key( a.keyTypeName() );
            const std::string what = a.kind() == AttributeKind::set ? "" : text( a.typeName() );
            type.fieldMemberIs( value.data(), a.name(), where, what );
         }
      }
   }
}

} // namespace TestSupport
