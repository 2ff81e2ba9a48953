// What help texts and the manual page are made of.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace Flowtrack {

/// A part of the manual that is of no command.
struct Section {
   std::string heading;
   std::vector< std::string > paragraphs;
};

const std::vector< Section > & sections();

/// The sections, as the end of --help.
std::string helpFooter();

/// The commands of the program, or of a command, which people are shown.
std::vector< const CLI::App * > visibleCommands( const CLI::App & app );

/// The options and arguments of a command, those in groups included.
std::vector< const CLI::Option * > optionsOf( const CLI::App & command );

/// `flowtrack request drop-counters`.
std::string fullName( const CLI::App & command );

/// The manual page, for man(1), from the descriptions of options and commands.
std::string manualPage( const CLI::App & program );

} // namespace Flowtrack
