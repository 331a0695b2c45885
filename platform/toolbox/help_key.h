// The key for help. Private to this folder.
#pragma once

class QApplication;

/// Lets the key for help send the command 'Thlp' in all windows of the process, notices and file choosers among them:
/// to the window, and if nobody there has help for it, to the one behind it, and so on.
void letHelpKeyReachHelp(QApplication* application);
