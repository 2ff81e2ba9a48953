// Random changes of what a switch is configured with, of what it is able to do, and of answers.
#pragma once

#include "Switch.h"

#include "tests/support/Random.h"
#include "tests/support/RandomEntity.h"

#include <string>

namespace DeriveTest {

/// Changes that make sense as often as not: groups name exporters that are there or not, interfaces
/// are bound to trackers that are there or not. Its draws are those of `random` alone.
class RandomSwitch {
 public:
   RandomSwitch( Switch & s, TestSupport::Random & random ) : s_( s ),
                                                              random_( random ) {}

   void change();
   void changes( unsigned count );

   /// Answers for all that is asked.
   void answerAll();

   /// Nothing is in progress any more.
   void finish();

 private:
   std::string name( const char * prefix, unsigned count )
   {
      return prefix + std::to_string( random_.below( count ) );
   }
   Derive::Addresses addresses();
   std::string collector();
   void changeRoot();
   void changeTracker( Ft::FlowTrackerConfig & tracker );
   void changeExporter( Ft::FlowTrackerConfig & tracker );
   void changeGroup( Ft::FlowTrackerConfig & tracker );
   void changeContent( Ft::FlowGroup & group );
   void changeBinding();
   void changeCapabilities();
   void answer();

   Switch & s_;
   TestSupport::Random & random_;
};

} // namespace DeriveTest
