// Finding the value types through reflection.
#include "fuzz/ValueTypes.h"

#include "fuzz/Support.h"

#include "Vok/Vok.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace Fuzz {

namespace {

using Vok::Detail::ValueOps;

using Types = std::map< std::string_view, const ValueOps * >;

void add( Types & types, const ValueOps * ops )
{
   if ( ops && ops->decode ) { // references have no form of their own
      types.emplace( ops->type->name(), ops );
   }
}

// By the compiler's name of the type, which tells an optional from its value. Numbers come first,
// as a field of one may have operations that keep its bounds.
Types allTypes()
{
   Types types;
   add( types, &Vok::Detail::valueOps< std::uint8_t > );
   add( types, &Vok::Detail::valueOps< std::uint16_t > );
   add( types, &Vok::Detail::valueOps< std::uint32_t > );
   add( types, &Vok::Detail::valueOps< std::uint64_t > );
   for ( const Corvo::ModuleInspectData & module : Corvo::ModuleInspectData::modules() ) {
      for ( const Vok::TypeData & type : module.types() ) {
         add( types, type.row().value );
         for ( const Vok::AttributeData & attribute : type.attributes() ) {
            add( types, attribute.row().value );
            add( types, attribute.row().key );
         }
      }
   }
   return types;
}

std::uint8_t byteOf( std::string_view name )
{
   std::uint32_t sum = 0;
   for ( const char c : name ) {
      sum = sum * 31 + static_cast< unsigned char >( c );
   }
   return static_cast< std::uint8_t >( sum ^ sum >> 8 ^ sum >> 16 ^ sum >> 24 );
}

} // namespace

ValueTypes::ValueTypes( bool textable )
{
   for ( const auto & [ name, ops ] : allTypes() ) {
      if ( !textable || ops->read ) {
         std::uint8_t byte = byteOf( name );
         while ( byByte_[ byte ] ) {
            ++byte;
         }
         byByte_[ byte ] = ops;
         bytes_.push_back( byte );
         hold( bytes_.size() < byByte_.size(), "there are fewer types than bytes" );
      }
   }
   hold( !bytes_.empty(), "there are value types" );
   const ValueOps * next = *std::find_if(
         byByte_.begin(), byByte_.end(), []( const ValueOps * ops ) { return ops != nullptr; } );
   for ( std::size_t i = byByte_.size(); i-- != 0; ) {
      next = byByte_[ i ] ? byByte_[ i ] : next;
      byByte_[ i ] = next;
   }
}

} // namespace Fuzz
