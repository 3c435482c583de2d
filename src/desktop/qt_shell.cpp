#include "desktop/qt_shell.h"

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QCoreApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QGuiApplication>
#include <QImage>
#include <QInputDialog>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>

#include "desktop/item_list.h"
#include "desktop/regional.h"
#include "desktop/signals.h"
#include "session/files.h"
#include "session/session_state.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

constexpr int kTwipsPerPixel = 15;  // a logical pixel is one of 96 to the inch
constexpr std::int32_t kTrueColour = 0x1000000;

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

// What a user who isn't there would answer: nothing is changed, and nothing is kept open.
int RefusalOf(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::YesNo:
        case BoxButtons::YesNoCancel:
            return QMessageBox::No;
        case BoxButtons::Ok:
            return QMessageBox::Ok;
        default:
            return QMessageBox::Cancel;
    }
}

int Twips(int pixels) {
    return pixels * kTwipsPerPixel;
}

int Pixels(std::int32_t twips) {
    return twips / kTwipsPerPixel;
}

}  // namespace

QtShell::QtShell(MainWindow& window) : window_(window) {
    copies_.onTitle = [this] { return window_.windowTitle().toStdString(); };
    copies_.onRaise = [this] { window_.BringToFront(); };
}

// What boxes and dialogs stand before: a form that is up, or else the window.
QWidget* QtShell::Front() const {
    if (QWidget* form = QApplication::activeModalWidget()) return form;
    if (startScreen_ && startScreen_->isVisible()) return startScreen_.get();
    return window_.isVisible() ? &window_ : nullptr;
}

BoxAnswer QtShell::MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                              BoxIcon icon) {
    // A program that has been told to end asks nobody.
    if (EndWasAsked()) return AnswerOf(RefusalOf(buttons));
    QMessageBox box(IconOf(icon), Shown(title), Shown(text), ButtonsOf(buttons), Front());
    box.setTextFormat(Qt::PlainText);
    return AnswerOf(box.exec());
}

std::optional<std::string> QtShell::ChooseFile(std::string_view title, std::string_view filter,
                                               bool forSaving) {
    if (EndWasAsked()) return std::nullopt;
    if (folder_.isEmpty()) folder_ = QFile::decodeName(NativePath(session.UserDataPath).c_str());
    // Whether a file may be overwritten, or is added to, the program itself asks. Files of a kind
    // may have names of other kinds: one to open can be any.
    const QString path =
        forSaving ? QFileDialog::getSaveFileName(Front(), Shown(title), folder_, Shown(filter),
                                                 nullptr, QFileDialog::DontConfirmOverwrite)
                  : QFileDialog::getOpenFileName(Front(), Shown(title), folder_,
                                                 Shown(filter) + QStringLiteral(";;All files (*)"));
    if (path.isEmpty()) return std::nullopt;
    folder_ = QFileInfo(path).absolutePath();
    return ProgramPath(QFile::encodeName(path).toStdString());
}

