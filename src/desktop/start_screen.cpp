#include "desktop/start_screen.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include "desktop/window_text.h"
#include "session/session_state.h"

namespace orvantis {

namespace {

constexpr int kTimeMs = 1000;
constexpr int kPictureSize = 160;  // the globe, logical pixels
constexpr int kMargin = 32;

void EndSplash() {
    session.SplashDone = kTrue;
}

// A globe with its grid, seen from above the equator.
QPixmap Globe(double scale) {
    QPixmap picture(QSize(kPictureSize, kPictureSize) * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(kPictureSize / 2.0, kPictureSize / 2.0);
    const double radius = kPictureSize / 2.0 - 2;
    painter.setPen(QPen(QColor(0xFF, 0xFF, 0xFF), 1.5));
    painter.setBrush(QColor(0x30, 0x60, 0xA0));
    painter.drawEllipse(centre, radius, radius);
    painter.setBrush(Qt::NoBrush);
    for (const double share : {0.0, 0.34, 0.64, 0.87}) {
        painter.drawEllipse(centre, radius * share, radius);
        const double y = radius * share;
        const double half = radius * std::sqrt(1 - share * share);
        for (const double side : {-y, y}) {
            painter.drawLine(centre + QPointF(-half, side), centre + QPointF(half, side));
        }
    }
    return picture;
}

QLabel* Line(QWidget* parent, const QString& text, int pixels, bool bold) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPixelSize(pixels);
    font.setBold(bold);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, Qt::white);
    label->setPalette(colours);
    return label;
}

}  // namespace

StartScreen::StartScreen(const QString& versionText)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint) {
    setWindowTitle(QStringLiteral("Starting Orvantis"));
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(kMargin * 2, kMargin, kMargin * 2, kMargin);
    auto* picture = new QLabel(this);
    picture->setPixmap(Globe(devicePixelRatioF()));
    picture->setAlignment(Qt::AlignCenter);
    lines->addWidget(picture);
    lines->addSpacing(kMargin / 2);
    lines->addWidget(Line(this, QStringLiteral("Orvantis"), 34, true));
    lines->addWidget(Line(this, versionText, 15, false));

    // The labels leave keys and clicks to the screen behind them.
    setFocusPolicy(Qt::StrongFocus);
    adjustSize();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    move(screen.center() - rect().center());
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, EndSplash);
    timer_.start(kTimeMs);
}

void StartScreen::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0x10, 0x18, 0x30));
    painter.setPen(QColor(0x80, 0x90, 0xB0));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void StartScreen::keyPressEvent(QKeyEvent* /*event*/) {
    EndSplash();
}

void StartScreen::mousePressEvent(QMouseEvent* /*event*/) {
    EndSplash();
}

void StartScreen::closeEvent(QCloseEvent* /*event*/) {
    EndSplash();
}

}  // namespace orvantis
