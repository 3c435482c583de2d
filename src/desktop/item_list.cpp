#include "desktop/item_list.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QListView>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

namespace orvantis {

std::optional<int> AskForItem(QWidget* parent, const QString& title, const QStringList& lines) {
    constexpr QSize kSize(420, 360);  // logical pixels
    QDialog dialog(parent);
    dialog.setWindowTitle(title);
    dialog.resize(kSize);
    auto* rows = new QVBoxLayout(&dialog);
    auto* list = new QListView(&dialog);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    rows->addWidget(list);
    rows->addWidget(buttons);

    // Lines of one height: a list of many thousands is laid out at once.
    list->setUniformItemSizes(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* model = new QStringListModel(lines, list);
    list->setModel(model);
    if (!lines.isEmpty()) list->setCurrentIndex(model->index(0));
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(list, &QListView::doubleClicked, &dialog, &QDialog::accept);
    list->setFocus();

    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QModelIndexList chosen = list->selectionModel()->selectedIndexes();
    return chosen.isEmpty() ? 0 : chosen.front().row() + 1;
}

}  // namespace orvantis
