#pragma once

#include <corvalta/platform/property.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvalta::platform {

// How a property's value travels in a description record. Object properties exist in the
// classes (they keep the tag numbers of what follows them right) but never travel.
enum class PropertyType { Text, Integer, Boolean, Color, Object };

struct PropertyTag {
  std::string_view name;
  PropertyType type;
};

// The classes whose chained property lists number the tags of a record. Control, RectControl,
// SocketCore and TCPSocket are bases; PaneTimer and PaneHTTPSocket are the timer and socket
// classes that a window owns by name (Timer1, hp), each adding Index and ownerWindow.
enum class RecordClass {
  Window,
  Control,
  RectControl,
  StaticText,
  EditField,
  PushButton,
  RadioButton,
  GroupBox,
  Listbox,
  Separator,
  ProgressBar,
  Timer,
  PaneTimer,
  SocketCore,
  TCPSocket,
  HTTPSocket,
  PaneHTTPSocket,
};

[[nodiscard]] std::string_view recordClassName(RecordClass recordClass);
[[nodiscard]] std::optional<RecordClass> recordClassNamed(std::string_view name);

// The chained property list: the base class's list, then the class's own properties in order
// of declaration. A tag is an index into it.
[[nodiscard]] std::span<const PropertyTag> propertyTags(RecordClass recordClass);

// The tag of a property of the class, if the class has one of that name.
[[nodiscard]] std::optional<std::uint16_t> tagOf(RecordClass recordClass, std::string_view name);

// The properties that every record of the class lists, in the order it lists them. Empty for a
// class of which no record is written (the bases and the pane classes).
[[nodiscard]] std::span<const std::string_view> entryOrder(RecordClass recordClass);

using RecordBytes = std::vector<std::uint8_t>;

// Encodes the properties in the order given. Throws std::invalid_argument for a property the
// class lacks, a value of the wrong type, an object property, or a text too long to count:
// records are the program's own data, so such a fault is a bug to stop at once.
[[nodiscard]] RecordBytes encodeRecord(RecordClass recordClass, const PropertyList& properties);

// Either every property of a record, in the order written, or why the record could not be read.
struct DecodedRecord {
  std::optional<PropertyList> properties;
  std::string error;
};

// Reads entries until the bytes run out. A record cut short inside an entry, a tag outside the
// class's list, a tag of an object property and a boolean byte other than 0 or 1 are errors,
// and an error yields no properties.
[[nodiscard]] DecodedRecord decodeRecord(RecordClass recordClass,
                                         std::span<const std::uint8_t> bytes);

}  // namespace corvalta::platform
