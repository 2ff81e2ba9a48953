// Addresses as the operating system knows them.
#pragma once

#include "tools/derive/Resolver.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <stop_token>
#include <string>
#include <thread>

namespace Derive {

/// Host names by getaddrinfo(3), which may take long: a thread of its own asks, and the answers are
/// taken over by take(). Names are asked for again every minute. Of several addresses of a family
/// the lowest counts, so that servers that answer in turns do not look like changes; a name server
/// that does not answer changes nothing.
class SystemResolver final : public Resolver {
 public:
   SystemResolver();
   ~SystemResolver() override;

   /// For poll(2): readable when there are answers to take over.
   int descriptor() const noexcept { return ready_; }

   /// Takes the answers over, and tells who asked.
   void take();

 private:
   void asked( const Corvo::String & name ) override;
   void dropped( const Corvo::String & name ) override;
   void ask( const std::stop_token & stop );

   int ready_; ///< an eventfd(2)
   std::mutex mutex_; ///< guards the three below
   std::condition_variable_any more_;
   std::map< std::string, bool > names_; ///< and whether they are to be asked for now
   std::map< std::string, Addresses > found_;
   std::jthread thread_;
};

/// Interfaces by getifaddrs(3), which answers at once.
class SystemInterfaces final : public Resolver {
 public:
   /// Looks again, and tells who asked of what changed.
   void refresh();

 private:
   void asked( const Corvo::String & name ) override;
   void dropped( const Corvo::String & name ) override;

   std::set< Corvo::String > names_;
};

} // namespace Derive
