#pragma once

#include <corvalta/platform/property.h>

#include <QStringList>
#include <QTableWidget>

#include <string>
#include <string_view>
#include <vector>

namespace corvalta::platform::qt {

// A Listbox on the screen: rows of text cells under an optional heading, with column widths
// given as percentages of the list's width or as pixels. The cells only show what the view
// state holds; the user cannot edit them. The list is one stop of the Tab key: the arrow keys
// move among its rows, and Tab goes on to the next control.
class ListWidget final : public QTableWidget {
 public:
  explicit ListWidget(QWidget* parent);

  void showProperty(std::string_view name, const PropertyValue& value);
  // Column alignments: 2 centred, 3 right, anything else left.
  void showRows(const std::vector<std::vector<std::string>>& rows,
                const std::vector<std::int32_t>& alignments);
  // The height that shows the heading and every row whole; never less than the record's.
  [[nodiscard]] int heightForRows() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void layOutColumns();
  // Rows as high as the text needs and a pixel more, so that no letter touches the lines
  // between the rows, and a heading as high as its text needs; DefaultRowHeight above 0 sets
  // the rows' height instead.
  void layOutRows();

  QStringList widths_;
  std::int32_t rowHeight_ = -1;
};

}  // namespace corvalta::platform::qt
