// Objects together with listeners that read the value before each change and compare it with the
// one after.
#pragma once

#include "bench/BenchModel.h"
#include "bench/HeardPeers.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Bench {

/// An entity and its notifiees.
class VokHeard {
 public:
   using Text = Corvo::String;
   static constexpr const char * name = "Vok";

   explicit VokHeard( std::size_t listeners ) : counters_( listeners )
   {
      for ( Counter & counter : counters_ ) {
         record_->publisher().notifieeIs( &counter );
      }
   }
   Record & object() { return *record_; }
   std::int64_t heardByLast() const { return counters_.back().heard; }

 private:
   struct Counter final : Corvo::Notifiee {
      void onChange( const Corvo::Change & change ) override
      {
         const auto & record = static_cast< const Record & >( change.entity );
         if ( change.attrId == Record::countAttrId ) {
            heard += *change.oldValue< std::uint32_t >() != record.count() ? 1 : 0;
         } else if ( change.attrId == Record::titleAttrId ) {
            heard += *change.oldValue< Corvo::String >() != record.title() ? 1 : 0;
         }
      }
      std::int64_t heard = 0;
   };

   Corvo::Ptr< Record > record_ = recordFactory( "record" );
   std::vector< Counter > counters_;
};

class VirtualHeard {
 public:
   using Text = std::string;
   static constexpr const char * name = "virtual";

   explicit VirtualHeard( std::size_t listeners ) : counters_( listeners )
   {
      for ( Counter & counter : counters_ ) {
         object_.add( counter );
      }
   }
   VirtualObject & object() { return object_; }
   std::int64_t heardByLast() const { return counters_.back().heard; }

 private:
   struct Counter final : Listener {
      void onCount( const VirtualObject & object, std::uint32_t oldValue ) override
      {
         heard += object.count() != oldValue ? 1 : 0;
      }
      void onTitle( const VirtualObject & object, const std::string & oldValue ) override
      {
         heard += object.title() != oldValue ? 1 : 0;
      }
      std::int64_t heard = 0;
   };

   VirtualObject object_;
   std::vector< Counter > counters_;
};

/// An object with signals, to which functions are connected.
template< class Object > class SignalHeard {
 public:
   using Text = std::string;

   explicit SignalHeard( std::size_t listeners ) : heard_( listeners )
   {
      for ( std::int64_t & heard : heard_ ) {
         object_.countChanged.connect(
               [ &heard ]( const Object & object, std::uint32_t oldValue ) {
                  heard += object.count() != oldValue ? 1 : 0;
               } );
         object_.titleChanged.connect(
               [ &heard ]( const Object & object, const std::string & oldValue ) {
                  heard += object.title() != oldValue ? 1 : 0;
               } );
      }
   }
   Object & object() { return object_; }
   std::int64_t heardByLast() const { return heard_.back(); }

 private:
   Object object_;
   std::vector< std::int64_t > heard_;
};

struct BoostHeard : SignalHeard< BoostObject > {
   using SignalHeard::SignalHeard;
   static constexpr const char * name = "boost-signals2";
};
struct SigcHeard : SignalHeard< SigcObject > {
   using SignalHeard::SignalHeard;
   static constexpr const char * name = "sigc";
};

} // namespace Bench
