// What the forms have in common: texts, the row of buttons, what runs when a field is left, and
// pictures of glyphs. Controls carry the names by which the program knows them as object names.
#pragma once

#include <QDialog>
#include <QIcon>
#include <QImage>
#include <QLayout>
#include <QString>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include "surface/values.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace orvantis {

/// A text that isn't a caption, for a control whose captions mark access keys by "&".
QString WithoutKeys(const QString& text);

/// What a new form stands before: the form that is up, or the window.
QWidget* FormParent();

/// Names a control.
template <typename Control>
Control* Named(Control* control, const char* name) {
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

/// A label whose access key leads to a control.
QLabel* LabelOf(const QString& caption, QWidget* control);

/// The row "OK" and Cancel. "OK" is what Enter presses; it closes the form if `accept` is true.
/// Esc presses Cancel.
struct FormButtons {
    QPushButton* ok = nullptr;
    QPushButton* cancel = nullptr;
};
FormButtons AddButtons(QDialog& dialog, QBoxLayout& rows, const std::function<bool()>& accept,
                       const QString& okCaption = QStringLiteral("OK"),
                       const QString& cancelCaption = QStringLiteral("&Cancel"));

/// Tab leads from each to the next.
void SetTabs(std::initializer_list<QWidget*> controls);

/// Runs `left` when the focus goes from a field to another control of the form. Not when it goes to
/// Cancel, which drops the field, nor with a click on "OK", which reads it.
void OnLeave(QWidget* field, const FormButtons& buttons, const std::function<void()>& left);

/// A box in a colour, of `size` logical pixels at a display's scale, with a text of the glyph font
/// in it.
QImage GlyphBox(std::string_view glyph, Colour colour, QSize size, double scale);

/// Such a box as the picture of a list's entry, for a point.
QIcon PointIcon(std::int16_t point, Colour colour, QSize size, double scale);

/// Selects the entry of a combo box that holds a number; puts one in, in order, if there is none.
void SelectNumber(QComboBox& box, double number);

}  // namespace orvantis
