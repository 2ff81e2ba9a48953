// Cutting a printed table into columns.
#include "NdpiTable.h"

#include <charconv>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

std::string_view trimmed( std::string_view text )
{
   const auto first = text.find_first_not_of( ' ' );
   if ( first == std::string_view::npos ) {
      return {};
   }
   return text.substr( first, text.find_last_not_of( ' ' ) - first + 1 );
}

std::string_view column( std::string_view line, std::size_t from, std::size_t to )
{
   return from < line.size() ? trimmed( line.substr( from, to - from ) ) : std::string_view();
}

} // namespace

std::vector< FlowTracking::Application > readNdpiTable( std::istream & in )
{
   std::string line;
   std::size_t name = 0;
   std::size_t layer = 0;
   std::size_t breed = 0;
   std::size_t category = 0;
   while ( std::getline( in, line ) && category == 0 ) {
      const std::size_t heading = line.find( "Id Protocol " );
      if ( heading != std::string::npos && line.find( "Breed" ) != std::string::npos ) {
         name = line.find( "Protocol" );
         layer = line.find( "Layer_4" );
         breed = line.find( "Breed" );
         category = line.find( "Category" );
         break;
      }
   }
   if ( category == 0 || category == std::string::npos ) {
      throw std::runtime_error( "there is no table headed \"Id Protocol Layer_4 Breed Category\"" );
   }
   std::vector< FlowTracking::Application > rows;
   while ( std::getline( in, line ) && !trimmed( line ).empty() ) {
      const std::string_view id = column( line, 0, name );
      std::uint32_t number = 0;
      const auto [ end, error ] = std::from_chars( id.data(), id.data() + id.size(), number );
      if ( error != std::errc() || end != id.data() + id.size() ) {
         throw std::runtime_error( "a row without a number: \"" + line + "\"" );
      }
      rows.emplace_back( FlowTracking::ApplicationId( number ), column( line, name, layer ),
            column( line, category, line.size() ), column( line, breed, category ) );
   }
   return rows;
}
