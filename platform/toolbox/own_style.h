// What Qt's own style lacks. Private to this folder.
#pragma once

class QApplication;

/// Gives Qt's own style frames that are seen in dark colors, where it draws them darker than the window, and buttons
/// room for the arrow of their menu. Other styles, a desktop's, stay as they are.
void improveOwnStyle(QApplication* application);
