#include "watermark/editor/place_fields.h"

#include "watermark/editor/editor_fields.h"
#include "watermark/editor/editor_texts.h"
#include "watermark/editor/mark_values.h"

#include <QSignalBlocker>
#include <cmath>

namespace {

/// Each country's decimal sign stands for the locale's: Qt would take the other one for a sign that parts thousands,
/// and read "12,5" as 125.
class OffsetBox : public QDoubleSpinBox {
public:
    using QDoubleSpinBox::QDoubleSpinBox;
    QValidator::State validate(QString& input, int& place) const override {
        for (const QChar sign : QStringLiteral(".,\u066B")) {
            input.replace(sign, locale().decimalPoint());
        }
        return QDoubleSpinBox::validate(input, place);
    }
};

void SetUnit(QDoubleSpinBox* box, const OffsetUnit& unit) {
    if (const QString suffix = EditorText(unit.suffixKey); suffix != box->suffix()) {
        box->setDecimals(unit.decimals);
        box->setRange(-kFarthestOffset / unit.points, kFarthestOffset / unit.points);
        box->setSingleStep(unit.step);
        box->setSuffix(suffix);
    }
}

/// Leaves a text alone that says the value already: its user may be about to type the next digit.
void SetShownValue(QDoubleSpinBox* box, double value) {
    const double lastDigit = std::pow(0.1, box->decimals());
    if (std::abs(box->value() - value) > lastDigit / 2) {
        box->setValue(value);
    }
}

}  // namespace

PlaceFields::PlaceFields(QFormLayout* form) {
    AddRow(form, "Across Label", makeOffset("xOffset", "Across Tip", &WatermarkRecord::xOffset));
    AddRow(form, "Up Label", makeOffset("yOffset", "Up Tip", &WatermarkRecord::yOffset));
    units_ = Described(new QComboBox, "units", "Units Tip");
    for (const OffsetUnit& unit : kOffsetUnits) {
        units_->addItem(EditorText(unit.nameKey));
    }
    QObject::connect(units_, &QComboBox::currentIndexChanged, units_, [this](int unit) { unitChosen(unit); });
    AddRow(form, "Units Label", units_);
}

QDoubleSpinBox* PlaceFields::makeOffset(const char* name, const char* tipKey, float WatermarkRecord::*field) {
    auto* box = Described(new OffsetBox, name, tipKey);
    offsets_.push_back({box, field});
    QObject::connect(box, &QDoubleSpinBox::valueChanged, box, [this, field](double value) {
        moved(field, static_cast<float>(value * kOffsetUnits[units_->currentIndex()].points));
    });
    return box;
}

void PlaceFields::show(const WatermarkRecord& record) {
    const QSignalBlocker noUnit(units_);
    units_->setCurrentIndex(record.units);
    const OffsetUnit& unit = kOffsetUnits[record.units];
    for (const Offset& offset : offsets_) {
        const QSignalBlocker noOffset(offset.box);
        SetUnit(offset.box, unit);
        SetShownValue(offset.box, record.*offset.field / unit.points);
    }
}
