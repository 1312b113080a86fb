#include <corvalta/platform/record.h>

#include <array>
#include <iterator>
#include <map>
#include <stdexcept>

namespace corvalta::platform {
namespace {

constexpr auto t = PropertyType::Text;
constexpr auto i = PropertyType::Integer;
constexpr auto b = PropertyType::Boolean;
constexpr auto c = PropertyType::Color;
constexpr auto o = PropertyType::Object;

// Each class's own properties, in order of declaration, private ones included: they take tag
// numbers like the rest.
constexpr PropertyTag windowOwn[] = {
    {"Visible", b}, {"Left", i}, {"Top", i}, {"Width", i}, {"Height", i}, {"Placement", i},
    {"Title", t}, {"FullScreen", b}, {"MenuBarVisible", b}, {"CloseBox", b},
    {"CloseButton", b}, {"GrowIcon", b}, {"Resizeable", b}, {"ZoomIcon", b},
    {"MaximizeButton", b}, {"MinimizeButton", b}, {"Frame", i}, {"Composite", b},
    {"LiveResize", b}, {"Backdrop", o}, {"Graphics", o}, {"HasBackColor", b},
    {"BackColor", c}, {"BalloonHelp", t}, {"MinWidth", i}, {"MinHeight", i},
    {"MaxWidth", i}, {"MaxHeight", i}, {"MacProcId", i}, {"MouseCursor", o},
    {"ControlCount", i}, {"FloaterProcess", t}, {"MouseX", i}, {"MouseY", i},
    {"MacWindowPtr", i}, {"WinHWND", i}, {"Handle", i}, {"DockItem", o}, {"MenuBar", o},
    {"Focus", o}, {"_mImp", o}, {"_mControls", o}, {"_mMenuHandlers", o},
    {"_mControlList", o}, {"_mContentPane", o}, {"_mFocusControl", o},
    {"_mInitialControlsCreated", i},
};

constexpr PropertyTag controlOwn[] = {
    {"Name", t}, {"Index", i}, {"TabPanelIndex", i}, {"PanelIndex", i}, {"MouseX", i},
    {"MouseY", i}, {"Window", o}, {"Handle", i}, {"_mImp", o}, {"_mWindow", o},
    {"_mIndex", i}, {"_mName", t}, {"_mPanelIndex", i}, {"_mInitialParent", t},
};

constexpr PropertyTag rectControlOwn[] = {
    {"HelpTag", t}, {"BalloonHelp", t}, {"DisabledBalloonHelp", t}, {"MouseCursor", o},
    {"Visible", b}, {"Left", i}, {"Top", i}, {"Width", i}, {"Height", i}, {"Enabled", b},
    {"Active", b}, {"AutoDeactivate", b}, {"LockLeft", b}, {"LockTop", b},
    {"LockRight", b}, {"LockBottom", b}, {"Parent", o}, {"InitialParent", t},
};

constexpr PropertyTag staticTextOwn[] = {
    {"Text", t}, {"Caption", t}, {"TextAlign", i}, {"TextColor", c}, {"TextFont", t},
    {"TextSize", i}, {"Bold", b}, {"Italic", b}, {"Underline", b}, {"MultiLine", b},
    {"DataSource", t}, {"DataField", t},
};

constexpr PropertyTag editFieldOwn[] = {
    {"Text", t}, {"TextStyleData", t}, {"Border", b}, {"MultiLine", b}, {"ReadOnly", b},
    {"Password", b}, {"Styled", b}, {"AcceptTabs", b}, {"TextColor", c}, {"BackColor", c},
    {"ScrollBarHorizontal", b}, {"ScrollBarVertical", b}, {"ScrollBar", b},
    {"TextFont", t}, {"TextSize", i}, {"Bold", b}, {"Italic", b}, {"Underline", b},
    {"SelStart", i}, {"SelLength", i}, {"SelText", t}, {"LimitText", i}, {"SelBold", b},
    {"SelUnderline", b}, {"SelItalic", b}, {"SelOutline", b}, {"SelShadow", b},
    {"SelCondense", b}, {"SelExtend", b}, {"SelPlain", b}, {"SelTextFont", t},
    {"SelTextSize", i}, {"SelTextColor", c}, {"LiveUpdate", b}, {"UseFocusRing", b},
    {"DataSource", t}, {"DataField", t}, {"Alignment", i}, {"SelAlignment", i},
    {"Format", t}, {"FormattedText", t}, {"Mask", t}, {"StyledText", o},
};

constexpr PropertyTag pushButtonOwn[] = {
    {"Caption", t}, {"Default", b}, {"Cancel", b}, {"TextFont", t},
    {"TextSize", i}, {"Bold", b}, {"Italic", b}, {"Underline", b},
};

constexpr PropertyTag radioButtonOwn[] = {
    {"Caption", t}, {"Value", b}, {"TextFont", t}, {"TextSize", i},
    {"Bold", b}, {"Italic", b}, {"Underline", b},
};

constexpr PropertyTag groupBoxOwn[] = {
    {"Caption", t}, {"TextFont", t}, {"TextSize", i}, {"Bold", b}, {"Italic", b}, {"Underline", b},
};

constexpr PropertyTag listboxOwn[] = {
    {"TextFont", t}, {"TextSize", i}, {"Bold", b}, {"Italic", b}, {"Underline", b},
    {"ListCount", i}, {"ListIndex", i}, {"Text", t}, {"ColumnCount", i},
    {"ColumnWidths", t}, {"Hierarchical", b}, {"LastIndex", i}, {"EnableDrag", b},
    {"EnableDragReorder", b}, {"SelectionType", i}, {"SelCount", i}, {"InitialValue", t},
    {"HasHeading", b}, {"UseFocusRing", b}, {"HeadingIndex", i}, {"ScrollPosition", i},
    {"ScrollPositionX", i}, {"ScrollBarHorizontal", b}, {"ScrollBarVertical", b},
    {"DataSource", t}, {"DataField", t}, {"GridLinesHorizontal", i},
    {"GridLinesVertical", i}, {"DefaultRowHeight", i}, {"ActiveCell", o},
    {"SortedColumn", i}, {"ColumnsResizable", b}, {"RequiresSelection", b},
    {"AutoHideScrollbars", b}, {"_ScrollWidth", i}, {"_ScrollOffset", i},
};

constexpr PropertyTag progressBarOwn[] = {{"Value", i}, {"Maximum", i}};

constexpr PropertyTag timerOwn[] = {{"Mode", i}, {"Period", i}, {"Enabled", b}, {"_mImp", o}};

// What a timer or socket needs so that a window can own it and find it by name.
constexpr PropertyTag paneChildOwn[] = {{"Index", i}, {"ownerWindow", o}};

constexpr PropertyTag socketCoreOwn[] = {
    {"Port", i}, {"LocalAddress", t}, {"LastErrorCode", i},
    {"IsConnected", b}, {"NetworkInterface", o}, {"Handle", i},
};

constexpr PropertyTag tcpSocketOwn[] = {
    {"Address", t}, {"RemoteAddress", t}, {"PPPStatus", i},
    {"BytesAvailable", i}, {"BytesLeftToSend", i},
};

constexpr PropertyTag httpSocketOwn[] = {
    {"_pageHeaders", o}, {"_server", t}, {"_path", t}, {"requestHeaders", o},
    {"_totalLength", i}, {"_downloadStream", o}, {"_downloadFile", o}, {"_pageBuffer", t},
    {"_currentLength", i}, {"_pageComplete", b}, {"_postContent", t},
    {"_postContentType", t}, {"_httpAction", t}, {"_processingURL", t},
    {"_connectionValid", b}, {"_httpStatusCode", i}, {"defaultPort", i},
    {"httpProxyAddress", t}, {"httpProxyPort", i}, {"_authenticationKey", t},
    {"yield", b}, {"synchronous", b}, {"timeoutSeconds", i}, {"mErrorCode", i},
    {"threadProtection", b},
};

// The entries that each class's records list, in their order. The records of every
// RectControl begin alike, then go on with the entries of their class.
constexpr std::string_view rectControlEntries[] = {
    "Name", "Index", "Left", "Top", "Width", "Height", "LockLeft", "LockTop", "LockRight",
    "LockBottom", "TabPanelIndex",
};

constexpr std::string_view windowEntries[] = {
    "Placement", "Width", "Height", "MinWidth", "MinHeight", "MaxWidth", "MaxHeight",
    "Frame", "Composite", "HasBackColor", "BackColor", "Title", "Visible", "FullScreen",
    "MenuBarVisible", "CloseButton", "Resizeable", "LiveResize", "MaximizeButton",
    "MinimizeButton", "BalloonHelp", "MacProcId",
};

constexpr std::string_view staticTextEntries[] = {
    "Text", "TextAlign", "TextColor", "MultiLine", "Enabled", "Visible",
    "HelpTag", "AutoDeactivate", "TextFont", "TextSize", "Bold", "Italic", "Underline",
    "DataSource", "DataField", "InitialParent",
};

constexpr std::string_view editFieldEntries[] = {
    "Border", "MultiLine", "ScrollBarHorizontal", "ScrollBarVertical",
    "Styled", "Password", "UseFocusRing", "TextColor", "BackColor", "Enabled", "Format",
    "Visible", "HelpTag", "AutoDeactivate", "TextFont", "TextSize", "Bold", "Italic",
    "Underline", "Text", "Mask", "ReadOnly", "LimitText", "AcceptTabs", "Alignment",
    "DataSource", "DataField", "InitialParent",
};

constexpr std::string_view pushButtonEntries[] = {
    "Caption", "Default", "Cancel", "Enabled", "Visible", "HelpTag",
    "AutoDeactivate", "TextFont", "TextSize", "Bold", "Italic", "Underline", "InitialParent",
};

constexpr std::string_view radioButtonEntries[] = {
    "Caption", "Enabled", "Visible", "HelpTag", "AutoDeactivate",
    "TextFont", "TextSize", "Bold", "Italic", "Underline", "Value", "InitialParent",
};

constexpr std::string_view groupBoxEntries[] = {
    "Caption", "Enabled", "Visible", "HelpTag", "AutoDeactivate",
    "TextFont", "TextSize", "Bold", "Italic", "Underline", "InitialParent",
};

constexpr std::string_view listboxEntries[] = {
    "Visible", "HelpTag", "AutoDeactivate", "Enabled", "ColumnCount",
    "ColumnWidths", "HasHeading", "UseFocusRing", "InitialValue", "HeadingIndex",
    "ScrollBarHorizontal", "ScrollBarVertical", "GridLinesHorizontal", "GridLinesVertical",
    "DefaultRowHeight", "_ScrollWidth", "_ScrollOffset", "TextFont", "TextSize", "Bold",
    "Italic", "Underline", "Hierarchical", "EnableDrag", "EnableDragReorder",
    "RequiresSelection", "SelectionType", "ColumnsResizable", "AutoHideScrollbars",
    "DataSource", "DataField", "InitialParent",
};

// The one class that writes InitialParent first.
constexpr std::string_view separatorEntries[] = {
    "InitialParent", "Visible", "HelpTag", "AutoDeactivate", "Enabled",
};

constexpr std::string_view progressBarEntries[] = {
    "Visible", "HelpTag", "AutoDeactivate", "Enabled", "Value", "Maximum",
    "InitialParent",
};

constexpr std::string_view timerEntries[] = {"Mode", "Period"};

constexpr std::string_view httpSocketEntries[] = {"Address", "Port", "yield"};

struct ClassInfo {
  RecordClass recordClass;
  std::string_view name;
  std::optional<RecordClass> base;
  std::span<const PropertyTag> own;
  std::span<const std::string_view> entries;
};

constexpr std::array classes = {
    ClassInfo{RecordClass::Window, "Window", std::nullopt, windowOwn, windowEntries},
    ClassInfo{RecordClass::Control, "Control", std::nullopt, controlOwn, {}},
    ClassInfo{RecordClass::RectControl, "RectControl", RecordClass::Control, rectControlOwn, {}},
    ClassInfo{RecordClass::StaticText, "StaticText", RecordClass::RectControl, staticTextOwn,
              staticTextEntries},
    ClassInfo{RecordClass::EditField, "EditField", RecordClass::RectControl, editFieldOwn,
              editFieldEntries},
    ClassInfo{RecordClass::PushButton, "PushButton", RecordClass::RectControl, pushButtonOwn,
              pushButtonEntries},
    ClassInfo{RecordClass::RadioButton, "RadioButton", RecordClass::RectControl,
              radioButtonOwn, radioButtonEntries},
    ClassInfo{RecordClass::GroupBox, "GroupBox", RecordClass::RectControl, groupBoxOwn,
              groupBoxEntries},
    ClassInfo{RecordClass::Listbox, "Listbox", RecordClass::RectControl, listboxOwn,
              listboxEntries},
    ClassInfo{RecordClass::Separator, "Separator", RecordClass::RectControl, {},
              separatorEntries},
    ClassInfo{RecordClass::ProgressBar, "ProgressBar", RecordClass::RectControl, progressBarOwn,
              progressBarEntries},
    ClassInfo{RecordClass::Timer, "Timer", std::nullopt, timerOwn, timerEntries},
    ClassInfo{RecordClass::PaneTimer, "PaneTimer", RecordClass::Timer, paneChildOwn, {}},
    ClassInfo{RecordClass::SocketCore, "SocketCore", std::nullopt, socketCoreOwn, {}},
    ClassInfo{RecordClass::TCPSocket, "TCPSocket", RecordClass::SocketCore, tcpSocketOwn, {}},
    ClassInfo{RecordClass::HTTPSocket, "HTTPSocket", RecordClass::TCPSocket, httpSocketOwn,
              httpSocketEntries},
    ClassInfo{RecordClass::PaneHTTPSocket, "PaneHTTPSocket", RecordClass::HTTPSocket,
              paneChildOwn, {}},
};

const ClassInfo& info(RecordClass recordClass) {
  for (const auto& entry : classes) {
    if (entry.recordClass == recordClass) {
      return entry;
    }
  }
  throw std::invalid_argument("unknown record class");
}

std::vector<PropertyTag> chainedTags(RecordClass recordClass) {
  const auto& entry = info(recordClass);
  auto tags = entry.base ? chainedTags(*entry.base) : std::vector<PropertyTag>{};
  tags.insert(tags.end(), entry.own.begin(), entry.own.end());
  return tags;
}

std::vector<std::string_view> fullEntries(const ClassInfo& entry) {
  std::vector<std::string_view> names;
  if (entry.base == RecordClass::RectControl && !entry.entries.empty()) {
    names.assign(std::begin(rectControlEntries), std::end(rectControlEntries));
  }
  names.insert(names.end(), entry.entries.begin(), entry.entries.end());
  return names;
}

struct ClassLists {
  std::vector<PropertyTag> tags;
  std::vector<std::string_view> entries;
};

const ClassLists& lists(RecordClass recordClass) {
  static const auto all = [] {
    std::map<RecordClass, ClassLists> built;
    for (const auto& entry : classes) {
      built.emplace(entry.recordClass, ClassLists{chainedTags(entry.recordClass), fullEntries(entry)});
    }
    return built;
  }();
  return all.at(recordClass);
}

}  // namespace

std::string_view recordClassName(RecordClass recordClass) {
  return info(recordClass).name;
}

std::optional<RecordClass> recordClassNamed(std::string_view name) {
  for (const auto& entry : classes) {
    if (entry.name == name) {
      return entry.recordClass;
    }
  }
  return std::nullopt;
}

std::span<const PropertyTag> propertyTags(RecordClass recordClass) {
  return lists(recordClass).tags;
}

std::optional<std::uint16_t> tagOf(RecordClass recordClass, std::string_view name) {
  const auto& tags = lists(recordClass).tags;
  for (std::size_t index = 0; index < tags.size(); ++index) {
    if (tags[index].name == name) {
      return static_cast<std::uint16_t>(index);
    }
  }
  return std::nullopt;
}

std::span<const std::string_view> entryOrder(RecordClass recordClass) {
  return lists(recordClass).entries;
}

}  // namespace corvalta::platform
