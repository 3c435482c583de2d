// "Save Map As" and "Save Settings As".
#include <QFile>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"
#include "session/files.h"
#include "session/map_dialogs.h"
#include "session/save_settings.h"

namespace orvantis {

namespace {

constexpr int kTitleLength = 80;  // characters of a title in its file

// Paths are in the platform's encoding, not in the code page.
QString ShownFolder(const std::string& folder) {
    return QFile::decodeName(QByteArray::fromStdString(NativePath(folder)));
}

std::string FolderOf(const QString& shown) {
    return ProgramPath(QFile::encodeName(shown.trimmed()).toStdString());
}

// The form of both: where the file goes, its name, and its description.
template <typename Form>
bool ShowSaveForm(const QString& title, Form form, bool (*acceptForm)(const Form&)) {
    QDialog dialog(FormParent());
    dialog.setWindowTitle(title);
    auto* rows = new QVBoxLayout(&dialog);
    auto* fields = new QFormLayout;
    rows->addLayout(fields);
    auto* folder = Named(new QLineEdit(ShownFolder(form.folder)), "txtFolder");
    auto* browse = Named(new QPushButton(QStringLiteral("&Browse...")), "btnFolder");
    auto* name = Named(new QLineEdit(WindowText(form.name)), "txtName");
    auto* description = Named(new QLineEdit(WindowText(form.description)), "txtDescription");
    description->setMaxLength(kTitleLength);
    constexpr int kWidth = 420;
    description->setMinimumWidth(kWidth);

    fields->addRow(LabelOf(QStringLiteral("File &Name"), name), name);
    fields->addRow(LabelOf(QStringLiteral("&Description"), description), description);
    auto* row = new QHBoxLayout;
    row->addWidget(folder);
    row->addWidget(browse);
    fields->addRow(LabelOf(QStringLiteral("&Folder"), folder), row);
    QObject::connect(browse, &QPushButton::clicked, &dialog, [&dialog, folder] {
        const QString chosen =
            QFileDialog::getExistingDirectory(&dialog, QStringLiteral("Folder"), folder->text());
        if (!chosen.isEmpty()) folder->setText(chosen);
    });

    const FormButtons buttons =
        AddButtons(dialog, *rows, [&form, acceptForm, folder, name, description] {
            form.folder = FolderOf(folder->text());
            form.name = TypedBytes(name->text());
            form.description = TypedBytes(description->text());
            const bool saved = acceptForm(form);
            if (!saved) name->setFocus();
            return saved;
        });
    SetTabs({name, description, folder, browse, buttons.ok, buttons.cancel});
    name->selectAll();
    name->setFocus();
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

bool ShowSaveMapForm() {
    return ShowSaveForm(QStringLiteral("Save Map As"), OpenSaveMap(), AcceptSaveMap);
}

bool ShowSaveSettingsForm() {
    return ShowSaveForm(QStringLiteral("Save Settings As"), OpenSaveSettings(), AcceptSaveSettings);
}

}  // namespace orvantis
