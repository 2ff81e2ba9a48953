// The record of BenchModel.vok as one would write it by hand for nobody to listen: with the same
// comparisons and checks.
#pragma once

#include "bench/PlainValues.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace Bench {

/// Its setters are inlined where they are called.
class InlinedRecord {
 public:
   using Text = std::string;
   using Rate = PlainRate;
   static constexpr const char * name = "inlined";

   bool enabled() const { return enabled_; }
   std::uint32_t limit() const { return limit_; }
   const std::string & title() const { return title_; }
   const PlainRate & rate() const { return rate_; }
   std::optional< std::uint32_t > maybe() const { return maybe_; }

   void enabledIs( bool enabled ) { replace( enabled_, enabled ); }
   void limitIs( std::uint32_t limit )
   {
      if ( limit != limit_ ) {
         if ( limit < 1 || limit > 1000000 ) {
            throw std::out_of_range( "limit" );
         }
         limit_ = limit;
      }
   }
   void titleIs( const std::string & title ) { replace( title_, title ); }
   void rateIs( const PlainRate & rate ) { replace( rate_, rate ); }
   void maybeIs( std::optional< std::uint32_t > maybe ) { replace( maybe_, maybe ); }

 private:
   template< class V > static void replace( V & stored, const V & value )
   {
      if ( stored != value ) {
         stored = value;
      }
   }

   std::string title_;
   PlainRate rate_;
   std::optional< std::uint32_t > maybe_;
   std::uint32_t limit_ = 1;
   bool enabled_ = false;
};

/// Its setters are calls: they stand in another source file.
class CalledRecord : public InlinedRecord {
 public:
   static constexpr const char * name = "call";

   void enabledIs( bool enabled );
   void limitIs( std::uint32_t limit );
   void titleIs( const std::string & title );
   void rateIs( const PlainRate & rate );
   void maybeIs( std::optional< std::uint32_t > maybe );
};

} // namespace Bench
