#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/errors.h>
#include <corvalta/platform/record.h>
#include <corvalta/platform/text.h>
#include <corvalta/platform/timer.h>
#include <corvalta/platform/window.h>

#include <string>
#include <vector>

#include "character_class.h"

namespace corvalta::platform {
namespace {

// Whether the user may type `character` at `position` of a field with `mask`. "A" takes a
// letter or a digit of any script, "a" or "?" any printable character, "0", "9" and "#" a
// digit; past the end of a mask nothing goes in. An empty mask takes everything. A tab or a
// line end, Unicode's own line separators included, is in none of these classes.
bool maskAdmits(std::string_view mask, std::int32_t position, std::string_view character) {
  if (mask.empty()) return true;
  if (position >= Len(mask)) return false;
  const std::string place = Mid(mask, position + 1, 1);
  if (place == "A") return isLetterOrDigit(character);
  if (place == "0" || place == "9" || place == "#") return isDigit(character);
  return isPrintable(character);
}

// The characters of `text`, in order, that a field with `mask` and `limit` lets in when they
// are typed one after the other into it, empty.
std::vector<std::string> admittedCharacters(std::string_view mask, std::int32_t limit,
                                            std::string_view text) {
  std::vector<std::string> kept;
  for (std::int32_t i = 1; i <= Len(text); ++i) {
    const auto length = static_cast<std::int32_t>(kept.size());
    if (limit > 0 && length >= limit) break;
    std::string character = Mid(text, i, 1);
    if (maskAdmits(mask, length, character)) kept.push_back(std::move(character));
  }
  return kept;
}

}  // namespace

Control* Control::parent() const {
  const std::string parentName = textProperty(property::InitialParent);
  if (parentName.empty() || window() == nullptr) return nullptr;
  return dynamic_cast<Control*>(window()->controlByName(parentName));
}

bool Control::acceptsInput() const {
  if (!Enabled() || !Visible()) return false;
  const Control* up = parent();
  return up == nullptr || up->acceptsInput();
}

void Control::SetFocus() {
  if (window() != nullptr) window()->setFocusControl(this);
}

void Control::Refresh(bool /*immediately*/) {
  if (window() != nullptr) window()->application().observer().refreshRequested(*this);
}

void EditField::setText(std::string text) {
  if (text == Text()) return;
  setProperty(property::Text, std::move(text));
  raise("TextChange");
}

void EditField::userType(std::string_view text) {
  if (!acceptsInput() || ReadOnly()) return;
  setText({});
  // One TextChange a character, as each keystroke raises its own.
  for (const std::string& character : admittedCharacters(Mask(), LimitText(), text)) {
    setText(Text() + character);
  }
}

void EditField::userEdit(std::string_view text) {
  if (!acceptsInput() || ReadOnly()) return;
  std::string kept;
  for (const std::string& character : admittedCharacters(Mask(), LimitText(), text)) kept += character;
  setText(std::move(kept));
}

void PushButton::userPress() {
  if (acceptsInput()) raise("Action");
}

void RadioButton::setValue(bool value) {
  if (value == Value()) return;
  if (value && window() != nullptr) {
    const std::string group = textProperty(property::InitialParent);
    for (PaneChild* child : window()->controls()) {
      auto* sibling = dynamic_cast<RadioButton*>(child);
      if (sibling != nullptr && sibling != this && sibling->textProperty(property::InitialParent) == group) {
        sibling->setProperty(property::Value, false);
      }
    }
  }
  setProperty(property::Value, value);
  if (value) raise("Action");
}

void RadioButton::userPress() {
  if (acceptsInput()) setValue(true);
}

void Listbox::AddRow(std::string text) {
  std::vector<std::string> row(static_cast<std::size_t>(ColumnCount()));
  row.front() = std::move(text);
  rows_.push_back(std::move(row));
  lastIndex_ = ListCount() - 1;
  rowsChanged();
}

void Listbox::RemoveRow(std::int32_t row) {
  checkCell(row, 0);
  rows_.erase(rows_.begin() + row);
  if (row == lastIndex_) {
    lastIndex_ = -1;
  } else if (row < lastIndex_) {
    --lastIndex_;
  }
  rowsChanged();
}

void Listbox::DeleteAllRows() {
  rows_.clear();
  lastIndex_ = -1;
  rowsChanged();
}

const std::string& Listbox::Cell(std::int32_t row, std::int32_t column) const {
  checkCell(row, column);
  return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

void Listbox::setCell(std::int32_t row, std::int32_t column, std::string text) {
  checkCell(row, column);
  rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = std::move(text);
  rowsChanged();
}

std::int32_t Listbox::ColumnAlignment(std::int32_t column) const {
  if (column < 0 || column >= ColumnCount()) {
    throw OutOfBoundsException("no column " + std::to_string(column));
  }
  const auto index = static_cast<std::size_t>(column);
  return index < alignments_.size() ? alignments_[index] : 0;
}

void Listbox::setColumnAlignment(std::int32_t column, std::int32_t alignment) {
  (void)ColumnAlignment(column);  // throws for a column that is not there
  const auto index = static_cast<std::size_t>(column);
  if (alignments_.size() <= index) alignments_.resize(index + 1, 0);
  alignments_[index] = alignment;
  rowsChanged();
}

void Listbox::userEditCell(std::int32_t row, std::int32_t column, std::string text) {
  if (!acceptsInput()) return;
  setCell(row, column, std::move(text));
  raise("CellTextChange", {row, column});
}

void Listbox::checkCell(std::int32_t row, std::int32_t column) const {
  if (row < 0 || row >= ListCount() || column < 0 || column >= ColumnCount()) {
    throw OutOfBoundsException("no cell " + std::to_string(row) + ", " + std::to_string(column) +
                               " in " + key());
  }
}

void Listbox::rowsChanged() {
  if (window() != nullptr) window()->application().observer().rowsChanged(*this);
}

std::unique_ptr<PaneChild> makePaneChild(std::string_view className) {
  const auto recordClass = recordClassNamed(className);
  if (!recordClass) return nullptr;
  switch (*recordClass) {
    case RecordClass::StaticText: return std::make_unique<StaticText>();
    case RecordClass::EditField: return std::make_unique<EditField>();
    case RecordClass::PushButton: return std::make_unique<PushButton>();
    case RecordClass::RadioButton: return std::make_unique<RadioButton>();
    case RecordClass::GroupBox: return std::make_unique<GroupBox>();
    case RecordClass::Separator: return std::make_unique<Separator>();
    case RecordClass::ProgressBar: return std::make_unique<ProgressBar>();
    case RecordClass::Listbox: return std::make_unique<Listbox>();
    case RecordClass::Timer: return std::make_unique<Timer>();
    default: return nullptr;
  }
}

}  // namespace corvalta::platform
