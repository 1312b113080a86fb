#include <corvalta/platform/record.h>
#include <corvalta/platform/record_names.h>

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
    {property::Visible, b}, {property::Left, i}, {property::Top, i}, {property::Width, i},
    {property::Height, i}, {property::Placement, i}, {property::Title, t},
    {property::FullScreen, b}, {property::MenuBarVisible, b}, {property::CloseBox, b},
    {property::CloseButton, b}, {property::GrowIcon, b}, {property::Resizeable, b},
    {property::ZoomIcon, b}, {property::MaximizeButton, b}, {property::MinimizeButton, b},
    {property::Frame, i}, {property::Composite, b}, {property::LiveResize, b},
    {property::Backdrop, o}, {property::Graphics, o}, {property::HasBackColor, b},
    {property::BackColor, c}, {property::BalloonHelp, t}, {property::MinWidth, i},
    {property::MinHeight, i}, {property::MaxWidth, i}, {property::MaxHeight, i},
    {property::MacProcId, i}, {property::MouseCursor, o}, {property::ControlCount, i},
    {property::FloaterProcess, t}, {property::MouseX, i}, {property::MouseY, i},
    {property::MacWindowPtr, i}, {property::WinHWND, i}, {property::Handle, i},
    {property::DockItem, o}, {property::MenuBar, o}, {property::Focus, o}, {property::mImp, o},
    {property::mControls, o}, {property::mMenuHandlers, o}, {property::mControlList, o},
    {property::mContentPane, o}, {property::mFocusControl, o},
    {property::mInitialControlsCreated, i},
};

constexpr PropertyTag controlOwn[] = {
    {property::Name, t}, {property::Index, i}, {property::TabPanelIndex, i},
    {property::PanelIndex, i}, {property::MouseX, i}, {property::MouseY, i}, {property::Window, o},
    {property::Handle, i}, {property::mImp, o}, {property::mWindow, o}, {property::mIndex, i},
    {property::mName, t}, {property::mPanelIndex, i}, {property::mInitialParent, t},
};

constexpr PropertyTag rectControlOwn[] = {
    {property::HelpTag, t}, {property::BalloonHelp, t}, {property::DisabledBalloonHelp, t},
    {property::MouseCursor, o}, {property::Visible, b}, {property::Left, i}, {property::Top, i},
    {property::Width, i}, {property::Height, i}, {property::Enabled, b}, {property::Active, b},
    {property::AutoDeactivate, b}, {property::LockLeft, b}, {property::LockTop, b},
    {property::LockRight, b}, {property::LockBottom, b}, {property::Parent, o},
    {property::InitialParent, t},
};

constexpr PropertyTag staticTextOwn[] = {
    {property::Text, t}, {property::Caption, t}, {property::TextAlign, i}, {property::TextColor, c},
    {property::TextFont, t}, {property::TextSize, i}, {property::Bold, b}, {property::Italic, b},
    {property::Underline, b}, {property::MultiLine, b}, {property::DataSource, t},
    {property::DataField, t},
};

constexpr PropertyTag editFieldOwn[] = {
    {property::Text, t}, {property::TextStyleData, t}, {property::Border, b},
    {property::MultiLine, b}, {property::ReadOnly, b}, {property::Password, b},
    {property::Styled, b}, {property::AcceptTabs, b}, {property::TextColor, c},
    {property::BackColor, c}, {property::ScrollBarHorizontal, b}, {property::ScrollBarVertical, b},
    {property::ScrollBar, b}, {property::TextFont, t}, {property::TextSize, i}, {property::Bold, b},
    {property::Italic, b}, {property::Underline, b}, {property::SelStart, i},
    {property::SelLength, i}, {property::SelText, t}, {property::LimitText, i},
    {property::SelBold, b}, {property::SelUnderline, b}, {property::SelItalic, b},
    {property::SelOutline, b}, {property::SelShadow, b}, {property::SelCondense, b},
    {property::SelExtend, b}, {property::SelPlain, b}, {property::SelTextFont, t},
    {property::SelTextSize, i}, {property::SelTextColor, c}, {property::LiveUpdate, b},
    {property::UseFocusRing, b}, {property::DataSource, t}, {property::DataField, t},
    {property::Alignment, i}, {property::SelAlignment, i}, {property::Format, t},
    {property::FormattedText, t}, {property::Mask, t}, {property::StyledText, o},
};

constexpr PropertyTag pushButtonOwn[] = {
    {property::Caption, t}, {property::Default, b}, {property::Cancel, b}, {property::TextFont, t},
    {property::TextSize, i}, {property::Bold, b}, {property::Italic, b}, {property::Underline, b},
};

constexpr PropertyTag radioButtonOwn[] = {
    {property::Caption, t}, {property::Value, b}, {property::TextFont, t}, {property::TextSize, i},
    {property::Bold, b}, {property::Italic, b}, {property::Underline, b},
};

