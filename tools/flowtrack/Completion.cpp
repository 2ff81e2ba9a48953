// flowtrack completion and complete: what shells ask while a command is typed.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Completer.h"
#include "tools/flowtrack/Context.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

// What is printed takes the place of what stands behind the last break; in bash : and = are some.
constexpr const char * bashScript = R"sh(# Completion of flowtrack for bash:
#    eval "$(flowtrack completion bash)"
_flowtrack() {
   mapfile -t COMPREPLY < <(flowtrack complete --breaks "$COMP_WORDBREAKS" -- \
      "${COMP_LINE:0:COMP_POINT}" 2>/dev/null)
   if [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *[/=] ]]; then
      compopt -o nospace
   fi
}
complete -F _flowtrack flowtrack
)sh";

// A quote that is open belongs to what stands before the word.
constexpr const char * zshScript = R"sh(#compdef flowtrack
# Completion of flowtrack for zsh:
#    source <(flowtrack completion zsh)
_flowtrack() {
   local -a found
   found=("${(@f)$(flowtrack complete -- \
      "${words[1,CURRENT-1]} $QIPREFIX$PREFIX" 2>/dev/null)}")
   found=("${(@)found#"$QIPREFIX"}")
   compadd -Q -S '' -- ${found:#}
}
compdef _flowtrack flowtrack
)sh";

} // namespace

void addCompletion( CLI::App & app, Context & context )
{
   CLI::App * const command = app.add_subcommand(
         "completion", "Prints a script that completes commands, paths, keys and values." );
   const auto shell = std::make_shared< std::string >();
   command->add_option( "SHELL", *shell, "bash or zsh" )
         ->required()
         ->check( CLI::IsMember( { "bash", "zsh" } ) );
   command->callback(
         [ &context, shell ] { context.out << ( *shell == "bash" ? bashScript : zshScript ); } );
}

void addComplete( CLI::App & app, Context & context )
{
   CLI::App * const command = app.add_subcommand( "complete", "What may come next." );
   command->group( "" );
   const auto line = std::make_shared< std::string >();
   const auto breaks = std::make_shared< std::string >();
   command->add_option( "LINE", *line, "the line up to the cursor" )->required();
   command->add_option( "--breaks", *breaks, "behind which the shell replaces what is typed" );
   command->callback( [ &app, &context, line, breaks ] {
      const ShellLine typed( *line, *breaks );
      for ( const std::string & word : Completer( app, context ).complete( typed ) ) {
         context.out << word << '\n';
      }
   } );
}

} // namespace Flowtrack
