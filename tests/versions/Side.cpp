// One side of a stream: writes batches of a tree, or reads them into a replica and says what comes
// of each. It knows no type by itself: its types are those of the libraries that it is linked with.
//
//    PROGRAM write FILE < SCRIPT     makes the tree of the script, and writes its batches
//    PROGRAM read FILE < SCRIPT      makes a replica in the same way, reads, and prints a report
//
// A script begins with the root, and goes on with its changes; values are texts as reflection takes
// them, to the end of their line:
//
//    root TYPE NAME [ARGUMENT...]
//    set PATH ATTRIBUTE VALUE
//    member PATH COLLECTION KEY [VALUE]
//    child PATH COLLECTION KEY
//    batch                           writes what is pending
//    whole                           writes the whole tree
#include "tests/support/DescribeTree.h"

#include "Vok/Vok.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using EntityPtr = Corvo::Ptr< Vok::Entity >;

std::string restOf( std::istream & line )
{
   std::string rest;
   std::getline( line >> std::ws, rest );
   return rest;
}

EntityPtr makeRoot( const std::string & text )
{
   std::istringstream line( text );
   std::string verb;
   std::string type;
   std::string name;
   line >> verb >> type >> name;
   std::vector< Corvo::String > arguments;
   for ( std::string argument; line >> argument; ) {
      arguments.emplace_back( argument );
   }
   const Vok::TypeData * const data = Corvo::ModuleInspectData::findType( type );
   if ( !data ) {
      throw std::runtime_error( "there is no type " + type );
   }
   return data->instantiate( name, arguments );
}

/// Makes one change of a tree.
void change( Vok::Entity & root, const std::string & verb, std::istream & line )
{
   std::string path;
   std::string attribute;
   line >> path >> attribute;
   Vok::Entity * const entity = Vok::entityAt( root, path );
   const Vok::AttributeData * const data =
         entity ? entity->typeData().attribute( attribute ) : nullptr;
   if ( !data ) {
      throw std::runtime_error( "nothing is at " + path + ", " + attribute );
   }
   if ( verb == "set" ) {
      data->set( *entity, restOf( line ) );
      return;
   }
   std::string key;
   line >> key;
   if ( verb == "child" ) {
      data->childIs( *entity, key );
   } else if ( verb == "member" ) {
      data->memberIs( *entity, key, restOf( line ) );
   } else {
      throw std::runtime_error( "a script does not " + verb );
   }
}

/// The tree of a script, and what it began as.
struct Made {
   EntityPtr root;
   EntityPtr fresh;
};

/// Runs a script; `written` is called where it writes a batch, and told whether that is the whole
/// tree.
template< class F > Made runScript( F && written )
{
   Made made;
   for ( std::string text; std::getline( std::cin, text ); ) {
      std::istringstream line( text );
      std::string verb;
      line >> verb;
      if ( verb == "root" ) {
         made = { makeRoot( text ), makeRoot( text ) };
      } else if ( verb == "batch" || verb == "whole" ) {
         written( made.root, verb == "whole" );
      } else {
         change( *made.root, verb, line );
      }
   }
   return made;
}

void write( const char * file )
{
   std::unique_ptr< Vok::EntityVokNboAttrLogSa > writer;
   Vok::NboAttrLog::Out out;
   runScript( [ & ]( const EntityPtr & root, bool whole ) {
      if ( !writer ) {
         writer = std::make_unique< Vok::EntityVokNboAttrLogSa >( root );
      } else if ( whole ) {
         writer->resync();
      }
      writer->write( out );
   } );
   std::ofstream( file, std::ios::binary )
         .write( reinterpret_cast< const char * >( out.data() ),
               static_cast< std::streamsize >( out.size() ) );
}

std::vector< std::string > linesOf( const Vok::Entity & root )
{
   std::istringstream description( TestSupport::describeTree( root ) );
   std::vector< std::string > lines;
   for ( std::string line; std::getline( description, line ); ) {
      lines.push_back( line.substr( line.find_first_not_of( ' ' ) ) );
   }
   return lines;
}

/// The next batch, cut out of a log: its length stands at its fifth byte.
std::span< const std::byte > nextBatch( Vok::NboAttrLog::In & log )
{
   Vok::NboAttrLog::In head = log;
   head.getBytes( 4 );
   return log.getBytes( head.get< std::uint32_t >() );
}

/// Reads one batch, and says so if it is refused and leaves anything behind.
bool readBatch( Vok::EntityVokNboAttrLogReader & reader, const Vok::Entity & replica,
      Vok::NboAttrLog::In batch )
{
   const Vok::Digest digest = Vok::treeDigest( replica );
   const std::vector< std::string > before = linesOf( replica );
   const std::byte * const start = batch.position();
   try {
      reader.read( batch );
      return true;
   } catch ( const Vok::NboAttrLog::Exception & e ) {
      std::cout << "refused: " << e.what() << '\n';
      if ( Vok::treeDigest( replica ) != digest || linesOf( replica ) != before ) {
         std::cout << "but the replica has changed\n";
      }
      if ( batch.position() != start ) {
         std::cout << "but the log has moved on\n";
      }
      return false;
   }
}

/// Of each batch in turn: what notifiees are told, what is passed over, and which lines the
/// description of the replica has that the one of a fresh tree has not.
void read( const char * file )
{
   const auto [ replica, fresh ] = runScript( []( const EntityPtr &, bool ) {
      throw std::runtime_error( "a reader writes no batches" );
   } );
   const std::vector< std::string > initial = linesOf( *fresh );
   const Vok::TreeFollower teller(
         *replica, []( const Corvo::Change & change, const Vok::AttributeData & attribute ) {
            std::cout << "told: " << Vok::pathOf( change.entity ).view() << ' '
                      << attribute.name() << '\n';
         } );
   std::ifstream bytes( file, std::ios::binary );
   const std::string log( std::istreambuf_iterator< char >( bytes ), {} );
   Vok::NboAttrLog::In in( std::as_bytes( std::span( log ) ) );
   Vok::EntityVokNboAttrLogReader reader( replica );
   while ( in.remaining() != 0 ) {
      if ( !readBatch( reader, *replica, Vok::NboAttrLog::In( nextBatch( in ) ) ) ) {
         continue;
      }
      for ( const Corvo::String & name : reader.passedOver() ) {
         std::cout << "passed over: " << name.view() << '\n';
      }
      for ( const std::string & line : linesOf( *replica ) ) {
         if ( std::find( initial.begin(), initial.end(), line ) == initial.end() ) {
            std::cout << "has: " << line << '\n';
         }
      }
      std::cout << "end\n";
   }
}

} // namespace

int main( int argc, char ** argv )
{
   const std::string_view mode = argc == 3 ? argv[ 1 ] : "";
   try {
      if ( mode == "write" ) {
         write( argv[ 2 ] );
      } else if ( mode == "read" ) {
         read( argv[ 2 ] );
      } else {
         throw std::runtime_error( "PROGRAM ( write | read ) FILE < SCRIPT" );
      }
   } catch ( const std::exception & e ) {
      std::cerr << e.what() << '\n';
      return 1;
   }
}
