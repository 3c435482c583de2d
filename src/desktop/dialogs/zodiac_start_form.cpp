// "User Input": the start of the geodetic zodiac.
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"

namespace orvantis {

bool ShowZodiacStartForm(ZodiacStartForm& form) {
    QDialog dialog(FormParent());
    dialog.setWindowTitle(QStringLiteral("User Input"));
    auto* rows = new QVBoxLayout(&dialog);
    auto* frame = new QGroupBox(QStringLiteral("Geodetic Zodiac Start Point"));
    auto* row = new QHBoxLayout(frame);
    auto* start = Named(new QLineEdit(WindowText(form.text)), "txtZodiacStart");
    row->addWidget(
        LabelOf(WindowText("Terrestrial Longitude at 0\xB0 Aries of Geodetic Zodiac"), start));
    row->addWidget(start);
    rows->addWidget(frame);

    // A text that is refused keeps the user in its field.
    const auto show = [&form, start](bool good) {
        start->setText(WindowText(form.text));
        if (good) return;
        start->setFocus();
        start->selectAll();
    };
    const FormButtons buttons = AddButtons(dialog, *rows, [&form, start, show] {
        form.text = TypedBytes(start->text());
        const bool good = AcceptZodiacStart(form);
        show(good);
        return good;
    });
    OnLeave(start, buttons, [&form, start, show] {
        form.text = TypedBytes(start->text());
        show(LeaveZodiacStart(form));
    });
    SetTabs({start, buttons.ok, buttons.cancel});
    start->selectAll();
    start->setFocus();
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace orvantis
