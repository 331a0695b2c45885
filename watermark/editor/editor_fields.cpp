#include "watermark/editor/editor_fields.h"

#include "watermark/editor/editor_texts.h"

#include <algorithm>

void DescribeField(QWidget* field, const char* name, const char* tipKey) {
    field->setObjectName(QLatin1String(name));
    field->setToolTip(EditorText(tipKey));
    field->setAccessibleDescription(EditorText(tipKey));
}

void AddRow(QFormLayout* form, const char* labelKey, QWidget* field) {
    const QString label = EditorText(labelKey);
    field->setAccessibleName(QString(label).remove(u'&').remove(u':'));
    form->addRow(label, field);
}

void AlignForms(QWidget* panel) {
    QList<QWidget*> labels;
    int widest = 0;
    for (const QFormLayout* form : panel->findChildren<QFormLayout*>()) {
        for (int row = 0; row < form->rowCount(); ++row) {
            if (const QLayoutItem* label = form->itemAt(row, QFormLayout::LabelRole); label && label->widget()) {
                labels.append(label->widget());
                widest = std::max(widest, label->widget()->sizeHint().width());
            }
        }
    }
    for (QWidget* label : labels) {
        label->setMinimumWidth(widest);
    }
}
