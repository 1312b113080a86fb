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
// state holds; the user cannot edit them.
class ListWidget final : public QTableWidget {
 public:
  explicit ListWidget(QWidget* parent);

  void showProperty(std::string_view name, const PropertyValue& value);
  // Column alignments: 2 centred, 3 right, anything else left.
  void showRows(const std::vector<std::vector<std::string>>& rows,
                const std::vector<std::int32_t>& alignments);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void layOutColumns();
  // Rows as high as the text needs and no more, like the framework's lists, so that ten rows
  // and the heading fit the table's place; DefaultRowHeight above 0 sets the height instead.
  void layOutRows();

  QStringList widths_;
  std::int32_t rowHeight_ = -1;
};

}  // namespace corvalta::platform::qt
