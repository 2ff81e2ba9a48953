// The texts beside the commands, and roff from CLI11's descriptions.
#include "tools/flowtrack/Manual.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace Flowtrack {

const std::vector< Section > & sections()
{
   static const std::vector< Section > all = {
      { "PATHS",
            { "A PATH is that of a mount; for a place in its tree, a colon and the place follow, "
              "children with their keys: flowtracking/status/sampled:/ftStatus[ft1]" } },
      { "VALUES",
            { "Values are texts as the commands print them. What a shell would take for itself is "
              "put in single quotes; a text with blanks has its own quotes inside: "
              "'\"two words\"'." } },
      { "EXIT STATUS",
            { "0 it is done; 1 something is not there, or is not equal; 2 wrong usage; 3 the store "
              "cannot be reached, or refuses; 4 the data model does not allow a value." } },
      { "ENVIRONMENT",
            { "FLOWTRACK_STORE, FLOWTRACK_CERTIFICATE, FLOWTRACK_KEY and FLOWTRACK_AUTHORITY stand "
              "for --store, --certificate, --key and --authority where those are not given. "
              "NO_COLOR forbids colours, which are for terminals only." } },
   };
   return all;
}

std::string helpFooter()
{
   std::string text;
   for ( const Section & section : sections() ) {
      text += section.heading + ":\n";
      for ( const std::string & paragraph : section.paragraphs ) {
         std::size_t column = 0;
         for ( std::size_t at = 0; at < paragraph.size(); ) {
            const std::size_t end = std::min( paragraph.find( ' ', at ), paragraph.size() );
            if ( column != 0 && column + 1 + ( end - at ) > 80 ) {
               text += '\n';
               column = 0;
            }
            text += column == 0 ? "  " : " ";
            text += paragraph.substr( at, end - at );
            column += ( column == 0 ? 2 : 1 ) + ( end - at );
            at = end + 1;
         }
         text += '\n';
      }
   }
   return text;
}

std::vector< const CLI::App * > visibleCommands( const CLI::App & app )
{
   return app.get_subcommands( []( const CLI::App * one ) {
      return !one->get_group().empty() && !one->get_name().empty();
   } );
}

std::vector< const CLI::Option * > optionsOf( const CLI::App & command )
{
   std::vector< const CLI::Option * > options = command.get_options();
   const auto isGroup = []( const CLI::App * one ) { return one->get_name().empty(); };
   for ( const CLI::App * const group : command.get_subcommands( isGroup ) ) {
      const auto more = group->get_options();
      options.insert( options.end(), more.begin(), more.end() );
   }
   return options;
}

std::string fullName( const CLI::App & command )
{
   return command.get_parent() ? fullName( *command.get_parent() ) + " " + command.get_name()
                               : command.get_name();
}

namespace {

/// Text as roff takes it: its own signs, and dashes that can be copied.
std::string escaped( const std::string & text )
{
   std::string roff;
   for ( const char c : text ) {
      if ( c == '\\' ) {
         roff += "\\e";
      } else if ( c == '-' ) {
         roff += "\\-";
      } else if ( c == '\'' ) {
         roff += "\\(aq";
      } else {
         roff += c;
      }
   }
   return roff.starts_with( '.' ) ? "\\&" + roff : roff;
}

bool isPositional( const CLI::Option & option )
{
   return option.get_positional();
}

std::string argumentText( const CLI::Option & option )
{
   const std::string name = option.get_name( true );
   const std::string many = option.get_items_expected_max() > 1 ? "..." : "";
   return option.get_required() ? name + many : "[" + name + many + "]";
}

/// `--store ADDRESS`.
std::string optionText( const CLI::Option & option )
{
   const std::string name = option.get_name( false, true );
   return option.get_items_expected_max() == 0 ? name : name + " " + option.get_type_name();
}

std::string synopsis( const CLI::App & command )
{
   std::string text = "\\fB" + escaped( fullName( command ) ) + "\\fR";
   for ( const CLI::Option * const option : optionsOf( command ) ) {
      if ( isPositional( *option ) ) {
         text += " " + escaped( argumentText( *option ) );
      } else if ( option->get_lnames() != std::vector< std::string >{ "help" } ) {
         text += " [" + escaped( optionText( *option ) ) + "]";
      }
   }
   return text;
}

std::string optionList( const CLI::App & command )
{
   std::string text;
   for ( const CLI::Option * const option : optionsOf( command ) ) {
      const std::string name =
            isPositional( *option ) ? argumentText( *option ) : optionText( *option );
      text += ".TP\n\\fB" + escaped( name ) + "\\fR\n";
      text += escaped( option->get_description() ) + '\n';
   }
   return text;
}

std::string commandText( const CLI::App & command )
{
   std::string text;
   const auto commands = visibleCommands( command );
   if ( commands.empty() ) {
      text = ".SS " + synopsis( command ) + '\n' + escaped( command.get_description() ) + '\n' +
            optionList( command );
   }
   for ( const CLI::App * const one : commands ) {
      text += commandText( *one );
   }
   return text;
}

} // namespace

std::string manualPage( const CLI::App & program )
{
   const std::string & name = program.get_name();
   std::string text = ".TH FLOWTRACK 1\n.SH NAME\n" + name + " \\- " +
         escaped( program.get_description() ) + "\n.SH SYNOPSIS\n\\fB" + name +
         "\\fR [OPTION...] COMMAND [ARGUMENT...]\n.SH OPTIONS\n" + optionList( program ) +
         ".SH COMMANDS\n";
   for ( const CLI::App * const command : visibleCommands( program ) ) {
      text += commandText( *command );
   }
   for ( const Section & section : sections() ) {
      text += ".SH " + section.heading + '\n';
      for ( const std::string & paragraph : section.paragraphs ) {
         text += ".PP\n" + escaped( paragraph ) + '\n';
      }
   }
   return text;
}

} // namespace Flowtrack
