// The widget behind fields of whole numbers with arrows of their own.
#pragma once

#include "platform/toolbox/return_key.h"
#include "platform/toolbox/user_input.h"

#include <QLineEdit>
#include <QSpinBox>
#include <QToolTip>

/// Refuses the sign that parts thousands. Qt reads over it wherever it stands, so that "1,5" would be fifteen. Takes
/// the digits of every script, and says which numbers it takes where it refuses others. Return goes to the handlers
/// first.
class NumberBox final : public QSpinBox {
public:
    explicit NumberBox(QWidget* parent = nullptr) : QSpinBox(parent) {
        connect(lineEdit(), &QLineEdit::inputRejected, this, [this] {
            const auto text = [this](int number) { return textFromValue(number) + suffix(); };
            QToolTip::showText(mapToGlobal(QPoint(0, height())),
                               text(minimum()) + QStringLiteral(" – ") + text(maximum()), this);
        });
    }

protected:
    QValidator::State validate(QString& input, int& place) const override {
        for (QChar& c : input) {
            const int digit = c.digitValue();
            const bool isOfLocale = digit >= 0 && c.unicode() == locale().zeroDigit().at(0).unicode() + digit;
            c = digit >= 0 && !isOfLocale ? QChar(u'0' + digit) : c;
        }
        return input.contains(locale().groupSeparator()) ? QValidator::Invalid : QSpinBox::validate(input, place);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (!isReturn(*event) || !sendKey(OpaqueControlRef::of(this), kReturnCharCode)) {
            QSpinBox::keyPressEvent(event);
        }
    }
};
