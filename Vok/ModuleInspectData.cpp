// The registry of modules: a list through the reflection objects themselves.
#include "Vok/ModuleInspectData.h"

#include <mutex>
#include <new>
#include <string_view>
#include <unordered_map>

namespace Corvo {

namespace {

// Libraries may be loaded by several threads at once. Loading allocates nothing: types are put into
// the index when one is asked for.
struct Registry {
   using Index = std::unordered_map< std::string_view, const Vok::TypeData * >;

   std::mutex mutex;
   const ModuleInspectData * first = nullptr;
   const ModuleInspectData * last = nullptr;
   Index * index = nullptr; // never ends, as static objects may ask it when they end
   const ModuleInspectData * indexed = nullptr; // the last module whose types are there
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
   try {
      const std::scoped_lock lock( registry.mutex );
      if ( !registry.index ) {
         registry.index = new Registry::Index;
      }
      while ( registry.indexed != registry.last ) {
         const ModuleInspectData * const next =
               registry.indexed ? registry.indexed->next_ : registry.first;
         for ( const Vok::TypeData & type : next->types() ) {
            registry.index->emplace( type.name(), &type ); // of the same name the first counts
         }
         registry.indexed = next;
      }
      const auto found = registry.index->find( name );
      return found == registry.index->end() ? nullptr : found->second;
   } catch ( const std::bad_alloc & ) {
      // There is no memory for the index.
   }
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
