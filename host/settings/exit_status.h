// How the program ends: people script on these numbers.
#pragma once

enum class ExitStatus : int {
    success = 0,  // printed, or told what was asked for
    cancelled = 1,
    usage = 2,
    scriptFailed = 3,
    unusableInput = 4,  // document, PPD, settings file, or a part of the installation
    notSent = 5,
};
