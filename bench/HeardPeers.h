// Objects as one would write them by hand for any number of listeners, who get the value before.
// Their setters are calls: they stand in another source file.
#pragma once

#include <boost/signals2/signal.hpp>
#include <sigc++/sigc++.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Bench {

/// What the objects below have in common.
class HeardValues {
 public:
   std::uint32_t count() const { return count_; }
   const std::string & title() const { return title_; }

 protected:
   std::uint32_t count_ = 0;
   std::string title_;
};

class VirtualObject;

/// A listener of one that tells by virtual calls.
class Listener {
 public:
   virtual ~Listener() = default;
   virtual void onCount( const VirtualObject & object, std::uint32_t oldValue ) = 0;
   virtual void onTitle( const VirtualObject & object, const std::string & oldValue ) = 0;
};

/// Tells its listeners by virtual calls.
class VirtualObject : public HeardValues {
 public:
   void add( Listener & listener ) { listeners_.push_back( &listener ); }
   void countIs( std::uint32_t count );
   void titleIs( const std::string & title );

 private:
   std::vector< Listener * > listeners_;
};

/// Tells whoever is connected by Boost.Signals2.
class BoostObject : public HeardValues {
 public:
   boost::signals2::signal< void( const BoostObject &, std::uint32_t ) > countChanged;
   boost::signals2::signal< void( const BoostObject &, const std::string & ) > titleChanged;

   void countIs( std::uint32_t count );
   void titleIs( const std::string & title );
};

/// Tells whoever is connected by sigc++.
class SigcObject : public HeardValues {
 public:
   sigc::signal< void, const SigcObject &, std::uint32_t > countChanged;
   sigc::signal< void, const SigcObject &, const std::string & > titleChanged;

   void countIs( std::uint32_t count );
   void titleIs( const std::string & title );
};

} // namespace Bench