constexpr PropertyTag groupBoxOwn[] = {
    {property::Caption, t}, {property::TextFont, t}, {property::TextSize, i}, {property::Bold, b},
    {property::Italic, b}, {property::Underline, b},
};

constexpr PropertyTag listboxOwn[] = {
    {property::TextFont, t}, {property::TextSize, i}, {property::Bold, b}, {property::Italic, b},
    {property::Underline, b}, {property::ListCount, i}, {property::ListIndex, i},
    {property::Text, t}, {property::ColumnCount, i}, {property::ColumnWidths, t},
    {property::Hierarchical, b}, {property::LastIndex, i}, {property::EnableDrag, b},
    {property::EnableDragReorder, b}, {property::SelectionType, i}, {property::SelCount, i},
    {property::InitialValue, t}, {property::HasHeading, b}, {property::UseFocusRing, b},
    {property::HeadingIndex, i}, {property::ScrollPosition, i}, {property::ScrollPositionX, i},
    {property::ScrollBarHorizontal, b}, {property::ScrollBarVertical, b}, {property::DataSource, t},
    {property::DataField, t}, {property::GridLinesHorizontal, i}, {property::GridLinesVertical, i},
    {property::DefaultRowHeight, i}, {property::ActiveCell, o}, {property::SortedColumn, i},
    {property::ColumnsResizable, b}, {property::RequiresSelection, b},
    {property::AutoHideScrollbars, b}, {property::ScrollWidth, i}, {property::ScrollOffset, i},
};

constexpr PropertyTag progressBarOwn[] = {{property::Value, i}, {property::Maximum, i}};

constexpr PropertyTag timerOwn[] = {
    {property::Mode, i}, {property::Period, i}, {property::Enabled, b}, {property::mImp, o},
};

// What a timer or socket needs so that a window can own it and find it by name.
constexpr PropertyTag paneChildOwn[] = {{property::Index, i}, {property::ownerWindow, o}};

constexpr PropertyTag socketCoreOwn[] = {
    {property::Port, i}, {property::LocalAddress, t}, {property::LastErrorCode, i},
    {property::IsConnected, b}, {property::NetworkInterface, o}, {property::Handle, i},
};

constexpr PropertyTag tcpSocketOwn[] = {
    {property::Address, t}, {property::RemoteAddress, t}, {property::PPPStatus, i},
    {property::BytesAvailable, i}, {property::BytesLeftToSend, i},
};

constexpr PropertyTag httpSocketOwn[] = {
    {property::pageHeaders, o}, {property::server, t}, {property::path, t},
    {property::requestHeaders, o}, {property::totalLength, i}, {property::downloadStream, o},
    {property::downloadFile, o}, {property::pageBuffer, t}, {property::currentLength, i},
    {property::pageComplete, b}, {property::postContent, t}, {property::postContentType, t},
    {property::httpAction, t}, {property::processingURL, t}, {property::connectionValid, b},
    {property::httpStatusCode, i}, {property::defaultPort, i}, {property::httpProxyAddress, t},
    {property::httpProxyPort, i}, {property::authenticationKey, t}, {property::yield, b},
    {property::synchronous, b}, {property::timeoutSeconds, i}, {property::mErrorCode, i},
    {property::threadProtection, b},
};

// The entries that each class's records list, in their order. The records of every
// RectControl begin alike, then go on with the entries of their class.
constexpr std::string_view rectControlEntries[] = {
    property::Name, property::Index, property::Left, property::Top, property::Width,
    property::Height, property::LockLeft, property::LockTop, property::LockRight,
    property::LockBottom, property::TabPanelIndex,
};

constexpr std::string_view windowEntries[] = {
    property::Placement, property::Width, property::Height, property::MinWidth, property::MinHeight,
    property::MaxWidth, property::MaxHeight, property::Frame, property::Composite,
    property::HasBackColor, property::BackColor, property::Title, property::Visible,
    property::FullScreen, property::MenuBarVisible, property::CloseButton, property::Resizeable,
    property::LiveResize, property::MaximizeButton, property::MinimizeButton, property::BalloonHelp,
    property::MacProcId,
};

constexpr std::string_view staticTextEntries[] = {
    property::Text, property::TextAlign, property::TextColor, property::MultiLine,
    property::Enabled, property::Visible, property::HelpTag, property::AutoDeactivate,
    property::TextFont, property::TextSize, property::Bold, property::Italic, property::Underline,
    property::DataSource, property::DataField, property::InitialParent,
};

constexpr std::string_view editFieldEntries[] = {
    property::Border, property::MultiLine, property::ScrollBarHorizontal,
    property::ScrollBarVertical, property::Styled, property::Password, property::UseFocusRing,
    property::TextColor, property::BackColor, property::Enabled, property::Format,
    property::Visible, property::HelpTag, property::AutoDeactivate, property::TextFont,
    property::TextSize, property::Bold, property::Italic, property::Underline, property::Text,
    property::Mask, property::ReadOnly, property::LimitText, property::AcceptTabs,
    property::Alignment, property::DataSource, property::DataField, property::InitialParent,
};

