#pragma once

#include <corvalta/platform/record_names.h>
#include <corvalta/platform/window_description.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

// Helpers that turn the rows of a window's table into description records. A row names the
// values that its table gives; every other entry of the class takes the value that the
// program's windows share (enabled, visible, black text, no lock, no control array, ...).
namespace corvalta::platform::description {

// A window's table names the properties of its rows through this.
namespace property = platform::property;

struct Place {
  std::int32_t left;
  std::int32_t top;
  std::int32_t width;
  std::int32_t height;
};

struct Font {
  std::string name;
  std::int32_t size;
  bool bold;
};

// The platform's own font, at its own size.
inline Font systemFont(bool bold = false) { return {"System", 0, bold}; }
inline Font arial(std::int32_t size, bool bold = false) { return {"Arial", size, bold}; }

using Events = std::vector<std::string>;

ControlDescription staticText(std::string name, Place place, std::string text, Font font,
                              std::int32_t textAlign, PropertyList more = {}, Events events = {});
ControlDescription editField(std::string name, Place place, Font font, PropertyList more = {},
                             Events events = {});
ControlDescription pushButton(std::string name, Place place, std::string caption, Font font,
                              PropertyList more = {}, Events events = {});
ControlDescription radioButton(std::string name, Place place, std::string caption, Font font,
                               PropertyList more = {}, Events events = {});
ControlDescription groupBox(std::string name, Place place, std::string caption, Font font);
ControlDescription listbox(std::string name, Place place, Font font, PropertyList more,
                           Events events = {});
ControlDescription separator(std::string name, Place place);
ControlDescription progressBar(std::string name, Place place, PropertyList more);
ControlDescription timer(std::string name, PropertyList values, Events events);
ControlDescription httpSocket(std::string name, PropertyList values, Events events);

// A window's record: the values of the main window unless `more` says otherwise.
WindowDescription window(std::string className, std::string title, std::int32_t width,
                         std::int32_t height, PropertyList more,
                         std::vector<ControlDescription> controls, Events events = {});

}  // namespace corvalta::platform::description
