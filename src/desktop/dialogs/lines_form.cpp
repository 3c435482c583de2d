// "Select Lines".
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"

namespace orvantis {

namespace {

constexpr std::int16_t kInMundo = 1;
constexpr std::int16_t kZodiacal = 2;

class LinesDialog : public QDialog {
  public:
    explicit LinesDialog(LinesForm& form);

  private:
    QGroupBox* AngleFrame();
    QGroupBox* ParanFrame();
    QGroupBox* BoxFrame(const QString& title, std::int16_t first, std::int16_t last);
    void AddBox(QVBoxLayout& rows, std::int16_t type);
    void SetMode(std::int16_t lineMode);
    void ShowParanPoint();
    void Take();

    LinesForm& form_;
    QRadioButton* inMundo_;
    QRadioButton* zodiacal_;
    std::array<QCheckBox*, kLineBoxes + 1> boxes_{};  // 1 to 11
    QPushButton* paran_;
    QLineEdit* limit_;
};

LinesDialog::LinesDialog(LinesForm& form)
    : QDialog(FormParent()),
      form_(form),
      inMundo_(Named(new QRadioButton(QStringLiteral("In Mundo")), "optRS1")),
      zodiacal_(Named(new QRadioButton(QStringLiteral("Zodiacal")), "optRS2")),
      paran_(Named(new QPushButton, "btnParan")),
      limit_(Named(new QLineEdit, "txtParan")) {
    setWindowTitle(QStringLiteral("Select Lines"));
    auto* rows = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    rows->addLayout(columns);
    auto* left = new QVBoxLayout;
    auto* right = new QVBoxLayout;
    columns->addLayout(left);
    columns->addLayout(right);
    left->addWidget(AngleFrame());
    left->addWidget(ParanFrame());
    left->addStretch();
    right->addWidget(BoxFrame(QStringLiteral("Local Space Lines"), 7, 9));
    right->addWidget(BoxFrame(QStringLiteral("Celestial Lines"), 10, 11));
    right->addStretch();
    const FormButtons buttons = AddButtons(*this, *rows, [this] {
        Take();
        return true;
    });
    SetTabs({inMundo_, zodiacal_, boxes_[1], boxes_[2], boxes_[3], boxes_[4], boxes_[5], boxes_[6],
             paran_, limit_, boxes_[7], boxes_[8], boxes_[9], boxes_[10], boxes_[11], buttons.ok,
             buttons.cancel});

    SetMode(form_.lineMode);
    ShowParanPoint();
    limit_->setText(WindowText(form_.paranLimit));
    (form_.lineMode == kZodiacal ? zodiacal_ : inMundo_)->setFocus();
}

QGroupBox* LinesDialog::AngleFrame() {
    auto* frame = new QGroupBox(QStringLiteral("Planet/Angle Lines"));
    auto* rows = new QVBoxLayout(frame);
    auto* modes = new QHBoxLayout;
    modes->addWidget(inMundo_);
    modes->addWidget(zodiacal_);
    modes->addStretch();
    rows->addLayout(modes);
    connect(inMundo_, &QRadioButton::clicked, this, [this] { SetMode(kInMundo); });
    connect(zodiacal_, &QRadioButton::clicked, this, [this] { SetMode(kZodiacal); });
    for (std::int16_t type = 1; type <= 4; ++type) AddBox(*rows, type);
    return frame;
}

QGroupBox* LinesDialog::ParanFrame() {
    auto* frame = BoxFrame(QStringLiteral("Paran Lines"), 5, 6);
    auto* rows = static_cast<QVBoxLayout*>(frame->layout());
    rows->addWidget(paran_);
    connect(paran_, &QPushButton::clicked, this, [this] {
        Take();
        ChooseParanPoint(form_);
        ShowParanPoint();
    });
    auto* row = new QHBoxLayout;
    row->addWidget(LabelOf(QStringLiteral("&Limit of Lat"), limit_));
    row->addWidget(limit_);
    rows->addLayout(row);
    return frame;
}

QGroupBox* LinesDialog::BoxFrame(const QString& title, std::int16_t first, std::int16_t last) {
    auto* frame = new QGroupBox(title);
    auto* rows = new QVBoxLayout(frame);
    for (std::int16_t type = first; type <= last; ++type) AddBox(*rows, type);
    return frame;
}

void LinesDialog::AddBox(QVBoxLayout& rows, std::int16_t type) {
    auto* box = new QCheckBox;
    box->setObjectName(QStringLiteral("chkLine%1").arg(type));
    box->setChecked(form_.shown[static_cast<std::size_t>(type)]);
    box->setText(WindowText(LineBoxCaption(type, form_.lineMode)));
    rows.addWidget(box);
    boxes_[static_cast<std::size_t>(type)] = box;
}

void LinesDialog::SetMode(std::int16_t lineMode) {
    form_.lineMode = lineMode;
    (lineMode == kZodiacal ? zodiacal_ : inMundo_)->setChecked(true);
    for (std::int16_t type = 1; type <= kLineBoxes; ++type) {
        boxes_[static_cast<std::size_t>(type)]->setText(WindowText(LineBoxCaption(type, lineMode)));
    }
}

void LinesDialog::ShowParanPoint() {
    paran_->setText(QStringLiteral("&") + WithoutKeys(WindowText(form_.paranCaption)));
}

void LinesDialog::Take() {
    for (std::size_t type = 1; type < boxes_.size(); ++type) {
        form_.shown[type] = boxes_[type]->isChecked();
    }
    form_.paranLimit = TypedBytes(limit_->text());
}

}  // namespace

bool ShowLinesForm(LinesForm& form) {
    if (LinesDialog(form).exec() != QDialog::Accepted) return false;
    AcceptLines(form);
    return true;
}

}  // namespace orvantis
