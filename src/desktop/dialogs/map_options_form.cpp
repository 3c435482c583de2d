// "Select Map Options".
#include <QCheckBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>
#include <functional>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"
#include "session/map_dialogs.h"
#include "text/number_text.h"

namespace orvantis {

namespace {

constexpr std::array<const char*, 4> kProjections = {"Cartesian", "Mercator", "Globe (Sphere)",
                                                     "Globe (Oblate)"};

// A field that tells that it is left, by whatever way, before the next control hears of it.
class LeftField : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;
    std::function<void()> onLeft;

  protected:
    void focusOutEvent(QFocusEvent* event) override {
        QLineEdit::focusOutEvent(event);
        // Behind another window or a menu the field is where the focus returns to.
        const Qt::FocusReason reason = event->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return;
        if (onLeft) onLeft();
    }
};

class MapOptionsDialog : public QDialog {
  public:
    MapOptionsDialog();
    const MapDocument& Map() const { return map_; }

  private:
    QGroupBox* GridFrame();
    QGroupBox* DetailFrame();
    QGroupBox* ProjectionFrame();
    void ShowCityFile();
    float& Interval(std::size_t i) { return i == 0 ? map_.gridLatStep : map_.gridLongStep; }
    void TakeInterval(std::size_t i);

    MapDocument map_ = OpenMapOptions();
    QCheckBox* grid_;
    std::array<LeftField*, 2> intervals_{};  // of latitude and longitude
    std::array<QCheckBox*, kDetailBoxes.size()> details_{};
    QPushButton* cityFile_;
    QLabel* cityFileName_;
    std::array<QRadioButton*, kProjections.size()> projections_{};
};

MapOptionsDialog::MapOptionsDialog()
    : QDialog(FormParent()),
      grid_(Named(new QCheckBox(QStringLiteral("Show &Grid")), "chkGrid")),
      cityFile_(Named(new QPushButton(QStringLiteral("City &File...")), "btnCityFile")),
      cityFileName_(Named(new QLabel, "pnlCityFile")) {
    setWindowTitle(QStringLiteral("Select Map Options"));
    auto* rows = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    rows->addLayout(columns);
    auto* left = new QVBoxLayout;
    columns->addLayout(left);
    left->addWidget(GridFrame());
    left->addWidget(ProjectionFrame());
    left->addStretch();
    columns->addWidget(DetailFrame(), 0, Qt::AlignTop);

    const FormButtons buttons = AddButtons(*this, *rows, [this] {
        // Enter comes from within a field.
        for (std::size_t i = 0; i < intervals_.size(); ++i) {
            if (intervals_[i]->isModified()) TakeInterval(i);
        }
        return true;
    });
    SetTabs({grid_, intervals_[0], intervals_[1], details_[0], details_[1], details_[2],
             details_[3], details_[4], details_[5], cityFile_, projections_[0], projections_[1],
             projections_[2], projections_[3], buttons.ok, buttons.cancel});
    grid_->setFocus();
}

QGroupBox* MapOptionsDialog::GridFrame() {
    auto* frame = new QGroupBox(QStringLiteral("Coordinate Grid"));
    auto* cells = new QGridLayout(frame);
    grid_->setChecked(map_.gridOn != 0);
    connect(grid_, &QCheckBox::clicked, this,
            [this](bool on) { map_.gridOn = on ? kTrue : kFalse; });
    cells->addWidget(grid_, 0, 0, 1, 3);

    const std::array<QString, 2> captions = {QStringLiteral("Interval of L&atitude"),
                                             QStringLiteral("Interval of L&ongitude")};
    for (std::size_t i = 0; i < intervals_.size(); ++i) {
        intervals_[i] = new LeftField(WindowText(ShortNumberText(Interval(i))));
        intervals_[i]->setObjectName(QStringLiteral("txtInterval%1").arg(i));
        intervals_[i]->onLeft = [this, i] { TakeInterval(i); };
        const int row = static_cast<int>(i) + 1;
        cells->addWidget(LabelOf(captions[i], intervals_[i]), row, 0);
        cells->addWidget(intervals_[i], row, 1);
        cells->addWidget(new QLabel(QStringLiteral("Degrees")), row, 2);
    }
    return frame;
}

QGroupBox* MapOptionsDialog::DetailFrame() {
    auto* frame = new QGroupBox(QStringLiteral("&Details to Show"));
    auto* rows = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < details_.size(); ++i) {
        const DetailBox& detail = kDetailBoxes[i];
        const auto hidden = static_cast<std::size_t>(detail.detailClass);
        auto* box = new QCheckBox(WindowText(detail.caption));
        box->setObjectName(QStringLiteral("chkDetail%1").arg(i));
        box->setChecked(map_.hidden[hidden] == 0);
        connect(box, &QCheckBox::clicked, this, [this, box, &detail, hidden](bool on) {
            SetDetail(map_, detail.detailClass, on);
            box->setChecked(map_.hidden[hidden] == 0);
            ShowCityFile();
        });
        rows->addWidget(box);
        details_[i] = box;
    }

    auto* row = new QHBoxLayout;
    row->addWidget(cityFile_);
    row->addWidget(cityFileName_, 1);
    cityFileName_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    cityFileName_->setMinimumWidth(90);
    cityFileName_->setTextFormat(Qt::PlainText);
    rows->addLayout(row);
    connect(cityFile_, &QPushButton::clicked, this, [this] {
        if (ChooseCityFile(map_)) ShowCityFile();
    });
    ShowCityFile();
    return frame;
}

QGroupBox* MapOptionsDialog::ProjectionFrame() {
    auto* frame = new QGroupBox(QStringLiteral("&Projection"));
    auto* rows = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < projections_.size(); ++i) {
        auto* choice = new QRadioButton(QString::fromLatin1(kProjections[i]));
        choice->setObjectName(QStringLiteral("optProjection%1").arg(i));
        choice->setChecked(map_.projection == static_cast<std::int16_t>(i));
        connect(choice, &QRadioButton::clicked, this,
                [this, i] { map_.projection = static_cast<std::int16_t>(i); });
        rows->addWidget(choice);
        projections_[i] = choice;
    }
    return frame;
}

void MapOptionsDialog::ShowCityFile() {
    cityFileName_->setText(WindowText(CityFileText(map_)));
}

void MapOptionsDialog::TakeInterval(std::size_t i) {
    Interval(i) = GridInterval(TypedBytes(intervals_[i]->text()));
    intervals_[i]->setText(WindowText(ShortNumberText(Interval(i))));
}

}  // namespace

bool ShowMapOptionsForm() {
    MapOptionsDialog dialog;
    if (dialog.exec() != QDialog::Accepted) return false;
    AcceptMapOptions(dialog.Map());
    return true;
}

}  // namespace orvantis
