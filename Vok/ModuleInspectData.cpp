// The registry of modules: a list through the reflection objects themselves.
#include "Vok/ModuleInspectData.h"

#include <mutex>

namespace Corvo {

namespace {

// Libraries may be loaded by several threads at once.
struct Registry {
   std::mutex mutex;
   const ModuleInspectData * first = nullptr;
   const ModuleInspectData * last = nullptr;
};

// Constant-initialised: modules register before dynamic initialisation of this file may have run.
constinit Registry registry;

} // namespace

void ModuleInspectData::loaded( const ModuleInspectData & module ) noexcept
{
   for ( const Use use : module.row_.uses ) {
      loaded( use() );
   }
   const std::scoped_lock lock( registry.mutex );
   if ( module.registered_ ) {
      return;
   }
   module.registered_ = true;
   if ( registry.last ) {
      registry.last->next_ = &module;
   } else {
      registry.first = &module;
   }
   registry.last = &module;
}

ModuleInspectData::ModuleRange ModuleInspectData::modules() noexcept
{
   const std::scoped_lock lock( registry.mutex );
   return ModuleRange( registry.first );
}

const ModuleInspectData * ModuleInspectData::ModuleRange::after(
      const ModuleInspectData & module ) noexcept
{
   const std::scoped_lock lock( registry.mutex );
   return module.next_;
}

const Vok::TypeData * ModuleInspectData::findType( std::string_view name ) noexcept
{
   for ( const ModuleInspectData & module : modules() ) {
      for ( const Vok::TypeData & type : module.types() ) {
         if ( type.name() == name ) {
            return &type;
         }
      }
   }
   return nullptr;
}

} // namespace Corvo
