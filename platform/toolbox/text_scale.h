// Windows for larger text than they are designed with. Private to this folder.
#pragma once

class QWidget;

/// Makes the window of a nib, and the sizes that the nib gives to what holds text, larger in the measure in which the
/// user's text is larger than a designer's. Pictures and panes keep theirs, but for panes with the property
/// "followsText". Text that is smaller changes nothing.
void followTextSize(QWidget* window);
