#include "platform/toolbox/help_key.h"

#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <algorithm>

namespace {

void askForHelp() {
    const std::vector<OpaqueWindowRef*> windows = livingWindows();  // help may bring one more
    static_cast<void>(std::find_if(windows.rbegin(), windows.rend(), [](OpaqueWindowRef* window) {
        return window->widget->isVisible() && window->sendCommand(FourCharCode("Thlp")) == noErr;
    }));
}

class HelpRule final : public QObject {
public:
    using QObject::QObject;

    /// The key comes to the dialog when none of its controls takes it.
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isHelp = event->type() == QEvent::KeyPress && qobject_cast<QDialog*>(watched) != nullptr &&
                            static_cast<QKeyEvent*>(event)->matches(QKeySequence::HelpContents);
        if (isHelp) {
            askForHelp();
        }
        return isHelp;
    }
};

}  // namespace

void letHelpKeyReachHelp(QApplication* application) {
    application->installEventFilter(new HelpRule(application));
}
