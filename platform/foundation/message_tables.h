// Messages in the user's language.
#pragma once

#include <string>

/// From now on the program's messages (message.h) are those of the table "Messages" in the folder of a bundle's
/// resources (FOLDER/LANGUAGE.lproj/Messages.strings), in the first of the user's languages that the folder has. The
/// table is read with the first message. English stands in for a table that is missing or damaged, and for a text that
/// it lacks, and standard error says so in one line.
void showMessagesOf(const std::string& resourcesFolder);
