// The widget behind fields of whole numbers with arrows of their own.
#pragma once

#include "platform/toolbox/return_key.h"
#include "platform/toolbox/user_input.h"

#include <QSpinBox>

/// Refuses the sign that parts thousands. Qt reads over it wherever it stands, so that "1,5" would be fifteen. Return
/// goes to the handlers first.
class NumberBox final : public QSpinBox {
public:
    explicit NumberBox(QWidget* parent = nullptr) : QSpinBox(parent) {}

protected:
    QValidator::State validate(QString& input, int& place) const override {
        return input.contains(locale().groupSeparator()) ? QValidator::Invalid : QSpinBox::validate(input, place);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (!isReturn(*event) || !sendKey(OpaqueControlRef::of(this), kReturnCharCode)) {
            QSpinBox::keyPressEvent(event);
        }
    }
};
