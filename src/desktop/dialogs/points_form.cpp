// "Select Planets", "Select Paran Planet/Star", "Select Stars".
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"
#include "session/tables.h"

namespace orvantis {

namespace {

constexpr QSize kIconSize(30, 20);  // logical pixels

class PointsDialog : public QDialog {
  public:
    explicit PointsDialog(PointsForm& form);

  private:
    void Fill();
    void Take();

    PointsForm& form_;
    QListWidget* points_;
};

PointsDialog::PointsDialog(PointsForm& form)
    : QDialog(FormParent()), form_(form), points_(Named(new QListWidget, "lstPoint")) {
    const QString title = WindowText(PointsTitle(form_.mode));
    setWindowTitle(title);
    points_->setAccessibleName(title);
    points_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    points_->setIconSize(kIconSize);
    points_->setMinimumSize(260, 380);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(points_, 1);

    auto* multi =
        Named(new QLabel(QStringLiteral("Use Ctrl key for multiple selections")), "lblMulti");
    rows->addWidget(multi);
    multi->setVisible(form_.mode != point_dialog::kParanPoint);

    auto* restore = Named(new QPushButton(QStringLiteral("&Default")), "btnRestore");
    auto* row = new QHBoxLayout;
    rows->addLayout(row);
    row->addWidget(restore);
    connect(restore, &QPushButton::clicked, this, [this] {
        DefaultPoints(form_);
        Fill();
    });
    const FormButtons buttons = AddButtons(*this, *row, [this] {
        Take();
        return CheckPoints(form_);
    });
    SetTabs({points_, restore, buttons.ok, buttons.cancel});
    Fill();
    points_->setFocus();
}

void PointsDialog::Fill() {
    points_->clear();
    for (std::size_t i = 0; i < form_.points.size(); ++i) {
        const std::int16_t point = form_.points[i];
        auto* item =
            new QListWidgetItem(PointIcon(point, pointColour[static_cast<std::size_t>(point)],
                                          kIconSize, devicePixelRatioF()),
                                WindowText(PointName(point)), points_);
        item->setSelected(form_.chosen[i]);
    }

    // The keyboard starts from the first chosen entry, which stays chosen.
    const QList<QListWidgetItem*> chosen = points_->selectedItems();
    if (points_->count() == 0) return;
    int first = 0;
    while (!chosen.isEmpty() && !points_->item(first)->isSelected()) ++first;
    points_->setCurrentRow(first, QItemSelectionModel::NoUpdate);
}

void PointsDialog::Take() {
    for (std::size_t i = 0; i < form_.points.size(); ++i) {
        form_.chosen[i] = points_->item(static_cast<int>(i))->isSelected();
    }
}

}  // namespace

bool ShowPointsForm(PointsForm& form) {
    if (PointsDialog(form).exec() != QDialog::Accepted) return false;
    AcceptPoints(form);
    return true;
}

}  // namespace orvantis
