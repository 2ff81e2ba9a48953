#include "vokgen/Loader.h"

#include "vokgen/Parser.h"
#include "vokgen/Scopes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

namespace VokGen {
namespace {

constexpr std::size_t depthLimit = 64;

/// The text of a file; nothing, with the reason in `why`, where it cannot be read or is too large.
std::optional< std::string > read( const std::string & path, std::string & why )
{
   std::error_code failed;
   if ( std::filesystem::is_directory( path, failed ) ) {
      why = "it is a folder";
      return std::nullopt;
   }
   errno = 0;
   std::ifstream file( path, std::ios::binary );
   std::string text;
   std::array< char, 65536 > piece;
   while ( file && text.size() <= SourceFile::sizeLimit ) {
      file.read( piece.data(), piece.size() );
      text.append( piece.data(), static_cast< std::size_t >( file.gcount() ) );
   }
   if ( !file.is_open() || file.bad() ) {
      why = errno != 0 ? std::strerror( errno ) : "input error";
      return std::nullopt;
   }
   if ( text.size() > SourceFile::sizeLimit ) {
      why = "it is larger than " + std::to_string( SourceFile::sizeLimit >> 20U ) + " MiB";
      return std::nullopt;
   }
   return text;
}

} // namespace

Loader::Loader( std::vector< std::string > importFolders, Diagnostics & diagnostics )
      : diagnostics_( diagnostics ),
        imports_( std::move( importFolders ) )
{
}

Unit * Loader::load( const std::string & path )
{
   std::string why;
   std::optional< std::string > text = read( path, why );
   if ( !text ) {
      diagnostics_.error( {}, Message::cannotRead, { path, why } );
      return nullptr;
   }
   return add( path, std::move( *text ) );
}

Unit * Loader::loadText( const std::string & path, std::string text )
{
   if ( text.size() > SourceFile::sizeLimit ) {
      text.resize( SourceFile::sizeLimit );
      diagnostics_.error( {}, Message::cannotRead,
            { path,
                  "it is larger than " + std::to_string( SourceFile::sizeLimit >> 20U ) +
                        " MiB" } );
   }
   return add( path, std::move( text ) );
}

Unit * Loader::add( const std::string & path, std::string text )
{
   auto owned = std::make_unique< Unit >();
   Unit & unit = *owned;
   unit.file = std::make_unique< SourceFile >( path, std::move( text ) );
   unit.header = imports_.headerOf( path );
   unit.source = parse( *unit.file, diagnostics_ );
   units_[ path ] = std::move( owned );
   loading_.push_back( &unit );
   loadUses( unit );
   loading_.pop_back();
   order_.push_back( &unit );
   return &unit;
}

void Loader::loadUses( Unit & unit )
{
   std::map< std::string, Range > seen;
   for ( const Ast::Name & use : unit.source.uses ) {
      const auto [ first, added ] = seen.emplace( use.text, use.range );
      if ( added ) {
         loadUse( unit, use );
         continue;
      }
      diagnostics_.error( { unit.file.get(), use.range }, Message::usedTwice, { use.text } );
      diagnostics_.note( { unit.file.get(), first->second }, Message::firstUsedHere, { use.text } );
   }
}

void Loader::loadUse( Unit & unit, const Ast::Name & use )
{
   const auto open = std::find_if( loading_.begin(), loading_.end(),
         [ & ]( const Unit * other ) { return other->source.name.text == use.text; } );
   if ( open != loading_.end() ) {
      std::string circle;
      for ( auto at = open; at != loading_.end(); ++at ) {
         circle += ( *at )->source.name.text + " -> ";
      }
      diagnostics_.error(
            { unit.file.get(), use.range }, Message::usesItself, { circle + use.text } );
      unit.usesMissing = true;
      return;
   }
   Unit * used = fileOf( unit, use );
   if ( !used ) {
      unit.usesMissing = true;
      return;
   }
   checkDepth( unit, use, *used );
   unit.uses.push_back( used );
}

void Loader::checkDepth( Unit & unit, const Ast::Name & use, const Unit & used )
{
   unit.depth = std::max( unit.depth, used.depth + 1 );
   if ( loading_.size() + used.depth > depthLimit ) {
      diagnostics_.error( { unit.file.get(), use.range }, Message::usesTooDeep,
            { std::to_string( depthLimit ) } );
   }
}

Unit * Loader::fileOf( const Unit & user, const Ast::Name & use )
{
   const Location where = { user.file.get(), use.range };
   const std::vector< std::string > & files = imports_.filesOf( use.text );
   if ( files.empty() ) {
      diagnostics_.error( where, Message::unknownModule,
            { use.text, suggestion( use.text, imports_.modules() ) } );
      return nullptr;
   }
   if ( files.size() > 1 ) {
      diagnostics_.error( where, Message::moduleTwice, { use.text, files[ 0 ], files[ 1 ] } );
      return nullptr;
   }
   const auto loaded = units_.find( files.front() );
   if ( loaded != units_.end() ) {
      return loaded->second.get();
   }
   if ( loading_.size() >= depthLimit ) {
      diagnostics_.error( where, Message::usesTooDeep, { std::to_string( depthLimit ) } );
      return nullptr;
   }
   std::string why;
   std::optional< std::string > text = read( files.front(), why );
   if ( !text ) {
      diagnostics_.error( where, Message::cannotRead, { files.front(), why } );
      return nullptr;
   }
   Unit * unit = add( files.front(), std::move( *text ) );
   const Ast::Name & name = unit->source.name;
   if ( !name.empty() && name.text != use.text ) {
      diagnostics_.error( { unit->file.get(), name.range }, Message::moduleNameDiffers,
            { use.text, name.text } );
      diagnostics_.note( where, Message::usedHere, { use.text } );
   }
   return unit;
}

std::string Loader::moduleDeclaring( const std::string & fullName )
{
   if ( !declaringKnown_ ) {
      declaringKnown_ = true;
      for ( const std::string & module : imports_.modules() ) {
         std::string why;
         const std::string & path = imports_.filesOf( module ).front();
         std::optional< std::string > text = read( path, why );
         if ( !text ) {
            continue;
         }
         Diagnostics unheard;
         const SourceFile file( path, std::move( *text ) );
         const Ast::Module source = parse( file, unheard );
         if ( source.name.text != module ) {
            continue; // It cannot be used.
         }
         for ( const Ast::Type & type : source.types ) {
            const std::string name = type.nameSpace + "::" + type.name.text;
            declaring_.emplace( name, module );
            for ( const Ast::Type & nested : type.enums ) {
               declaring_.emplace( name + "::" + nested.name.text, module );
            }
         }
      }
   }
   const auto found = declaring_.find( fullName );
   return found == declaring_.end() ? std::string() : found->second;
}

} // namespace VokGen
