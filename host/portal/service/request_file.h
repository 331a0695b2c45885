// Requests and answers between the desktop's message bus and property lists.
#pragma once

#include <QVariantMap>

#include <optional>
#include <string>

/// A text as it came over the bus: of the length that is taken, and without characters that no property list has.
QString plainText(const QString& text);

/// The strings and numbers among the values of a dictionary, as many as a request may have.
QVariantMap plainValues(const QVariantMap& values);

/// Writes a dictionary of strings, numbers, booleans and dictionaries into a file, which only its owner may read. False
/// when it cannot be written.
bool writeValues(const QVariantMap& values, const std::string& path);

/// Reads one. Nothing when there is none.
std::optional<QVariantMap> readValues(const std::string& path);
