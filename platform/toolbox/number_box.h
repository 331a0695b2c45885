// The widget behind fields of whole numbers with arrows of their own.
#pragma once

#include <QSpinBox>

/// Refuses the sign that parts thousands. Qt reads over it wherever it stands, so that "1,5" would be fifteen.
class NumberBox final : public QSpinBox {
public:
    explicit NumberBox(QWidget* parent = nullptr) : QSpinBox(parent) {}

protected:
    QValidator::State validate(QString& input, int& place) const override {
        return input.contains(locale().groupSeparator()) ? QValidator::Invalid : QSpinBox::validate(input, place);
    }
};
