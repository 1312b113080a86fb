#include <corvalta/platform/description_builder.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace corvalta::platform::description {
namespace {

using platform::Color;
using platform::Property;
using platform::RecordClass;

constexpr std::int32_t noControlArray = -2147483647 - 1;
constexpr Color black{0x00, 0x00, 0x00};
constexpr Color white{0xFF, 0xFF, 0xFF};

// The values that every control of the program has unless its row says otherwise.
const PropertyList& sharedControlValues() {
  static const PropertyList values = {
      {property::Index, noControlArray},
      {property::LockLeft, false},
      {property::LockTop, false},
      {property::LockRight, false},
      {property::LockBottom, false},
      {property::TabPanelIndex, std::int32_t{0}},
      {property::Enabled, true},
      {property::Visible, true},
      {property::HelpTag, std::string()},
      {property::AutoDeactivate, true},
      {property::Italic, false},
      {property::Underline, false},
      {property::MultiLine, false},
      {property::DataSource, std::string()},
      {property::DataField, std::string()},
      {property::InitialParent, std::string()},
      {property::Text, std::string()},
      {property::TextAlign, std::int32_t{0}},
      {property::TextColor, black},
      {property::Default, false},
      {property::Cancel, false},
      {property::Value, false},
      // The three answer fields of the main window, which the other fields follow.
      {property::Border, true},
      {property::ScrollBarHorizontal, false},
      {property::ScrollBarVertical, true},
      {property::Styled, false},
      {property::Password, false},
      {property::UseFocusRing, true},
      {property::BackColor, white},
      {property::Format, std::string()},
      {property::Mask, std::string()},
      {property::ReadOnly, false},
      {property::LimitText, std::int32_t{0}},
      {property::AcceptTabs, false},
      {property::Alignment, std::int32_t{0}},
  };
  return values;
}

// The main window's record, which the other windows take over but for what they change.
const PropertyList& sharedWindowValues() {
  static const PropertyList values = {
      {property::Placement, std::int32_t{0}},
      {property::MinWidth, std::int32_t{64}},
      {property::MinHeight, std::int32_t{64}},
      {property::MaxWidth, std::int32_t{32000}},
      {property::MaxHeight, std::int32_t{32000}},
      {property::Frame, std::int32_t{0}},
      {property::Composite, false},
      {property::HasBackColor, false},
      {property::BackColor, white},
      {property::Visible, true},
      {property::FullScreen, false},
      {property::MenuBarVisible, true},
      {property::CloseButton, true},
      {property::Resizeable, false},
      {property::LiveResize, false},
      {property::MaximizeButton, false},
      {property::MinimizeButton, true},
      {property::BalloonHelp, std::string()},
      {property::MacProcId, std::int32_t{0}},
  };
  return values;
}

const Property* find(const PropertyList& list, std::string_view name) {
  const auto found = std::find_if(
      list.begin(), list.end(), [name](const Property& property) { return property.name == name; });
  return found == list.end() ? nullptr : &*found;
}

// Lists the class's entries in their order, each from the row if it names it, else from the
// shared values. A row naming something its class does not write is a mistake in the table.
platform::RecordBytes record(RecordClass recordClass, const PropertyList& row,
                             const PropertyList& shared) {
  const auto entries = platform::entryOrder(recordClass);
  for (const auto& property : row) {
    if (std::find(entries.begin(), entries.end(), property.name) == entries.end()) {
      throw std::invalid_argument(property.name + " is no entry of a " +
                                  std::string(platform::recordClassName(recordClass)) + " record");
    }
  }
  PropertyList ordered;
  for (const auto name : entries) {
    const auto* value = find(row, name);
    if (value == nullptr) {
      value = find(shared, name);
    }
    if (value == nullptr) {
      throw std::invalid_argument("no value for " + std::string(name));
    }
    ordered.push_back(*value);
  }
  return platform::encodeRecord(recordClass, ordered);
}

PropertyList join(std::initializer_list<PropertyList> parts) {
  PropertyList all;
  for (const auto& part : parts) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

PropertyList named(const std::string& name, Place place) {
  return {{property::Name, name},
          {property::Left, place.left},
          {property::Top, place.top},
          {property::Width, place.width},
          {property::Height, place.height}};
}

PropertyList typeface(const Font& font) {
  return {{property::TextFont, font.name},
          {property::TextSize, font.size},
          {property::Bold, font.bold}};
}

ControlDescription control(RecordClass recordClass, std::string name, const PropertyList& row,
                           Events events) {
  auto bytes = record(recordClass, row, sharedControlValues());
  return {std::move(name), recordClass, std::move(bytes), std::move(events)};
}

// A control with a caption in its own typeface: a button, a radio button, a group box.
ControlDescription captioned(RecordClass recordClass, std::string name, Place place,
                             std::string caption, const Font& font, const PropertyList& more,
                             Events events) {
  const auto row =
      join({named(name, place), typeface(font), {{property::Caption, std::move(caption)}}, more});
  return control(recordClass, std::move(name), row, std::move(events));
}

}  // namespace

ControlDescription staticText(std::string name, Place place, std::string text, Font font,
                              std::int32_t textAlign, PropertyList more, Events events) {
  const auto row = join({named(name, place),
                         typeface(font),
                         {{property::Text, std::move(text)}, {property::TextAlign, textAlign}},
                         more});
  return control(RecordClass::StaticText, std::move(name), row, std::move(events));
}

ControlDescription editField(std::string name, Place place, Font font, PropertyList more,
                             Events events) {
  const auto row = join({named(name, place), typeface(font), more});
  return control(RecordClass::EditField, std::move(name), row, std::move(events));
}

ControlDescription pushButton(std::string name, Place place, std::string caption, Font font,
                              PropertyList more, Events events) {
  return captioned(RecordClass::PushButton, std::move(name), place, std::move(caption), font, more,
                   std::move(events));
}

ControlDescription radioButton(std::string name, Place place, std::string caption, Font font,
                               PropertyList more, Events events) {
  return captioned(RecordClass::RadioButton, std::move(name), place, std::move(caption), font, more,
                   std::move(events));
}

ControlDescription groupBox(std::string name, Place place, std::string caption, Font font) {
  return captioned(RecordClass::GroupBox, std::move(name), place, std::move(caption), font, {}, {});
}

ControlDescription listbox(std::string name, Place place, Font font, PropertyList more,
                           Events events) {
  const auto row = join({named(name, place), typeface(font), more});
  return control(RecordClass::Listbox, std::move(name), row, std::move(events));
}

ControlDescription separator(std::string name, Place place) {
  return control(RecordClass::Separator, name, named(name, place), {});
}

ControlDescription progressBar(std::string name, Place place, PropertyList more) {
  const auto row = join({named(name, place), more});
  return control(RecordClass::ProgressBar, std::move(name), row, {});
}

ControlDescription timer(std::string name, PropertyList values, Events events) {
  return control(RecordClass::Timer, std::move(name), values, std::move(events));
}

ControlDescription httpSocket(std::string name, PropertyList values, Events events) {
  return control(RecordClass::HTTPSocket, std::move(name), values, std::move(events));
}

WindowDescription window(std::string className, std::string title, std::int32_t width,
                         std::int32_t height, PropertyList more,
                         std::vector<ControlDescription> controls, Events events) {
  const auto row = join(
      {{{property::Title, std::move(title)}, {property::Width, width}, {property::Height, height}},
       more});
  return {std::move(className), record(platform::RecordClass::Window, row, sharedWindowValues()),
          std::move(controls), std::move(events)};
}

}  // namespace corvalta::platform::description
