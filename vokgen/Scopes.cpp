#include "vokgen/Scopes.h"

#include <algorithm>
#include <array>

namespace VokGen {
namespace {

/// The scope around a scope: "A" for "A::B", nothing for "A".
std::string outer( const std::string & scope )
{
   const std::size_t end = scope.rfind( "::" );
   return end == std::string::npos ? std::string() : scope.substr( 0, end );
}

/// The full name of what stands in a scope under a name.
std::string within( std::string scope, const std::string & name )
{
   if ( !scope.empty() ) {
      scope += "::";
   }
   return scope += name;
}

/// How many letters must change to turn one text into the other; more than `most` is any number
/// beyond.
std::size_t distance( std::string_view a, std::string_view b, std::size_t most )
{
   if ( std::max( a.size(), b.size() ) - std::min( a.size(), b.size() ) > most ) {
      return most + 1;
   }
   std::vector< std::size_t > row( b.size() + 1 );
   for ( std::size_t j = 0; j <= b.size(); ++j ) {
      row[ j ] = j;
   }
   for ( std::size_t i = 1; i <= a.size(); ++i ) {
      std::size_t diagonal = row[ 0 ];
      row[ 0 ] = i;
      for ( std::size_t j = 1; j <= b.size(); ++j ) {
         const std::size_t changed = diagonal + ( a[ i - 1 ] == b[ j - 1 ] ? 0 : 1 );
         diagonal = row[ j ];
         row[ j ] = std::min( { changed, row[ j ] + 1, row[ j - 1 ] + 1 } );
      }
   }
   return row[ b.size() ];
}

const char * describe( const Symbol & symbol )
{
   if ( symbol.external ) {
      return "an external type";
   }
   switch ( symbol.type->type->kind ) {
   case Model::TypeDeclarationKind::enumeration:
      return "an enumeration";
   case Model::TypeDeclarationKind::constants:
      return "a constants type";
   case Model::TypeDeclarationKind::value:
      return "a value type";
   default:
      return "an entity type";
   }
}

} // namespace

std::optional< Model::Type > builtInType( const std::string & name )
{
   struct BuiltIn {
      const char * name;
      Model::TypeKind kind;
      unsigned bits;
      const char * fullName;
      const char * cppName;
   };
   using Model::TypeKind;
   static constexpr std::array< BuiltIn, 9 > builtIns = { {
         { "bool", TypeKind::boolean, 0, "bool", "bool" },
         { "u8", TypeKind::number, 8, "u8", "std::uint8_t" },
         { "u16", TypeKind::number, 16, "u16", "std::uint16_t" },
         { "u32", TypeKind::number, 32, "u32", "std::uint32_t" },
         { "u64", TypeKind::number, 64, "u64", "std::uint64_t" },
         { "double", TypeKind::real, 0, "double", "double" },
         { "string", TypeKind::text, 0, "Corvo::String", "Corvo::String" },
         { "Vok::Seconds", TypeKind::seconds, 0, "Vok::Seconds", "Vok::Seconds" },
         { "Corvo::Duration", TypeKind::duration, 0, "Corvo::Duration", "Corvo::Duration" },
   } };
   for ( const BuiltIn & builtIn : builtIns ) {
      if ( name == builtIn.name ) {
         Model::Type type;
         type.kind = builtIn.kind;
         type.bits = builtIn.bits;
         type.fullName = builtIn.fullName;
         type.cppName = builtIn.cppName;
         return type;
      }
   }
   return std::nullopt;
}

Model::Type typeOf( const Model::TypeDeclaration & declaration )
{
   Model::Type type;
   type.fullName = declaration.fullName;
   type.cppName = declaration.fullName;
   type.enumeration = Model::asEnum( &declaration );
   type.value = Model::asValue( &declaration );
   type.entity = Model::asEntity( &declaration );
   if ( type.enumeration ) {
      type.kind = Model::TypeKind::enumeration;
      type.bits = type.enumeration->bits;
   } else {
      type.kind = type.value ? Model::TypeKind::value : Model::TypeKind::entity;
   }
   return type;
}

std::string suggestion( std::string_view name, std::vector< std::string > candidates )
{
   constexpr std::size_t mostCandidates = 5000;
   if ( candidates.size() > mostCandidates ) {
      return {};
   }
   std::sort( candidates.begin(), candidates.end() );
   std::size_t best = std::min< std::size_t >( 2, name.size() / 3 ) + 1;
   const std::string * nearest = nullptr;
   for ( const std::string & candidate : candidates ) {
      const std::size_t changes = distance( name, candidate, best - 1 );
      if ( changes < best ) {
         best = changes;
         nearest = &candidate;
      }
   }
   return nearest ? "; did you mean '" + *nearest + "'?" : std::string();
}

bool isSound( const Scopes & scopes, const Model::Type & type )
{
   const Model::TypeDeclaration * declaration = type.enumeration;
   if ( type.value ) {
      declaration = type.value;
   } else if ( type.entity ) {
      declaration = type.entity;
   }
   const TypeDraft * draft = scopes.workspace().draftOf( declaration );
   return !draft || ( !draft->flawed && !draft->incomplete );
}

Scopes::Scopes( Workspace & workspace, ModuleDraft & module )
      : workspace_( workspace ),
        module_( module )
{
}

void Scopes::error(
      Range range, Message message, const std::vector< std::string > & arguments ) const
{
   workspace_.diagnostics.error( location( range ), message, arguments );
}

void Scopes::note(
      Location where, Message message, const std::vector< std::string > & arguments ) const
{
   workspace_.diagnostics.note( where, message, arguments );
}

bool Scopes::visible( const Symbol & symbol ) const
{
   return symbol.module == &module_ ||
         std::find( module_.uses.begin(), module_.uses.end(), symbol.module ) != module_.uses.end();
}

/// Whether a declaration that could not be read may have declared any name.
bool Scopes::mayBeLost() const
{
   return module_.incomplete ||
         std::any_of( module_.uses.begin(), module_.uses.end(),
               []( const ModuleDraft * used ) { return used->incomplete; } );
}

const Symbol * Scopes::find( const std::string & scope, const std::string & name ) const
{
   for ( std::string at = scope;; at = outer( at ) ) {
      const auto found = workspace_.symbols.find( within( at, name ) );
      if ( found != workspace_.symbols.end() && visible( found->second ) ) {
         return &found->second;
      }
      if ( at.empty() ) {
         return nullptr;
      }
   }
}

std::vector< std::string > Scopes::visibleNames( const std::string & scope ) const
{
   std::vector< std::string > names = { "bool", "u8", "u16", "u32", "u64", "double", "string",
      "Vok::Seconds", "Corvo::Duration" };
   for ( const auto & [ fullName, symbol ] : workspace_.symbols ) {
      if ( !visible( symbol ) ) {
         continue;
      }
      names.push_back( fullName );
      for ( std::string at = scope; !at.empty(); at = outer( at ) ) {
         if ( fullName.size() > at.size() + 2 && fullName.compare( 0, at.size(), at ) == 0 &&
               fullName.compare( at.size(), 2, "::" ) == 0 ) {
            names.push_back( fullName.substr( at.size() + 2 ) );
         }
      }
   }
   return names;
}

void Scopes::reportUnknown( const std::string & scope, const Ast::Name & name ) const
{
   if ( mayBeLost() || isFull() ) {
      return;
   }
   for ( std::string at = scope;; at = outer( at ) ) {
      const std::string fullName = within( at, name.text );
      const std::string module = workspace_.moduleDeclaring( fullName );
      if ( !module.empty() ) {
         error( name.range, Message::moduleNotUsed, { fullName, module } );
         return;
      }
      if ( at.empty() ) {
         break;
      }
   }
   error( name.range, Message::unknownType,
         { name.text, suggestion( name.text, visibleNames( scope ) ) } );
}

TypeDraft * Scopes::resolveDraft( const std::string & scope, const Ast::Name & name ) const
{
   const Symbol * symbol = find( scope, name.text );
   if ( !symbol ) {
      reportUnknown( scope, name );
      return nullptr;
   }
   return symbol->type;
}

std::optional< Model::Type > Scopes::resolve( const std::string & scope, const Ast::Name & name,
      TypeUse use ) const
{
   std::optional< Model::Type > builtIn = builtInType( name.text );
   if ( builtIn && use != TypeUse::entity ) {
      return builtIn;
   }
   if ( builtIn ) {
      error( name.range, Message::notAnEntity, { name.text, "a built-in type" } );
      return std::nullopt;
   }
   const Symbol * symbol = find( scope, name.text );
   if ( !symbol ) {
      reportUnknown( scope, name );
      return std::nullopt;
   }
   return typeOf( *symbol, name, use );
}

std::optional< Model::Type > Scopes::typeOf( const Symbol & symbol, const Ast::Name & name,
      TypeUse use ) const
{
   const Model::TypeDeclaration * declaration = symbol.type ? symbol.type->type : nullptr;
   if ( use == TypeUse::entity && !Model::asEntity( declaration ) ) {
      error( name.range, Message::notAnEntity, { name.text, describe( symbol ) } );
   } else if ( use != TypeUse::entity && Model::asEntity( declaration ) ) {
      error( name.range, Message::entityAsValue, { name.text } );
   } else if ( Model::asConstants( declaration ) ) {
      error( name.range, Message::constantsAsType, { name.text } );
   } else if ( symbol.external && use != TypeUse::parameter ) {
      error( name.range, Message::externalAsValue, { name.text } );
   } else if ( symbol.external ) {
      Model::Type type;
      type.kind = Model::TypeKind::external;
      type.fullName = symbol.external->fullName;
      type.cppName = symbol.external->fullName;
      type.external = symbol.external;
      return type;
   } else {
      return VokGen::typeOf( *declaration );
   }
   note( symbol.where, Message::declaredHere, { name.text } );
   return std::nullopt;
}

} // namespace VokGen
