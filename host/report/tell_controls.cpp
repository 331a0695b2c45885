#include "host/report/json_document.h"
#include "host/report/report.h"
#include "host/script/control_listing.h"

#include <cstdio>

namespace {

QString jsonCommand(OSType command) {
    return jsonText(FourCharCodeText(command));
}

QJsonArray jsonItems(const std::vector<script::ListedItem>& items) {
    QJsonArray array;
    for (const script::ListedItem& item : items) {
        QJsonObject object{{QStringLiteral("text"), jsonText(item.text)},
                           {QStringLiteral("isChecked"), item.isChecked},
                           {QStringLiteral("isEnabled"), item.isEnabled}};
        if (item.command != 0) {
            object[QStringLiteral("command")] = jsonCommand(item.command);
        }
        if (item.reference != 0) {
            object[QStringLiteral("reference")] = static_cast<qint64>(item.reference);
        }
        if (!item.items.empty()) {
            object[QStringLiteral("items")] = jsonItems(item.items);
        }
        array.append(object);
    }
    return array;
}

QJsonArray jsonRows(const std::vector<script::ListedRow>& rows) {
    QJsonArray array;
    for (const script::ListedRow& row : rows) {
        array.append(QJsonObject{{QStringLiteral("cells"), jsonTexts(row.cells)},
                                 {QStringLiteral("isSelected"), row.isSelected}});
    }
    return array;
}

QJsonArray jsonControls(const std::vector<script::ListedControl>& controls);

QJsonObject jsonControl(const script::ListedControl& control) {
    QJsonObject object{{QStringLiteral("kind"), QString::fromLatin1(control.kind)},
                       {QStringLiteral("isVisible"), control.isVisible},
                       {QStringLiteral("isEnabled"), control.isEnabled}};
    if (!control.name.empty()) {
        object[QStringLiteral("name")] = jsonText(control.name);
    }
    if (control.command != 0) {
        object[QStringLiteral("command")] = jsonCommand(control.command);
    }
    if (control.value) {
        object[QStringLiteral("value")] = *control.value;
    }
    if (control.minimum && control.maximum) {
        object[QStringLiteral("minimum")] = *control.minimum;
        object[QStringLiteral("maximum")] = *control.maximum;
    }
    if (control.isSecret) {
        object[QStringLiteral("isSecret")] = true;
    } else if (!control.text.empty()) {
        object[QStringLiteral("text")] = jsonText(control.text);
    }
    if (!control.items.empty()) {
        object[QStringLiteral("items")] = jsonItems(control.items);
    }
    if (control.rowCount) {
        object[QStringLiteral("rowCount")] = static_cast<qint64>(*control.rowCount);
        object[QStringLiteral("rows")] = jsonRows(control.firstRows);
    }
    if (!control.controls.empty()) {
        object[QStringLiteral("controls")] = jsonControls(control.controls);
    }
    return object;
}

QJsonArray jsonControls(const std::vector<script::ListedControl>& controls) {
    QJsonArray array;
    for (const script::ListedControl& control : controls) {
        array.append(jsonControl(control));
    }
    return array;
}

}  // namespace

void reportControls(WindowRef window, ReportForm form) {
    const script::ListedWindow listed = script::listedPanels(window);
    if (form == ReportForm::lines) {
        script::printLines(stdout, script::listing(listed));
        return;
    }
    QJsonArray panels;
    for (const script::ListedPanel& panel : listed.panels) {
        panels.append(QJsonObject{{QStringLiteral("number"), panel.number},
                                  {QStringLiteral("title"), jsonText(panel.title)},
                                  {QStringLiteral("controls"), jsonControls(panel.pane.controls)}});
    }
    printDocument("controls", {{QStringLiteral("title"), jsonText(listed.title)},
                               {QStringLiteral("controls"), jsonControls(listed.controls)},
                               {QStringLiteral("panels"), panels}});
}
