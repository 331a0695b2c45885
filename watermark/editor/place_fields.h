// Where a watermark is: its offsets from the middle of the page, in the unit of the user's choice.
#pragma once

#include "watermark/records/watermark_record.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <functional>

class PlaceFields {
public:
    /// Adds the fields to the form, whose widgets live as long as the object.
    explicit PlaceFields(QFormLayout* form);

    void show(const WatermarkRecord& record);

    /// Called with the offset that the user changed, one of the record's, and what it is now, in points.
    std::function<void(float WatermarkRecord::*, float)> moved;
    /// Called with the number of the unit that the user chose.
    std::function<void(SInt32)> unitChosen;

private:
    struct Offset {
        QDoubleSpinBox* box;
        float WatermarkRecord::*field;
    };

    QDoubleSpinBox* makeOffset(const char* name, const char* tipKey, float WatermarkRecord::*field);

    std::vector<Offset> offsets_;
    QComboBox* units_;
};
