// JSON on standard output.
#pragma once

#include "host/settings/paper_words.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>
#include <string>
#include <vector>

/// A text as JSON has it: what of it is no UTF-8 becomes the replacement character.
QString jsonText(const std::string& text);
QJsonArray jsonTexts(const std::vector<std::string>& texts);

/// What is known of a sheet's paper; its size in points where there is one.
QJsonObject jsonPaper(const std::vector<PaperFact>& facts, const std::optional<Size>& size, CFBundleRef texts);

/// How a sheet of two sides is turned over: "longEdge", "shortEdge"; null for one side.
QJsonValue jsonFlip(bool isTwoSided, bool isTumbled);

/// An option of the PPD with what the printer calls it.
QJsonObject jsonChoice(const std::string& option, const std::string& words);

/// Prints the document with its kind ("check") and the version of all kinds' fields. No character in it does anything
/// to a terminal.
void printDocument(const char* kind, QJsonObject document);
