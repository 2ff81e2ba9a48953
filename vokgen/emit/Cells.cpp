// Links, defaults and bounds on a reference page.
#include "vokgen/emit/Cells.h"

#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/ModuleNames.h"

#include <algorithm>

namespace VokGen {

using Model::Attribute;
using Model::CheckTime;
using Model::TypeDeclaration;

namespace {

/// The folder of a path with its slash; empty where it has none.
std::string folderOf( const std::string & path )
{
   return path.substr( 0, path.rfind( '/' ) + 1 );
}

const TypeDeclaration * declarationOf( const Model::Type & type )
{
   if ( type.enumeration ) {
      return type.enumeration;
   }
   return type.value ? static_cast< const TypeDeclaration * >( type.value ) : type.entity;
}

std::string whenChecked( CheckTime time )
{
   switch ( time ) {
   case CheckTime::onSet:
      return ", checked when it is set";
   case CheckTime::validated:
      return ", checked by `validate()`";
   case CheckTime::never:
      return ", not checked";
   case CheckTime::always:
      break;
   }
   return "";
}

} // namespace

std::string anchor( const TypeDeclaration & type )
{
   std::string out = type.fullName;
   for ( std::size_t at = 0; ( at = out.find( "::", at ) ) != std::string::npos; ++at ) {
      out.replace( at, 2, "." );
   }
   return out;
}

std::string pageOf( const Model::Module & module, const Model::Module & from )
{
   const std::string folder = folderOf( module.header );
   const std::string here = folderOf( from.header );
   std::string path = folder == here ? "" : folder;
   if ( folder != here ) {
      for ( auto slashes = std::count( here.begin(), here.end(), '/' ); slashes > 0; --slashes ) {
         path.insert( 0, "../" );
      }
   }
   return path + moduleFile( module, ".md" );
}

std::string typeLink( const TypeDeclaration & type, const Model::Module & page )
{
   const std::string target = type.module == &page ? "" : pageOf( *type.module, page );
   return "[" + code( type.fullName ) + "](" + target + "#" + anchor( type ) + ")";
}

std::string typeLink( const Model::Type & type, const Model::Module & page )
{
   const TypeDeclaration * const declaration = declarationOf( type );
   return declaration ? typeLink( *declaration, page ) : code( type.fullName );
}

std::string code( std::string_view text )
{
   return "`" + std::string( text ) + "`";
}

std::string call( std::string_view function, std::string_view arguments )
{
   const std::string list = arguments.empty() ? "()" : "( " + std::string( arguments ) + " )";
   return code( std::string( function ) + list );
}

std::string defaultCell( const Attribute & attribute )
{
   const std::string text = canonicalText( attribute.value.value, attribute.type ).value_or( "" );
   const Attribute * const named = attribute.value.namedConstant();
   const std::string source = named ? " (" + code( named->name ) + ")" : "";
   return markdownText( text ) + source;
}

std::string boundsCell( const Attribute & attribute )
{
   if ( attribute.textLimit ) {
      return markdownText( textLimitInWords( attribute ) );
   }
   if ( attribute.bounds ) {
      return markdownText( boundsInWords( attribute ) ) + whenChecked( attribute.bounds->time );
   }
   const Attribute * const field =
         attribute.type.value ? attribute.type.value->onlyField() : nullptr;
   return field ? boundsCell( *field ) : "";
}

} // namespace VokGen
