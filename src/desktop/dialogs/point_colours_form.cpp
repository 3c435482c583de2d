// "Select Planet Colors".
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <vector>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"
#include "session/tables.h"

namespace orvantis {

namespace {

constexpr QSize kIconSize(38, 24);  // logical pixels
constexpr int kColumns = 3;

class PointColoursDialog : public QDialog {
  public:
    explicit PointColoursDialog(PointColoursForm& form);
    bool Applied() const { return applied_; }

  private:
    void FillGrid();
    void ShowColour(std::int16_t point);
    void ConnectButtons();
    QTableWidgetItem* Cell(std::int16_t point) const;

    PointColoursForm& form_;
    QTableWidget* grid_;
    QPushButton* colour_;
    QPushButton* apply_;
    QPushButton* save_;
    QPushButton* cancel_;
    bool applied_ = false;
};

// Points run down the columns. Those without a name, stars that aren't there, have no cell.
int PointCount() {
    int count = 0;
    while (count < static_cast<int>(kPointCount) &&
           !PointName(static_cast<std::int16_t>(count + 1)).empty()) {
        ++count;
    }
    return count;
}

int RowsOf(int points) {
    return (points + kColumns - 1) / kColumns;
}

PointColoursDialog::PointColoursDialog(PointColoursForm& form)
    : QDialog(FormParent()),
      form_(form),
      grid_(Named(new QTableWidget(RowsOf(PointCount()), kColumns), "picPlanets")),
      colour_(Named(new QPushButton(QStringLiteral("&Palette...")), "btnColor")),
      apply_(Named(new QPushButton(QStringLiteral("&Apply")), "btnApply")),
      save_(Named(new QPushButton(QStringLiteral("&Save...")), "btnSave")),
      cancel_(Named(new QPushButton(QStringLiteral("&Cancel")), "btnCancel")) {
    setWindowTitle(QStringLiteral("Select Planet Colors"));
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(grid_, 1);
    auto* row = new QHBoxLayout;
    rows->addLayout(row);
    row->addWidget(colour_);
    row->addStretch();
    for (QPushButton* button : {apply_, save_, cancel_}) row->addWidget(button);
    SetTabs({grid_, colour_, apply_, save_, cancel_});
    apply_->setDefault(true);
    FillGrid();
    ConnectButtons();
    grid_->setCurrentItem(Cell(form_.point));
    grid_->setFocus();
}

void PointColoursDialog::FillGrid() {
    grid_->setAccessibleName(QStringLiteral("Points and their colors"));
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setTabKeyNavigation(false);
    grid_->setShowGrid(false);
    grid_->setIconSize(kIconSize);
    grid_->horizontalHeader()->hide();
    grid_->verticalHeader()->hide();
    for (int i = 0; i < grid_->rowCount() * kColumns; ++i) {
        const auto point = static_cast<std::int16_t>(i + 1);
        auto* item = new QTableWidgetItem(WindowText(PointName(point)));
        if (i >= PointCount()) item->setFlags(Qt::NoItemFlags);
        grid_->setItem(i % grid_->rowCount(), i / grid_->rowCount(), item);
        if (i < PointCount()) ShowColour(point);
    }
    grid_->verticalHeader()->setDefaultSectionSize(kIconSize.height() + 6);
    grid_->resizeColumnsToContents();
    int width = 0;
    for (int column = 0; column < kColumns; ++column) width += grid_->columnWidth(column);
    constexpr int kFrame = 4;
    grid_->setMinimumSize(width + kFrame, grid_->rowCount() * (kIconSize.height() + 6) + kFrame);
}

QTableWidgetItem* PointColoursDialog::Cell(std::int16_t point) const {
    return grid_->item((point - 1) % grid_->rowCount(), (point - 1) / grid_->rowCount());
}

void PointColoursDialog::ShowColour(std::int16_t point) {
    Cell(point)->setIcon(PointIcon(point, form_.colours[static_cast<std::size_t>(point)], kIconSize,
                                   devicePixelRatioF()));
}

void PointColoursDialog::ConnectButtons() {
    connect(grid_, &QTableWidget::currentCellChanged, this, [this](int row, int column) {
        const int point = column * grid_->rowCount() + row + 1;
        if (row >= 0 && column >= 0 && point <= PointCount()) {
            form_.point = static_cast<std::int16_t>(point);
        }
    });
    connect(colour_, &QPushButton::clicked, this, [this] {
        if (ChoosePointColour(form_)) ShowColour(form_.point);
    });
    connect(apply_, &QPushButton::clicked, this, [this] {
        ApplyPointColours(form_);
        applied_ = true;
    });
    connect(save_, &QPushButton::clicked, this, [] { SavePointColours(); });
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace

bool ShowPointColoursForm(PointColoursForm& form) {
    PointColoursDialog dialog(form);
    dialog.exec();
    return dialog.Applied();
}

}  // namespace orvantis
