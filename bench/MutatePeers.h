// Objects as one would write them by hand for one listener, or none. Their setters are calls: they
// stand in another source file.
#pragma once

#include <boost/signals2/signal.hpp>

#include <cstdint>

namespace Bench {

/// Nobody can listen.
class PlainObject {
 public:
   std::uint16_t mid() const { return mid_; }
   void midIs( std::uint16_t mid );

 private:
   std::uint16_t mid_ = 0;
};

class HeardObject;

/// The one listener of an object.
class Listener {
 public:
   virtual ~Listener() = default;
   virtual void onMid( const HeardObject & object, std::uint16_t oldValue ) = 0;
};

/// Tells its one listener by a virtual call.
class HeardObject {
 public:
   explicit HeardObject( Listener & listener ) : listener_( &listener ) {}
   std::uint16_t mid() const { return mid_; }
   void midIs( std::uint16_t mid );

 private:
   Listener * listener_;
   std::uint16_t mid_ = 0;
};

/// Tells whoever is connected by Boost.Signals2.
class SignalObject {
 public:
   boost::signals2::signal< void( const SignalObject &, std::uint16_t ) > changed;
   std::uint16_t mid() const { return mid_; }
   void midIs( std::uint16_t mid );

 private:
   std::uint16_t mid_ = 0;
};

} // namespace Bench
