// Modal loops: events for one window until somebody ends it.

#include "platform/toolbox/Windows.h"
#include "platform/toolbox/objects.h"

#include <QEventLoop>

OSStatus RunAppModalLoopForWindow(WindowRef window) {
    if (!IsValidWindowPtr(window)) {
        return errInvalidWindowRef;
    }
    QWidget* widget = window->widget;
    if (widget->windowModality() != Qt::ApplicationModal) {
        widget->hide();  // Qt takes a new modality only when the window is shown again
        widget->setWindowModality(Qt::ApplicationModal);
    }
    ShowWindow(window);
    SelectWindow(window);
    QEventLoop loop;
    window->modalLoops.push_back(&loop);
    loop.exec();
    if (IsValidWindowPtr(window)) {
        std::erase(window->modalLoops, &loop);
    }
    return noErr;
}

OSStatus QuitAppModalLoopForWindow(WindowRef window) {
    if (!IsValidWindowPtr(window)) {
        return errInvalidWindowRef;
    }
    if (!window->modalLoops.empty()) {
        window->modalLoops.back()->quit();
        window->modalLoops.pop_back();
    }
    return noErr;
}