std::optional<Colour> QtShell::ChooseColour(std::string_view title, Colour colour) {
    if (EndWasAsked()) return std::nullopt;
    const QColor start(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
    const QColor chosen = QColorDialog::getColor(start, Front(), Shown(title));
    if (!chosen.isValid()) return std::nullopt;
    return chosen.red() | chosen.green() << 8 | chosen.blue() << 16;
}

std::optional<Font> QtShell::ChooseFont(const Font& font) {
    if (EndWasAsked()) return std::nullopt;
    QFont start(Shown(font.name));
    start.setPointSizeF(std::max(static_cast<double>(font.size), 1.0));
    start.setBold(font.bold);
    start.setItalic(font.italic);
    bool chosen = false;
    const QFont answer = QFontDialog::getFont(&chosen, start, Front());
    if (!chosen) return std::nullopt;
    const double size = answer.pointSizeF() > 0 ? answer.pointSizeF() : start.pointSizeF();
    return Font{FromUtf8(answer.family().toStdString()), static_cast<float>(size), answer.bold(),
                answer.italic()};
}

std::optional<std::string> QtShell::InputBox(std::string_view prompt, std::string_view title,
                                             std::string_view text) {
    if (EndWasAsked()) return std::nullopt;
    QInputDialog dialog(Front());
    dialog.setWindowTitle(Shown(title));
    dialog.setLabelText(Shown(prompt));
    dialog.setTextValue(Shown(text));
    if (auto* label = dialog.findChild<QLabel*>()) label->setWordWrap(true);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return FromUtf8(dialog.textValue().toStdString());
}

std::optional<std::int32_t> QtShell::ChooseItem(std::string_view title,
                                                const std::vector<std::string>& lines) {
    if (EndWasAsked()) return std::nullopt;
    QStringList shown;
    for (const std::string& line : lines) shown.push_back(Shown(line));
    return AskForItem(Front(), Shown(title), shown);
}

void QtShell::CopyToClipboard(const Image& image) {
    if (image.pixels.empty()) return;
    const QImage view(reinterpret_cast<const uchar*>(image.pixels.data()), image.width,
                      image.height, image.width * static_cast<int>(sizeof(std::uint32_t)),
                      QImage::Format_RGB32);
    QGuiApplication::clipboard()->setImage(view.copy());
}

void QtShell::SetTitle(std::string_view title) {
    window_.setWindowTitle(Shown(title));
}

void QtShell::SetPointer(Pointer pointer) {
    switch (pointer) {
        case Pointer::Cross:
            window_.MapArea()->setCursor(Qt::CrossCursor);
            break;
        case Pointer::Move:
            window_.MapArea()->setCursor(Qt::SizeAllCursor);
            break;
        case Pointer::Hourglass:
            if (!hourglass_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            hourglass_ = true;
            break;
        case Pointer::Default:
            if (hourglass_) QGuiApplication::restoreOverrideCursor();
            hourglass_ = false;
            break;
    }
}

void QtShell::ShowProgress(std::string_view text, std::int16_t percent) {
    if (text.empty()) {
        delete panel_;
        return;
    }
    if (!panel_) panel_ = new StatusPanel(window_.MapArea());
    panel_->Tell(Shown(text), percent);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtShell::DoEvents() {
    // While the start screen stands there is nothing else to do; the wait ends with its timer.
    const bool waiting = startScreen_ && startScreen_->isVisible() && session.SplashDone == 0;
    QCoreApplication::processEvents(waiting ? QEventLoop::WaitForMoreEvents
                                            : QEventLoop::AllEvents);
}

bool QtShell::PreviousInstance() {
    copies_.Join();
    return copies_.AnyRuns();
}

std::vector<TopWindow> QtShell::TopLevelWindows() {
    std::vector<TopWindow> windows = copies_.Windows();
    for (TopWindow& window : windows) window.title = FromUtf8(window.title);
    return windows;
}

void QtShell::ActivateWindow(std::int64_t handle) {
    copies_.Raise(handle);
}

void QtShell::ShowStartScreen(std::string_view versionText) {
    startScreen_ = std::make_unique<StartScreen>(Shown(versionText));
    startScreen_->show();
    startScreen_->activateWindow();
}

void QtShell::RefreshStartScreen() {
    if (startScreen_) startScreen_->repaint();
}

void QtShell::HideStartScreen() {
    if (startScreen_) startScreen_->hide();
}

void QtShell::UnloadStartScreen() {
    startScreen_.reset();
}

void QtShell::ShowMainWindow() {
    window_.ShowInPlace();
}

SurfaceSize QtShell::MapAreaSize() {
    window_.MapArea()->FitPicture();
    return window_.Picture().Size();
}

WindowPlace QtShell::MainWindowPlace() {
    const MainWindow::Place place = window_.CurrentPlace();
    return {place.state, Twips(place.frame.x()), Twips(place.frame.y()), Twips(place.frame.width()),
            Twips(place.frame.height())};
}

void QtShell::PlaceMainWindow(const WindowPlace& place) {
    window_.PutInPlace({place.state, QRect(Pixels(place.left), Pixels(place.top),
                                           Pixels(place.width), Pixels(place.height))});
}

WindowPlace QtShell::ScreenExtent() {
    const QSize size = QGuiApplication::primaryScreen()->size();
    return {0, 0, 0, Twips(size.width()), Twips(size.height())};
}

std::int32_t QtShell::ScreenColours() {
    const int depth = QGuiApplication::primaryScreen()->depth();
    return depth < 24 ? 1 << std::max(depth, 1) : kTrueColour;
}

void QtShell::SetClockTimer(std::int32_t interval, bool enabled) {
    clock_.setInterval(interval);
    if (enabled != clock_.isActive()) enabled ? clock_.start() : clock_.stop();
}

std::string QtShell::RegionalText(std::string_view key) {
    return RegionalTextOf(QLocale::system(), key);
}

std::string QtShell::LanguageAbbreviation() {
    return LanguageOf(QLocale::system());
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
