// Asking for the file of a picture.
#pragma once

#include <QString>

/// The path of the file that the user chose; empty for none, and for a path that no record has room for.
QString AskForPicture();
