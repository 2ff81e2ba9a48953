// fuzz-seeds DIRECTORY: writes inputs that are in order, for fuzzers to begin with: of value-texts,
// value-logs, batches and frames, each into a folder of its name.
#include "fuzz/Forge.h"
#include "fuzz/ValueTypes.h"

#include "store/Framing.h"

#include "Vok/Vok.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>

namespace fs = std::filesystem;

namespace {

using Fuzz::Batch;
using Fuzz::PieceFlags;
using Vok::NboAttrLog::Out;

void write( const fs::path & file, Fuzz::Bytes bytes )
{
   fs::create_directories( file.parent_path() );
   std::ofstream out( file, std::ios::binary );
   out.write( reinterpret_cast< const char * >( bytes.data() ),
         static_cast< std::streamsize >( bytes.size() ) );
   Fuzz::hold( out.good(), file.string() + " can be written" );
}

Batch bytesOf( const Out & out )
{
   return { out.bytes().begin(), out.bytes().end() };
}

// ---- Values -----------------------------------------------------------------------------------

// As a file's name, of the name that the compiler has for the type.
std::string fileOf( const Vok::Detail::ValueOps & ops )
{
   std::string name( ops.type->name() );
   std::replace_if(
         name.begin(), name.end(), []( char c ) { return c == ':' || c == '<'; }, '-' );
   return name;
}

// A value to begin with: the default, of an enumeration the first name.
Vok::Detail::OwnedValue firstValue( const Vok::Detail::ValueOps & ops )
{
   Vok::Detail::OwnedValue value( ops );
   const Vok::TypeData * const type = Corvo::ModuleInspectData::findType( ops.name );
   if ( type && type->kind() == Vok::TypeKind::enumeration ) {
      Vok::CharRange first( type->enumerators().front().second );
      ops.read( first, value.data() );
   }
   return value;
}

struct Text {
   const char * type;
   const char * text;
};

// Texts with what the forms allow, and some that are nearly right.
constexpr Text texts[] = {
   { "Corvo::String", R"("two words \"q\" a\\b\n\t\x00\xff")" },
   { "Corvo::String", "\"gr\u00f6\u00dfer \u20ac\"" },
   { "Corvo::String", R"("\x41")" },
   { "double", "5e-324" },
   { "double", "1.7976931348623157e+308" },
   { "double", "-0.1e" },
   { "u64", "18446744073709551616" },
   { "Test::Interval", "Test::Interval [ before = 30 ,\tafter = 300 ]" },
   { "Test::Interval", "Test::Interval[before=30,after=301]" },
   { "Test::Pair", R"(Test::Pair[id=5,text="two words",colour=blue,level=7,on=true,time=1.5])" },
   { "Test::Address", R"("1-2")" },
   { "Test::Address", "65535-0" },
   { "Test::Span", "2-1" },
   { "Test::Label", "123456789012345678901" },
   { "Wyre::IpAddr", "255.255.255.255" },
   { "Wyre::Ip6Addr", "2001:db8::1:0:0:1" },
   { "Wyre::Ip6Addr", "::ffff:10.0.0.1" },
   { "Wyre::IpGenAddr", "10.0.0.1" },
   { "Wyre::IpGenAddr", "fe80::1" },
   { "Ipfix::RecordType", "octetDeltaCount" },
};

using namespace std::string_view_literals;

struct Log {
   const char * type;
   std::string_view bytes;
};

// Logs that no writer writes.
constexpr Log logs[] = {
   { "bool", "\2"sv },
   { "Corvo::String", "\xff\xff\xff\xff a"sv },
   { "Test::Flags", ""sv },
   { "Test::Level", "\0\0\0\13"sv },
   { "Test::Narrow", "\0\xff"sv },
   { "Test::Shelf", "\0\0\0\0\0\0\0\2\0\2\0\1"sv },
   { "Test::Recipe", "\1\0\xff\xff\xff\xff"sv },
   { "Wyre::IpGenAddr", "\3"sv },
};

std::uint8_t byteOf( const Fuzz::ValueTypes & types, std::string_view name )
{
   for ( const std::uint8_t byte : types.bytes() ) {
      if ( types.of( byte ).name == name ) {
         return byte;
      }
   }
   Fuzz::hold( false, "there is that type" );
   return 0;
}

void writeInput( const fs::path & file, std::uint8_t byte, std::string_view text )
{
   Out input;
   input.put( byte );
   input.putBytes( text.data(), text.size() );
   write( file, input.bytes() );
}

void writeValues( const fs::path & directory )
{
   const Fuzz::ValueTypes types( false );
   for ( const std::uint8_t byte : types.bytes() ) {
      const Vok::Detail::ValueOps & ops = types.of( byte );
      Out log;
      log.put( byte );
      ops.encode( log, firstValue( ops ).data() );
      write( directory / "value-logs" / fileOf( ops ), log.bytes() );
   }
   for ( std::size_t i = 0; i != std::size( logs ); ++i ) {
      writeInput( directory / "value-logs" / ( "log-" + std::to_string( i ) ),
            byteOf( types, logs[ i ].type ), logs[ i ].bytes );
   }
   const Fuzz::ValueTypes textable( true );
   const fs::path folder = directory / "value-texts";
   for ( const std::uint8_t byte : textable.bytes() ) {
      const Vok::Detail::ValueOps & ops = textable.of( byte );
      writeInput( folder / fileOf( ops ), byte, ops.text( firstValue( ops ).data() ).view() );
   }
   for ( std::size_t i = 0; i != std::size( texts ); ++i ) {
      writeInput( folder / ( "text-" + std::to_string( i ) ), byteOf( textable, texts[ i ].type ),
            texts[ i ].text );
   }
}

// ---- Batches ----------------------------------------------------------------------------------

void putPiece( Out & out, std::uint8_t flags, Fuzz::Bytes bytes )
{
   out.put( flags );
   out.put( static_cast< std::uint16_t >( bytes.size() ) );
   out.putBytes( bytes.data(), bytes.size() );
}

/// A writer of the base tree, whose batches become pieces of an input.
struct Writer {
   Writer() { batch(); }

