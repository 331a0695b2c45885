// Options that hold what nobody else may see, such as passcodes.
#pragma once

#include "platform/printing/ppd_file.h"

#include <optional>
#include <string>
#include <string_view>

/// Whether something of that name is a secret wherever it stands, by the words in it.
bool isSecretName(std::string_view name);

/// The same, or the PPD takes a passcode or password there.
bool isSecretOption(const PPDFile& ppd, std::string_view name);

/// What is typed into an option: of "Custom.TEXT" or "{NAME=TEXT}". Nothing for a choice, or several texts.
std::optional<std::string> typedValue(std::string_view value);
