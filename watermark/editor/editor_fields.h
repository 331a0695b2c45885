// What all inputs of the editor have: a name, a tooltip, a label.
#pragma once

#include <QFormLayout>
#include <QWidget>

/// Gives an input its name for tests and scripts, and its tooltip, which a screen reader says too.
void DescribeField(QWidget* field, const char* name, const char* tipKey);

template <typename Field>
Field* Described(Field* field, const char* name, const char* tipKey) {
    DescribeField(field, name, tipKey);
    return field;
}

/// Adds the field to the form with its label, which becomes its name for a screen reader.
void AddRow(QFormLayout* form, const char* labelKey, QWidget* field);

/// Makes the labels of all forms below a widget equally wide, so that their fields stand below each other, and puts
/// each beside its field.
void AlignForms(QWidget* panel);
