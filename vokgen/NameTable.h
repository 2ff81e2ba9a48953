// The names of one scope, and what each stands for: no two things are generated under one name.
#pragma once

#include "vokgen/Scopes.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace VokGen {

class NameTable {
 public:
   struct Entry {
      std::string what;
      Location where; ///< Nowhere for what the framework declares.
   };

   /// Enters a name that nothing here may clash with, of the framework or of another module.
   void reserve( const std::string & name, std::string what, Location where = {} )
   {
      entries_.emplace( name, Entry{ std::move( what ), where } );
   }

   /// Names in `base` are taken here too. It must outlive this table.
   void addBase( const NameTable & base ) { bases_.push_back( &base ); }

   /// Enters a name of this module; false, and reported, where it is taken.
   bool add( const Scopes & scopes, const std::string & name, const std::string & what,
         Location where );

   const Entry * find( const std::string & name ) const;

 private:
   std::unordered_map< std::string, Entry > entries_;
   std::vector< const NameTable * > bases_;
};

} // namespace VokGen
