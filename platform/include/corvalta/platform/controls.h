#pragma once

#include <corvalta/platform/pane_child.h>
#include <corvalta/platform/record_names.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvalta::platform {

// A control with a place in its window. Its name is both the key in the window and the
// record's Name.
class Control : public PaneChild {
 public:
  using PaneChild::PaneChild;

  [[nodiscard]] std::string Name() const { return textProperty(property::Name); }
  [[nodiscard]] bool Enabled() const { return boolProperty(property::Enabled, true); }
  void setEnabled(bool enabled) { setProperty(property::Enabled, enabled); }
  [[nodiscard]] bool Visible() const { return boolProperty(property::Visible, true); }
  void setVisible(bool visible) { setProperty(property::Visible, visible); }

  // The control named by the record's InitialParent (a group box), or nullptr.
  [[nodiscard]] Control* parent() const;
  // Whether the user can operate it: enabled and visible, and so is its parent. A radio
  // button inside a disabled group acts disabled.
  [[nodiscard]] bool acceptsInput() const;

  void SetFocus();
  // Asks the view for an immediate redraw; the state is unchanged.
  void Refresh(bool immediately = true);

  // What the user does to the control, delivered by the dispatcher: a click, or a tab into it.
  virtual void userPress() {}
};

class StaticText : public Control {
 public:
  StaticText() : Control(record_class::StaticText) {}
  [[nodiscard]] std::string Text() const { return textProperty(property::Text); }
  void setText(std::string text) { setProperty(property::Text, std::move(text)); }
};

class EditField : public Control {
 public:
  EditField() : Control(record_class::EditField) {}
  [[nodiscard]] std::string Text() const { return textProperty(property::Text); }
  // Raises TextChange when the text differs from before, whoever sets it.
  void setText(std::string text);
  [[nodiscard]] std::string Mask() const { return textProperty(property::Mask); }
  [[nodiscard]] bool ReadOnly() const { return boolProperty(property::ReadOnly); }
  [[nodiscard]] std::int32_t LimitText() const { return intProperty(property::LimitText); }

  // The user selects all of the field and types `text`, one character at a time: each
  // character that Mask and LimitText let in changes the text and raises TextChange.
  // Typing the empty text deletes what the field holds. Nothing happens unless the field
  // accepts input and is not read-only.
  void userType(std::string_view text);
  // The user has edited the field to read `text` in one step (a key typed or deleted, a
  // paste, a cut): the field keeps the characters that Mask and LimitText let in, in order,
  // and raises TextChange once if its text changed. Nothing happens unless the field accepts
  // input and is not read-only.
  void userEdit(std::string_view text);
  void userPress() override { SetFocus(); }
};

class PushButton : public Control {
 public:
  PushButton() : Control(record_class::PushButton) {}
  [[nodiscard]] std::string Caption() const { return textProperty(property::Caption); }
  [[nodiscard]] bool Default() const { return boolProperty(property::Default); }
  void setDefault(bool isDefault) { setProperty(property::Default, isDefault); }
  [[nodiscard]] bool Cancel() const { return boolProperty(property::Cancel); }
  // Raises Action if the button accepts input.
  void userPress() override;
};

class RadioButton : public Control {
 public:
  RadioButton() : Control(record_class::RadioButton) {}
  [[nodiscard]] std::string Caption() const { return textProperty(property::Caption); }
  [[nodiscard]] bool Value() const { return boolProperty(property::Value); }
  // Turning the button on clears the other radio buttons of its parent and then raises its
  // Action, by code as by a click; turning it off, or on again, raises nothing.
  void setValue(bool value);
  void userPress() override;
};

class GroupBox : public Control {
 public:
  GroupBox() : Control(record_class::GroupBox) {}
  [[nodiscard]] std::string Caption() const { return textProperty(property::Caption); }
};

class Separator : public Control {
 public:
  Separator() : Control(record_class::Separator) {}
};

class ProgressBar : public Control {
 public:
  ProgressBar() : Control(record_class::ProgressBar) {}
  [[nodiscard]] std::int32_t Value() const { return intProperty(property::Value); }
  void setValue(std::int32_t value) { setProperty(property::Value, value); }
  [[nodiscard]] std::int32_t Maximum() const { return intProperty(property::Maximum); }
  void setMaximum(std::int32_t maximum) { setProperty(property::Maximum, maximum); }
};

// A list of rows of text cells. Rows and cells are state of their own, not properties.
class Listbox : public Control {
 public:
  Listbox() : Control(record_class::Listbox) {}

  [[nodiscard]] std::int32_t ColumnCount() const { return std::max(intProperty(property::ColumnCount, 1), 1); }
  [[nodiscard]] std::int32_t ListCount() const { return static_cast<std::int32_t>(rows_.size()); }
  // The index of the row that AddRow added last, -1 when there is none.
  [[nodiscard]] std::int32_t LastIndex() const { return lastIndex_; }

  // Appends a row whose first cell is `text` and whose other cells are empty.
  void AddRow(std::string text);
  // Throws OutOfBoundsException for a row that isn't there.
  void RemoveRow(std::int32_t row);
  void DeleteAllRows();

  // A cell's text; reading or setting a cell outside the rows and columns throws
  // OutOfBoundsException. A cell set by code raises no CellTextChange.
  [[nodiscard]] const std::string& Cell(std::int32_t row, std::int32_t column) const;
  void setCell(std::int32_t row, std::int32_t column, std::string text);

  // 0 left, 1 left, 2 centred, 3 right; columns that nobody set are 0.
  [[nodiscard]] std::int32_t ColumnAlignment(std::int32_t column) const;
  void setColumnAlignment(std::int32_t column, std::int32_t alignment);

  [[nodiscard]] const std::vector<std::vector<std::string>>& rows() const { return rows_; }

  // The user has changed a cell's text: raises CellTextChange with row and column.
  void userEditCell(std::int32_t row, std::int32_t column, std::string text);

 private:
  void checkCell(std::int32_t row, std::int32_t column) const;
  void rowsChanged();

  std::vector<std::vector<std::string>> rows_;
  std::vector<std::int32_t> alignments_;
  std::int32_t lastIndex_ = -1;
};

// Makes a control or timer of one of the framework's classes by its record class name
// ("StaticText", "Timer", ...); nullptr for a class it doesn't know.
[[nodiscard]] std::unique_ptr<PaneChild> makePaneChild(std::string_view className);

}  // namespace corvalta::platform
