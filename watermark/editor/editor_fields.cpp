#include "watermark/editor/editor_fields.h"

#include "platform/toolbox/label_name.h"
#include "watermark/editor/editor_texts.h"

#include <QLabel>
#include <algorithm>

void DescribeField(QWidget* field, const char* name, const char* tipKey) {
    field->setObjectName(QLatin1String(name));
    field->setToolTip(EditorText(tipKey));
    field->setAccessibleDescription(EditorText(tipKey));
}

void AddRow(QFormLayout* form, const char* labelKey, QWidget* field) {
    const QString label = EditorText(labelKey);
    field->setAccessibleName(nameOfLabel(label));
    form->addRow(label, field);
}

void AlignForms(QWidget* panel) {
    QList<QLabel*> labels;
    int widest = 0;
    for (const QFormLayout* form : panel->findChildren<QFormLayout*>()) {
        for (int row = 0; row < form->rowCount(); ++row) {
            const QLayoutItem* item = form->itemAt(row, QFormLayout::LabelRole);
            if (auto* label = item != nullptr ? qobject_cast<QLabel*>(item->widget()) : nullptr) {
                labels.append(label);
                widest = std::max(widest, label->sizeHint().width());
            }
        }
    }
    for (QLabel* label : labels) {
        label->setMinimumWidth(widest);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
}
