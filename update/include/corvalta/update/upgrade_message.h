#pragma once

#include <string>
#include <string_view>

namespace corvalta::update {

// The one-paragraph message of the upgrade prompt: which version is on offer, which one is
// in use, and whether the upgrade is free or paid. The texts are the program's own and are
// used word for word; nothing is checked, so an empty version leaves a gap in the text.
[[nodiscard]] std::string upgradeMessage(std::string_view publishedVersion,
                                         std::string_view runningShortVersion, bool free);

}  // namespace corvalta::update
