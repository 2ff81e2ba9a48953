// Updates of an OVSDB table.
#include "bench/store/OvsdbUpdates.h"

#include "bench/Check.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <utility>

namespace Bench {

namespace {

using Json = nlohmann::json;

// Hands the parser's events on.
class Events final : public nlohmann::json_sax< Json > {
 public:
   explicit Events( OvsdbUpdates & updates ) noexcept : updates_( updates ) {}

   bool null() override { return true; }
   bool boolean( bool ) override { return true; }
   bool number_integer( number_integer_t ) override { return true; }
   bool number_float( number_float_t, const string_t & ) override { return true; }
   bool binary( binary_t & ) override { return true; }
   bool start_array( std::size_t ) override { return true; }
   bool end_array() override { return true; }
   bool number_unsigned( number_unsigned_t value ) override
   {
      updates_.number( value );
      return true;
   }
   bool string( string_t & value ) override
   {
      updates_.text( value );
      return true;
   }
   bool start_object( std::size_t ) override
   {
      updates_.enter();
      return true;
   }
   bool key( string_t & name ) override
   {
      updates_.key( name );
      return true;
   }
   bool end_object() override
   {
      updates_.leave();
      return true;
   }
   bool parse_error(
         std::size_t, const std::string &, const nlohmann::detail::exception & ) override
   {
      return false;
   }

 private:
   OvsdbUpdates & updates_;
};

} // namespace

bool OvsdbUpdates::take( std::string_view text )
{
   method_.clear();
   answer_ = text.find( "\"update3\"" ) == std::string_view::npos;
   Events events( *this );
   require( Json::sax_parse( text, &events ), "a message of OVSDB" );
   if ( answer_ && !table_.empty() ) {
      const auto first = std::find_if( table_.begin(), table_.end(),
            []( const auto & entry ) { return entry.second.name == memberName( 0 ); } );
      sink_.changed( stampColumn, first->second.row[ stampColumn ], true );
   }
   return method_ == "echo";
}

void OvsdbUpdates::leave()
{
   if ( keys_.size() == rowDepth ) {
      applyRow();
   }
   keys_.pop_back();
}

void OvsdbUpdates::key( std::string & name )
{
   keys_.back().swap( name );
}

// Outside of rows: the method, and in a list the number of the monitor and that of the transaction.
void OvsdbUpdates::text( const std::string & value )
{
   constexpr std::size_t uuidSize = 36;
   if ( keys_.size() == rowDepth ) {
      name_ = value;
   } else if ( keys_.back() == "method" ) {
      method_ = value;
   } else if ( value.size() == uuidSize ) {
      last_ = value;
   }
}

void OvsdbUpdates::number( std::uint64_t value )
{
   if ( keys_.size() == rowDepth ) {
      const auto at = std::find( columnNames.begin(), columnNames.end(), keys_.back() );
      require( at != columnNames.end(), "a column" );
      fields_.push_back( { static_cast< std::uint32_t >( at - columnNames.begin() ), value } );
   }
}

OvsdbUpdates::Uuid OvsdbUpdates::parse( std::string_view text )
{
   std::string digits;
   std::remove_copy( text.begin(), text.end(), std::back_inserter( digits ), '-' );
   Uuid uuid;
   const char * const middle = digits.data() + digits.size() / 2;
   std::from_chars( digits.data(), middle, uuid.high, 16 );
   std::from_chars( middle, digits.data() + digits.size(), uuid.low, 16 );
   return uuid;
}

void OvsdbUpdates::applyRow()
{
   Member & member = table_[ parse( keys_[ 2 ] ) ];
   if ( !name_.empty() ) {
      member.name = std::exchange( name_, {} );
   }
   const bool marks = member.name == memberName( 0 );
   for ( const Field & field : fields_ ) {
      member.row[ field.column ] = field.value;
      if ( !answer_ ) {
         sink_.changed( field.column, field.value, marks );
      }
   }
   fields_.clear();
}

void OvsdbUpdates::tell()
{
   if ( !sink_.marked() ) {
      return;
   }
   sink_.tell( [ this ] {
      std::uint64_t sum = 0;
      for ( const auto & [ uuid, member ] : table_ ) {
         sum += rowDigest( member.name, member.row );
      }
      return sum;
   } );
}

} // namespace Bench
