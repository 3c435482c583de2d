#include "desktop/dialogs/form_parts.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTimer>
#include <cmath>

#include "raster/image_surface.h"
#include "session/tables.h"
#include "surface/label.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

constexpr double kDotsPerInch = 96;
constexpr float kGlyphPoints = 11;

// Sees a field being left, before the control that takes the focus sees anything.
class LeaveWatch : public QObject {
  public:
    LeaveWatch(QWidget* field, const FormButtons& buttons, const std::function<void()>& left)
        : QObject(field), buttons_(buttons) {
        field->installEventFilter(this);
        later_.setSingleShot(true);
        connect(&later_, &QTimer::timeout, this, left);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FocusOut && IsLeft(static_cast<QFocusEvent*>(event))) {
            // A box shown in the midst of a change of focus would confuse it.
            later_.start(0);
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    bool IsLeft(const QFocusEvent* event) const {
        // Another window or a menu comes to the front; the field is where the focus returns to.
        if (event->reason() == Qt::ActiveWindowFocusReason ||
            event->reason() == Qt::PopupFocusReason) {
            return false;
        }
        const QWidget* next = QApplication::focusWidget();
        if (next == buttons_.ok) return event->reason() != Qt::MouseFocusReason;
        return next != nullptr && next != buttons_.cancel;
    }

    FormButtons buttons_;
    QTimer later_;
};

}  // namespace

QString WithoutKeys(const QString& text) {
    return QString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QWidget* FormParent() {
    QWidget* front = QApplication::activeModalWidget();
    return front != nullptr ? front : QApplication::activeWindow();
}

QLabel* LabelOf(const QString& caption, QWidget* control) {
    auto* label = new QLabel(caption);
    label->setBuddy(control);
    control->setAccessibleName(QString(caption).remove(QLatin1Char('&')));
    return label;
}

FormButtons AddButtons(QDialog& dialog, QBoxLayout& rows, const std::function<bool()>& accept,
                       const QString& okCaption, const QString& cancelCaption) {
    FormButtons buttons{Named(new QPushButton(okCaption), "btnOK"),
                        Named(new QPushButton(cancelCaption), "btnCancel")};
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(buttons.ok);
    row->addWidget(buttons.cancel);
    rows.addLayout(row);
    buttons.ok->setDefault(true);
    QObject::connect(buttons.ok, &QPushButton::clicked, &dialog, [&dialog, accept] {
        if (accept()) dialog.accept();
    });
    QObject::connect(buttons.cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    return buttons;
}

void SetTabs(std::initializer_list<QWidget*> controls) {
    QWidget* last = nullptr;
    for (QWidget* control : controls) {
        if (last != nullptr) QWidget::setTabOrder(last, control);
        last = control;
    }
}

void OnLeave(QWidget* field, const FormButtons& buttons, const std::function<void()>& left) {
    new LeaveWatch(field, buttons, left);  // the field's child
}

QImage GlyphBox(std::string_view glyph, Colour colour, QSize size, double scale) {
    const int width = static_cast<int>(std::lround(size.width() * scale));
    const int height = static_cast<int>(std::lround(size.height() * scale));
    ImageSurface surface(width, height, kDotsPerInch * scale);
    surface.Clear(PlainColour(colour));
    surface.SelectFont({std::string(kGlyphFontName), kGlyphPoints});
    Pen ink;
    ink.colour = Brightness(colour) > 127 ? 0x000000 : 0xFFFFFF;
    surface.SetPen(ink);
    surface.TextOut(width / 2, (height - surface.TextExtent(glyph).height) / 2, glyph,
                    TextAlign::Centre);

    // A grey edge keeps a box apart from a background of its own colour.
    ink.colour = 0x808080;
    surface.SetPen(ink);
    surface.Rectangle(0, 0, width, height, {});
    QImage picture = surface.View().copy();
    picture.setDevicePixelRatio(scale);
    return picture;
}

QIcon PointIcon(std::int16_t point, Colour colour, QSize size, double scale) {
    const char glyph = PointGlyph(point);
    const QPixmap picture = QPixmap::fromImage(
        GlyphBox(point <= 36 ? std::string_view(&glyph, 1) : "", colour, size, scale));
    // The picture of a selected entry is the same: its colour is what the list is about.
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

void SelectNumber(QComboBox& box, double number) {
    int at = 0;
    while (at < box.count() && box.itemData(at).toDouble() < number) ++at;
    if (at == box.count() || box.itemData(at).toDouble() > number) {
        box.insertItem(at, QString::number(number), number);
    }
    box.setCurrentIndex(at);
}

}  // namespace orvantis
