#include "desktop/status_panel.h"

#include <QVBoxLayout>

namespace orvantis {

namespace {

constexpr int kBarWidth = 300;  // logical pixels

}  // namespace

StatusPanel::StatusPanel(QWidget* area)
    : QFrame(area), text_(new QLabel(this)), bar_(new QProgressBar(this)) {
    setFrameStyle(QFrame::Panel | QFrame::Raised);
    setAutoFillBackground(true);
    auto* lines = new QVBoxLayout(this);
    lines->addWidget(text_);
    lines->addWidget(bar_);
    text_->setAlignment(Qt::AlignCenter);
    bar_->setMinimumWidth(kBarWidth);
    bar_->setRange(0, 100);
    hide();
}

void StatusPanel::Tell(const QString& text, int percent) {
    text_->setText(text);
    bar_->setValue(percent);
    adjustSize();
    const QSize area = parentWidget()->size();
    move((area.width() - width()) / 2, (area.height() - height()) / 2);
    raise();
    show();
    repaint();
}

}  // namespace orvantis
