#include "desktop/command_bar.h"

#include <QButtonGroup>
#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>

#include "desktop/menus.h"
#include "desktop/window_text.h"

namespace orvantis {

namespace {

constexpr int kIconSize = 20;  // logical pixels
constexpr int kMostScale = 3;  // device pixels to a logical one, up to which icons are sharp
constexpr int kGap = 8;        // between the groups of the row

// Arrow from the middle of a square of 20 to one of its sides.
void DrawArrow(QPainter& painter, QPointF way) {
    const QPointF middle(10, 10);
    const QPointF tip = middle + way * 8;
    const QPointF aside(way.y(), way.x());
    painter.drawLine(middle, tip);
    painter.drawLine(tip, tip - way * 3 + aside * 3);
    painter.drawLine(tip, tip - way * 3 - aside * 3);
}

// The icon of a mouse mode in a square of 20 by 20.
void DrawMode(QPainter& painter, std::int16_t mode, const QColor& ink) {
    painter.setPen(QPen(ink, 1.5));
    switch (mode) {
        case mouse_mode::kMeasure:
            painter.drawLine(QPointF(3, 16), QPointF(17, 4));
            painter.drawLine(QPointF(1.5, 13), QPointF(4.5, 19));
            painter.drawLine(QPointF(15.5, 1), QPointF(18.5, 7));
            break;
        case mouse_mode::kZoom:
            painter.setPen(QPen(ink, 1.5, Qt::DashLine));
            painter.drawRect(QRectF(2.5, 4.5, 15, 11));
            break;
        case mouse_mode::kMove:
            for (const QPointF way : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
                DrawArrow(painter, way);
            break;
        case mouse_mode::kRelocate:
            painter.drawEllipse(QPointF(10, 7), 4.5, 4.5);
            painter.drawLine(QPointF(7, 10.5), QPointF(10, 18));
            painter.drawLine(QPointF(13, 10.5), QPointF(10, 18));
            break;
        case mouse_mode::kFill:
            painter.setBrush(ink);
            painter.drawPolygon(QPolygonF{{3, 10}, {10, 4}, {16, 11}, {9, 17}});
            painter.drawEllipse(QPointF(17, 15), 1.5, 2.5);
            break;
        default:
            painter.drawRect(QRectF(1.5, 7, 17, 7));
            for (int x = 4; x <= 16; x += 3) painter.drawLine(QPointF(x, 7), QPointF(x, 10));
            break;
    }
}

QIcon ModeIcon(std::int16_t mode, const QColor& ink) {
    QIcon icon;
    for (int scale = 1; scale <= kMostScale; ++scale) {
        QPixmap picture(kIconSize * scale, kIconSize * scale);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        DrawMode(painter, mode, ink);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

// A caption as a hint: without its access key and points.
QString HintOf(std::string_view caption) {
    QString text = WindowText(caption);
    return text.remove(QLatin1Char('&')).remove(QStringLiteral("..."));
}

QToolButton* NewButton(QWidget* parent, const QString& name) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    // Tab comes here, but a click leaves the keys of the map with the map.
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoRaise(true);
    parent->layout()->addWidget(button);
    return button;
}

}  // namespace

CommandBar::CommandBar(QWidget* parent, const std::function<void(const Command&)>& run)
    : QWidget(parent), position_(new QLabel(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kGap / 2, 2, kGap / 2, 2);
    row->setSpacing(2);
    AddButtons(run);
    row->addSpacing(kGap);
    AddRibbon(run);
    row->addSpacing(kGap);
    row->addWidget(position_, 1);
    position_->setObjectName(QStringLiteral("txtPosition"));
    position_->setTextFormat(Qt::PlainText);
    // A long text is cut, and never makes the window wider.
    position_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    DrawIcons();
    Refresh();
}

void CommandBar::AddButtons(const std::function<void(const Command&)>& run) {
    for (const CommandButton& row : CommandButtons()) {
        const Command* command = FindCommand(row.menu, row.caption);
        QToolButton* button = NewButton(this, WindowText(row.name));
        button->setText(WindowText(row.text));
        QString hint = HintOf(row.caption);
        if (!command->shortcut.empty()) hint += " (" + WindowText(command->shortcut) + ")";
        button->setToolTip(hint);
        connect(button, &QToolButton::clicked, this, [run, command] { run(*command); });
        buttons_.push_back({command, button});
    }
}

void CommandBar::AddRibbon(const std::function<void(const Command&)>& run) {
    auto* group = new QButtonGroup(this);
    for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) {
        QToolButton* button = NewButton(this, QStringLiteral("BtnMode%1").arg(mode));
        button->setCheckable(true);
        button->setIconSize(QSize(kIconSize, kIconSize));
        button->setToolTip(HintOf(MouseModeCaption(mode)));
        button->setAccessibleName(HintOf(MouseModeCaption(mode)));
        group->addButton(button);
        const Command* command = FindCommand("&Options", MouseModeCaption(mode));
        connect(button, &QToolButton::clicked, this, [run, command] { run(*command); });
        modes_[static_cast<std::size_t>(mode)] = button;
        buttons_.push_back({command, button});
    }
}

void CommandBar::Refresh() {
    for (const Button& button : buttons_) {
        const auto isBuilt = button.command->isBuilt;
        button.button->setEnabled(isBuilt == nullptr || isBuilt());
    }
    RefreshMouse();
}

void CommandBar::RefreshMouse() {
    modes_[static_cast<std::size_t>(mouseState.mode)]->setChecked(true);
    const QString text = WindowText(mouseState.positionText);
    if (position_->text() != text) position_->setText(text);
}

void CommandBar::DrawIcons() {
    const QColor ink = palette().color(QPalette::ButtonText);
    for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) {
        modes_[static_cast<std::size_t>(mode)]->setIcon(ModeIcon(mode, ink));
    }
}

void CommandBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && modes_.back() != nullptr) DrawIcons();
    QWidget::changeEvent(event);
}

}  // namespace orvantis
