#pragma once

#include <corvalta/platform/record.h>

#include <string>
#include <vector>

namespace corvalta::platform {

// One control of a window as its description gives it: the name it is found by, the class
// whose tags its record is read with, the record, and the events it has handlers for.
struct ControlDescription {
  std::string name;
  RecordClass recordClass;
  RecordBytes record;
  std::vector<std::string> events;
};

// What a window class is built from: its own record (read with the tags of Window), its
// controls in the order of creation, which is also the order of the Tab key, and the events of
// the window itself that it handles.
struct WindowDescription {
  std::string className;
  RecordBytes record;
  std::vector<ControlDescription> controls;
  std::vector<std::string> events;
};

}  // namespace corvalta::platform
