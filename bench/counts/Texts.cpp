// Values as texts, and back.
#include "bench/Check.h"
#include "bench/counts/Situations.h"

#include "FlowTracker/ApplicationId.h"
#include "FlowTracker/FlowTrackingOrreryTypes.h"
#include "Vok/Vok.h"

#include <cstdint>
#include <string>

namespace Bench {
namespace {

constexpr std::uint32_t times = 500;

template< class Value >
void addText( Situations & all, const std::string & name, const Value & value )
{
   const Corvo::String text = Corvo::valueToStrep( value );
   all.push_back( { "text/" + name + "/print", times, [ value, text ] {
                      for ( std::uint32_t i = 0; i != times; ++i ) {
                         require( Corvo::valueToStrep( value ).size() == text.size(), "a text" );
                      }
                   } } );
   all.push_back( { "text/" + name + "/parse", times, [ value, text ] {
                      for ( std::uint32_t i = 0; i != times; ++i ) {
                         require( Corvo::strepToValue< Value >( text ) == value, "a value" );
                      }
                   } } );
}

} // namespace

void addTexts( Situations & situations )
{
   addText( situations, "number", FlowTracking::SampleRate( 12345 ) );
   addText( situations, "enumerator", FlowTracking::encapVxlan );
   addText( situations, "composite",
         FlowTracking::Application( FlowTracking::ApplicationId( 7 ), "a name", "Web", "Safe" ) );
}

} // namespace Bench
