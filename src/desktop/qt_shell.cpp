#include "desktop/qt_shell.h"

#include <QColorDialog>
#include <QCoreApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>

#include "session/files.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

// Work that is done sooner than this shows no progress.
constexpr int kProgressDelayMs = 300;

QString Shown(std::string_view bytes) {
    return QString::fromStdString(ToUtf8(bytes))
        .replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Information:
            return QMessageBox::Information;
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Question:
            return QMessageBox::Question;
        case BoxIcon::Error:
            return QMessageBox::Critical;
        case BoxIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case BoxButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case BoxButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case BoxButtons::RetryCancel:
            return QMessageBox::Retry | QMessageBox::Cancel;
        case BoxButtons::Ok:
            break;
    }
    return QMessageBox::Ok;
}

BoxAnswer AnswerOf(int button) {
    switch (button) {
        case QMessageBox::Ok:
            return BoxAnswer::Ok;
        case QMessageBox::Yes:
            return BoxAnswer::Yes;
        case QMessageBox::No:
            return BoxAnswer::No;
        case QMessageBox::Retry:
            return BoxAnswer::Retry;
        default:
            return BoxAnswer::Cancel;
    }
}

}  // namespace

void QtShell::SetWindow(QWidget* window) {
    window_ = window;
    if (window_) window_->setWindowTitle(title_);
}

BoxAnswer QtShell::MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                              BoxIcon icon) {
    QMessageBox box(IconOf(icon), Shown(title), Shown(text), ButtonsOf(buttons), window_);
    box.setTextFormat(Qt::PlainText);
    return AnswerOf(box.exec());
}

std::optional<std::string> QtShell::ChooseFile(std::string_view title, std::string_view filter,
                                               bool forSaving) {
    const QString path =
        forSaving ? QFileDialog::getSaveFileName(window_, Shown(title), QString(), Shown(filter))
                  : QFileDialog::getOpenFileName(window_, Shown(title), QString(), Shown(filter));
    if (path.isEmpty()) return std::nullopt;
    return ProgramPath(QFile::encodeName(path).toStdString());
}

std::optional<Colour> QtShell::ChooseColour(std::string_view title, Colour colour) {
    const QColor start(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
    const QColor chosen = QColorDialog::getColor(start, window_, Shown(title));
    if (!chosen.isValid()) return std::nullopt;
    return chosen.red() | chosen.green() << 8 | chosen.blue() << 16;
}

void QtShell::SetTitle(std::string_view title) {
    title_ = Shown(title);
    if (window_) window_->setWindowTitle(title_);
}

void QtShell::SetPointer(Pointer pointer) {
    const bool hourglass = pointer == Pointer::Hourglass;
    if (hourglass && !hourglass_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    if (!hourglass && hourglass_) QGuiApplication::restoreOverrideCursor();
    hourglass_ = hourglass;
    if (hourglass || !window_) return;
    switch (pointer) {
        case Pointer::Cross:
            window_->setCursor(Qt::CrossCursor);
            break;
        case Pointer::Move:
            window_->setCursor(Qt::SizeAllCursor);
            break;
        default:
            window_->unsetCursor();
            break;
    }
}

void QtShell::ShowProgress(std::string_view text, std::int16_t percent) {
    if (text.empty()) {
        delete progress_;
        return;
    }
    if (!progress_) {
        progress_ = new QProgressDialog(window_);
        progress_->setWindowTitle(title_);
        progress_->setCancelButton(nullptr);
        progress_->setWindowModality(Qt::ApplicationModal);
        progress_->setMinimumDuration(kProgressDelayMs);
        progress_->setAutoReset(false);
        progress_->setAutoClose(false);
        progress_->setRange(0, 100);
    }
    progress_->setLabelText(Shown(text));
    progress_->setValue(percent);
}

void QtShell::DoEvents() {
    QCoreApplication::processEvents();
}

bool QtShell::PreviousInstance() {
    return false;
}

std::vector<TopWindow> QtShell::TopLevelWindows() {
    return {};
}

void QtShell::ActivateWindow(std::int64_t /*handle*/) {}

void QtShell::ShowStartScreen(std::string_view /*versionText*/) {}

void QtShell::RefreshStartScreen() {}

void QtShell::HideStartScreen() {}

void QtShell::UnloadStartScreen() {}

void QtShell::ShowMainWindow() {}

SurfaceSize QtShell::MapAreaSize() {
    return {};
}

WindowPlace QtShell::MainWindowPlace() {
    return {};
}

void QtShell::PlaceMainWindow(const WindowPlace& /*place*/) {}

WindowPlace QtShell::ScreenExtent() {
    return {};
}

std::int32_t QtShell::ScreenColours() {
    return 0x1000000;
}

void QtShell::SetClockTimer(std::int32_t /*interval*/, bool /*enabled*/) {}

std::string QtShell::RegionalText(std::string_view /*key*/) {
    return "";
}

std::string QtShell::LanguageAbbreviation() {
    return "ENG";
}

LocalTime QtShell::Now() {
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    LocalTime local;
    local.year = static_cast<std::int16_t>(date.year());
    local.month = static_cast<std::int16_t>(date.month());
    local.day = static_cast<std::int16_t>(date.day());
    local.hour = static_cast<std::int16_t>(time.hour());
    local.minute = static_cast<std::int16_t>(time.minute());
    local.second = static_cast<std::int16_t>(time.second());
    return local;
}

}  // namespace orvantis
