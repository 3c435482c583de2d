// "Lines & Symbols".
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>
#include <cmath>

#include "desktop/dialogs/form_parts.h"
#include "desktop/dialogs/forms.h"
#include "desktop/window_text.h"
#include "lines/line_list.h"
#include "raster/image_surface.h"
#include "session/tables.h"

namespace orvantis {

namespace {

constexpr double kDotsPerInch = 96;

// A line of the selected type, drawn as on the map.
class LineSample : public QWidget {
  public:
    explicit LineSample(const PrefsForm& form) : form_(form) { setMinimumSize(220, 72); }

    void ShowType(std::int16_t type) {
        type_ = type;
        update();
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        const double scale = devicePixelRatioF();
        surface_.Resize(static_cast<int>(std::lround(width() * scale)),
                        static_cast<int>(std::lround(height() * scale)), kDotsPerInch * scale);
        DrawLineSample(surface_, form_, type_);
        QImage picture = surface_.View();
        picture.setDevicePixelRatio(scale);
        QPainter(this).drawImage(0, 0, picture);
    }

  private:
    const PrefsForm& form_;
    std::int16_t type_ = 1;
    ImageSurface surface_{0, 0};
};

class PrefsDialog : public QDialog {
  public:
    explicit PrefsDialog(PrefsForm& form);

  private:
    void FillBoxes();
    void ConnectBoxes();
    void ConnectColours();
    QLayout* Colours();
    QLayout* Boxes();
    void ShowType();
    std::int16_t Type() const { return static_cast<std::int16_t>(types_->currentRow() + 1); }
    LineStyle& Style() { return form_.lineStyle[static_cast<std::size_t>(Type())]; }

