// Files are read whole.
#include "tools/flowtrack/FileTree.h"

#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Problem.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

namespace Flowtrack {

namespace {

/// More mistakes than that are one, such as a name that is wrong in every member.
constexpr std::size_t mostMistakes = 50;

[[noreturn]] void refuse( const FlowtrackJson::DocumentError & error, const std::string & from )
{
   const std::string file = from == "-" ? "standard input" : from;
   const std::size_t count = error.problems().size();
   std::string text = file + ": " + std::to_string( count ) + " mistake";
   text += count == 1 ? "" : "s";
   for ( std::size_t i = 0; i != std::min( count, mostMistakes ); ++i ) {
      text += "\n" + FlowtrackJson::textOf( error.problems()[ i ], file );
   }
   if ( count > mostMistakes ) {
      text += "\nand " + std::to_string( count - mostMistakes ) + " more";
   }
   throw CommandError( invalidData, text );
}

} // namespace

std::string readFile( const std::string & file )
{
   if ( file == "-" ) {
      return { std::istreambuf_iterator< char >( std::cin ), {} };
   }
   std::ifstream from( file, std::ios::binary );
   std::string text{ std::istreambuf_iterator< char >( from ), {} };
   if ( !from ) {
      throw CommandError( notFound, file + " cannot be read: " + std::strerror( errno ) );
   }
   return text;
}

FlowtrackJson::Document readDocument( const std::string & file )
{
   try {
      return FlowtrackJson::Document( readFile( file ) );
   } catch ( const FlowtrackJson::DocumentError & e ) {
      refuse( e, file );
   }
}

void loadFile( const FlowtrackJson::Document & document, const std::string & file,
      Vok::Entity & entity, FlowtrackJson::How how )
{
   try {
      FlowtrackJson::load( document, entity, how );
   } catch ( const FlowtrackJson::DocumentError & e ) {
      refuse( e, file );
   }
}

bool isFile( const std::string & what )
{
   return what.ends_with( ".json" );
}

Corvo::Ptr< Vok::Entity > treeOf( const FlowtrackJson::Document & document,
      const std::string & file, const std::string & type )
{
   auto tree = entityType( type ).instantiate( file );
   loadFile( document, file, *tree, FlowtrackJson::How::merge );
   return tree;
}

Corvo::Ptr< Vok::Entity > readTree( Context & context, const std::string & what )
{
   if ( !isFile( what ) ) {
      return context.read( what );
   }
   if ( context.options.type.empty() ) {
      throw CommandError( wrongUsage, what + " is a file; expected --type, that of its tree" );
   }
   return treeOf( readDocument( what ), what, context.options.type );
}

} // namespace Flowtrack
