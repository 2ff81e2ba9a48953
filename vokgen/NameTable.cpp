#include "vokgen/NameTable.h"

namespace VokGen {

bool NameTable::add( const Scopes & scopes, const std::string & name, const std::string & what,
      Location where )
{
   const Entry * taken = find( name );
   if ( !taken ) {
      entries_.emplace( name, Entry{ what, where } );
      return true;
   }
   scopes.workspace().diagnostics.error( where, Message::nameTaken, { what, name, taken->what } );
   if ( taken->where.file ) {
      scopes.note( taken->where, Message::takenHere, { taken->what } );
   }
   return false;
}

const NameTable::Entry * NameTable::find( const std::string & name ) const
{
   const auto own = entries_.find( name );
   if ( own != entries_.end() ) {
      return &own->second;
   }
   for ( const NameTable * base : bases_ ) {
      const auto inherited = base->entries_.find( name );
      if ( inherited != base->entries_.end() ) {
         return &inherited->second;
      }
   }
   return nullptr;
}

} // namespace VokGen
