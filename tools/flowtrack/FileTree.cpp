// Files are read whole.
#include "tools/flowtrack/FileTree.h"

#include "tools/flowtrack/json/Problem.h"
#include "tools/flowtrack/json/Shape.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

namespace Flowtrack {

namespace {

[[noreturn]] void refuse( const FlowtrackJson::DocumentError & error, const std::string & from )
{
   const std::string file = from == "-" ? "standard input" : from;
   const std::size_t count = error.problems().size();
   std::string text = file + ": " + std::to_string( count ) + " mistake";
   text += count == 1 ? "" : "s";
   for ( const FlowtrackJson::Problem & problem : error.problems() ) {
      text += "\n" + FlowtrackJson::textOf( problem, file );
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

Corvo::Ptr< Vok::Entity > readTree( Context & context, const std::string & what )
{
   if ( !what.ends_with( ".json" ) ) {
      return context.read( what );
   }
   if ( context.options.type.empty() ) {
      throw CommandError( wrongUsage, what + " is a file; expected --type, that of its tree" );
   }
   auto tree = FlowtrackJson::entityType( context.options.type ).instantiate( what );
   loadFile( readDocument( what ), what, *tree, FlowtrackJson::How::merge );
   return tree;
}

} // namespace Flowtrack
