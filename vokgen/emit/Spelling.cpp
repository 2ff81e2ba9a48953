// Spelling of types, parameters and results.
#include "vokgen/emit/Spelling.h"

#include <algorithm>

namespace VokGen {

using Model::Attribute;
using Model::TypeKind;

namespace {

bool hasNested( const Model::RecordType & type, std::string_view name )
{
   const auto named = [ & ]( const auto & nested ) { return nested->name == name; };
   const Model::EntityType * const entity = Model::asEntity( &type );
   return std::any_of( type.enums.begin(), type.enums.end(), named ) ||
         ( entity && entity->base && hasNested( *entity->base, name ) );
}

void addToList( std::string & list, const std::string & part )
{
   list.append( list.empty() ? "" : ", " ).append( part );
}

} // namespace

Scope::Scope( const Model::TypeDeclaration & type )
      : nameSpace_( type.nameSpace ),
        type_( Model::asRecord( &type ) )
{
}

std::string Scope::name( std::string_view fullName ) const
{
   const std::string prefix = nameSpace_ + "::";
   if ( nameSpace_.empty() || !fullName.starts_with( prefix ) ) {
      return std::string( fullName );
   }
   const std::string_view rest = fullName.substr( prefix.size() );
   const bool hidden = type_ && hasNested( *type_, rest.substr( 0, rest.find( ':' ) ) );
   return std::string( hidden ? fullName : rest );
}

std::string Scope::given( const Model::Type & type ) const
{
   const std::string spelled = this->type( type );
   return type.scalar() ? spelled : "const " + spelled + " &";
}

std::string Scope::query( const Model::Type & key ) const
{
   return key.isText() ? "std::string_view" : given( key );
}

std::string Scope::argumentGiven( const Attribute & argument ) const
{
   return argument.isReference ? "const " + argumentType( argument ) + " &"
                               : given( argument.type );
}

std::string Scope::argumentType( const Attribute & argument ) const
{
   return argument.isReference ? constPointer( *argument.type.entity ) : type( argument.type );
}

std::string Scope::pointer( const Model::TypeDeclaration & entity ) const
{
   return "Corvo::Ptr< " + name( entity.fullName ) + " >";
}

std::string Scope::constPointer( const Model::TypeDeclaration & entity ) const
{
   return "Corvo::Ptr< const " + name( entity.fullName ) + " >";
}

std::string Scope::parameters( const std::vector< const Attribute * > & arguments ) const
{
   std::string list;
   for ( const Attribute * const argument : arguments ) {
      addToList( list, argumentGiven( *argument ) + " " + argument->name );
   }
   return list;
}

std::string Scope::parameters( const Model::Function & function ) const
{
   std::string list;
   for ( const Model::Parameter & parameter : function.parameters ) {
      addToList( list, given( parameter.type ) + " " + parameter.name );
   }
   return list;
}

std::string Scope::result( const Model::Function & function ) const
{
   return function.result ? type( *function.result ) : "void";
}

std::string names( const std::vector< const Attribute * > & attributes )
{
   std::string list;
   for ( const Attribute * const attribute : attributes ) {
      addToList( list, attribute->name );
   }
   return list;
}

std::string inParentheses( std::string_view parameters )
{
   return parameters.empty() ? "()" : "( " + std::string( parameters ) + " )";
}

bool isLiteral( const Model::Type & type )
{
   if ( type.kind == TypeKind::value ) {
      return isLiteral( *type.value );
   }
   return type.kind != TypeKind::text && type.kind != TypeKind::external;
}

bool isLiteral( const Model::ValueType & type )
{
   const std::vector< const Attribute * > fields = type.fields();
   return !type.hasCollection() &&
         std::all_of( fields.begin(), fields.end(),
               []( const Attribute * field ) { return isLiteral( field->type ); } );
}

} // namespace VokGen
