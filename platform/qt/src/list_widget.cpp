#include "list_widget.h"

#include <corvalta/platform/record_names.h>

#include <QEvent>
#include <QHeaderView>

namespace corvalta::platform::qt {
namespace {

Qt::Alignment columnAlignment(const std::vector<std::int32_t>& alignments, int column) {
  const auto index = static_cast<std::size_t>(column);
  const auto align = index < alignments.size() ? alignments[index] : 0;
  return align == 2 ? Qt::AlignHCenter : align == 3 ? Qt::AlignRight : Qt::AlignLeft;
}

// The widths of "40% 30%\t30%" for a list `total` pixels wide: blanks, tabs and commas part
// the entries; an entry with % is a share of the width, a plain number is pixels, and columns
// without an entry share what is left.
std::vector<int> columnWidths(const QStringList& entries, int columns, int total) {
  std::vector<int> widths(static_cast<std::size_t>(std::max(columns, 0)), -1);
  int used = 0;
  for (int column = 0; column < columns && column < entries.size(); ++column) {
    auto entry = entries[column].trimmed();
    bool ok = false;
    int width = 0;
    if (entry.endsWith('%')) {
      entry.chop(1);
      width = static_cast<int>(entry.toDouble(&ok) * total / 100.0);
    } else {
      width = entry.toInt(&ok);
    }
    if (ok && width >= 0) {
      widths[static_cast<std::size_t>(column)] = width;
      used += width;
    }
  }
  const auto open = std::count(widths.begin(), widths.end(), -1);
  for (auto& width : widths) {
    if (width < 0) {
      width = static_cast<int>(std::max(total - used, 0) / open);
    }
  }
  return widths;
}

}  // namespace

ListWidget::ListWidget(QWidget* parent) : QTableWidget(parent) {
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setTabKeyNavigation(false);
  setWordWrap(false);
  verticalHeader()->hide();
  horizontalHeader()->hide();
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  setShowGrid(false);
}

void ListWidget::showProperty(std::string_view name, const PropertyValue& value) {
  if (name == property::ColumnCount) {
    setColumnCount(std::get<std::int32_t>(value));
    layOutColumns();
  } else if (name == property::ColumnWidths) {
    // Spaces, tabs and commas separate the entries. Not a QRegularExpression: compiling one
    // at start-up touches half a megabyte of PCRE2.
    widths_ = QString::fromStdString(std::get<std::string>(value))
                  .replace('\t', ' ')
                  .replace(',', ' ')
                  .split(' ', Qt::SkipEmptyParts);
    layOutColumns();
  } else if (name == property::HasHeading) {
    horizontalHeader()->setVisible(std::get<bool>(value));
  } else if (name == property::InitialValue) {
    // With a heading, the first line of the initial value holds the column titles.
    const auto lines = QString::fromStdString(std::get<std::string>(value)).split('\r');
    setHorizontalHeaderLabels(lines.front().split('\t'));
    layOutRows();
  } else if (name == property::GridLinesHorizontal || name == property::GridLinesVertical) {
    setShowGrid(showGrid() || std::get<std::int32_t>(value) != 0);
    layOutRows();
  } else if (name == property::ScrollBarHorizontal) {
    setHorizontalScrollBarPolicy(std::get<bool>(value) ? Qt::ScrollBarAsNeeded
                                                       : Qt::ScrollBarAlwaysOff);
  } else if (name == property::ScrollBarVertical) {
    setVerticalScrollBarPolicy(std::get<bool>(value) ? Qt::ScrollBarAsNeeded
                                                     : Qt::ScrollBarAlwaysOff);
  } else if (name == property::DefaultRowHeight) {
    rowHeight_ = std::get<std::int32_t>(value);
    layOutRows();
  }
}

void ListWidget::showRows(const std::vector<std::vector<std::string>>& rows,
                          const std::vector<std::int32_t>& alignments) {
  setRowCount(static_cast<int>(rows.size()));
  for (int row = 0; row < rowCount(); ++row) {
    const auto& cells = rows[static_cast<std::size_t>(row)];
    for (int column = 0; column < columnCount(); ++column) {
      const auto index = static_cast<std::size_t>(column);
      const auto text = index < cells.size() ? QString::fromStdString(cells[index]) : QString();
      auto* item = this->item(row, column);
      if (item == nullptr) {
        item = new QTableWidgetItem;
        setItem(row, column, item);
      }
      item->setText(text);
      item->setTextAlignment(columnAlignment(alignments, column) | Qt::AlignVCenter);
    }
  }
  for (int column = 0; column < columnCount(); ++column) {
    if (auto* heading = horizontalHeaderItem(column)) {
      heading->setTextAlignment(columnAlignment(alignments, column) | Qt::AlignVCenter);
    }
  }
}

void ListWidget::resizeEvent(QResizeEvent* event) {
  QTableWidget::resizeEvent(event);
  layOutColumns();
}

void ListWidget::changeEvent(QEvent* event) {
  QTableWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    layOutRows();
  }
}

// A row left behind highlighted would read as a choice that the table does not have.
void ListWidget::focusOutEvent(QFocusEvent* event) {
  QTableWidget::focusOutEvent(event);
  clearSelection();
  setCurrentIndex({});
}

void ListWidget::layOutRows() {
  // The text, a pixel of air and the grid line.
  const int gridLine = showGrid() ? 1 : 0;
  verticalHeader()->setMinimumSectionSize(1);
  verticalHeader()->setDefaultSectionSize(rowHeight_ > 0 ? rowHeight_ : fontMetrics().height() + 1 + gridLine);
  // Until it has titles a heading has no height of its own to ask for.
  if (const int heading = horizontalHeader()->sizeHint().height(); heading > 0) {
    horizontalHeader()->setFixedHeight(heading);
  }
}

int ListWidget::heightForRows() const {
  const int rows = verticalHeader()->defaultSectionSize() * rowCount();
  const int heading = horizontalHeader()->isHidden() ? 0 : horizontalHeader()->height();
  return std::max(height(), rows + heading + 2 * frameWidth());
}

void ListWidget::layOutColumns() {
  const auto widths = columnWidths(widths_, columnCount(), viewport()->width());
  for (std::size_t column = 0; column < widths.size(); ++column) {
    horizontalHeader()->resizeSection(static_cast<int>(column), widths[column]);
  }
}

}  // namespace corvalta::platform::qt