constexpr std::string_view pushButtonEntries[] = {
    property::Caption, property::Default, property::Cancel, property::Enabled, property::Visible,
    property::HelpTag, property::AutoDeactivate, property::TextFont, property::TextSize,
    property::Bold, property::Italic, property::Underline, property::InitialParent,
};

constexpr std::string_view radioButtonEntries[] = {
    property::Caption, property::Enabled, property::Visible, property::HelpTag,
    property::AutoDeactivate, property::TextFont, property::TextSize, property::Bold,
    property::Italic, property::Underline, property::Value, property::InitialParent,
};

constexpr std::string_view groupBoxEntries[] = {
    property::Caption, property::Enabled, property::Visible, property::HelpTag,
    property::AutoDeactivate, property::TextFont, property::TextSize, property::Bold,
    property::Italic, property::Underline, property::InitialParent,
};

constexpr std::string_view listboxEntries[] = {
    property::Visible, property::HelpTag, property::AutoDeactivate, property::Enabled,
    property::ColumnCount, property::ColumnWidths, property::HasHeading, property::UseFocusRing,
    property::InitialValue, property::HeadingIndex, property::ScrollBarHorizontal,
    property::ScrollBarVertical, property::GridLinesHorizontal, property::GridLinesVertical,
    property::DefaultRowHeight, property::ScrollWidth, property::ScrollOffset, property::TextFont,
    property::TextSize, property::Bold, property::Italic, property::Underline,
    property::Hierarchical, property::EnableDrag, property::EnableDragReorder,
    property::RequiresSelection, property::SelectionType, property::ColumnsResizable,
    property::AutoHideScrollbars, property::DataSource, property::DataField,
    property::InitialParent,
};

// The one class that writes InitialParent first.
constexpr std::string_view separatorEntries[] = {
    property::InitialParent, property::Visible, property::HelpTag, property::AutoDeactivate,
    property::Enabled,
};

constexpr std::string_view progressBarEntries[] = {
    property::Visible, property::HelpTag, property::AutoDeactivate, property::Enabled,
    property::Value, property::Maximum, property::InitialParent,
};

constexpr std::string_view timerEntries[] = {property::Mode, property::Period};

constexpr std::string_view httpSocketEntries[] = {
    property::Address, property::Port, property::yield,
};

struct ClassInfo {
  RecordClass recordClass;
  std::string_view name;
  std::optional<RecordClass> base;
  std::span<const PropertyTag> own;
  std::span<const std::string_view> entries;
};

constexpr std::array classes = {
    ClassInfo{RecordClass::Window, record_class::Window, std::nullopt, windowOwn, windowEntries},
    ClassInfo{RecordClass::Control, record_class::Control, std::nullopt, controlOwn, {}},
    ClassInfo{RecordClass::RectControl, record_class::RectControl, RecordClass::Control,
              rectControlOwn, {}},
    ClassInfo{RecordClass::StaticText, record_class::StaticText, RecordClass::RectControl,
              staticTextOwn, staticTextEntries},
    ClassInfo{RecordClass::EditField, record_class::EditField, RecordClass::RectControl,
              editFieldOwn, editFieldEntries},
    ClassInfo{RecordClass::PushButton, record_class::PushButton, RecordClass::RectControl,
              pushButtonOwn, pushButtonEntries},
    ClassInfo{RecordClass::RadioButton, record_class::RadioButton, RecordClass::RectControl,
              radioButtonOwn, radioButtonEntries},
    ClassInfo{RecordClass::GroupBox, record_class::GroupBox, RecordClass::RectControl, groupBoxOwn,
              groupBoxEntries},
    ClassInfo{RecordClass::Listbox, record_class::Listbox, RecordClass::RectControl, listboxOwn,
              listboxEntries},
    ClassInfo{RecordClass::Separator, record_class::Separator, RecordClass::RectControl,
              {}, separatorEntries},
    ClassInfo{RecordClass::ProgressBar, record_class::ProgressBar, RecordClass::RectControl,
              progressBarOwn, progressBarEntries},
    ClassInfo{RecordClass::Timer, record_class::Timer, std::nullopt, timerOwn, timerEntries},
    ClassInfo{RecordClass::PaneTimer, record_class::PaneTimer, RecordClass::Timer,
              paneChildOwn, {}},
    ClassInfo{RecordClass::SocketCore, record_class::SocketCore, std::nullopt, socketCoreOwn, {}},
    ClassInfo{RecordClass::TCPSocket, record_class::TCPSocket, RecordClass::SocketCore,
              tcpSocketOwn, {}},
    ClassInfo{RecordClass::HTTPSocket, record_class::HTTPSocket, RecordClass::TCPSocket,
              httpSocketOwn, httpSocketEntries},
    ClassInfo{RecordClass::PaneHTTPSocket, record_class::PaneHTTPSocket, RecordClass::HTTPSocket,
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
