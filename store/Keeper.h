// Where a store keeps mounts that outlive it.
#pragma once

#include "Vok/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Vok::Store {

/// Keeps the batches of mounts, so that a later process has them. What was kept stays, whatever
/// happens to the process or the machine. The store calls it from its own thread; what takes time
/// is done elsewhere, in the order of the calls, and found in `results`.
class VOK_EXPORT Keeper {
 public:
   using Bytes = std::vector< std::byte >;

   /// A mount, as it was kept.
   struct Kept {
      std::string path;
      std::string type; ///< full name of the root's type
      std::string writer; ///< the program that wrote it last
      std::vector< Bytes > batches; ///< a whole tree, and what changed since, in order
   };

   /// A batch to be kept.
   struct Request {
      std::string path;
      std::string type;
      std::string writer;
      std::uint64_t number = 0; ///< comes back in the result

      /// It has the whole tree: what is kept of the path goes, together with keeping this.
      bool whole = false;
      std::shared_ptr< const Bytes > batch;
   };

   /// What became of a request.
   struct Result {
      std::string path;
      std::uint64_t number = 0; ///< 0: of no request, but of something that was set aside
      std::string problem; ///< empty: it is kept
   };

   virtual ~Keeper() = default;

   /// Whether mounts at a path are kept.
   virtual bool keeps( std::string_view path ) const = 0;

   /// All that is kept. Called once, before anything else.
   virtual std::vector< Kept > load() = 0;

   /// Keeps a batch. After a problem with one of a path, the next one of that path is a whole tree.
   virtual void keep( Request request ) = 0;

   /// The mount is gone: what is kept of it goes too.
   virtual void remove( const std::string & path ) = 0;

   /// What `load` gave for a path makes no sense: it is put where nobody takes it for a mount, but
   /// people find it.
   virtual void setAside( const std::string & path, const std::string & why ) = 0;

   /// What has become of requests since the last call, in their order.
   virtual std::vector< Result > results() = 0;
};

} // namespace Vok::Store
