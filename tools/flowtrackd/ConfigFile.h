// A TOML file whose mistakes are collected, each with its place.
#pragma once

#include <toml++/toml.h>

#include <concepts>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace Flowtrackd {

class ConfigFile {
 public:
   /// `name` is what messages call the file. Throws ConfigException for what is no TOML.
   ConfigFile( const std::string & text, std::string name );

   const toml::table & root() const noexcept { return root_; }

   /// Notes a mistake at a place of the file.
   void mistake( const toml::node & at, const std::string & text );
   void mistake( const toml::source_region & at, const std::string & text );

   /// Throws ConfigException where there were mistakes.
   void done() const;

   /// Notes each key of a table that is none of these.
   void onlyKeys( const toml::table & table, std::initializer_list< std::string_view > known );

   /// What stands under a key; null where nothing does, or where it is something else, which is
   /// noted.
   const toml::table * table( const toml::table & in, std::string_view key );
   const toml::value< std::string > * text( const toml::table & in, std::string_view key );
   const toml::value< std::int64_t > * number( const toml::table & in, std::string_view key );

   /// Calls `f` with each member of a list of texts, or of tables. What f throws as std::exception
   /// is a mistake of that member.
   void texts( const toml::table & in, std::string_view key,
         const std::function< void( const std::string & ) > & f );
   void tables( const toml::table & in, std::string_view key,
         const std::function< void( const toml::table & ) > & f );

   /// Calls `f` with the text under a key, if there is one; what it throws is its mistake.
   void withText( const toml::table & in, std::string_view key,
         const std::function< void( const std::string & ) > & f );

 private:
   template< class T >
   const T * as( const toml::table & in, std::string_view key, const char * what );
   template< class F > void guard( const toml::node & at, F f );

   std::string name_;
   toml::table root_;
   std::multimap< std::pair< toml::source_index, toml::source_index >, std::string >
         mistakes_; // by line and column
};

} // namespace Flowtrackd
