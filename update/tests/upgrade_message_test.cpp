#include <corvalta/update/upgrade_message.h>

#include <gtest/gtest.h>

namespace corvalta::update {
namespace {

// The free and paid wordings differ in two pieces only, and spaces end each piece.
TEST(UpgradeMessage, ReadsWordForWordInBothForms) {
  EXPECT_EQ(upgradeMessage("2.2.0", "2.1.1", true),
            "Version 2.2.0 is now available. (You are using version 2.1.1.) "
            "This is a free upgrade. Would you like to automatically download "
            "this update (using your web browser)?");
  EXPECT_EQ(upgradeMessage("2.2.0", "2.1.1", false),
            "Version 2.2.0 is now available. (You are using version 2.1.1.) "
            "This is a paid upgrade. Would you like to automatically download "
            "the trial version (using your web browser)?");
  EXPECT_EQ(upgradeMessage("", "2.1.1", false),
            "Version  is now available. (You are using version 2.1.1.) "
            "This is a paid upgrade. Would you like to automatically download "
            "the trial version (using your web browser)?");
}

}  // namespace
}  // namespace corvalta::update
