// The record of a type that a test knows by name.
#pragma once

#include "Vok/Vok.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace TestSupport {

/// Throws std::invalid_argument where no module has such a type.
inline const Vok::TypeData & typeNamed( std::string_view name )
{
   const Vok::TypeData * type = Corvo::ModuleInspectData::findType( name );
   if ( !type ) {
      throw std::invalid_argument( "no type is called " + std::string( name ) );
   }
   return *type;
}

} // namespace TestSupport
