// Lines on standard error, each an event with its fields: `level=info event=greeted program=agent`.
#pragma once

#include "store/Observer.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace Flowtrackd {

enum class Level {
   error = 3, ///< numbers as in syslog(3), which the journal reads in front of a line
   warning = 4,
   info = 6
};

/// Writes lines to standard error. Lines begin with the time, or, where the journal takes them,
/// with the level as it reads it.
class Log final : public Vok::Store::Observer {
 public:
   using Fields = std::initializer_list< std::pair< std::string_view, std::string_view > >;

   Log();

   /// Fields that are empty are left out.
   void line( Level level, std::string_view event, Fields fields ) const;

   // Observer
   void happened( const Vok::Store::Event & event ) override;

 private:
   bool journal_;
};

/// `name=value`, quoted where the value would not stand by itself.
void appendField( std::string & line, std::string_view name, std::string_view value );

} // namespace Flowtrackd
