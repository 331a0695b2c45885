// Texts stay texts: no markup in labels and tool tips.
#pragma once

class QApplication;

/// Makes all labels of the process show their text as it is, those of tool tips, Qt's own windows and modules too.
/// Qt would guess that "<img src=…>" is a page, and read the file.
void keepLabelsPlain(QApplication* application);
