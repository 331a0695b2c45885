// What controls are called by their labels.
#pragma once

#include <QString>

/// The label's text as a name for who hears it: without the letter for the keyboard, "&" or "(&X)", and without the
/// colon at its end with the blank before it.
QString nameOfLabel(const QString& label);
