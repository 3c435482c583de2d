// The palette of a display of 256 colours.
#include <QGroupBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"
#include "raster/qt_gui.h"
#include "surface/label.h"

namespace orvantis {

namespace {

constexpr int kColumns = 16;
constexpr int kCell = 22;  // logical pixels

// The entries as a grid. A click or the arrow keys choose one.
class PaletteGrid : public QWidget {
  public:
    explicit PaletteGrid(PaletteForm& form) : form_(form) {
        const int rows = (static_cast<int>(form_.entries.size()) + kColumns - 1) / kColumns;
        setFixedSize(kColumns * kCell + 1, rows * kCell + 1);
        setFocusPolicy(Qt::StrongFocus);
        setAccessibleName(QStringLiteral("Palette"));
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Choose(int entry) {
        if (entry < 0 || entry >= static_cast<int>(form_.entries.size())) return;
        form_.chosen = static_cast<std::int16_t>(entry);
        update();
    }

    PaletteForm& form_;
};

void PaletteGrid::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    for (int i = 0; i < static_cast<int>(form_.entries.size()); ++i) {
        const Colour colour = form_.entries[static_cast<std::size_t>(i)];
        const QRect cell(i % kColumns * kCell, i / kColumns * kCell, kCell, kCell);
        painter.setPen(palette().color(QPalette::Mid));
        painter.setBrush(QtColour(colour));
        painter.drawRect(cell);
        if (i != form_.chosen) continue;
        painter.setPen(QPen(Brightness(colour) > 127 ? Qt::black : Qt::white, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(cell.adjusted(4, 4, -3, -3));
    }
    if (!hasFocus()) return;
    // A frame of the form's own: some styles draw theirs after a key alone.
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void PaletteGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint at = event->position().toPoint();
    if (at.x() < kColumns * kCell) Choose(at.y() / kCell * kColumns + at.x() / kCell);
}

void PaletteGrid::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            Choose(form_.chosen - 1);
            break;
        case Qt::Key_Right:
            Choose(form_.chosen + 1);
            break;
        case Qt::Key_Up:
            Choose(form_.chosen - kColumns);
            break;
        case Qt::Key_Down:
            Choose(form_.chosen + kColumns);
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace

bool ShowPaletteForm(PaletteForm& form) {
    QDialog dialog(FormParent());
    dialog.setWindowTitle(WindowText(kPaletteCaption));
    auto* rows = new QVBoxLayout(&dialog);
    auto* frame = new QGroupBox(WithoutKeys(WindowText(form.title)));
    auto* inner = new QVBoxLayout(frame);
    QWidget* grid = Named<QWidget>(new PaletteGrid(form), "picPalette");
    inner->addWidget(grid, 0, Qt::AlignCenter);
    rows->addWidget(frame);
    const FormButtons buttons = AddButtons(
        dialog, *rows, [] { return true; }, QStringLiteral("&Select"));
    SetTabs({grid, buttons.ok, buttons.cancel});
    grid->setFocus();
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace orvantis
