// A file of frames, replaced as a whole.
#include "Kept.h"

#include "store/Framing.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <system_error>
#include <utility>

namespace Derive {

namespace {

std::vector< char > contentOf( const std::string & path )
{
   std::ifstream file( path, std::ios::binary );
   std::vector< char > bytes{ std::istreambuf_iterator< char >( file ), {} };
   if ( file.bad() ) {
      throw std::system_error( errno, std::generic_category(), path );
   }
   return bytes;
}

} // namespace

Kept::Kept( std::string path, const std::vector< Corvo::Ptr< Vok::Entity > > & trees )
      : path_( std::move( path ) )
{
   const std::vector< char > bytes = contentOf( path_ );
   std::span< const std::byte > left = std::as_bytes( std::span( bytes ) );
   Vok::Store::FrameReader frames;
   for ( const auto & tree : trees ) {
      if ( const auto frame = frames.feed( left ) ) {
         Vok::NboAttrLog::In in( frame->data(), frame->size() );
         Vok::EntityVokNboAttrLogReader( tree ).read( in );
      }
      writers_.push_back( std::make_unique< Vok::EntityVokNboAttrLogSa >( tree ) );
   }
}

bool Kept::keep()
{
   bool changed = false;
   for ( const auto & writer : writers_ ) {
      changed = changed || writer->hasChanges();
   }
   if ( !changed ) {
      return false;
   }
   const std::string fresh = path_ + ".new";
   std::ofstream file;
   file.exceptions( std::ios::badbit | std::ios::failbit );
   file.open( fresh, std::ios::binary | std::ios::trunc );
   const auto put = [ &file ]( std::span< const std::byte > bytes ) {
      file.write( reinterpret_cast< const char * >( bytes.data() ),
            static_cast< std::streamsize >( bytes.size() ) );
   };
   for ( const auto & writer : writers_ ) {
      writer->resync();
      Vok::NboAttrLog::Out batch;
      writer->write( batch );
      put( Vok::Store::FrameWriter().header( batch.size() ) );
      put( batch.bytes() );
   }
   file.close();
   std::filesystem::rename( fresh, path_ );
   return true;
}

} // namespace Derive
