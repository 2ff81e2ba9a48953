// Where a command's trees come from.
#include "tools/flowtrack/Context.h"

#include "tools/flowtrack/FileTree.h"
#include "tools/flowtrack/Place.h"
#include "tools/flowtrack/Session.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Json.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <poll.h>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace Flowtrack {

namespace {

/// See no-color.org: any text in NO_COLOR is a no.
bool wantsColours()
{
   const char * const no = std::getenv( "NO_COLOR" );
   const char * const kind = std::getenv( "TERM" );
   return ( !no || !*no ) && kind && std::string_view( kind ) != "dumb";
}

/// Writes a file beside it first, so that it is never half of one.
void replaceFile( const std::string & file, const std::string & text )
{
   const std::string fresh = file + ".new";
   std::ofstream to( fresh, std::ios::binary );
   to << text;
   to.close();
   std::error_code error;
   if ( to ) {
      std::filesystem::rename( fresh, file, error );
   }
   if ( !to || error ) {
      throw CommandError( notFound, file + " cannot be written" );
   }
}

} // namespace

Context::Context( std::ostream & standardOutput, std::ostream & standardError )
      : out( standardOutput ),
        err( standardError ),
        terminal( ::isatty( STDOUT_FILENO ) != 0 ),
        colours( terminal && wantsColours() )
{
}

Context::~Context() = default;

bool Context::isHeard() const
{
   pollfd output{ STDOUT_FILENO, 0, 0 };
   return out.good() && ( ::poll( &output, 1, 0 ) != 1 || output.revents == 0 );
}

Session & Context::session()
{
   if ( !options.file.empty() ) {
      throw CommandError( wrongUsage, "a file has no mounts; expected this without --file" );
   }
   if ( !session_ ) {
      session_ = std::make_unique< Session >( options.store );
   }
   return *session_;
}

Corvo::Ptr< Vok::Entity > Context::fileTree() const
{
   if ( options.type.empty() ) {
      throw CommandError(
            wrongUsage, options.file + " is a file; expected --type, that of its tree" );
   }
   Corvo::Ptr< Vok::Entity > tree = entityType( options.type ).instantiate( options.file );
   if ( std::filesystem::exists( options.file ) ) {
      loadFile( readDocument( options.file ), options.file, *tree, FlowtrackJson::How::merge );
   }
   return tree;
}

Corvo::Ptr< Vok::Entity > Context::read( const std::string & path )
{
   if ( !options.file.empty() ) {
      if ( !std::filesystem::exists( options.file ) ) {
         throw CommandError( notFound, "there is no file " + options.file );
      }
      held_.push_back( fileTree() );
      return entityAt( held_.back(), Place::parse( path, true ).inTree );
   }
   const Place place = Place::parse( path, false );
   held_.push_back( session().read( place.mount ) );
   return entityAt( held_.back(), place.inTree );
}

void Context::edit( const std::string & path, const std::string & type, const Change & change )
{
   if ( !options.file.empty() ) {
      const Corvo::Ptr< Vok::Entity > tree = fileTree();
      change( *entityAt( tree, Place::parse( path, true ).inTree ) );
      replaceFile( options.file, FlowtrackJson::jsonText( *tree ) );
      return;
   }
   session().edit( Place::parse( path, false ), type, options.takeOver, change );
}

} // namespace Flowtrack
