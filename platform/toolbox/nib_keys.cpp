#include "platform/toolbox/nib_keys.h"

#include "platform/toolbox/objects.h"

#include <QComboBox>
#include <QShortcut>

namespace {

constexpr qsizetype kCodeLength = 4;
constexpr int kDigits = 9;

void connectCommands(OpaqueControlRef* control) {
    for (const QString& line : control->widget->property("keys").toStringList()) {
        const OSType command = codeOf(line.left(kCodeLength));
        const QKeySequence keys(line.mid(kCodeLength + 1), QKeySequence::PortableText);
        const auto send = [control, command] {
            ScopedEvent(kEventClassCommand, kEventCommandProcess)
                .with(kEventParamDirectObject, typeHICommand, HICommand{0, command, nullptr, 0, nullptr})
                .sendTo(control);
        };
        new QShortcut(keys, control->widget, control, send);
    }
}

void pick(QComboBox* popUp, int row) {
    const QModelIndex item = popUp->model()->index(row, popUp->modelColumn());
    if (item.isValid() && (item.flags() & Qt::ItemIsEnabled)) {
        popUp->setCurrentIndex(row);
        Q_EMIT popUp->activated(row);
    }
}

void connectItems(OpaqueControlRef* control) {
    const QString modifier = control->widget->property("itemKeys").toString();
    auto* const popUp = qobject_cast<QComboBox*>(control->widget);
    for (int digit = 1; popUp != nullptr && !modifier.isEmpty() && digit <= kDigits; ++digit) {
        const QKeySequence keys(modifier + QString::number(digit), QKeySequence::PortableText);
        new QShortcut(keys, popUp, popUp, [popUp, digit] { pick(popUp, digit - 1); });
    }
}

}  // namespace

void connectKeys(OpaqueControlRef* control) {
    connectCommands(control);
    connectItems(control);
}
