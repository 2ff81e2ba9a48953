// Reading TOML so that a message says where.
#include "tools/flowtrackd/ConfigFile.h"

#include "tools/flowtrackd/Config.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace Flowtrackd {

namespace {

std::string placed( const std::string & name, const toml::source_region & at,
      const std::string & text )
{
   return name + ":" + std::to_string( at.begin.line ) + ":" + std::to_string( at.begin.column ) +
         ": " + text;
}

std::string joined( std::initializer_list< std::string_view > names )
{
   std::string text;
   for ( const std::string_view one : names ) {
      text.append( text.empty() ? "" : ", " ).append( one );
   }
   return text;
}

} // namespace

ConfigFile::ConfigFile( const std::string & text, std::string name ) : name_( std::move( name ) )
{
   try {
      root_ = toml::parse( text, name_ );
   } catch ( const toml::parse_error & e ) {
      throw ConfigException( placed( name_, e.source(), std::string( e.description() ) ) );
   }
}

void ConfigFile::mistake( const toml::source_region & at, const std::string & text )
{
   mistakes_.emplace( std::pair( at.begin.line, at.begin.column ), placed( name_, at, text ) );
}

void ConfigFile::mistake( const toml::node & at, const std::string & text )
{
   mistake( at.source(), text );
}

void ConfigFile::done() const
{
   if ( mistakes_.empty() ) {
      return;
   }
   std::string all;
   for ( const auto & [ place, one ] : mistakes_ ) {
      all += ( all.empty() ? "" : "\n" ) + one;
   }
   throw ConfigException( all );
}

void ConfigFile::onlyKeys(
      const toml::table & table, std::initializer_list< std::string_view > known )
{
   for ( const auto & [ key, value ] : table ) {
      if ( std::find( known.begin(), known.end(), key.str() ) == known.end() ) {
         const std::string found( key.str() );
         mistake( key.source(),
               "there is no \"" + found + "\" here; expected " + joined( known ) );
      }
   }
}

template< class T >
const T * ConfigFile::as( const toml::table & in, std::string_view key, const char * what )
{
   const toml::node * const node = in.get( key );
   if ( !node ) {
      return nullptr;
   }
   const T * const found = node->as< T >();
   if ( !found ) {
      mistake( *node, std::string( key ) + " is no " + what );
   }
   return found;
}

const toml::table * ConfigFile::table( const toml::table & in, std::string_view key )
{
   return as< toml::table >( in, key, "table" );
}

const toml::value< std::string > * ConfigFile::text( const toml::table & in, std::string_view key )
{
   return as< toml::value< std::string > >( in, key, "text in quotes" );
}

const toml::value< std::int64_t > * ConfigFile::number(
      const toml::table & in, std::string_view key )
{
   return as< toml::value< std::int64_t > >( in, key, "whole number" );
}

template< class F > void ConfigFile::guard( const toml::node & at, F f )
{
   try {
      f();
   } catch ( const std::exception & e ) {
      mistake( at, e.what() );
   }
}

void ConfigFile::texts( const toml::table & in, std::string_view key,
      const std::function< void( const std::string & ) > & f )
{
   if ( const auto * const list = as< toml::array >( in, key, "list" ) ) {
      for ( const toml::node & one : *list ) {
         if ( const auto * const value = one.as_string() ) {
            guard( one, [ & ] { f( value->get() ); } );
         } else {
            mistake( one, std::string( key ) + " is a list of texts in quotes" );
         }
      }
   }
}

void ConfigFile::tables( const toml::table & in, std::string_view key,
      const std::function< void( const toml::table & ) > & f )
{
   if ( const auto * const list = as< toml::array >( in, key, "list of tables" ) ) {
      for ( const toml::node & one : *list ) {
         if ( const auto * const value = one.as_table() ) {
            guard( one, [ & ] { f( *value ); } );
         } else {
            mistake( one, std::string( key ) + " is a list of tables" );
         }
      }
   }
}

void ConfigFile::withText( const toml::table & in, std::string_view key,
      const std::function< void( const std::string & ) > & f )
{
   if ( const auto * const value = text( in, key ) ) {
      guard( *value, [ & ] { f( value->get() ); } );
   }
}

} // namespace Flowtrackd
