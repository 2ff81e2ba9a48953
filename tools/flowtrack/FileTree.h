// Files in the place of mounts: what a command reads, and what a document has in the way of errors.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/json/Load.h"

#include <string>

namespace Flowtrack {

/// A whole file; `-` is standard input. Throws CommandError.
std::string readFile( const std::string & file );

/// A document of a file, or a CommandError with all that is wrong in it, a line each.
FlowtrackJson::Document readDocument( const std::string & file );

/// Does to an entity what the document of a file says, or throws such a CommandError.
void loadFile( const FlowtrackJson::Document & document, const std::string & file,
      Vok::Entity & entity, FlowtrackJson::How how );

/// Whether a word of the command line is a file, FILE.json, and no path.
bool isFile( const std::string & what );

/// A new tree of a type, with what the document of a file says.
Corvo::Ptr< Vok::Entity > treeOf( const FlowtrackJson::Document & document,
      const std::string & file, const std::string & type );

/// What stands for a tree on the command line: FILE.json, read as a tree of the type of --type, or
/// else the path of an entity.
Corvo::Ptr< Vok::Entity > readTree( Context & context, const std::string & what );

} // namespace Flowtrack