   Batch batch()
   {
      Out out;
      writer.write( out );
      return bytesOf( out );
   }

   void put( std::uint8_t flags, const std::function< void() > & change )
   {
      change();
      if ( ( flags & PieceFlags::whole ) != 0 ) {
         writer.resync();
      }
      const Fuzz::BatchParts parts = Fuzz::partsOf( batch() );
      const bool ownTypes = ( flags & PieceFlags::ownTypes ) != 0;
      Batch bytes = ownTypes ? parts.types : Batch();
      bytes.insert( bytes.end(), parts.records.begin(), parts.records.end() );
      putPiece( input, flags, bytes );
   }

   Corvo::Ptr< Test::Root > root = Fuzz::baseTree();
   Vok::EntityVokNboAttrLogSa writer{ root };
   Out input;
};

void changeValues( Test::Root & root )
{
   root.midIs( 9 );
   root.titleIs( "another" );
   root.maybeBitIs( std::nullopt );
   root.namesIs( 2, "two" );
   root.namesDel( 1 );
   root.sortedIs( Test::Pair() );
   root.stepsDelAll();
   root.wordsIs( "" );
   root.marksDel( 4 );
   Test::Recipe recipe( Test::Narrow( 301 ) );
   recipe.stepIs( 7, Test::Pair() );
   root.recipesIs( recipe );
}

void changeChildren( Test::Root & root )
{
   root.tree( "a" )->kidsIs( "d" )->depthIs( 1 );
   root.treeIs( "e" );
   root.groupsDel( 1 );
   root.groupsIs( "again", 1 );
   root.slotsIs( Test::Label( "s" ), 5 );
   root.singleIs( "two" );
   root.onlyDel();
   root.numberedDel( Test::Narrow( 300 ) );
}

void changeReferences( Test::Root & root )
{
   const auto outside = Test::Tree::TreeIs( "away" );
   outside->kidsIs( "below" );
   root.leafRefsIs( outside );
   root.bindingsIs( Test::Label( "m" ), root.tree( "a" ), Test::Colour::blue );
   root.treeDel( "a" );
   root.refsDel( Test::Narrow( 300 ) );
}

// Types are described in the order in which they are met: these changes leave it as it is.
void changeMembers( Test::Root & root )
{
   root.tree( "a" )->kidsIs( "d" )->depthIs( 1 );
   root.groupsDel( 1 );
   root.groupsIs( "again", 1 );
   root.slotsIs( Test::Label( "s" ), 5 );
   root.singleIs( "two" );
   root.namesDelAll();
}

void writeBatches( const fs::path & directory )
{
   using Change = void ( * )( Test::Root & );
   const auto seed = [ & ]( const char * name, std::uint8_t flags, Change change ) {
      Writer writer;
      writer.put( flags, [ & ] { change( *writer.root ); } );
      write( directory / "batches" / name, writer.input.bytes() );
   };
   seed( "delta-values", 0, changeValues );
   seed( "delta-children", 0, changeChildren );
   seed( "delta-references", 0, changeReferences );
   seed( "delta-after-deletions", PieceFlags::deletesBefore, changeChildren );
   seed( "delta-while-deleting", PieceFlags::deletesMeanwhile, changeReferences );
   seed( "whole-values", PieceFlags::whole, changeValues );
   seed( "whole-children", PieceFlags::whole, changeMembers );
   seed( "whole-of-other-stream", PieceFlags::whole | PieceFlags::otherStream, changeMembers );
   seed( "whole-with-types", PieceFlags::whole | PieceFlags::ownTypes, changeValues );
   seed( "wrong-number", PieceFlags::wrongNumber, changeValues );

   Writer writer;
   writer.put( 0, [ & ] { changeValues( *writer.root ); } );
   writer.put( PieceFlags::whole, [ & ] { changeMembers( *writer.root ); } );
   writer.put( 0, [ & ] { changeReferences( *writer.root ); } );
   writer.put( 0, [ & ] { writer.root->treeIs( "a" )->kidsIs( "b" ); } );
   write( directory / "batches" / "four", writer.input.bytes() );

   Out verbatim;
   const Batch & base = Fuzz::baseBatch();
   putPiece( verbatim, PieceFlags::verbatim, base );
   write( directory / "batches" / "verbatim", verbatim.bytes() );
}

// ---- Frames -----------------------------------------------------------------------------------

void writeFrames( const fs::path & directory )
{
   constexpr std::byte payload[ 40 ] = { std::byte{ 1 } };
   std::vector< std::byte > stream;
   for ( const std::size_t size : { 5U, 0U, 40U } ) {
      Vok::Store::FrameWriter().append( Fuzz::Bytes( payload ).first( size ), stream );
   }
   constexpr std::uint8_t limits[] = { 40, 39, 255 };
   for ( const std::uint8_t limit : limits ) {
      for ( const std::size_t pieceSize : { 1U, 7U, 100U } ) {
         Out input;
         input.put( limit );
         for ( Fuzz::Bytes rest( stream ); !rest.empty(); ) {
            const Fuzz::Bytes piece = rest.first( std::min( pieceSize, rest.size() ) );
            input.put( static_cast< std::uint8_t >( piece.size() ) );
            input.putBytes( piece.data(), piece.size() );
            rest = rest.subspan( piece.size() );
         }
         const std::string name =
               "limit-" + std::to_string( limit ) + "-pieces-" + std::to_string( pieceSize );
         write( directory / "frames" / name, input.bytes() );
      }
   }
}

} // namespace

int main( int argc, char ** argv )
{
   if ( argc != 2 ) {
      std::cerr << "usage: fuzz-seeds DIRECTORY\n";
      return 2;
   }
   writeValues( argv[ 1 ] );
   writeBatches( argv[ 1 ] );
   writeFrames( argv[ 1 ] );
   return 0;
}
