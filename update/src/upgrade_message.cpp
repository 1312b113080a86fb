#include <corvalta/update/upgrade_message.h>

namespace corvalta::update {

std::string upgradeMessage(std::string_view publishedVersion,
                           std::string_view runningShortVersion, bool free) {
  std::string message;
  message += "Version ";
  message += publishedVersion;
  message += " is now available. ";
  message += "(You are using version ";
  message += runningShortVersion;
  message += ".) ";
  message += free ? "This is a free upgrade. " : "This is a paid upgrade. ";
  message += "Would you like to automatically download ";
  message += free ? "this update (using your web browser)?"
                  : "the trial version (using your web browser)?";
  return message;
}

}  // namespace corvalta::update
