#include <corvalta/platform/record.h>

#include <gtest/gtest.h>

#include <tuple>

namespace corvalta::platform {
namespace {

// Tags chain through the base classes: a class's own properties start where its base's end.
TEST(RecordClasses, TagNumbersFollowTheChainedLists) {
  const std::tuple<RecordClass, std::string_view, std::uint16_t> rows[] = {
      {RecordClass::Window, "Visible", 0},
      {RecordClass::Window, "_mInitialControlsCreated", 46},
      {RecordClass::StaticText, "InitialParent", 31},
      {RecordClass::EditField, "Mask", 73},    {RecordClass::EditField, "StyledText", 74},
      {RecordClass::RadioButton, "Value", 33}, {RecordClass::Listbox, "ColumnWidths", 41},
      {RecordClass::Timer, "Period", 1},       {RecordClass::PaneHTTPSocket, "Index", 36},
  };
  for (const auto& [recordClass, name, tag] : rows) EXPECT_EQ(tagOf(recordClass, name), tag) << name;
  EXPECT_EQ(propertyTags(RecordClass::Separator).size(), 32U);
  EXPECT_EQ(propertyTags(RecordClass::PaneHTTPSocket).size(), 38U);
  EXPECT_FALSE(tagOf(RecordClass::Timer, "Index"));
}

// Every value type has its exact encoding, and decoding gives back the same list.
TEST(RecordCodec, EncodesEachTypeBigEndianAndRoundTrips) {
  const PropertyList properties = {
      {"Name", std::string("Ab")},
      {"Index", std::int32_t{-2147483648}},
      {"Left", std::int32_t{-2}},
      {"Text", std::string()},
      {"TextColor", Color{0xFF, 0x00, 0x12}},
      {"Bold", true},
      {"Italic", false},
  };
  const RecordBytes expected = {
      0x00, 0x00, 0x00, 0x00, 0x00, 0x02, 'A', 'b',  //
      0x00, 0x01, 0x80, 0x00, 0x00, 0x00,            //
      0x00, 0x13, 0xFF, 0xFF, 0xFF, 0xFE,            //
      0x00, 0x20, 0x00, 0x00, 0x00, 0x00,            //
      0x00, 0x23, 0xFF, 0x00, 0x12,                  //
      0x00, 0x26, 0x01,                              //
      0x00, 0x27, 0x00,
  };
  const auto bytes = encodeRecord(RecordClass::StaticText, properties);
  EXPECT_EQ(bytes, expected);
  const auto decoded = decodeRecord(RecordClass::StaticText, bytes);
  ASSERT_TRUE(decoded.properties) << decoded.error;
  EXPECT_EQ(*decoded.properties, properties);
  EXPECT_EQ(decodeRecord(RecordClass::Window, {}).properties, PropertyList{});
}

// A damaged record is refused whole: an error and no properties, never a partial list.
TEST(RecordCodec, RefusesDamagedRecords) {
  struct Row {
    const char* what;
    RecordClass recordClass;
    RecordBytes bytes;
  };
  const Row rows[] = {
      {"half a tag", RecordClass::Timer, {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}},
      {"integer cut short", RecordClass::Timer, {0x00, 0x01, 0x00, 0x00, 0x03}},
      {"text longer than the record", RecordClass::StaticText,
       {0x00, 0x20, 0x00, 0x00, 0x00, 0x05, 'a', 'b'}},
      {"boolean neither 0 nor 1", RecordClass::Timer, {0x00, 0x02, 0x02}},
      {"tag past the list", RecordClass::Timer, {0x00, 0x04, 0x00, 0x00, 0x00, 0x00}},
      {"object after a good entry", RecordClass::EditField,
       {0x00, 0x22, 0x01, 0x00, 0x4A, 0x00, 0x00, 0x00, 0x00}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const auto decoded = decodeRecord(row.recordClass, row.bytes);
    EXPECT_FALSE(decoded.properties);
    EXPECT_FALSE(decoded.error.empty());
  }
}

}  // namespace
}  // namespace corvalta::platform