    PrefsForm& form_;
    QListWidget* types_;
    QPushButton* lineColour_;
    QPushButton* seaColour_;
    QPushButton* landColour_;
    QComboBox* style_;
    QComboBox* thickness_;
    QComboBox* shape_;
    QComboBox* fontSize_;
    QRadioButton* ofPlanet_;
    QRadioButton* ofLine_;
    LineSample* sample_;
};

PrefsDialog::PrefsDialog(PrefsForm& form)
    : QDialog(FormParent()),
      form_(form),
      types_(Named(new QListWidget, "lstLines")),
      lineColour_(Named(new QPushButton(QStringLiteral("Line &Color...")), "btnColors1")),
      seaColour_(Named(new QPushButton(QStringLiteral("S&ea Color...")), "btnColors2")),
      landColour_(Named(new QPushButton(QStringLiteral("L&and Color...")), "btnColors3")),
      style_(Named(new QComboBox, "cmbStyle")),
      thickness_(Named(new QComboBox, "cmbThickness")),
      shape_(Named(new QComboBox, "cmbShape")),
      fontSize_(Named(new QComboBox, "cmbFontSize")),
      ofPlanet_(Named(new QRadioButton(QStringLiteral("Use &Planet Colors")), "optPlanetColor1")),
      ofLine_(Named(new QRadioButton(QStringLiteral("Use &Line Color")), "optPlanetColor2")),
      sample_(Named(new LineSample(form), "Picture1")) {
    setWindowTitle(QStringLiteral("Lines & Symbols"));
    types_->setAccessibleName(QStringLiteral("Line types"));
    sample_->setAccessibleName(QStringLiteral("Sample"));
    auto* rows = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    rows->addLayout(columns);
    columns->addWidget(types_);
    auto* right = new QVBoxLayout;
    columns->addLayout(right);
    right->addLayout(Colours());
    right->addLayout(Boxes());
    right->addWidget(ofPlanet_);
    right->addWidget(ofLine_);
    right->addWidget(sample_, 1);

    // "Line &Color..." has the key that Cancel has elsewhere.
    const FormButtons buttons = AddButtons(
        *this, *rows, [] { return true; }, QStringLiteral("OK"), QStringLiteral("Cancel"));
    SetTabs({types_, lineColour_, seaColour_, landColour_, style_, thickness_, shape_, fontSize_,
             ofPlanet_, ofLine_, buttons.ok, buttons.cancel});

    FillBoxes();
    ConnectBoxes();
    ConnectColours();
    types_->setCurrentRow(0);
    types_->setFocus();
}

QLayout* PrefsDialog::Colours() {
    auto* row = new QHBoxLayout;
    row->addWidget(lineColour_);
    row->addWidget(seaColour_);
    row->addWidget(landColour_);
    return row;
}

QLayout* PrefsDialog::Boxes() {
    auto* rows = new QFormLayout;
    rows->addRow(LabelOf(QStringLiteral("Line S&tyle"), style_), style_);
    rows->addRow(LabelOf(QStringLiteral("Line T&hickness"), thickness_), thickness_);
    rows->addRow(LabelOf(QStringLiteral("Sy&mbol Type"), shape_), shape_);
    rows->addRow(LabelOf(QStringLiteral("Symbol Si&ze"), fontSize_), fontSize_);
    return rows;
}

void PrefsDialog::FillBoxes() {
    for (std::int16_t type = 1; type <= kStyledLines; ++type) {
        types_->addItem(WindowText(LineTypeName(type)));
    }
    types_->setMinimumWidth(types_->sizeHintForColumn(0) + 4 * types_->frameWidth() + 12);
    for (const std::string_view name : kLineStyleNames) style_->addItem(WindowText(name));
    for (const std::string_view name : kSymbolShapeNames) shape_->addItem(WindowText(name));
    for (const int size : {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48, 72}) {
        SelectNumber(*fontSize_, size);
    }
    SelectNumber(*fontSize_, static_cast<double>(form_.symbolSize));
}

// A box tells what the user does with it; what the form itself shows changes no record.
void PrefsDialog::ConnectBoxes() {
    connect(types_, &QListWidget::currentRowChanged, this, [this] { ShowType(); });
    connect(style_, &QComboBox::activated, this, [this](int index) {
        Style().style = static_cast<std::int16_t>(index);
        sample_->update();
    });
    connect(thickness_, &QComboBox::activated, this, [this] {
        Style().thickness = static_cast<std::int16_t>(thickness_->currentData().toInt());
        sample_->update();
    });
    connect(shape_, &QComboBox::activated, this, [this](int index) {
        Style().symbolShape = static_cast<std::int16_t>(index);
        sample_->update();
    });
    connect(fontSize_, &QComboBox::activated, this, [this] {
        form_.symbolSize = fontSize_->currentData().toFloat();
        sample_->update();
    });
}

void PrefsDialog::ConnectColours() {
    connect(lineColour_, &QPushButton::clicked, this, [this] {
        if (ChooseLineColour(form_, Type())) sample_->update();
    });
    connect(seaColour_, &QPushButton::clicked, this, [this] {
        if (ChooseSeaColour(form_)) sample_->update();
    });
    connect(landColour_, &QPushButton::clicked, this, [this] {
        if (ChooseLandColour(form_)) sample_->update();
    });
    connect(ofPlanet_, &QRadioButton::clicked, this, [this] {
        Style().planetColour = kTrue;
        sample_->update();
    });
    connect(ofLine_, &QRadioButton::clicked, this, [this] {
        Style().planetColour = kFalse;
        sample_->update();
    });
}

void PrefsDialog::ShowType() {
    const LineStyle& style = Style();
    style_->setCurrentIndex(style.style);  // none, if a file has a number beyond the list
    shape_->setCurrentIndex(style.symbolShape);
    thickness_->clear();
    for (int width = 1; width <= 10; ++width) SelectNumber(*thickness_, width);
    SelectNumber(*thickness_, style.thickness);
    (style.planetColour != 0 ? ofPlanet_ : ofLine_)->setChecked(true);
    sample_->ShowType(Type());
}

}  // namespace

bool ShowPrefsForm(PrefsForm& form) {
    if (PrefsDialog(form).exec() != QDialog::Accepted) return false;
    AcceptPrefs(form);
    return true;
}

}  // namespace orvantis
