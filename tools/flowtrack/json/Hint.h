// What was probably meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace FlowtrackJson {

/// The known word that is nearest to one that was given, if any is near: no more letters apart than
/// a third of it. Of several the first.
std::string nearest( std::string_view given, const std::vector< std::string > & known );

/// `did you mean X?`, or nothing.
std::string didYouMean( std::string_view given, const std::vector< std::string > & known );

} // namespace FlowtrackJson
